#include "scene/GroupInfo.h"

namespace qzkapp::ecad {

GroupInfo::GroupInfo() : flag(false), color(0.0f, 0.0f, 0.0f, 1.0f) {}
GroupInfo::GroupInfo(du::Symbol const& name, bool flag, dg::Color const& color)
    : name(name), flag(flag), color(color) {}
GroupInfo::GroupInfo(GroupInfo const&) = default;
GroupInfo::GroupInfo(GroupInfo&&) noexcept = default;
GroupInfo& GroupInfo::operator=(GroupInfo const&) = default;
GroupInfo& GroupInfo::operator=(GroupInfo&&) noexcept = default;
GroupInfo::~GroupInfo() = default;

} // namespace qzkapp::ecad

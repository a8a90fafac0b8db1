#include "qzk/ecad/AnnoCVInfo.h"

#include "PrefRead.h"

namespace qzk::ecad {
namespace {

AnnoCVInfo const* FindById(std::vector<AnnoCVInfo> const& list, uint64 id) {
    for (AnnoCVInfo const& entry : list) {
        if (entry.id == id) {
            return &entry;
        }
    }
    return nullptr;
}

} // namespace

AnnoCVInfo::AnnoCVInfo(uint64 id, wchar_t const* name, unsigned int color, bool visible, Type type)
    : ColorVisInfo(color, visible), id(id), name(name != nullptr ? name : L""), type(type) {}

AnnoCVInfo::~AnnoCVInfo() = default;

bool AnnoCVInfo::AreDifferent(std::vector<AnnoCVInfo> const& a, std::vector<AnnoCVInfo> const& b) {
    for (AnnoCVInfo const& entry : a) {
        AnnoCVInfo const* other = FindById(b, entry.id);
        if (other != nullptr && !entry.SameColorVis(*other)) {
            return true;
        }
    }
    return false;
}

void AnnoCVInfo::AssignCVAttrs(std::vector<AnnoCVInfo>& target,
                               std::vector<AnnoCVInfo> const& source) {
    for (AnnoCVInfo& entry : target) {
        if (AnnoCVInfo const* other = FindById(source, entry.id)) {
            entry.color = other->color;
            entry.visible = other->visible;
        }
    }
}

void AnnoCVInfo::GetDefaultColorVis(du::Symbol const& key, unsigned int& color, bool& visible) {
    prefread::ColorWord(du::Symbol(key.str() + "/color"), color);
    prefread::Flag(du::Symbol(key.str() + "/visible"), visible);
}

} // namespace qzk::ecad

#include "qzplugin/PluginHandlerIf.h"

#include "qzref/Journal.h"

namespace qzplugin {

PluginHandlerIf::PluginHandlerIf() = default;

PluginHandlerIf::~PluginHandlerIf() = default;

void PluginHandlerIf::SetStatusMessage(du::Symbol const& message) {
    qzref::Journal::Record("PluginHandlerIf", "SetStatusMessage", {qzref::Fmt(message.str())});
    std::lock_guard lock(mutex_);
    messages_.push_back(message);
}

std::vector<du::Symbol> PluginHandlerIf::GetStatusMessages() const {
    std::lock_guard lock(mutex_);
    return messages_;
}

} // namespace qzplugin

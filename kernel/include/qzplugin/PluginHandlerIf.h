// The host's plug-in handler interface, as far as the kernel side meets it: the sink of status
// messages for the host's status bar. The kernel's own handler keeps each message for tests; a
// host derives and shows them.
#pragma once

#include "du/RefCounted.h"
#include "du/Symbol.h"

#include <mutex>
#include <vector>

namespace qzplugin {

class PluginHandlerIf : public du::RefCounted {
public:
    PluginHandlerIf();
    PluginHandlerIf(PluginHandlerIf const&) = delete;
    PluginHandlerIf& operator=(PluginHandlerIf const&) = delete;
    ~PluginHandlerIf() override;

    // Journalled under the receiver "PluginHandlerIf"; kept.
    virtual void SetStatusMessage(du::Symbol const& message);

    // State reader: every message, oldest first.
    std::vector<du::Symbol> GetStatusMessages() const;

private:
    mutable std::mutex mutex_;
    std::vector<du::Symbol> messages_;
};

} // namespace qzplugin

// The application object's controls: the plug-in interface a host installs, and a fresh start
// between tests; reached through qzref::Inspect.
#pragma once

#include "du/SmartPtr.h"
#include "qzkapp/QzkApp.h"

namespace qzplugin {
class PluginHandlerIf;
}

namespace qzref {

class QzkAppInspector {
public:
    explicit QzkAppInspector(qzkapp::QzkApp& app) noexcept : app_(app) {}

    // Installs a host's plug-in interface; null stands for none.
    void SetPluginIf(du::SmartPtr<qzplugin::PluginHandlerIf> const& pluginIf);
    // Puts back a fresh recording plug-in interface and forgets what the scene manager recorded.
    void Reset();

private:
    qzkapp::QzkApp& app_;
};

} // namespace qzref

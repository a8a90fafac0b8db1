#include "qzref/QzkAppInspector.h"

#include "qzkapp/SceneManager.h"
#include "qzplugin/PluginHandlerIf.h"
#include "qzref/SceneManagerInspector.h"

#include <mutex>

namespace qzref {

void QzkAppInspector::SetPluginIf(du::SmartPtr<qzplugin::PluginHandlerIf> const& pluginIf) {
    // The old interface goes after the lock.
    du::SmartPtr<qzplugin::PluginHandlerIf> old;
    std::lock_guard lock(app_.mutex_);
    old = app_.pluginIf_;
    app_.pluginIf_ = pluginIf;
}

void QzkAppInspector::Reset() {
    SetPluginIf(du::SmartPtr<qzplugin::PluginHandlerIf>(new qzplugin::PluginHandlerIf()));
    SceneManagerInspector(*app_.GetSceneManager()).Reset();
}

} // namespace qzref

#include "qzkapp/QzkApp.h"

#include "qzkapp/SceneManager.h"
#include "qzplugin/PluginHandlerIf.h"

namespace qzkapp {

QzkApp* QzkApp::Get() {
    static QzkApp app;
    return &app;
}

QzkApp::QzkApp() : sceneManager_(new SceneManager()), pluginIf_(new qzplugin::PluginHandlerIf()) {}

QzkApp::~QzkApp() = default;

du::SmartPtr<SceneManager> QzkApp::GetSceneManager() const {
    std::lock_guard lock(mutex_);
    return sceneManager_;
}

du::SmartPtr<qzplugin::PluginHandlerIf> QzkApp::GetPluginIf() const {
    std::lock_guard lock(mutex_);
    return pluginIf_;
}

} // namespace qzkapp

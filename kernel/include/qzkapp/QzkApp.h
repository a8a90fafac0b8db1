// The application object: the scene manager and the plug-in handler interface of the host.
//
// There is one, for the whole process, and Get() never answers null. The scene manager always
// exists. The plug-in interface starts as the kernel's recording handler; a host installs its
// own with SetPluginIf, and null stands for a host that has none.
#pragma once

#include "du/SmartPtr.h"

#include <mutex>

namespace qzplugin {
class PluginHandlerIf;
}

namespace qzref {
class QzkAppInspector;
}

namespace qzkapp {

class SceneManager;

class QzkApp {
    friend class qzref::QzkAppInspector;

public:
    static QzkApp* Get();

    QzkApp(QzkApp const&) = delete;
    QzkApp& operator=(QzkApp const&) = delete;

    du::SmartPtr<SceneManager> GetSceneManager() const;
    du::SmartPtr<qzplugin::PluginHandlerIf> GetPluginIf() const;

private:
    QzkApp();
    ~QzkApp();

    mutable std::mutex mutex_;
    du::SmartPtr<SceneManager> sceneManager_;
    du::SmartPtr<qzplugin::PluginHandlerIf> pluginIf_;
};

} // namespace qzkapp

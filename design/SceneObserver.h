// What a scene of one design tells its observers, beyond what every scene tells: the end of
// its design's load, sublayer colours, images.
#pragma once

#include "component/ComponentExport.h"
#include "du/Symbol.h"
#include "scene/BaseSceneObserver.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT SceneObserver : public BaseSceneObserver {
public:
    SceneObserver();
    ~SceneObserver() override;

    void HandleEvent(unsigned char tag, dom::MessageReader& reader) override;
    virtual void OnDesignLoaded(unsigned short error, du::Symbol const& text);
    virtual void OnSublayerColorVisChanged(unsigned int source);
    virtual void OnImageChanged(unsigned int source);
};

} // namespace qzkapp::ecad

// What a compare scene tells its observers, beyond what every scene tells: the end of the load
// of either design, and sublayer colours. Its family has only these two events, so its concrete
// observers start at the id that a design scene uses for images.
#pragma once

#include "component/ComponentExport.h"
#include "du/Symbol.h"
#include "scene/BaseSceneObserver.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT CompareSceneObserver : public BaseSceneObserver {
public:
    CompareSceneObserver();
    ~CompareSceneObserver() override;

    void HandleEvent(unsigned char tag, dom::MessageReader& reader) override;
    virtual void OnDesignLoaded(bool second, unsigned short error, du::Symbol const& text);
    virtual void OnSublayerColorVisChanged(unsigned int source);
};

} // namespace qzkapp::ecad

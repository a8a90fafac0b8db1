// What every scene tells its observers. A host derives from the observer class of its scene and
// overrides the handlers it cares for; all handlers do nothing here.
//
// Event ids are relative to the kernel's first free id, so HandleEvent decodes by the distance
// from its family's first id and passes lower ids to its parent class. Failing reads raise
// std::runtime_error before any handler runs. DetachObserver stays pure: the host supplies it.
#pragma once

#include "component/ComponentExport.h"
#include "qzk/Observer.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT BaseSceneObserver : public qzk::Observer {
public:
    BaseSceneObserver();
    ~BaseSceneObserver() override;

    void HandleEvent(unsigned char tag, dom::MessageReader& reader) override;
    virtual void OnDrawOrderChanged();
    virtual void OnHighlightChanged(unsigned int count);
    virtual void OnGroupColorVisChanged(unsigned int source);
    virtual void OnAssocHighlightColorChanged(unsigned int color);
};

} // namespace qzkapp::ecad

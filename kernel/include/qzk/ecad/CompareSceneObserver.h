// Observer of an ECAD kernel compare scene: adds the change of the three compare colours and
// the application of a compare result.
#pragma once

#include "qzk/ecad/BaseSceneObserver.h"

namespace qzk::ecad {

class CompareSceneObserver : public BaseSceneObserver {
public:
    CompareSceneObserver();
    ~CompareSceneObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnCompareColorChanged();
    virtual void OnCompareResultApply();
};

} // namespace qzk::ecad

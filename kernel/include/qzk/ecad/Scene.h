// An ECAD kernel scene of one design (a board or a schematic). Adds the design-loaded flag that
// the layer clears before it loads and the kernel sets when the layer has taken the design over;
// FinishDesignLoad also gives the scene and its views the design's number of pages (a
// schematic's sheets, one for a board), and puts the design's images into the scene's annotation
// set (every design scene has its own from the start), once per design data: whoever follows the
// set hears of them as annotations added.
#pragma once

#include "qzk/Instance.h"
#include "qzk/ecad/BaseScene.h"

namespace qzref {
class SceneInspector;
}

namespace qzk::ecad {

class Scene : public BaseScene {
    friend class qzref::SceneInspector;

public:
    ~Scene() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    void ClearDesignLoadedFlag();
    using BaseScene::FinishDesignLoad;
    void FinishDesignLoad() override;

    du::SmartPtr<qzk::Instance> GetInstance() const { return instance_; }

protected:
    Scene(du::SmartPtr<qzk::World> const& world, du::SmartPtr<qzk::Instance> const& instance,
          du::SmartPtr<qzk::ViewableSource> const& source);

private:
    void _ApplyDesignImages(du::SmartPtr<qzk::EcadDesignData> const& data);

    du::SmartPtr<qzk::Instance> const instance_;
    bool designLoaded_ = false;
    // The design data whose images the annotation set holds; a reload of the same data adds
    // none again.
    qzk::EcadDesignData const* imagesOf_ = nullptr;
};

} // namespace qzk::ecad

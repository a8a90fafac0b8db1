// What a test or the host reads back from an ECAD kernel scene, and the few things it does to
// one that the layer never does. Reached through qzref::Inspect (qzref/Inspect.h); the scene's
// own header publishes only the platform interface.
#pragma once

#include "dg/Color.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/BaseScene.h"
#include "qzk/ecad/Overlay.h"

#include <cstddef>
#include <map>
#include <vector>

namespace qzk {
class Observable;
}

namespace qzref {

class BaseSceneInspector {
public:
    using Look = qzk::ecad::BaseScene::Look;
    using AppearanceItem = qzk::ecad::AppearanceItem;

    explicit BaseSceneInspector(qzk::ecad::BaseScene& scene) noexcept : scene_(scene) {}

    bool GetLook(AppearanceItem const& item, int layer, Look& out) const;
    std::size_t GetLookCount(int layer) const;
    std::map<AppearanceItem, Look> GetLooks(int layer) const;
    int GetOpenAppearanceUpdates() const;
    unsigned int GetUnbalancedEndCount() const;
    std::vector<short> GetDrawOrder() const;
    bool GetDrawOrderFlag() const;
    bool GetOverlapColor() const;
    bool GetHighlightOnlyVisible() const;
    bool GetFillShapes() const;
    unsigned int GetDefaultSelectionColor() const;
    unsigned int GetViewsDirtyCount() const;
    unsigned int GetViewCreatedCount() const;
    // In order of creation.
    std::vector<du::SmartPtr<qzk::ecad::Overlay>> GetOverlays() const;
    std::vector<qzk::ecad::AnnoCVInfo> GetImageColorVis() const;
    // The counted reference that keeps the API scene alive; null once let go.
    du::SmartPtr<qzk::Observable> GetApiSceneObservable() const;
    du::Symbol GetFilePath(int index) const;

    // While on, BeginAppearanceUpdate answers false and opens no bracket.
    void SetRefuseAppearanceUpdate(bool refuse);
    // Stores the colour and tells the observers (OnGroupOverlapColorChanged).
    void SetGroupOverlapColor(dg::Color const& color);
    // The kernel's end of the scene: Destroy() (which ends the API scene first).
    void DestroyScene();

private:
    qzk::ecad::BaseScene& scene_;
};

} // namespace qzref

// The image difference cells and grids of every compare scene: overlays of the kernel scene that
// the host hands in. No lock, no event, no undo (CompareScene.h).
#include "compare/CompareScene.h"

#include "dg/DMat33.h"
#include "qz2d/ecad/Design.h"
#include "qzk/ecad/BaseScene.h"
#include "qzk/ecad/Overlay.h"

namespace qzkapp::ecad {
namespace {

// Cells and grids alike are drawn in this overlay mode, whatever kind of picture they are.
unsigned int const kImageDiffOverlayMode = 1;

} // namespace

void CompareScene::AddImageDiffCellOrGrid(uint64 id, du::SmartPtr<qz2d::ecad::Design> const& design,
                                          dg::Color const& color, std::string const& name,
                                          unsigned int parameter, bool isGrid, int gridNumber,
                                          bool visible) {
    // A scene that has ended has no kernel scene to hold the overlay.
    if (!kernelScene) {
        return;
    }
    du::SmartPtr<qzk::ecad::Overlay> const overlay =
        kernelScene->CreateOverlay(design, id, visible, color, kImageDiffOverlayMode,
                                   dg::DMat33::IDENTITY, parameter, name, false);
    if (overlay) {
        overlay->kindOneFlag = isGrid;
    }
    if (isGrid) {
        // A number that is taken keeps its first grid; the new one lives on without an entry.
        imageGridMap.emplace(gridNumber, id);
    }
}

void CompareScene::RemoveImageCell(uint64 id) {
    if (id == 0 || !kernelScene) {
        return;
    }
    kernelScene->RemoveOverlay(id);
}

void CompareScene::SetCellColor(uint64 id, dg::Color const& color) {
    if (!kernelScene) {
        return;
    }
    if (du::SmartPtr<qzk::ecad::Overlay> const overlay = kernelScene->FindOverlay(id)) {
        overlay->SetColor(color);
    }
}

void CompareScene::SetImageDiffCellVisibility(uint64 id, bool visible) {
    if (id == 0 || !kernelScene) {
        return;
    }
    if (du::SmartPtr<qzk::ecad::Overlay> const overlay = kernelScene->FindOverlay(id)) {
        overlay->SetVisibility(visible);
    }
}

bool CompareScene::IsGridExist(int gridNumber) const {
    return imageGridMap.count(gridNumber) != 0;
}

void CompareScene::ToggleImageGrid(int gridNumber, bool visible) {
    // The lookup enters an unknown number with the id 0, on purpose: the host asks IsGridExist
    // afterwards and is told yes.
    uint64 const id = imageGridMap[gridNumber];
    if (!kernelScene) {
        return;
    }
    if (du::SmartPtr<qzk::ecad::Overlay> const overlay = kernelScene->FindOverlay(id)) {
        overlay->SetVisibility(visible);
    }
}

void CompareScene::HideImageGrids() {
    if (!kernelScene) {
        return;
    }
    for (auto const& [number, id] : imageGridMap) {
        if (du::SmartPtr<qzk::ecad::Overlay> const overlay = kernelScene->FindOverlay(id)) {
            overlay->SetVisibility(false);
        }
    }
}

void CompareScene::RemoveImageGrids() {
    if (kernelScene) {
        for (auto const& [number, id] : imageGridMap) {
            kernelScene->RemoveOverlay(id);
        }
    }
    imageGridMap.clear();
}

void CompareScene::SetImageGridColor(dg::Color const& color) {
    imageGridColor = color;
    if (!kernelScene) {
        return;
    }
    for (auto const& [number, id] : imageGridMap) {
        if (du::SmartPtr<qzk::ecad::Overlay> const overlay = kernelScene->FindOverlay(id)) {
            overlay->SetColor(color);
        }
    }
}

} // namespace qzkapp::ecad

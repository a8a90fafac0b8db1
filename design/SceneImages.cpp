// Images and compare areas of a design scene.
#include "design/Scene.h"

#include "dg/Color.h"
#include "dg/DMat33.h"
#include "dp/ReadWriteLock.h"
#include "du/Localizer.h"
#include "du/StringConversion.h"
#include "qzk/AnnoSet.h"
#include "qzk/AnnoSetVisitor.h"
#include "qzk/ecad/ImageAnnotation.h"
#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/PrefKeys.h"
#include "qzk/ecad/Scene.h"
#include "scene/AdditiveRandom.h"

#include <algorithm>

namespace qzkapp::ecad {
namespace {

using Rows = std::vector<qzk::ecad::AnnoCVInfo>;

// Hands one row's colour and visibility to the image of its id, without an undo of its own:
// the caller records the change of the rows.
class AnnoSetVisitor : public qzk::AnnoSetVisitor {
public:
    explicit AnnoSetVisitor(qzk::ecad::AnnoCVInfo const& row)
        : qzk::AnnoSetVisitor(false), row_(row) {}

    bool VisitAnnotation(du::SmartPtr<qzk::Annotation> const& annotation) override {
        auto image = du::DynamicCast<qzk::ecad::ImageAnnotation>(annotation);
        if (!image || image->Id() != row_.id) {
            return true;
        }
        if (image->IsVisible() != row_.visible) {
            if (row_.visible) {
                image->Show(false, du::SmartPtr<qzk::Operation>());
            } else {
                image->Hide(false, du::SmartPtr<qzk::Operation>(), false);
            }
        }
        if (image->imageColor != row_.color) {
            image->imageColor = row_.color;
        }
        return true;
    }

private:
    qzk::ecad::AnnoCVInfo row_;
};

// Visibility from the images' preferences; the colour read with it is not used, an image keeps
// its own.
bool DefaultImageVisibility() {
    unsigned int color = 0x01FFFFFFu;
    bool visible = true;
    qzk::ecad::AnnoCVInfo::GetDefaultColorVis(qzk::ecad::PrefKeys::IMAGES(), color, visible);
    return visible;
}

Rows::iterator FindRow(Rows& rows, uint64 id) {
    return std::find_if(rows.begin(), rows.end(),
                        [id](qzk::ecad::AnnoCVInfo const& row) { return row.id == id; });
}

} // namespace

uint64 Scene::_DrawFreeImageId(AdditiveRandom const& random, bool nonZero) const {
    for (;;) {
        uint64 const id = random.NextId();
        bool const taken =
            std::any_of(imageCV.begin(), imageCV.end(),
                        [id](qzk::ecad::AnnoCVInfo const& row) { return row.id == id; }) ||
            std::find(areaImageIds.begin(), areaImageIds.end(), id) != areaImageIds.end() ||
            (kernelScene && kernelScene->FindOverlay(id));
        if (!taken && (id != 0 || !nonZero)) {
            return id;
        }
    }
}

void Scene::ImageCreated(du::SmartPtr<qzk::ecad::ImageAnnotation> const& image) {
    static AdditiveRandom const random;
    dp::WriteLocker lock(GetRWLock());
    int const kind = image->imageKind;
    du::SmartPtr<qz2d::ecad::Design> const picture = image->GetRep();
    if (picture && kind == 2) {
        AreaImageCreated(image);
        return;
    }
    std::wstring const name = du::Utf8ToWideStr(image->GetImageName());
    uint64 id = image->Id();
    unsigned int const parameter = image->overlayParameter;
    if (!picture || !kernelScene) {
        return;
    }
    if (id == 0) {
        id = _DrawFreeImageId(random, true);
    }
    // Kinds above 2 are read as images too; no design makes them.
    qzk::ecad::AnnoCVInfo const row(id, name.c_str(), image->imageColor, DefaultImageVisibility(),
                                    qzk::ecad::AnnoCVInfo::eImage);
    imageCV.push_back(row);
    du::SmartPtr<qzk::ecad::Overlay> overlay = kernelScene->CreateOverlay(
        picture, id, row.visible, row.GetColor(), kind == 1 ? 1u : 0u, dg::DMat33::IDENTITY,
        parameter, image->GetOverlayName(), kind == 0);
    if (overlay) {
        overlay->kindOneFlag = kind == 1;
    }
    _PostEvent(IMAGE_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceScene));
}

void Scene::AreaImageCreated(du::SmartPtr<qzk::ecad::ImageAnnotation> const& image) {
    static AdditiveRandom const random;
    dp::WriteLocker lock(GetRWLock());
    du::SmartPtr<qz2d::ecad::Design> const picture = image->GetRep();
    uint64 id = image->Id();
    if (id == 0) {
        id = _DrawFreeImageId(random, true);
    }
    unsigned int const parameter = image->overlayParameter;
    du::Localizer const localizer("qzecad:qzecadStrings");
    std::wstring const label = du::Utf8ToWideStr(
        localizer.LocalizeMessage("ColorVisAreas", static_cast<du::Localizer::ActionOnFailure>(0)));
    bool const visible = DefaultImageVisibility();
    if (compareAreasImageId == 0) {
        compareAreasImageId = _DrawFreeImageId(random, false);
        imageCV.emplace_back(compareAreasImageId, label.c_str(), image->imageColor, visible,
                             qzk::ecad::AnnoCVInfo::eImage);
    }
    auto const shared = FindRow(imageCV, compareAreasImageId);
    areaImageIds.push_back(id);
    if (!kernelScene || shared == imageCV.end()) {
        return;
    }
    kernelScene->CreateOverlay(picture, id, shared->visible, shared->GetColor(), 2,
                               dg::DMat33::IDENTITY, parameter, image->GetOverlayName(), false);
    _PostEvent(IMAGE_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceScene));
}

void Scene::ImageModified(du::SmartPtr<qzk::ecad::ImageAnnotation> const& image) {
    dp::WriteLocker lock(GetRWLock());
    uint64 const id = image->Id();
    auto found = imageCV.end();
    auto shared = imageCV.end();
    for (auto row = imageCV.begin(); row != imageCV.end(); ++row) {
        if (row->id == compareAreasImageId) {
            shared = row;
        }
        if (row->id == id) {
            found = row;
            break;
        }
    }
    if (found != imageCV.end()) {
        found->name = du::Utf8ToWideStr(image->GetImageName());
        found->visible = image->IsVisible();
        if (kernelScene) {
            kernelScene->ApplyImageColorVis(imageCV);
        }
    } else if (shared != imageCV.end() &&
               std::find(areaImageIds.begin(), areaImageIds.end(), id) != areaImageIds.end()) {
        // The shared row takes the name of the area image changed last, until the next change.
        Rows const one{qzk::ecad::AnnoCVInfo(id, L"", shared->color, image->IsVisible(),
                                             qzk::ecad::AnnoCVInfo::eImage)};
        if (kernelScene) {
            kernelScene->ApplyImageColorVis(one);
        }
        shared->name = du::Utf8ToWideStr(image->GetImageName());
    }
    _PostEvent(IMAGE_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceScene));
}

void Scene::RemoveImage(uint64 id) {
    dp::WriteLocker lock(GetRWLock());
    if (auto const area = std::find(areaImageIds.begin(), areaImageIds.end(), id);
        area != areaImageIds.end()) {
        if (kernelScene) {
            kernelScene->RemoveOverlay(id);
        }
        areaImageIds.erase(area);
        if (!areaImageIds.empty()) {
            return;
        }
        // The last area image takes the shared row with it.
        id = compareAreasImageId;
        compareAreasImageId = 0;
    }
    auto const row = FindRow(imageCV, id);
    if (row == imageCV.end()) {
        return;
    }
    // Also for the shared row, which names no overlay: the kernel ignores the id.
    if (kernelScene) {
        kernelScene->RemoveOverlay(id);
    }
    selectedOverlays.erase(id);
    imageCV.erase(row);
    _PostEvent(IMAGE_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceScene));
}

void Scene::RenameImage(uint64 id, std::wstring const& name) {
    dp::WriteLocker lock(GetRWLock());
    auto const row = FindRow(imageCV, id);
    if (row == imageCV.end()) {
        return;
    }
    row->name = name;
    _PostEvent(IMAGE_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceScene));
}

void Scene::GetImageColorVisInfo(std::vector<qzk::ecad::AnnoCVInfo>& out) const {
    dp::ReadLocker lock(GetRWLock());
    out = imageCV;
}

void Scene::SetImageColorVisInfo(std::vector<qzk::ecad::AnnoCVInfo> const& rows,
                                 ChangeSource source) {
    if (!qzk::ecad::AnnoCVInfo::AreDifferent(imageCV, rows)) {
        return;
    }
    auto* designScene = dynamic_cast<qzk::ecad::Scene*>(kernelScene.Get());
    du::SmartPtr<qzk::AnnoSet> annoSet;
    if (designScene != nullptr) {
        designScene->GetAnnoSet(annoSet);
    }
    Rows toKernel;
    if (annoSet) {
        auto present = imageCV.begin();
        for (auto given = rows.begin(); present != imageCV.end() && given != rows.end();
             ++present, ++given) {
            if (!present->SameColorVis(*given)) {
                AnnoSetVisitor visitor(*given);
                annoSet->Visit(visitor);
            }
            if (given->id == compareAreasImageId) {
                // The shared row reaches each area image; the filler name is never kept.
                for (uint64 const area : areaImageIds) {
                    toKernel.emplace_back(area, L"blabla", given->color, given->visible,
                                          qzk::ecad::AnnoCVInfo::eImage);
                }
            } else {
                toKernel.push_back(*given);
            }
        }
    }
    qzk::ecad::AnnoCVInfo::AssignCVAttrs(imageCV, rows);
    if (designScene != nullptr) {
        designScene->ApplyImageColorVis(toKernel);
    }
    _PostEvent(IMAGE_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

void Scene::UpdateImageCVInfo(std::vector<qzk::ecad::AnnoCVInfo> const& rows, ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    if (!qzk::ecad::AnnoCVInfo::AreDifferent(imageCV, rows)) {
        return;
    }
    qzk::ecad::AnnoCVInfo::AssignCVAttrs(imageCV, rows);
    if (kernelScene) {
        kernelScene->OverlayColorVisChanged(imageCV);
    }
    _PostEvent(IMAGE_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

} // namespace qzkapp::ecad

#include "qzk/ecad/ImageAnnotation.h"

namespace qzk::ecad {
namespace {
bool const registered =
    ClassType::RegisterClass(classid::EcadImageAnnotation, {classid::Annotation});
} // namespace

du::SmartPtr<ImageAnnotation> ImageAnnotation::Create(Params const& params) {
    return du::SmartPtr<ImageAnnotation>(new ImageAnnotation(params));
}

ImageAnnotation::ImageAnnotation(Params const& params)
    : Annotation(params.id, params.viewClassId), imageKind(params.imageKind),
      imageColor(params.imageColor), overlayParameter(params.overlayParameter), rep_(params.rep),
      imageName_(params.imageName), overlayName_(params.overlayName) {
    StoreVisible(params.visible);
}

ImageAnnotation::~ImageAnnotation() = default;

ClassType const& ImageAnnotation::GetClassType() const {
    static ClassType const type(classid::EcadImageAnnotation);
    return type;
}

du::Symbol ImageAnnotation::GetDebugClassName() const {
    return du::Symbol("qzk::ecad::ImageAnnotation");
}

du::SmartPtr<qz2d::ecad::Design> ImageAnnotation::GetRep() const {
    std::lock_guard lock(imageMutex_);
    return rep_;
}

std::string ImageAnnotation::GetImageName() const {
    std::lock_guard lock(imageMutex_);
    return imageName_;
}

std::string ImageAnnotation::GetOverlayName() const {
    return overlayName_;
}

void ImageAnnotation::SetRep(du::SmartPtr<qz2d::ecad::Design> const& rep) {
    du::SmartPtr<qz2d::ecad::Design> old;
    std::lock_guard lock(imageMutex_);
    old = rep_;
    rep_ = rep;
}

void ImageAnnotation::SetImageName(std::string const& name) {
    std::lock_guard lock(imageMutex_);
    imageName_ = name;
}

void ImageAnnotation::_OnDestroy() {
    SetRep(nullptr);
    Annotation::_OnDestroy();
}

} // namespace qzk::ecad

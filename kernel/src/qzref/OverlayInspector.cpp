#include "qzref/OverlayInspector.h"

#include "qz2d/ecad/Design.h"

#include <mutex>

namespace qzref {

unsigned int OverlayInspector::GetColorWord() const {
    std::lock_guard lock(overlay_.mutex_);
    return overlay_.color_;
}

bool OverlayInspector::IsVisible() const {
    std::lock_guard lock(overlay_.mutex_);
    return overlay_.visible_;
}

dg::DMat33 OverlayInspector::GetTransform() const {
    std::lock_guard lock(overlay_.mutex_);
    return overlay_.matrix_;
}

dg::DPoint2D OverlayInspector::GetCenter() const {
    return overlay_._GetCenter();
}

std::string OverlayInspector::GetName() const {
    std::lock_guard lock(overlay_.mutex_);
    return overlay_.name_;
}

std::vector<OverlayInspector::Mark> OverlayInspector::GetMarks() const {
    std::lock_guard lock(overlay_.mutex_);
    return overlay_.marks_;
}

du::SmartPtr<qzk::ecad::EcadPCBData> OverlayInspector::GetBoard() const {
    return overlay_.board_;
}

du::SmartPtr<qz2d::ecad::Design> OverlayInspector::GetPicture() const {
    return du::SmartPtr<qz2d::ecad::Design>(
        dynamic_cast<qz2d::ecad::Design*>(overlay_.picture_.Get()));
}

unsigned int OverlayInspector::GetParameter() const {
    return overlay_.parameter_;
}

bool OverlayInspector::GetPictureFlag() const {
    return overlay_.pictureFlag_;
}

} // namespace qzref

// What a test reads back from a kernel scene's overlay; reached through qzref::Inspect.
#pragma once

#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "du/SmartPtr.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/Overlay.h"

#include <string>
#include <vector>

namespace qz2d::ecad {
class Design;
}

namespace qzref {

class OverlayInspector {
public:
    using Mark = qzk::ecad::Overlay::Mark;

    explicit OverlayInspector(qzk::ecad::Overlay& overlay) noexcept : overlay_(overlay) {}

    unsigned int GetColorWord() const;
    bool IsVisible() const;
    dg::DMat33 GetTransform() const;
    dg::DPoint2D GetCenter() const;
    std::string GetName() const;
    // Marks in the order they were made; a new mark of an item replaces its old one.
    std::vector<Mark> GetMarks() const;
    du::SmartPtr<qzk::ecad::EcadPCBData> GetBoard() const;
    du::SmartPtr<qz2d::ecad::Design> GetPicture() const;
    // The remaining arguments of the picture form of CreateOverlay.
    unsigned int GetParameter() const;
    bool GetPictureFlag() const;

private:
    qzk::ecad::Overlay& overlay_;
};

} // namespace qzref

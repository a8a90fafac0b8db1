// An annotation that shows a raster image: its picture (a qz2d::ecad::Design), its kind (0 and 1
// plain images, 2 a compare area), its colour word, the overlay parameter handed on when the
// picture is shown, and its names.
//
// The kind, colour and parameter are plain public fields, as the layer reads and writes them
// directly; the set's owner changes them only while no one else reads them, or tells the set
// that it changed afterwards.
#pragma once

#include "du/SmartPtr.h"
#include "qz2d/ecad/Design.h"
#include "qzk/Annotation.h"

#include <string>

namespace qzk::ecad {

class ImageAnnotation : public Annotation {
public:
    struct Params {
        uint64 id = 0;
        du::SmartPtr<qz2d::ecad::Design> rep;
        std::string imageName;
        std::string overlayName;
        int imageKind = 0;
        unsigned int imageColor = 0x01FFFFFF;
        unsigned int overlayParameter = 0;
        bool visible = true;
        // 0: no view class.
        unsigned int viewClassId = 0;
    };

    static du::SmartPtr<ImageAnnotation> Create(Params const& params);
    ~ImageAnnotation() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // Null for an image without a picture.
    du::SmartPtr<qz2d::ecad::Design> GetRep() const;
    virtual std::string GetImageName() const;
    virtual std::string GetOverlayName() const;

    // Kernel side and controls.
    void SetRep(du::SmartPtr<qz2d::ecad::Design> const& rep);
    void SetImageName(std::string const& name);

    int imageKind;
    unsigned int imageColor;
    unsigned int overlayParameter;

protected:
    explicit ImageAnnotation(Params const& params);
    void _OnDestroy() override;

private:
    mutable std::mutex imageMutex_;
    du::SmartPtr<qz2d::ecad::Design> rep_;
    std::string imageName_;
    std::string const overlayName_;
};

} // namespace qzk::ecad

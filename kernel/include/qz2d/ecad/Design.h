// The picture of an image: a grid of colour words, the design that image overlays are made of.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/Object.h"

#include <string>
#include <vector>

namespace qz2d::ecad {

class Design : public qzk::Object {
public:
    // pixels are row-major from the top left, width * height colour words; an empty list is a
    // picture of one colour (fill). Returns null when pixels is neither empty nor of that size.
    static du::SmartPtr<Design> Create(std::string name, unsigned int width, unsigned int height,
                                       std::vector<unsigned int> pixels, unsigned int fill);
    ~Design() override;

    qzk::ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    std::string const& GetName() const { return name_; }
    unsigned int GetWidth() const { return width_; }
    unsigned int GetHeight() const { return height_; }
    // The colour word at (x, y); 0 outside the picture.
    unsigned int GetPixel(unsigned int x, unsigned int y) const;

protected:
    void _OnDestroy() override;

private:
    Design(std::string name, unsigned int width, unsigned int height,
           std::vector<unsigned int> pixels, unsigned int fill);

    std::string name_;
    unsigned int width_;
    unsigned int height_;
    std::vector<unsigned int> pixels_;
    unsigned int fill_;
};

} // namespace qz2d::ecad

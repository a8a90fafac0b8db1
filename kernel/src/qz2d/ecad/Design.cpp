#include "qz2d/ecad/Design.h"

namespace qz2d::ecad {
namespace {
bool const registered =
    qzk::ClassType::RegisterClass(qzk::classid::Qz2dDesign, {qzk::classid::Object});
} // namespace

du::SmartPtr<Design> Design::Create(std::string name, unsigned int width, unsigned int height,
                                    std::vector<unsigned int> pixels, unsigned int fill) {
    if (!pixels.empty() && pixels.size() != static_cast<std::size_t>(width) * height) {
        return nullptr;
    }
    return du::SmartPtr<Design>(
        new Design(std::move(name), width, height, std::move(pixels), fill));
}

Design::Design(std::string name, unsigned int width, unsigned int height,
               std::vector<unsigned int> pixels, unsigned int fill)
    : name_(std::move(name)), width_(width), height_(height), pixels_(std::move(pixels)),
      fill_(fill) {}

Design::~Design() = default;

qzk::ClassType const& Design::GetClassType() const {
    static qzk::ClassType const type(qzk::classid::Qz2dDesign);
    return type;
}

du::Symbol Design::GetDebugClassName() const {
    return du::Symbol("qz2d::ecad::Design");
}

unsigned int Design::GetPixel(unsigned int x, unsigned int y) const {
    if (x >= width_ || y >= height_) {
        return 0;
    }
    return pixels_.empty() ? fill_ : pixels_[static_cast<std::size_t>(y) * width_ + x];
}

void Design::_OnDestroy() {}

} // namespace qz2d::ecad

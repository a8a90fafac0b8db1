#include "qzk/ecad/OverlayLoaderEvent.h"

namespace qzk::ecad {

OverlayLoaderEvent::OverlayLoaderEvent(wchar_t const* path, GerberPrefs const& gerberPrefs,
                                       du::Symbol const& type, bool flag)
    : path_(path == nullptr ? L"" : path), gerberPrefs_(gerberPrefs), type_(type), flag_(flag) {}

OverlayLoaderEvent::~OverlayLoaderEvent() = default;

} // namespace qzk::ecad

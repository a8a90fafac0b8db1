// The load of a Gerber overlay: a design load that carries the Gerber preferences it is to be
// read under, the overlay's path, a type symbol and a flag. The loader completes it as any design
// load; the event only carries the values for whoever made it.
#pragma once

#include "du/Symbol.h"
#include "qzk/ecad/GerberPrefs.h"
#include "qzloader/EcadDesignLoaderEvent.h"

#include <string>

namespace qzk::ecad {

class OverlayLoaderEvent : public qzloader::EcadDesignLoaderEvent {
public:
    // A null path is an empty one.
    OverlayLoaderEvent(wchar_t const* path, GerberPrefs const& gerberPrefs, du::Symbol const& type,
                       bool flag);
    ~OverlayLoaderEvent() override;

    GerberPrefs const& GetGerberPrefs() const { return gerberPrefs_; }
    std::wstring const& GetPath() const { return path_; }
    du::Symbol const& GetType() const { return type_; }
    bool GetFlag() const noexcept { return flag_; }

private:
    std::wstring const path_;
    GerberPrefs const gerberPrefs_;
    du::Symbol const type_;
    bool const flag_;
};

} // namespace qzk::ecad

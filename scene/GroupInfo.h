// What the host tells of one group: its name (the key), a flag handed on to the kernel, and its
// colour.
#pragma once

#include "component/ComponentExport.h"
#include "dg/Color.h"
#include "du/Symbol.h"

namespace qzkapp::ecad {

class QZECAD_EXPORT GroupInfo {
public:
    // An empty name and opaque black. flag starts false: it has no meaningful default, but a
    // bool left indeterminate could not even be copied safely.
    GroupInfo();
    GroupInfo(du::Symbol const& name, bool flag, dg::Color const& color);
    GroupInfo(GroupInfo const&);
    GroupInfo(GroupInfo&&) noexcept;
    GroupInfo& operator=(GroupInfo const&);
    GroupInfo& operator=(GroupInfo&&) noexcept;
    ~GroupInfo();

    du::Symbol name;
    bool flag;
    dg::Color color;
};

} // namespace qzkapp::ecad

// What the four board scenes share: the board's colour set, isolation and the two board switches,
// kept and told the same way whichever scene they sit in.
//
// A mix-in over Scene or CompareScene so each board scene keeps its place in the hierarchy; the
// bodies live in the source and are instantiated there for the combinations the kernel has.
#pragma once

#include "qzk/ecad/AppearanceItem.h"

#include <vector>

namespace qzref {
template <class Base, class ColorSet> class BoardSceneInspector;
}

namespace qzk::ecad {

template <class Base, class ColorSet> class BoardScene : public Base {
    template <class, class> friend class qzref::BoardSceneInspector;

public:
    void SetIsolated(std::vector<AppearanceItem> const& items);
    void ClearIsolated();
    void SetIsolateOnlyVisible(bool onlyVisible);
    void SetShowLogicalConnection(bool show);

protected:
    using Base::Base;

    // Journals SetColorVisInfo, keeps a copy of its own (so later changes by the caller do not
    // reach the kernel) and tells every call with the scene's notice, changed or not.
    void _SetColorVis(ColorSet const& set, unsigned char noticeId);

    int _AppearanceAspect(typename Base::Switch which, bool& schematic) const override;

private:
    ColorSet colorVis_;
    std::vector<AppearanceItem> isolated_;
    bool isolating_ = false;
    bool isolateOnlyVisible_ = false;
    bool showLogicalConnection_ = false;
};

} // namespace qzk::ecad

#include "qzk/ecad/SublayerPCB_CV.h"

#include "PrefRead.h"
#include "qzk/Preferences.h"
#include "qzk/ecad/DefaultColorVisibility.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"

#include <vector>

namespace qzk::ecad {
namespace {

constexpr short kFirstPrefLayer = -16;
constexpr short kLastPrefLayer = 64;
constexpr short kLastPrefSublayer = 32;

struct PrefKeySet {
    short layer;
    short sublayer;
    du::Symbol color;
    du::Symbol visible;
};

// Built once: the probe of GetPrefs runs at every load and should not intern keys each time.
std::vector<PrefKeySet> const& AllPrefKeys() {
    static std::vector<PrefKeySet> const keys = [] {
        std::vector<PrefKeySet> out;
        for (short layer = kFirstPrefLayer; layer <= kLastPrefLayer; ++layer) {
            for (short sublayer = 0; sublayer <= kLastPrefSublayer; ++sublayer) {
                std::string const node = SublayerPCB_CV::PrefNode(layer, sublayer);
                out.push_back(
                    {layer, sublayer, du::Symbol(node + "/color"), du::Symbol(node + "/visible")});
            }
        }
        return out;
    }();
    return keys;
}

} // namespace

SublayerPCB_CV::~SublayerPCB_CV() = default;

std::string SublayerPCB_CV::PrefNode(short layer, short sublayer) {
    return "Ecad/PCB/sublayer/" + std::to_string(layer) + "/" + std::to_string(sublayer);
}

void SublayerPCB_CV::GetPrefs(SublayerPCB_CVSet& out) {
    out.clear();
    du::SmartPtr<qzk::Preferences> const prefs = prefread::Prefs();
    for (PrefKeySet const& keys : AllPrefKeys()) {
        SublayerPCB_CV cv(SublayerPCBBase(keys.layer, keys.sublayer));
        bool const hasColor = prefread::ColorWord(prefs.Get(), keys.color, cv.color);
        bool const hasVisible = prefread::Flag(prefs.Get(), keys.visible, cv.visible);
        if (hasColor || hasVisible) {
            out.insert(out.end(), cv);
        }
    }
}

void SublayerPCB_CV::GetDefaultColorVis(du::SmartPtr<EcadPCBData> const& board,
                                        SublayerPCB_CVSet const& prefs, SublayerPCB_CV& cv,
                                        bool overlayData, bool factoryDefaults) {
    if (board) {
        if (SublayerPCB const* own = board->FindSublayer(cv.layer, cv.sublayer)) {
            cv.color = own->color;
            cv.visible = DefaultColorVisibility::GetVisibility(cv.layer, cv.sublayer, own->visible);
        }
    }
    if (overlayData || factoryDefaults) {
        return;
    }
    if (auto const stored = prefs.find(cv); stored != prefs.end()) {
        cv.color = stored->color;
        cv.visible = stored->visible;
    }
}

bool SublayerPCB_CV::AreDifferent(SublayerPCB_CVSet const& a, SublayerPCB_CVSet const& b) {
    if (a.size() != b.size()) {
        return true;
    }
    for (auto x = a.begin(), y = b.begin(); x != a.end(); ++x, ++y) {
        if (!(static_cast<SublayerPCBBase const&>(*x) == *y) || !x->SameColorVis(*y)) {
            return true;
        }
    }
    return false;
}

} // namespace qzk::ecad

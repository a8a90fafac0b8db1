#include "qzref/RecordFmt.h"

#include "dg/Color.h"
#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "qzk/ecad/ItemContainer.h"
#include "qzk/ecad/SublayerPCBCompare.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/DesignObjects.h"

namespace qzref {
namespace {

template <class Range> std::string List(Range const& range) {
    std::string out = "[";
    bool first = true;
    for (auto const& entry : range) {
        if (!first) {
            out += ' ';
        }
        first = false;
        out += Fmt(entry);
    }
    return out + "]";
}

std::string Vis(bool visible) {
    return visible ? "visible" : "hidden";
}

std::string Pair(qzk::ecad::SublayerPCBBase const& key) {
    return "(" + std::to_string(key.layer) + "," + std::to_string(key.sublayer) + ")";
}

} // namespace

std::string Fmt(dg::Color const& color) {
    return Fmt(ColorWord{color.GetAsHexUI()});
}

std::string Fmt(dg::DPoint2D const& point) {
    return "(" + Fmt(point.x) + "," + Fmt(point.y) + ")";
}

std::string Fmt(dg::DMat33 const& matrix) {
    std::string out = "[";
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            if (row + column != 0) {
                out += ' ';
            }
            out += Fmt(matrix(row, column));
        }
    }
    return out + "]";
}

std::string Fmt(qzk::ecad::AppearanceItem const& item) {
    return DesignObjects::NameOf(item.object);
}

std::string Fmt(std::vector<qzk::ecad::AppearanceItem> const& items) {
    return List(items);
}

std::string Fmt(qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> const& items) {
    std::string out = "[";
    bool first = true;
    for (auto const& item : items) {
        if (!first) {
            out += ' ';
        }
        first = false;
        out += Fmt(static_cast<qzk::ecad::AppearanceItem const&>(item));
    }
    return out + "]";
}

std::string Fmt(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> const& items) {
    std::string out = "[";
    bool first = true;
    for (auto const& item : items) {
        if (!first) {
            out += ' ';
        }
        first = false;
        out += Fmt(static_cast<qzk::ecad::AppearanceItem const&>(item));
    }
    return out + "]";
}

std::string Fmt(qzk::ecad::ColorVisInfo const& info) {
    return "{" + Fmt(ColorWord{info.color}) + " " + Vis(info.visible) + "}";
}

std::string Fmt(qzk::ecad::SublayerPCB_CV const& info) {
    return "(" + std::to_string(info.layer) + "," + std::to_string(info.sublayer) + " " +
           Fmt(ColorWord{info.color}) + " " + Vis(info.visible) + ")";
}

std::string Fmt(qzk::ecad::SublayerPCB_CVSet const& set) {
    return List(set);
}

std::string Fmt(qzk::ecad::GroupCVInfo const& info) {
    return Fmt(info.name.str()) + " " + Fmt(ColorWord{info.color}) + " " + Vis(info.visible);
}

std::string Fmt(qzk::ecad::GroupCVInfoSet const& set) {
    return List(set);
}

std::string Fmt(qzk::ecad::AnnoCVInfo const& info) {
    return "#" + std::to_string(info.id) + " " + Fmt(info.name) + " " + Fmt(ColorWord{info.color}) +
           " " + Vis(info.visible);
}

std::string Fmt(std::vector<qzk::ecad::AnnoCVInfo> const& list) {
    return List(list);
}

std::string Fmt(qzk::ecad::CompareColorVis const& info) {
    std::string out;
    if (auto const* pair = dynamic_cast<qzk::ecad::SublayerPCBCompare const*>(&info)) {
        out = Pair(pair->firstSublayer) + "/" + Pair(pair->secondSublayer);
    }
    return out + "{" + Fmt(ColorWord{info.firstColor}) + " " + Fmt(ColorWord{info.secondColor}) +
           " " + Fmt(ColorWord{info.commonColor}) + " mode" +
           std::to_string(static_cast<unsigned int>(info.showMode)) + " " +
           (info.flag ? "flag" : "noflag") + " " + Vis(info.visible) + "}";
}

std::string Fmt(qzk::ecad::CompareColorVisPtrVec const& list) {
    std::string out = "[";
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (i != 0) {
            out += ' ';
        }
        out += list[i] ? Fmt(*list[i]) : std::string("null");
    }
    return out + "]";
}

std::string Fmt(std::map<short, qzk::ecad::ColorVisInfo> const& map) {
    std::string out = "[";
    bool first = true;
    for (auto const& [handle, info] : map) {
        if (!first) {
            out += ' ';
        }
        first = false;
        out += std::to_string(handle) + ":" + Fmt(info);
    }
    return out + "]";
}

std::string Fmt(std::map<short, du::SmartPtr<qzk::ecad::CompareColorVis>> const& map) {
    std::string out = "[";
    bool first = true;
    for (auto const& [handle, info] : map) {
        if (!first) {
            out += ' ';
        }
        first = false;
        out += std::to_string(handle) + ":" + (info ? Fmt(*info) : std::string("null"));
    }
    return out + "]";
}

} // namespace qzref

// Journal formatting of the kernel's colour records and items (see qzref/Journal.h).
//     Color, ColorVisInfo    0x010000FF / {0x010000FF visible}
//     items                   the name of their object (DesignObjects::NameOf)
//     SublayerPCB_CV          (4,14 0x010000FF visible)
//     GroupCVInfo             "name" 0x010000FF hidden
//     AnnoCVInfo              #id "name" 0x010000FF visible
//     CompareColorVis         {0x010000DC 0x01DC0000 0xFFFFFFFF mode0 flag visible} ("noflag"
//                             when the flag is off), with the pair ahead for a sublayer
//                             entry: (4,14)/(4,14){...}
// Sets and lists are written as [a b c], in their own order.
#pragma once

#include "du/SmartPtr.h"
#include "qzref/Journal.h"

#include <map>
#include <string>
#include <vector>

namespace dg {
class Color;
class DPoint2D;
class DMat33;
} // namespace dg

namespace qzk::ecad {
class AppearanceItem;
struct ColorVisInfo;
class SublayerPCB_CV;
class SublayerPCB_CVSet;
struct GroupCVInfo;
class GroupCVInfoSet;
struct AnnoCVInfo;
struct CompareColorVis;
class CompareColorVisPtrVec;
class HighlightItem;
class IsolateItem;
template <class T> class ItemContainer;
} // namespace qzk::ecad

namespace qzref {

std::string Fmt(dg::Color const& color);
std::string Fmt(dg::DPoint2D const& point);
std::string Fmt(dg::DMat33 const& matrix);
std::string Fmt(qzk::ecad::AppearanceItem const& item);
std::string Fmt(std::vector<qzk::ecad::AppearanceItem> const& items);
std::string Fmt(qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> const& items);
std::string Fmt(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> const& items);
std::string Fmt(qzk::ecad::ColorVisInfo const& info);
std::string Fmt(qzk::ecad::SublayerPCB_CV const& info);
std::string Fmt(qzk::ecad::SublayerPCB_CVSet const& set);
std::string Fmt(qzk::ecad::GroupCVInfo const& info);
std::string Fmt(qzk::ecad::GroupCVInfoSet const& set);
std::string Fmt(qzk::ecad::AnnoCVInfo const& info);
std::string Fmt(std::vector<qzk::ecad::AnnoCVInfo> const& list);
std::string Fmt(qzk::ecad::CompareColorVis const& info);
std::string Fmt(qzk::ecad::CompareColorVisPtrVec const& list);
// Maps of schematic handles, as [handle:value ...].
std::string Fmt(std::map<short, qzk::ecad::ColorVisInfo> const& map);
std::string Fmt(std::map<short, du::SmartPtr<qzk::ecad::CompareColorVis>> const& map);

} // namespace qzref

// The list work of display priority, written once for every scene that keeps a draw order (a
// scene keeps one list; the board-against-schematic compare keeps two, one per side): the undo
// entries' names, a move, the preview of a layer on top, and the merge of a stored order.
#pragma once

#include "du/SmartPtr.h"
#include "du/Types.h"

#include <string>
#include <vector>

namespace qzk {
class Operation;
namespace ecad {
class BaseScene;
}
} // namespace qzk

namespace qzkapp::ecad {

// A new undo entry for moving the layer named layerName (UTF-8), in the scene's name.
du::SmartPtr<qzk::Operation> NewMoveLayerOperation(std::string const& layerName,
                                                   du::SmartPtr<qzk::ecad::BaseScene> const& scene);
// A new undo entry for a reset to the default order.
du::SmartPtr<qzk::Operation>
NewResetDrawOrderOperation(du::SmartPtr<qzk::ecad::BaseScene> const& scene);

// Moves the entry at oldIndex to index, which counts in the list without the layer; past the
// shortened list's end means at its end.
void MoveLayerTo(std::vector<short>& list, uint64 oldIndex, uint64 index);

// Brings layer to the front of order; false, with order as it was, when layer isn't there or
// is first already (the first entry isn't looked at) or the list is shorter than two.
bool PreviewLayerOnTop(std::vector<short>& order, short layer);

// The layers of order that present holds, in order's order and each once, followed by the rest
// of present in its present order. present is used up.
std::vector<short> MergeDrawOrder(std::vector<short> const& order, std::vector<short>& present);

} // namespace qzkapp::ecad

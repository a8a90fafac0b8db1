// The board's isolate set: which objects the display is narrowed to.
#include "board/PCBSceneHelper.h"

#include "qzk/Scene.h"
#include "qzk/SelectionItem.h"
#include "qzk/ecad/SelectionItem.h"
#include "scene/EcadItemKinds.h"

namespace qzkapp::ecad {
namespace {

// The set's key for an item; the name takes no part in comparisons.
qzk::ecad::IsolateItem IsolateKey(du::SmartPtr<qzk::ecad::SelectionItem> const& item,
                                  du::Symbol const& name) {
    return qzk::ecad::IsolateItem(qzk::ecad::AppearanceItem(item), name);
}

} // namespace

uint64 PCBSceneHelper::_AddToIsolated(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                      du::SmartPtr<qzk::Scene> const& scene) {
    uint64 added = 0;
    for (du::SmartPtr<qzk::SelectionItem> const& entry : items) {
        auto item = AsEcadItem(entry);
        if (!item) {
            continue;
        }
        // A present entry keeps its first name.
        if (isolated.insert(IsolateKey(item, du::Symbol(item->GetName(scene)))).second) {
            ++added;
        }
    }
    return added;
}

uint64 PCBSceneHelper::RemoveIsolates(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                      du::SmartPtr<qzk::Scene> const& scene) {
    uint64 removed = 0;
    for (du::SmartPtr<qzk::SelectionItem> const& entry : items) {
        auto item = AsEcadItem(entry);
        if (!item) {
            continue;
        }
        removed += isolated.erase(IsolateKey(item, du::Symbol(item->GetName(scene))));
    }
    return removed;
}

uint64 PCBSceneHelper::_ClearIsolated() {
    uint64 const count = isolated.size();
    isolated.clear();
    return count;
}

void PCBSceneHelper::GetIsolatedAppearances(std::vector<qzk::ecad::AppearanceItem>& out) const {
    out.reserve(out.size() + isolated.size());
    for (qzk::ecad::IsolateItem const& entry : isolated) {
        out.emplace_back(entry.object, entry.firstHandle, entry.secondHandle, entry.icm);
    }
}

bool PCBSceneHelper::IsIsolated(du::SmartPtr<qzk::ecad::SelectionItem> const& item) const {
    return item && isolated.contains(qzk::ecad::AppearanceItem(item));
}

unsigned int PCBSceneHelper::GetIsolateCount() const {
    return static_cast<unsigned int>(isolated.size());
}

} // namespace qzkapp::ecad

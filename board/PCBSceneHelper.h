// What a scene needs in order to show a board: the colour and visibility of every sublayer, the
// overlays' colours, the isolate set, the logical connection switch, rotation and flip.
//
// A mix-in beside the scene class: it owns no lock, posts nothing and knows no kernel scene.
// Whatever needs the design is given it as an argument, and the scene that derives from it
// wraps each operation in its lock, the kernel call and the event. The pure operations with a
// body are those the scene wraps: its override locks, calls the body here, and posts.
#pragma once

#include "component/ComponentExport.h"
#include "du/SmartPtr.h"
#include "du/Types.h"
#include "qzk/Operation.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/IsolateItem.h"
#include "qzk/ecad/ItemContainer.h"
#include "qzk/ecad/SublayerPCBBase.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "scene/ChangeSource.h"

#include <set>
#include <string>
#include <vector>

namespace qzk {
class Scene;
class SelectionItem;
class View;
namespace ecad {
class EcadDesignData;
class SelectionItem;
} // namespace ecad
} // namespace qzk

namespace qzkapp::ecad {

class BaseScene;

class QZECAD_EXPORT PCBSceneHelper {
public:
    using DesignData = du::SmartPtr<qzk::ecad::EcadDesignData>;

    PCBSceneHelper();
    PCBSceneHelper(PCBSceneHelper const& other);
    PCBSceneHelper& operator=(PCBSceneHelper const& other);

    virtual ~PCBSceneHelper();
    virtual void GetColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out) const = 0;
    // Replaces the whole set, equal or not; with op, the set before the change is recorded.
    virtual void SetColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                                 du::SmartPtr<qzk::Operation> const& op, ChangeSource source) = 0;
    virtual void ApplyColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                                   du::SmartPtr<qzk::Operation> const& op);
    virtual void GetOverlayColorVisInfo(std::vector<qzk::ecad::AnnoCVInfo>& out) const;
    virtual void UpdateOverlayCVInfo(std::vector<qzk::ecad::AnnoCVInfo> const& list,
                                     ChangeSource source);
    virtual bool GetShowLogicalConnections() const;
    virtual void ToggleShowLogicalConnection() = 0;
    virtual short GetTopLayer() const;
    virtual short GetBottomLayer() const;

protected:
    virtual void _NotifyOverlayColorVisChanged(ChangeSource source);

public:
    // Shows only the named sublayers (layer -1: on every layer) and hides all else, colours
    // kept; not undoable. Board outline sublayer (1, 2) stays on whatever is named. An empty set
    // changes nothing. The read and the write of the set are two critical sections.
    void ForceVisibility(std::set<qzk::ecad::SublayerPCBBase> const& visible);
    // Adds to out the sublayers that the components among items are drawn on; out is not
    // cleared, and items that are no ECAD component are passed over.
    void GetLayersSublayers(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                            std::set<qzk::ecad::SublayerPCBBase>& out);
    unsigned int GetIsolateCount() const;
    // Whatever name the item would have.
    bool IsIsolated(du::SmartPtr<qzk::ecad::SelectionItem> const& item) const;

protected:
    using IsolateContainer = qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>;

    // The isolate set. Items that are no ECAD selection item are passed over and do not count;
    // the counts are of entries really added, removed or dropped.
    uint64 _AddToIsolated(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                          du::SmartPtr<qzk::Scene> const& scene);
    uint64 RemoveIsolates(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                          du::SmartPtr<qzk::Scene> const& scene);
    uint64 _ClearIsolated();
    // Appends one plain item per entry, in the set's order; out is not cleared.
    void GetIsolatedAppearances(std::vector<qzk::ecad::AppearanceItem>& out) const;

    // Orientation. Both add their undo step to op (not recorded here) and turn the view through
    // its workflow manager; both return whether the field changed. A rotation is stored reduced
    // to -359..359 with the sign it was given, and the view turns by the unreduced difference
    // (the other way round while the board is seen from the back); it turns whenever there is a
    // view, so applyToView is not read.
    bool _SetFlip(du::SmartPtr<BaseScene> const& scene, du::SmartPtr<qzk::View> const& view,
                  bool flip, du::SmartPtr<qzk::Operation> const& op, bool applyToView);
    bool _SetRotation(du::SmartPtr<BaseScene> const& scene, du::SmartPtr<qzk::View> const& view,
                      short rotation, du::SmartPtr<qzk::Operation> const& op, bool applyToView);
    bool _GetFlip() const { return flip; }
    short _GetRotation() const { return rotation; }
    static short ReduceRotation(short rotation) { return static_cast<short>(rotation % 360); }

    // out gets exactly the keys of the own set, each with given's entry where given has one.
    void CombineColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& given,
                             qzk::ecad::SublayerPCB_CVSet& out) const;
    // Adds the default entry of every sublayer of a board; out is not cleared, and a key that it
    // holds already keeps its entry.
    void _GetDefaultColorVisInfo(DesignData const& design, qzk::ecad::SublayerPCB_CVSet& out,
                                 bool flag) const;
    void _GetDefaultDrawOrder(DesignData const& design, std::vector<short>& out) const;
    short _GetSublayerHandle(DesignData const& design, short layer, std::string const& name) const;
    std::wstring _GetSublayerLabel(DesignData const& design, short layer, short sublayer);
    short _GetTopLayer(DesignData const& design) const;
    short _GetBottomLayer(DesignData const& design) const;

    qzk::ecad::SublayerPCB_CVSet sublayerCV;
    // In order of creation: the first visible entry is the current overlay.
    std::vector<qzk::ecad::AnnoCVInfo> overlayCV;
    IsolateContainer isolated;
    bool showLogicalConnections;
    short rotation;
    bool flip;
};

} // namespace qzkapp::ecad

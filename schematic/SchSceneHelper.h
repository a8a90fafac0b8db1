// What a scene needs in order to show a schematic beyond its sheets: the colour and visibility of
// each sublayer, addressed by one short handle, and the design's layer names and default order.
//
// A mix-in like its base: no lock, no event, no kernel scene. The design is given as an argument,
// and the scene that derives from it wraps each operation in its lock, the kernel call and the
// event; the pure operations with a body are those it wraps.
#pragma once

#include "component/ComponentExport.h"
#include "du/SmartPtr.h"
#include "qzk/Operation.h"
#include "qzk/ecad/ColorVisInfo.h"
#include "scene/ChangeSource.h"
#include "schematic/SheetViewStateHolder.h"

#include <map>
#include <vector>

namespace qzk::ecad {
class EcadDesignData;
}

namespace qzkapp::ecad {

class QZECAD_EXPORT SchSceneHelper : public SheetViewStateHolder {
public:
    using DesignData = du::SmartPtr<qzk::ecad::EcadDesignData>;
    using SublayerMap = std::map<short, qzk::ecad::ColorVisInfo>;

    SchSceneHelper();
    SchSceneHelper(SchSceneHelper const& other);
    SchSceneHelper& operator=(SchSceneHelper const& other);
    ~SchSceneHelper() override;

    virtual void GetSublayerColorVisInfo(SublayerMap& out) const = 0;
    // Replaces the whole map, equal or not; with op, the map before the change is recorded.
    virtual void SetSublayerColorVisInfo(SublayerMap const& map,
                                         du::SmartPtr<qzk::Operation> const& op,
                                         ChangeSource source) = 0;

private:
    virtual void SetSublayerColorVisInfoToQzkScene(SublayerMap const& map) const = 0;

protected:
    // Takes the entries of map whose handles the own map has; the rest are ignored. The own map
    // reaches the kernel scene even when nothing was taken.
    void _AppySublayerColorVisInfo(SublayerMap const& map, du::SmartPtr<qzk::Operation> const& op);
    // The handles with content, in the order of display.
    void _GetDefaultDrawOrder(DesignData const& design, std::vector<short>& out) const;
    // Never null: an unknown handle, or no design, gives an empty text. The text lives as long
    // as the design.
    wchar_t const* _GetLayerName(DesignData const& design, short layer) const;
    // The default colour of every layer the design declares; false, and nothing changed, for a
    // design that is no schematic.
    bool _LoadColorVisInfo(DesignData const& design, du::SmartPtr<qzk::Operation> const& op);

    SublayerMap sublayerCV;
};

} // namespace qzkapp::ecad

// A second picture that a kernel scene draws over its design: a board overlay (made from board
// data) or a picture overlay (made from a qz2d design). Made only by BaseScene::CreateOverlay;
// the scene holds it until RemoveOverlay or its own end, and hands out further references.
//
// Every call from outside is journalled and stored; the overlay's inspector tells tests its
// colour, visibility, transform, name and selection. A change of visibility or selection is told to
// the scene's observers (OnOverlayAppearanceChanged) while the overlay still belongs to its scene.
// Select without a colour marks the item in the overlay's own colour.
#pragma once

#include "dg/Color.h"
#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "du/SmartPtr.h"
#include "du/Types.h"
#include "qzk/Object.h"
#include "qzk/ecad/EcadPCBData.h"

#include <mutex>
#include <string>
#include <vector>

namespace qz2d::ecad {
class Design;
}

namespace qzref {
class OverlayInspector;
}

namespace qzk::ecad {

class BaseScene;
class OverlaySelectionItem;

class Overlay : public qzk::Object {
    friend class qzref::OverlayInspector;

public:
    // One selected or preselected item of the overlay.
    struct Mark {
        uint64 itemId;
        unsigned int color;
        bool flag;
        bool preselected;
    };

    ~Overlay() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    uint64 GetId() const noexcept { return id_; }
    void Select(du::SmartPtr<OverlaySelectionItem> const& item);
    void Select(du::SmartPtr<OverlaySelectionItem> const& item, dg::Color const& color, bool flag);
    void PreSelect(du::SmartPtr<OverlaySelectionItem> const& item, dg::Color const& color,
                   bool flag);
    void ClearSelection();
    void SetColor(dg::Color const& color);
    void SetVisibility(bool visible);

    // The kind given to CreateOverlay: 1 a board overlay or image of kind 1, 2 a compare area.
    unsigned int overlayKind = 0;
    // Set by the layer for an image of kind 1; stored, not interpreted.
    bool kindOneFlag = false;

    // Kernel side, called by the owning scene.
    static du::SmartPtr<Overlay>
    _MakeBoardOverlay(BaseScene* scene, du::SmartPtr<EcadPCBData> const& board, uint64 id,
                      bool visible, unsigned int color, unsigned int kind, dg::DMat33 const& matrix,
                      dg::DPoint2D const& center, std::string const& name);
    static du::SmartPtr<Overlay>
    _MakePictureOverlay(BaseScene* scene, du::SmartPtr<qz2d::ecad::Design> const& picture,
                        uint64 id, bool visible, unsigned int color, unsigned int kind,
                        dg::DMat33 const& matrix, unsigned int parameter, std::string const& name,
                        bool flag);
    // The centre rotations and flips turn about.
    dg::DPoint2D _GetCenter() const;
    void _SetName(std::string const& name);
    // Applies transform after the present one.
    void _Transform(dg::DMat33 const& transform);
    void _SetVisible(bool visible);
    void _SetColorWord(unsigned int color);
    // The overlay leaves its scene: no more notices.
    void _Detach();

protected:
    void _OnDestroy() override;

private:
    Overlay(BaseScene* scene, uint64 id, bool visible, unsigned int color, unsigned int kind,
            dg::DMat33 const& matrix, dg::DPoint2D const& center, std::string const& name);
    void _Mark(uint64 itemId, unsigned int color, bool flag, bool preselected);
    void _TellAppearance(bool cameOn, unsigned int aspect);

    uint64 const id_;
    mutable std::mutex mutex_;
    BaseScene* scene_;
    unsigned int color_;
    bool visible_;
    dg::DMat33 matrix_;
    dg::DPoint2D center_;
    std::string name_;
    std::vector<Mark> marks_;
    du::SmartPtr<EcadPCBData> board_;
    du::SmartPtr<qzk::Object> picture_;
    unsigned int parameter_ = 0;
    bool pictureFlag_ = false;
};

} // namespace qzk::ecad

// The ECAD selection item: one object of a loaded design, with the two handles that address
// its layer and sublayer, and the design data that keeps the object alive.
//
// The second and third pointers of the constructor are kept as given (the owner of the object
// and the picked part of it, for kinds of object that have them) and take part in LessThan.
#pragma once

#include "dg/DPoint3D.h"
#include "du/SmartPtr.h"
#include "qzk/SelectionItem.h"

#include <vector>

class IcmApiEcad;

namespace qzk::ecad {

class EcadDesignData;

class SelectionItem : public qzk::SelectionItem {
public:
    SelectionItem(du::SmartPtr<EcadDesignData> const& designData, void* object, void* owner,
                  void* part, dg::DPoint3D const& point, short firstHandle, short secondHandle);
    ~SelectionItem() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;
    // The object's name from the design's session; the scene does not change it.
    std::string GetName(du::SmartPtr<qzk::Scene> const& scene) const override;
    std::string GetName() const override;
    du::SmartPtr<qzk::SelectionItem> Clone() const override;
    // selection_types::ECAD_OBJECT().
    du::Symbol GetContentType() const override;
    void PopulateRepresentation(std::string& out) const override;
    // Design data, object, handles, owner, part; an item of another class compares as the base
    // class does.
    bool LessThan(qzk::SelectionItem const& other) const override;

    void* GetObject() const noexcept { return object; }
    // Null when there is no design data.
    IcmApiEcad* GetIcmApiEcad() const;
    // True when the design's session says the object is a component.
    bool IsComponent() const;
    dg::DPoint3D const& GetPoint() const noexcept { return point_; }

    // The sheet a schematic view must show for items: sheet itself when an item lies on it,
    // otherwise the lowest sheet that holds one of the items, and 0xFFFFFFFF when none lies on
    // a sheet (board objects, unknown objects). Items that are not ECAD selection items are
    // passed over; scene is not needed by the reference kernel.
    static unsigned int
    GetSchematicSheetToNavigate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                unsigned int sheet, du::SmartPtr<qzk::Scene> const& scene);

    void* object;
    short firstHandle;
    short secondHandle;
    du::SmartPtr<EcadDesignData> designData;
    void* owner;
    void* part;

private:
    dg::DPoint3D point_;
};

} // namespace qzk::ecad

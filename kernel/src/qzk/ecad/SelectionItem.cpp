#include "qzk/ecad/SelectionItem.h"

#include "IcmApiEcad.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/selection_types.h"

#include <functional>

namespace qzk::ecad {
namespace {
bool const registered =
    ClassType::RegisterClass(classid::EcadSelectionItem, {classid::SelectionItem});
} // namespace

SelectionItem::SelectionItem(du::SmartPtr<EcadDesignData> const& designData, void* object,
                             void* owner, void* part, dg::DPoint3D const& point, short firstHandle,
                             short secondHandle)
    : object(object), firstHandle(firstHandle), secondHandle(secondHandle), designData(designData),
      owner(owner), part(part), point_(point) {}

SelectionItem::~SelectionItem() = default;

ClassType const& SelectionItem::GetClassType() const {
    static ClassType const type(classid::EcadSelectionItem);
    return type;
}

du::Symbol SelectionItem::GetDebugClassName() const {
    return du::Symbol("qzk::ecad::SelectionItem");
}

std::string SelectionItem::GetName(du::SmartPtr<qzk::Scene> const&) const {
    return GetName();
}

std::string SelectionItem::GetName() const {
    std::string name;
    if (IcmApiEcad* session = GetIcmApiEcad()) {
        session->GetObjectName(object, name);
    }
    return name;
}

du::SmartPtr<qzk::SelectionItem> SelectionItem::Clone() const {
    return du::SmartPtr<qzk::SelectionItem>(
        new SelectionItem(designData, object, owner, part, point_, firstHandle, secondHandle));
}

du::Symbol SelectionItem::GetContentType() const {
    return selection_types::ECAD_OBJECT();
}

void SelectionItem::PopulateRepresentation(std::string& out) const {
    out = "ecad " + GetName() + " (" + std::to_string(firstHandle) + "," +
          std::to_string(secondHandle) + ")";
}

bool SelectionItem::LessThan(qzk::SelectionItem const& other) const {
    auto const* ecad = dynamic_cast<SelectionItem const*>(&other);
    if (ecad == nullptr) {
        return qzk::SelectionItem::LessThan(other);
    }
    std::less<void const*> less;
    void const* keys[][2] = {{designData.Get(), ecad->designData.Get()}, {object, ecad->object}};
    for (auto const& pair : keys) {
        if (pair[0] != pair[1]) {
            return less(pair[0], pair[1]);
        }
    }
    if (firstHandle != ecad->firstHandle) {
        return firstHandle < ecad->firstHandle;
    }
    if (secondHandle != ecad->secondHandle) {
        return secondHandle < ecad->secondHandle;
    }
    if (owner != ecad->owner) {
        return less(owner, ecad->owner);
    }
    return less(part, ecad->part);
}

IcmApiEcad* SelectionItem::GetIcmApiEcad() const {
    return designData ? designData->GetIcmApiEcad() : nullptr;
}

bool SelectionItem::IsComponent() const {
    int type = IcmApiEcad::ANY;
    IcmApiEcad* session = GetIcmApiEcad();
    return session != nullptr && session->GetObjectType(object, type) &&
           type == IcmApiEcad::COMPONENT;
}

unsigned int SelectionItem::GetSchematicSheetToNavigate(
    std::vector<du::SmartPtr<qzk::SelectionItem>> const& items, unsigned int sheet,
    du::SmartPtr<qzk::Scene> const&) {
    constexpr unsigned int kNoSheet = 0xFFFFFFFFu;
    unsigned int lowest = kNoSheet;
    for (auto const& item : items) {
        auto const* ecad = dynamic_cast<SelectionItem const*>(item.Get());
        IcmApiEcad* session = ecad != nullptr ? ecad->GetIcmApiEcad() : nullptr;
        unsigned int itemSheet = kNoSheet;
        if (session == nullptr || !session->GetObjectSheet(ecad->object, itemSheet) ||
            itemSheet == kNoSheet) {
            continue;
        }
        if (itemSheet == sheet) {
            return sheet;
        }
        lowest = itemSheet < lowest ? itemSheet : lowest;
    }
    return lowest;
}

} // namespace qzk::ecad

#include "qzk/ecad/SchematicData.h"

#include "IcmApiEcad.h"

#include <algorithm>
#include <set>

namespace qzk::ecad {
namespace {

// Components, their pins, and the nets' wires: everything that lies on a sheet.
template <class Visit>
void ForEachPlaced(std::vector<DesignObject*> const& components,
                   std::vector<DesignObject*> const& nets, Visit visit) {
    for (auto* component : components) {
        visit(component);
        for (auto* child : component->children) {
            visit(child);
        }
    }
    for (auto* net : nets) {
        for (auto* child : net->children) {
            if (child->type == IcmApiEcad::WIRE) {
                visit(child);
            }
        }
    }
}

} // namespace

du::SmartPtr<SchematicData> SchematicData::Create(du::Symbol name) {
    return du::SmartPtr<SchematicData>(new SchematicData(std::move(name)));
}

SchematicData::SchematicData(du::Symbol name) : EcadSchematicData(std::move(name)) {}

SchematicData::~SchematicData() = default;

bool SchematicData::HasLayerContent(short layer) const {
    bool found = false;
    ForEachPlaced(components_, nets_,
                  [&](DesignObject const* object) { found = found || object->sublayer == layer; });
    return found;
}

std::string SchematicData::GetSheetName(unsigned int sheet) const {
    return sheet < sheetNames_.size() ? sheetNames_[sheet] : std::string();
}

std::vector<DesignObject*> SchematicData::GetObjectsOnSheet(unsigned int sheet) const {
    std::vector<DesignObject*> out;
    ForEachPlaced(components_, nets_, [&](DesignObject* object) {
        if (object->sheet == sheet) {
            out.push_back(object);
        }
    });
    return out;
}

std::vector<unsigned int> SchematicData::GetNetSheets(DesignObject const* net) const {
    std::set<unsigned int> sheets;
    if (net != nullptr) {
        for (auto const* child : net->children) {
            sheets.insert(child->sheet);
        }
    }
    return {sheets.begin(), sheets.end()};
}

unsigned int SchematicData::AddSheet(std::string name) {
    sheetNames_.push_back(std::move(name));
    return static_cast<unsigned int>(sheetNames_.size() - 1);
}

DesignObject* SchematicData::AddComponent(std::unique_ptr<DesignObject> component) {
    components_.push_back(Add(std::move(component)));
    return components_.back();
}

DesignObject* SchematicData::AddNet(std::unique_ptr<DesignObject> net) {
    nets_.push_back(Add(std::move(net)));
    return nets_.back();
}

} // namespace qzk::ecad

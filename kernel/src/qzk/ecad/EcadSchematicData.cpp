#include "qzk/ecad/EcadSchematicData.h"

#include "du/StringConversion.h"

namespace qzk::ecad {

EcadSchematicData::EcadSchematicData(du::Symbol name) : EcadDesignData(std::move(name)) {}

EcadSchematicData::~EcadSchematicData() = default;

du::Symbol EcadSchematicData::GetLayerName(short layer) const {
    auto found = layerNames.find(layer);
    return found != layerNames.end() ? du::Symbol(du::WideStrToUtf8(found->second))
                                     : du::Symbol::EMPTY;
}

bool EcadSchematicData::IsSchematicData() const {
    return true;
}

} // namespace qzk::ecad

// A loaded schematic: its sheets, the objects on each sheet, and nets that may span sheets.
// Sheets are counted from 0, in the order of the design file.
#pragma once

#include "qzk/ecad/EcadSchematicData.h"

#include <string>
#include <vector>

namespace qzk::ecad {

class SchematicData : public EcadSchematicData {
public:
    static du::SmartPtr<SchematicData> Create(du::Symbol name);
    ~SchematicData() override;

    bool HasLayerContent(short layer) const override;

    unsigned int GetNumSheets() const { return static_cast<unsigned int>(sheetNames_.size()); }
    // UTF-8; empty for a sheet that does not exist.
    std::string GetSheetName(unsigned int sheet) const;
    std::vector<DesignObject*> const& GetComponents() const { return components_; }
    std::vector<DesignObject*> const& GetNets() const { return nets_; }
    // Components, pins and wires on the sheet, in the order they were added.
    std::vector<DesignObject*> GetObjectsOnSheet(unsigned int sheet) const;
    // The sheets a net's pins and wires lie on, ascending, each once.
    std::vector<unsigned int> GetNetSheets(DesignObject const* net) const;

    // Filling; see EcadDesignData.
    unsigned int AddSheet(std::string name);
    DesignObject* AddComponent(std::unique_ptr<DesignObject> component);
    DesignObject* AddNet(std::unique_ptr<DesignObject> net);

private:
    explicit SchematicData(du::Symbol name);

    std::vector<std::string> sheetNames_;
    std::vector<DesignObject*> components_;
    std::vector<DesignObject*> nets_;
};

} // namespace qzk::ecad

// What every schematic design offers: the names of its layer handles and whether a layer has
// any content. A schematic has one level of handles; a layer handle is the sublayer handle.
#pragma once

#include "qzk/ecad/EcadDesignData.h"

#include <map>
#include <string>

namespace qzk::ecad {

class EcadSchematicData : public EcadDesignData {
public:
    ~EcadSchematicData() override;

    // Whether any object of the design lies on the layer.
    virtual bool HasLayerContent(short layer) const = 0;
    // The name of the layer handle from layerNames, as UTF-8; empty when unknown.
    du::Symbol GetLayerName(short layer) const override;
    bool IsSchematicData() const override;

    // Every layer handle that the design declares, with its display name; layers without
    // content are listed too.
    std::map<short, std::wstring> layerNames;

protected:
    explicit EcadSchematicData(du::Symbol name);
};

} // namespace qzk::ecad

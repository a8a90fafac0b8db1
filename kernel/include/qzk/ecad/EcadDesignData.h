// An ECAD design's content: its objects, its images and its query session. A design of this
// exact class holds only images ("images" files); boards, overlays and schematics are subclasses.
//
// The data owns its design objects and its IcmApiEcad session. It is filled once, by the reader
// or a test, before it is handed to anyone (the Add operations are not thread-safe); from then
// on it is only read, and every query is safe on any thread.
#pragma once

#include "dg/DBox2D.h"

#include "IcmApiEcad.h"
#include "du/SmartPtr.h"
#include "qzk/EcadDesignData.h"
#include "qzk/ecad/DesignImage.h"
#include "qzk/ecad/DesignObject.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace qzk::ecad {

class EcadDesignData : public qzk::EcadDesignData {
public:
    static du::SmartPtr<EcadDesignData> Create(du::Symbol name);
    ~EcadDesignData() override;

    // The label to show for a board sublayer, UTF-8; empty for an unknown pair and for every
    // design that is not a board.
    virtual du::Symbol GetSublayerLabel(short layer, short sublayer) const;
    // The name of a layer handle, UTF-8; empty when unknown.
    virtual du::Symbol GetLayerName(short layer) const;
    // True for the picture of a Gerber overlay, which is board data that is no board.
    virtual bool IsOverlayData() const;
    // True for a schematic's data, whatever its class.
    virtual bool IsSchematicData() const;
    // The sublayer handle named sublayerName on the layer named layerName, or -1.
    virtual short FindSublayerHandle(std::string const& layerName,
                                     std::string const& sublayerName) const;

    // Never null; lives as long as this data.
    IcmApiEcad* GetIcmApiEcad() const { return session_.get(); }

    std::vector<DesignImage*> const& GetImages() const { return images_; }
    // The object of this design with this name and type (ANY: any type), or null.
    DesignObject* FindObject(std::string const& name, int type = IcmApiEcad::ANY) const;
    // The object behind a pointer if it belongs to this design, otherwise null.
    DesignObject* Find(void const* object) const;
    std::size_t GetObjectCount() const { return objects_.size(); }
    // The i-th object in the order they were added (a film's objects are added in the order they
    // are drawn, which matters for its clear objects); i below GetObjectCount().
    DesignObject* GetObjectAt(std::size_t i) const { return objects_[i].get(); }
    // What the design's objects draw, all sheets together; empty for a design without geometry.
    dg::DBox2D GetRange() const;

    // Takes the object over and returns it. Names are not checked here; the reader keeps them
    // unique per kind of object.
    DesignObject* Add(std::unique_ptr<DesignObject> object);
    DesignImage* AddImage(std::unique_ptr<DesignImage> image);

protected:
    explicit EcadDesignData(du::Symbol name);

private:
    std::vector<std::unique_ptr<DesignObject>> objects_;
    std::unordered_map<void const*, DesignObject*> byAddress_;
    std::vector<DesignImage*> images_;
    std::unique_ptr<IcmApiEcad> session_;
};

} // namespace qzk::ecad

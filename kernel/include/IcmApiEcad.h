// The query session of one loaded design: what an object is, what it holds, where it lies.
//
// Objects are passed as the opaque void * that selection items and appearance items carry. A
// session answers only for the objects of its own design: any other pointer, null included, is
// "unknown", and every query then returns false and leaves its outputs at their neutral value
// (type 0, count 0, null pointers, handle -1). Sessions are owned by their design data and live
// exactly as long as it does. Queries are read-only and may run on any thread.
#pragma once

#include "IcmApiPublicSession.h"

#include <string>

namespace qzk::ecad {
class EcadDesignData;
struct DesignObject;
} // namespace qzk::ecad

class IcmApiEcad : public IcmApiPublicSession {
public:
    // Object types. A net's children are its pins; a component's children are its footprint and
    // its pins; a footprint's children are the shapes drawn on the board's sublayers.
    enum ObjectType : int {
        ANY = 0, // as a child type: children of every type
        COMPONENT = 1,
        NET = 2,
        PIN = 11,
        WIRE = 12, // a net's routing: a track on a board, a wire on a schematic
        FOOTPRINT = 20,
        SHAPE = 21,
        IMAGE = 30,
    };

    explicit IcmApiEcad(qzk::ecad::EcadDesignData const& design);
    ~IcmApiEcad() override;

    virtual bool GetObjectType(void* object, int& type) const;
    // Children of the given type, or of any type for ANY.
    virtual bool GetChildCount(void* parent, int& count, int childType) const;
    // The child of the given type that follows previous (null: the first one), in the order of
    // the design file; next is null after the last. owner is the second value: for a pin, the
    // component it belongs to, for every other child null. No iterator is left behind.
    virtual bool GetNextChild(void* parent, int childType, void* previous, void*& next,
                              void*& owner) const;

    // Handle-based iteration. StartChildIteration gives a handle even when there are no
    // children; the caller releases it with IcmApiPublicSession::IcmIteratorDelete.
    virtual bool StartChildIteration(void* parent, int childType, void*& iterator) const;
    // The next child, or false and null at the end.
    virtual bool NextIteratedChild(void* iterator, void*& child) const;

    // A board object's (layer, sublayer). A component has its layer and sublayer -1; a
    // schematic object has layer 0 and its schematic layer handle as the sublayer.
    virtual bool GetObjectLayer(void* object, short& layer, short& sublayer) const;
    // The sheet a schematic object lies on, counted from 0; 0xFFFFFFFF for a board object.
    virtual bool GetObjectSheet(void* object, unsigned int& sheet) const;
    // For a component: the object whose SHAPE children are its drawn parts, and its layer.
    virtual bool GetComponentFootprint(void* component, void*& footprint, short& layer) const;
    // UTF-8 name as the design file gives it; pins are named "<component>.<pin>".
    virtual bool GetObjectName(void* object, std::string& name) const;
    // The sublayer handle called sublayerName on the layer called layerName, both by the names
    // of the design file (not the display labels). -1 when either name is unknown.
    virtual bool GetSublayerHandle(std::string const& layerName, std::string const& sublayerName,
                                   short& sublayer) const;

    // The object behind a pointer if it belongs to this design, otherwise null.
    qzk::ecad::DesignObject const* Find(void const* object) const;

private:
    qzk::ecad::EcadDesignData const& design_;
};

#include "qzk/ecad/EcadDesignData.h"

namespace qzk::ecad {

du::SmartPtr<EcadDesignData> EcadDesignData::Create(du::Symbol name) {
    return du::SmartPtr<EcadDesignData>(new EcadDesignData(std::move(name)));
}

EcadDesignData::EcadDesignData(du::Symbol name)
    : qzk::EcadDesignData(std::move(name)), session_(std::make_unique<IcmApiEcad>(*this)) {}

// The session goes first: it refers to this data, never the other way round.
EcadDesignData::~EcadDesignData() {
    session_.reset();
}

du::Symbol EcadDesignData::GetSublayerLabel(short, short) const {
    return du::Symbol::EMPTY;
}

du::Symbol EcadDesignData::GetLayerName(short) const {
    return du::Symbol::EMPTY;
}

bool EcadDesignData::IsOverlayData() const {
    return false;
}

bool EcadDesignData::IsSchematicData() const {
    return false;
}

short EcadDesignData::FindSublayerHandle(std::string const&, std::string const&) const {
    return -1;
}

DesignObject* EcadDesignData::FindObject(std::string const& name, int type) const {
    for (auto const& object : objects_) {
        if (object->name == name && (type == IcmApiEcad::ANY || object->type == type)) {
            return object.get();
        }
    }
    return nullptr;
}

DesignObject* EcadDesignData::Find(void const* object) const {
    auto found = byAddress_.find(object);
    return found == byAddress_.end() ? nullptr : found->second;
}

DesignObject* EcadDesignData::Add(std::unique_ptr<DesignObject> object) {
    DesignObject* raw = object.get();
    byAddress_.emplace(raw, raw);
    objects_.push_back(std::move(object));
    return raw;
}

dg::DBox2D EcadDesignData::GetRange() const {
    dg::DBox2D box;
    for (auto const& object : objects_) {
        for (DesignShape const& shape : object->geometry) {
            box.Extend(shape.GetRange());
        }
    }
    return box;
}

DesignImage* EcadDesignData::AddImage(std::unique_ptr<DesignImage> image) {
    DesignImage* raw = image.get();
    Add(std::move(image));
    images_.push_back(raw);
    return raw;
}

} // namespace qzk::ecad

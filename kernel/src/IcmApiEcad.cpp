#include "IcmApiEcad.h"

#include "IcmIteratorTable.h"
#include "qzk/ecad/EcadDesignData.h"

namespace {

bool Matches(qzk::ecad::DesignObject const* child, int childType) {
    return childType == IcmApiEcad::ANY || child->type == childType;
}

} // namespace

IcmApiEcad::IcmApiEcad(qzk::ecad::EcadDesignData const& design) : design_(design) {}

IcmApiEcad::~IcmApiEcad() = default;

qzk::ecad::DesignObject const* IcmApiEcad::Find(void const* object) const {
    return design_.Find(object);
}

bool IcmApiEcad::GetObjectType(void* object, int& type) const {
    auto const* found = Find(object);
    type = found != nullptr ? found->type : 0;
    return found != nullptr;
}

bool IcmApiEcad::GetChildCount(void* parent, int& count, int childType) const {
    count = 0;
    auto const* found = Find(parent);
    if (found == nullptr) {
        return false;
    }
    for (auto const* child : found->children) {
        count += Matches(child, childType) ? 1 : 0;
    }
    return true;
}

bool IcmApiEcad::GetNextChild(void* parent, int childType, void* previous, void*& next,
                              void*& owner) const {
    next = nullptr;
    owner = nullptr;
    auto const* found = Find(parent);
    if (found == nullptr) {
        return false;
    }
    bool passed = previous == nullptr;
    for (auto* child : found->children) {
        if (!passed) {
            passed = child == previous;
            continue;
        }
        if (Matches(child, childType)) {
            next = child;
            owner = child->type == PIN ? child->owner : nullptr;
            return true;
        }
    }
    // A previous child that is not among the parent's children ends the walk as well.
    return passed;
}

bool IcmApiEcad::StartChildIteration(void* parent, int childType, void*& iterator) const {
    iterator = nullptr;
    auto const* found = Find(parent);
    if (found == nullptr) {
        return false;
    }
    std::vector<void*> children;
    for (auto* child : found->children) {
        if (Matches(child, childType)) {
            children.push_back(child);
        }
    }
    iterator = IcmIteratorTable::Get().Add(std::move(children));
    return true;
}

bool IcmApiEcad::NextIteratedChild(void* iterator, void*& child) const {
    child = IcmIteratorTable::Get().Next(iterator);
    return child != nullptr;
}

bool IcmApiEcad::GetObjectLayer(void* object, short& layer, short& sublayer) const {
    auto const* found = Find(object);
    layer = found != nullptr ? found->layer : static_cast<short>(-1);
    sublayer = found != nullptr ? found->sublayer : static_cast<short>(-1);
    return found != nullptr;
}

bool IcmApiEcad::GetObjectSheet(void* object, unsigned int& sheet) const {
    auto const* found = Find(object);
    sheet = found != nullptr ? found->sheet : 0xFFFFFFFF;
    return found != nullptr;
}

bool IcmApiEcad::GetComponentFootprint(void* component, void*& footprint, short& layer) const {
    footprint = nullptr;
    layer = -1;
    auto const* found = Find(component);
    if (found == nullptr || found->type != COMPONENT) {
        return false;
    }
    layer = found->layer;
    for (auto* child : found->children) {
        if (child->type == FOOTPRINT) {
            footprint = child;
            break;
        }
    }
    return true;
}

bool IcmApiEcad::GetObjectName(void* object, std::string& name) const {
    auto const* found = Find(object);
    name = found != nullptr ? found->name : std::string();
    return found != nullptr;
}

bool IcmApiEcad::GetSublayerHandle(std::string const& layerName, std::string const& sublayerName,
                                   short& sublayer) const {
    sublayer = design_.FindSublayerHandle(layerName, sublayerName);
    return sublayer != -1;
}

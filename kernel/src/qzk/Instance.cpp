#include "qzk/Instance.h"

namespace qzk {
namespace {
bool const registered = ClassType::RegisterClass(classid::Instance, {classid::Object});
} // namespace

du::SmartPtr<Instance> Instance::Create(du::Symbol const& name) {
    return du::SmartPtr<Instance>(new Instance(name));
}

Instance::Instance(du::Symbol name) : name_(std::move(name)) {}

Instance::~Instance() = default;

ClassType const& Instance::GetClassType() const {
    static ClassType const type(classid::Instance);
    return type;
}

du::Symbol Instance::GetDebugClassName() const {
    return du::Symbol("qzk::Instance");
}

void Instance::_OnDestroy() {}

} // namespace qzk

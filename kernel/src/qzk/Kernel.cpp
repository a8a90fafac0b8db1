#include "qzk/Kernel.h"

#include "qzk/UndoList.h"
#include "qzref/Journal.h"

#include <mutex>

namespace qzk {
namespace {

std::mutex g_kernelMutex;
du::SmartPtr<Kernel> g_kernel;

bool const registered = ClassType::RegisterClass(classid::Kernel, {classid::Object});

} // namespace

Kernel::Kernel() : undoList_(std::make_unique<UndoList>()) {}

Kernel::~Kernel() = default;

du::SmartPtr<Kernel> Kernel::GetKernel() {
    std::lock_guard lock(g_kernelMutex);
    return g_kernel;
}

void Kernel::SetKernel(du::SmartPtr<Kernel> const& kernel) {
    du::SmartPtr<Kernel> old;
    {
        std::lock_guard lock(g_kernelMutex);
        old = std::exchange(g_kernel, kernel);
    }
}

ClassType const& Kernel::GetClassType() const {
    static ClassType const type(classid::Kernel);
    return type;
}

char const* Kernel::GetObjectClass() const {
    return "qzk::Kernel";
}

bool Kernel::ManageObject(du::SmartPtr<dom::ManagedObject> const& object) {
    qzref::Journal::Record("Kernel", "ManageObject",
                           {object ? std::string(object->GetObjectClass()) : std::string("null")});
    return dom::ManagedObject::ManageObject(object);
}

void Kernel::_OnDestroy() {
    // Steps and managed objects may hold scenes whose ends call back into the kernel.
    undoList_->Clear();
    UnmanageAll();
}

void UnmanageFromKernel(dom::ManagedObject const* object) {
    if (du::SmartPtr<Kernel> kernel = Kernel::GetKernel()) {
        kernel->UnmanageObject(object);
    }
}

} // namespace qzk

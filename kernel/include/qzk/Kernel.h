// The kernel singleton: the keeper of the observers and events the layer hands over, and the
// owner of the undo list. It exists between qzref::Platform::Start and Stop; GetKernel() is null
// outside that span.
//
// The message loop itself is process-wide and outlives the kernel (observers may be built before
// it exists); qzref::Messages pumps it or runs its dispatcher thread.
#pragma once

#include "dom/ManagedObject.h"
#include "du/SmartPtr.h"
#include "qzk/Object.h"

#include <memory>

namespace qzref {
class Platform;
class UndoControl;
} // namespace qzref

namespace qzk {

class UndoList;

class Kernel : public Object, public dom::ManagedObject {
public:
    ~Kernel() override;

    static du::SmartPtr<Kernel> GetKernel();

    ClassType const& GetClassType() const override;
    char const* GetObjectClass() const override;

    // Keeps object alive until the kernel is told it is done with it (an observer unregistered,
    // an event's completion delivered) or the kernel ends; calls its OnManage.
    bool ManageObject(du::SmartPtr<dom::ManagedObject> const& object);

    // Kernel side: the undo list (qzk::RecordOperation appends to it).
    UndoList& GetUndoList() noexcept { return *undoList_; }

protected:
    void _OnDestroy() override;

private:
    friend class qzref::Platform;
    Kernel();
    static void SetKernel(du::SmartPtr<Kernel> const& kernel);

    std::unique_ptr<UndoList> undoList_;
};

// Tells the kernel, if there is one, that object is no longer needed by it.
void UnmanageFromKernel(dom::ManagedObject const* object);

} // namespace qzk

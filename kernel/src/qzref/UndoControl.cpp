#include "qzref/UndoControl.h"

#include "qzk/Kernel.h"
#include "qzk/UndoList.h"

namespace qzref {
namespace {

template <class F, class R> R WithList(F const& use, R none) {
    du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel();
    return kernel ? use(kernel->GetUndoList()) : none;
}

} // namespace

bool UndoControl::Undo() {
    return WithList([](qzk::UndoList& list) { return list.Undo(); }, false);
}

bool UndoControl::Redo() {
    return WithList([](qzk::UndoList& list) { return list.Redo(); }, false);
}

std::size_t UndoControl::GetUndoCount() {
    return WithList([](qzk::UndoList& list) { return list.GetUndoCount(); }, std::size_t{0});
}

std::size_t UndoControl::GetRedoCount() {
    return WithList([](qzk::UndoList& list) { return list.GetRedoCount(); }, std::size_t{0});
}

std::vector<std::string> UndoControl::GetUndoNames() {
    return WithList([](qzk::UndoList& list) { return list.GetUndoNames(); },
                    std::vector<std::string>{});
}

std::vector<std::string> UndoControl::GetRedoNames() {
    return WithList([](qzk::UndoList& list) { return list.GetRedoNames(); },
                    std::vector<std::string>{});
}

void UndoControl::Clear() {
    WithList(
        [](qzk::UndoList& list) {
            list.Clear();
            return true;
        },
        false);
}

} // namespace qzref

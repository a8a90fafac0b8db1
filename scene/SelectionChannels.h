// The kernel selection manager's channels the scenes follow; other channels are ignored.
#pragma once

namespace qzkapp::ecad {

// What the user selected.
inline constexpr unsigned int kSelectionChannel = 0;
// What lies under the pointer.
inline constexpr unsigned int kPreselectionChannel = 1;
// What the host shows as associated with the selection, in the secondary colour.
inline constexpr unsigned int kAssociatedChannel = 4;

} // namespace qzkapp::ecad

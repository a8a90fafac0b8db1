#!/usr/bin/env bash
# Builds the kernel, the layer and the host program, then runs the host on a sample session.
# Without arguments it opens the four-layer board and runs the board tour session; with
# "schematic" the three-sheet schematic and its tour; otherwise the arguments go to the host (for
# example: open other-design.json --script other.qzs).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/deps.sh"
build=${QZ_BUILD_DIR:-$root/build}
cmake -S "$root" -B "$build" -DQZ_BUILD_TESTS=OFF -DQZ_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target qzhost -j "$(nproc)"
if [ "${1:-}" = schematic ]; then
    set -- open "$root/examples/designs/three-sheet-schematic.json" \
        --script "$root/examples/sessions/schematic-tour.qzs" --events
elif [ $# -eq 0 ]; then
    set -- open "$root/examples/designs/four-layer-board.json" \
        --script "$root/examples/sessions/board-tour.qzs" --events
fi
exec "$build/host/qzhost" "$@"

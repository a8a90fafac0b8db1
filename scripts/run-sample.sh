#!/usr/bin/env bash
# Builds the kernel, the layer and the host program, then runs the host on a sample session.
# Extra arguments go to the host (for example another design file).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/deps.sh"
build=${QZ_BUILD_DIR:-$root/build}
cmake -S "$root" -B "$build" -DQZ_BUILD_TESTS=OFF -DQZ_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target qzhost -j "$(nproc)"
exec "$build/host/qzhost" "$@"

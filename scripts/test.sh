#!/usr/bin/env bash
# Builds everything and runs every test; then installs the libraries into a scratch prefix and
# builds a consumer project against them with find_package.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/deps.sh"
build=${QZ_BUILD_DIR:-$root/build}
cmake -S "$root" -B "$build" -DQZ_BUILD_TESTS=ON -DQZ_BUILD_BENCH=ON >/dev/null
cmake --build "$build" -j "$(nproc)"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)"

prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix/usr" >/dev/null
cmake -S "$root/tests/consumer" -B "$prefix/consumer" -DCMAKE_PREFIX_PATH="$prefix/usr" >/dev/null
cmake --build "$prefix/consumer" -j "$(nproc)" >/dev/null
# The installed host runs from any directory and finds its layer and sample data beside itself.
(cd / && "$prefix/usr/bin/qzhost" open examples/designs/four-layer-board.json \
    --script examples/sessions/picture.qzs --render "$prefix/picture.png" >"$prefix/host.out")
[ "$(head -c 4 "$prefix/picture.png" | tail -c 3)" = "PNG" ] || { echo "installed host drew no PNG"; exit 1; }
grep -q "^design: $prefix/usr/share/qzecad/examples/designs/four-layer-board.json" \
    "$prefix/host.out" || { echo "installed host did not use its installed data"; exit 1; }
PKG_CONFIG_PATH="$prefix/usr/lib/pkgconfig:$prefix/usr/lib/$(gcc -print-multiarch 2>/dev/null || true)/pkgconfig" \
    pkg-config --exists qzecad qzkernel || { echo "no pkg-config files installed"; exit 1; }
LD_LIBRARY_PATH="$prefix/usr/lib:$prefix/usr/lib/$(gcc -print-multiarch 2>/dev/null || true)" \
    "$prefix/consumer/qzconsumer"

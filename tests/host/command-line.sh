#!/usr/bin/env bash
# The host's command line: each case runs the host, then checks its status and the one line it
# must print. Usage: command-line.sh QZHOST EXAMPLES_DIR
set -uo pipefail
host=$(realpath "$1")
examples=$2
failures=0
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# check STATUS PATTERN -- ARGS...: the host ends with STATUS and its output matches PATTERN.
check() {
    local want=$1 pattern=$2
    shift 3
    local out status
    out=$("$host" "$@" 2>&1)
    status=$?
    if [ "$status" -ne "$want" ] || ! grep -qE -- "$pattern" <<<"$out"; then
        echo "FAIL: qzhost $*: status $status (wanted $want), output:"
        echo "$out" | sed 's/^/    /'
        failures=$((failures + 1))
    fi
}

board=$examples/designs/four-layer-board.json
check 0 'qzhost 0\.1\.0' -- --version
check 0 'Usage: .* open \[OPTIONS\] design' -- open --help
check 2 'Usage' -- --frobnicate
check 2 'Usage' -- open "$board" --frobnicate
check 2 'design is required' -- open
check 1 '^qzhost: the design path is empty$' -- open ""
check 1 'qzhost: /nonexistent.json: cannot open the design file' -- open /nonexistent.json
check 0 'design loaded' -- open "$examples/designs/three-sheet-schematic.json"
printf 'sheet go 7\n' >"$scratch/sheet.qzs"
check 1 "^qzhost: $scratch/sheet.qzs:1:10: no sheet 7; the design has 3\$" -- \
    open "$examples/designs/three-sheet-schematic.json" --script "$scratch/sheet.qzs"
check 1 "^qzhost: $scratch/sheet.qzs:1:1: 'sheet' is not available on a board scene; it needs a schematic scene\$" -- \
    open "$board" --script "$scratch/sheet.qzs"
# A film that cannot be read leaves the board shown alone, and says so; two films make no scene.
check 0 "^qzhost: the overlay $scratch/none.gbr did not load: error 1: .*; the board is shown alone\$" -- \
    open "$board" --compare "$scratch/none.gbr"
check 1 '^qzhost: no scene kind shows an overlay and an overlay design$' -- \
    open "$examples/designs/top-copper.gbr" --compare "$scratch/none.gbr"
check 1 'scene kind 74 \(board scene\) does not fit a schematic design' -- \
    open "$examples/designs/three-sheet-schematic.json" --kind 74
check 1 'scene kind 159 .* does not fit a board design; it takes kind 74' -- \
    open "$board" --kind 159
check 0 'design loaded' -- open "$board"

# A script error names file, line and column; the scene is closed before the host ends.
printf 'highlight U1\n  expect highlights = R1\n' >"$scratch/bad.qzs"
check 1 "^qzhost: $scratch/bad.qzs:2:23: expectation failed: highlights is 'U1', expected 'R1'\$" -- \
    open "$board" --script "$scratch/bad.qzs"
check 1 'scene closed' -- open "$board" --script "$scratch/bad.qzs"
check 1 'cannot open the script' -- open "$board" --script "$scratch/none.qzs"

# Pictures: written where asked, a clear line when they cannot be.
check 0 'scene closed' -- open "$board" --script "$examples/sessions/picture.qzs" --render "$scratch/p.png"
[ "$(head -c 4 "$scratch/p.png" 2>/dev/null | tail -c 3)" = "PNG" ] || {
    echo "FAIL: no PNG written"; failures=$((failures + 1)); }
check 1 '^qzhost: cannot render: /nonexistent/p.png: ' -- open "$board" --render /nonexistent/p.png
printf 'render
' >"$scratch/render.qzs"
check 1 'render.qzs:1:7: expected a picture file, .png or .svg' -- open "$board" --script "$scratch/render.qzs"

# Events and the journal, in the order they happened.
printf 'highlight U1\nflip\n' >"$scratch/events.qzs"
check 0 'event: highlight changed, 1 items' -- open "$board" --script "$scratch/events.qzs" --events
check 0 'journal: .*BeginAppearanceUpdate' -- open "$board" --script "$scratch/events.qzs" --journal
out=$("$host" open "$board" --script "$scratch/events.qzs" --events 2>&1)
if ! grep -n 'event:' <<<"$out" | head -1 | grep -q 'design loaded'; then
    echo "FAIL: the load's event is not the first event heard:"; echo "$out" | sed 's/^/    /'
    failures=$((failures + 1))
fi

# A relative design path works from another directory, through the build's source tree.
(cd / && "$host" open examples/designs/four-layer-board.json >/dev/null 2>&1) || {
    echo "FAIL: relative design path from /"; failures=$((failures + 1)); }

# Progress shows where stderr is not a terminal only when asked for; it ends at 100%.
quiet=$("$host" open "$board" 2>&1 >/dev/null)
if grep -q 'loading' <<<"$quiet"; then
    echo "FAIL: progress shown where stderr is no terminal: $quiet"; failures=$((failures + 1))
fi
shown=$(QZHOST_PROGRESS=1 "$host" open "$board" 2>&1 >/dev/null | tr '\r' '\n')
if ! grep -qE "^loading .*four-layer-board.json \.\.\. 100%$" <<<"$shown"; then
    echo "FAIL: no progress with QZHOST_PROGRESS=1: $shown"; failures=$((failures + 1))
fi

[ "$failures" -eq 0 ] && echo "all command-line cases passed"
exit "$failures"

#!/usr/bin/env bash
# Times reading a large Gerber film and drawing it to a PNG: qzfilm against gerbv's export of
# the same film at the same resolution and window, one after the other in one run, and prints
# the ratio (ours / gerbv's; the aim is 0.5 or less).
#   bench/gerber-vs-gerbv.sh [QZFILM] [MEGABYTES]
# QZFILM defaults to build/kernel/qzfilm, MEGABYTES to 50.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
qzfilm=${1:-$root/build/kernel/qzfilm}
megabytes=${2:-50}
command -v gerbv > /dev/null || { echo "gerbv is not installed (scripts/deps.sh installs it)"; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
film=$work/large.gbr

# A 200 x 200 mm panel of cells: tracks with bends and arcs, pads of every kind, a region with a
# clear pad in it, each cell's objects named by net and component, repeated until the film has
# the size asked for.
python3 - "$film" "$megabytes" <<'PY'
import random, sys
path, megabytes = sys.argv[1], float(sys.argv[2])
random.seed(16)
out = open(path, "w")
out.write("%FSLAX46Y46*%\n%MOMM*%\n%TF.FileFunction,Copper,L1,Top*%\nG75*\n"
          "%TA.AperFunction,Conductor*%\n%ADD10C,0.15*%\n%ADD11C,0.25*%\n"
          "%TA.AperFunction,SMDPad,CuDef*%\n%ADD12R,0.6X0.4*%\n%ADD13O,0.8X0.4*%\n"
          "%ADD14C,0.7X0.3*%\n%AMTHERM*\n7,0,0,1.0,0.6,0.15,45*%\n%ADD15THERM*%\n%TD*%\n")
limit = int(megabytes * 1e6)
size, cell = 200.0, 0
def c(v):
    return str(int(round(v * 1e6)))
while out.tell() < limit:
    x0, y0 = random.uniform(0, size - 2), random.uniform(0, size - 2)
    cell += 1
    lines = ["%%TO.N,N%d*%%" % (cell % 5000), "D1%d*" % (cell % 2), "G01*",
             "X%sY%sD02*" % (c(x0), c(y0))]
    x, y = x0, y0
    for _ in range(12):
        x = min(size, max(0, x + random.uniform(-1, 1)))
        y = min(size, max(0, y + random.uniform(-1, 1)))
        lines.append("X%sY%sD01*" % (c(x), c(y)))
    lines.append("G03*")
    lines.append("X%sY%sI%sJ%sD01*" % (c(x + 0.6), c(y), c(0.3), c(0)))
    lines.append("G01*")
    lines.append("%%TO.C,U%d*%%" % cell)
    for k in range(8):
        lines.append("D1%d*" % (2 + k % 4))
        lines.append("X%sY%sD03*" % (c(x0 + 0.9 * k), c(y0 + 1)))
    lines.append("%TD*%")
    if cell % 10 == 0:
        lines += ["G36*", "X%sY%sD02*" % (c(x0), c(y0)), "X%sY%sD01*" % (c(x0 + 1.5), c(y0)),
                  "X%sY%sD01*" % (c(x0 + 1.5), c(y0 + 1.5)), "X%sY%sD01*" % (c(x0), c(y0 + 1.5)),
                  "X%sY%sD01*" % (c(x0), c(y0)), "G37*", "%LPC*%", "D14*",
                  "X%sY%sD03*" % (c(x0 + 0.75), c(y0 + 0.75)), "%LPD*%"]
    out.write("\n".join(lines) + "\n")
out.write("M02*\n")
PY
bytes=$(stat -c %s "$film")
dpi=250  # the 200 mm panel in a picture of 2000 pixels, the largest gerbv exports
size=2000
left=-0.5
left_in=$(awk -v l="$left" 'BEGIN { printf "%.3f", l / 25.4 }')
left_mm=$(awk -v l="$left_in" 'BEGIN { printf "%.6f", l * 25.4 }')

# Wall and processor seconds of a command: the machine may be shared, and processor time is
# what the work itself costs.
timed() { # command...: prints "<wall> <user + system>"
    /usr/bin/time -f "%e %U %S" -o "$work/time" "$@" > /dev/null 2>&1 || true
    awk '{ printf "%.2f %.2f\n", $1, $2 + $3 }' "$work/time"
}
read -r ours_wall ours_cpu < <(timed "$qzfilm" render "$film" "$work/ours.png" "$dpi" "$left_mm" \
    "$left_mm" "$size" "$size")
[ -s "$work/ours.png" ] || { echo "qzfilm drew nothing"; exit 1; }
peak=$( { /usr/bin/time -f %M "$qzfilm" extent "$film" > /dev/null; } 2>&1 | tail -1)
read -r theirs_wall theirs_cpu < <(timed gerbv -x png -B 0 -D "$dpi" -O "${left_in}x${left_in}" \
    -w "${size}x${size}" -b '#000000' -f '#FFFFFFFF' -o "$work/gerbv.png" "$film")
[ -s "$work/gerbv.png" ] || { echo "gerbv drew nothing"; exit 1; }
agreement=$("$qzfilm" compare "$work/ours.png" "$work/gerbv.png" 0 || true)
echo "film: $((bytes / 1000000)) MB; read and drawn at $dpi dpi, ${size}x${size} pixels"
echo "qzfilm: ${ours_wall} s wall, ${ours_cpu} s processor (reading alone peaks at ${peak} KiB)"
echo "gerbv:  ${theirs_wall} s wall, ${theirs_cpu} s processor"
echo "pictures: $agreement"
awk -v a="$ours_wall" -v b="$theirs_wall" -v c="$ours_cpu" -v d="$theirs_cpu" \
    'BEGIN { printf "ratio (qzfilm / gerbv): %.3f wall, %.3f processor\n", a / b, c / d }'

#!/bin/bash
# Exports each film with gerbv and with qzfilm at the same resolution and window, and requires
# the two pictures to agree on at least 99% of their pixels.
#   gerber-vs-gerbv.sh QZFILM FILM...
# Without gerbv on the machine there is no judge: the script says so and passes.
set -u
qzfilm=$1
shift
if ! command -v gerbv > /dev/null; then
    echo "gerbv is not installed: nothing to compare with (scripts/deps.sh installs it)"
    exit 0
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
for film in "$@"; do
    read -r x0 y0 x1 y1 < <("$qzfilm" extent "$film") || { echo "FAIL $film: not read"; failed=1; continue; }
    # gerbv exports at most 2000 pixels a side; a finer grid shows more of the edges.
    dpi=$(awk -v w="$(awk -v a="$x0" -v b="$x1" -v c="$y0" -v d="$y1" 'BEGIN { print (b - a > d - c ? b - a : d - c) + 2 }')" \
        'BEGIN { d = 1000; while ((w / 25.4) * d > 1990) d -= 100; print d }')
    # A millimetre of margin around what the film covers; the corner on a whole pixel in inches,
    # which is how gerbv takes it.
    read -r left bottom width height left_in bottom_in < <(awk -v x0="$x0" -v y0="$y0" \
        -v x1="$x1" -v y1="$y1" -v dpi="$dpi" 'function floor(v) { return v < int(v) ? int(v) - 1 : int(v) }
        BEGIN {
            li = floor((x0 - 1) / 25.4 * dpi) / dpi; bi = floor((y0 - 1) / 25.4 * dpi) / dpi
            w = int(((x1 + 1) / 25.4 - li) * dpi) + 1; h = int(((y1 + 1) / 25.4 - bi) * dpi) + 1
            printf "%.6f %.6f %d %d %.3f %.3f\n", li * 25.4, bi * 25.4, w, h, li, bi }')
    "$qzfilm" render "$film" "$work/ours.png" "$dpi" "$left" "$bottom" "$width" "$height" ||
        { echo "FAIL $film: not drawn"; failed=1; continue; }
    gerbv -x png -B 0 -D "$dpi" -O "${left_in}x${bottom_in}" -w "${width}x${height}" \
        -b '#000000' -f '#FFFFFFFF' -o "$work/gerbv.png" "$film" 2> "$work/gerbv.log"
    if [ ! -s "$work/gerbv.png" ]; then
        echo "FAIL $film: gerbv wrote no picture"; cat "$work/gerbv.log"; failed=1; continue
    fi
    diff=${KEEP_PICTURES:+$KEEP_PICTURES/$(basename "$film").diff.png}
    if result=$("$qzfilm" compare "$work/ours.png" "$work/gerbv.png" 99 $diff); then
        echo "ok   $(basename "$film"): $result"
    else
        echo "FAIL $(basename "$film"): $result"
        [ -n "${KEEP_PICTURES:-}" ] && cp "$work/ours.png" "$KEEP_PICTURES/$(basename "$film").ours.png" &&
            cp "$work/gerbv.png" "$KEEP_PICTURES/$(basename "$film").gerbv.png"
        failed=1
    fi
done
exit $failed

#!/bin/bash
# Makes resources/orvanel.ico from resources/artwork/orvanel.svg: one picture a size, the largest
# stored as PNG as Windows expects it; and resources/update.ico, whose smallest picture is drawn by
# itself. Needs rsvg-convert (librsvg2-bin) and icotool (icoutils).
set -e
cd "$(dirname "$0")/.."
pictures=$(mktemp -d)
trap 'rm -rf "$pictures"' EXIT
small=()
for size in 16 24 32 48 64 128 256; do
    picture=$(printf '%s/%03d.png' "$pictures" "$size")
    rsvg-convert --width "$size" --height "$size" --output "$picture" resources/artwork/orvanel.svg
    [ "$size" = 256 ] || small+=("$picture")
done
icotool --create --output resources/orvanel.ico "${small[@]}" --raw="$pictures/256.png"

for size in 16 24 32 48; do
    drawing=update
    [ "$size" != 16 ] || drawing=update_small
    rsvg-convert --width "$size" --height "$size" --output "$pictures/update_$size.png" \
        "resources/artwork/$drawing.svg"
done
icotool --create --output resources/update.ico "$pictures"/update_*.png

#!/bin/bash
# Makes resources/orvanel.ico from resources/artwork/orvanel.svg: one picture a size, the largest
# stored as PNG as Windows expects it. Needs rsvg-convert (librsvg2-bin) and icotool (icoutils).
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

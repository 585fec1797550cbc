#!/bin/bash
# Makes the bitmap resources of the navigation buttons from their SVG sources.
set -e
. "$(dirname "$0")/lib.sh"
cd "$ORVANEL_ROOT"

# Not the first "convert" on the path: only ImageMagick's own writes bitmaps.
convert=/usr/bin/convert-im6.q16
# Pixels along the rounded corners are mixed with this tone, which lies between dark floors and white.
edge='#3a4758'

need_tool() {
    command -v "$1" >/dev/null && return
    echo "$1 is missing: apt-get install $2" >&2
    exit 1
}

# The program takes a pixel without red for transparent, any other for opaque: what the drawing
# covers by less than half becomes black, the rest is made opaque.
make_button() { # name
    local work
    work=$(mktemp -d)
    rsvg-convert "resources/artwork/$1.svg" -o "$work/drawing.png"
    $convert "$work/drawing.png" -background "$edge" -flatten "$work/colour.png"
    $convert "$work/drawing.png" -alpha extract -threshold 45% "$work/mask.png"
    $convert "$work/colour.png" "$work/mask.png" -compose multiply -composite \
        -type TrueColor "BMP3:resources/$1.bmp"
    rm -r "$work"
}

need_tool rsvg-convert librsvg2-bin
need_tool "$convert" imagemagick
make_button button_back
make_button button_home

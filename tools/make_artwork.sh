#!/bin/bash
# Makes the bitmap and cursor resources from their SVG sources.
set -e
. "$(dirname "$0")/lib.sh"
cd "$ORVANEL_ROOT"

# Not the first "convert" on the path: only ImageMagick's own writes bitmaps.
convert=/usr/bin/convert-im6.q16
# Pixels along the rounded corners are mixed with this tone, which lies between dark floors and white.
button_edge='#3a4758'
# The same for the menus: between the icon column and the highlighted icon column.
menu_edge='#d2e2f1'
# And for the tree of actions, which lies on white.
tree_edge='#ffffff'
# And for pictures on dialogs.
dialog_edge='#f0f0f0'
menu_transparent='#00ff00'

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

need_tool() {
    command -v "$1" >/dev/null && return
    echo "$1 is missing: apt-get install $2" >&2
    exit 1
}

# Bitmaps know no half-transparent pixels: what the drawing covers by less than a share becomes
# transparent, the rest is mixed with the tone of the edge and made opaque.
draw() { # drawing, edge, share, what rsvg-convert needs besides
    rsvg-convert "${@:4}" "resources/artwork/$1.svg" -o "$work/drawing.png"
    $convert "$work/drawing.png" -background "$2" -flatten "$work/colour.png"
    $convert "$work/drawing.png" -alpha extract -threshold "$3" "$work/mask.png"
}

# The program takes a pixel without red for transparent.
make_button() { # name
    draw "$1" "$button_edge" 45%
    $convert "$work/colour.png" "$work/mask.png" -compose multiply -composite \
        -type TrueColor "BMP3:resources/$1.bmp"
}

make_menu_picture() { # bitmap, drawing, what rsvg-convert needs besides
    make_small_picture "$1" "$2" "$menu_edge" "${@:3}"
}

make_small_picture() { # bitmap, drawing, edge, what rsvg-convert needs besides
    draw "$2" "$3" 30% "${@:4}"
    $convert "$work/colour.png" -fill "$menu_transparent" -colorize 100 "$work/colour.png" \
        "$work/mask.png" -composite -type TrueColor "BMP3:resources/$1.bmp"
}

make_swatch() { # name, colour of the floor, where the light falls on it, of its grid, of the frame
    printf '.floor { stop-color: %s } .lit { stop-color: %s } .grid { stroke: %s } .frame { stroke: %s }' \
        "${@:2}" >"$work/swatch.css"
    make_menu_picture "swatch_$1" swatch --stylesheet "$work/swatch.css"
}

make_opaque_picture() { # name
    rsvg-convert "resources/artwork/$1.svg" -o "$work/drawing.png"
    $convert "$work/drawing.png" -alpha off -type TrueColor "BMP3:resources/$1.bmp"
}

# The hot spot lies in the palm of the hand.
make_cursor() { # name
    rsvg-convert "resources/artwork/$1.svg" -o "$work/drawing.png"
    icotool --create --cursor --hotspot-x=16 --hotspot-y=16 --output "resources/$1.cur" "$work/drawing.png"
}

need_tool rsvg-convert librsvg2-bin
need_tool icotool icoutils
need_tool "$convert" imagemagick
make_button button_back
make_button button_home
for drawing in resources/artwork/menu_*.svg; do
    name=$(basename "$drawing" .svg)
    make_menu_picture "$name" "$name"
done
for drawing in resources/artwork/tree_*.svg; do
    name=$(basename "$drawing" .svg)
    make_small_picture "$name" "$name" "$tree_edge"
done
make_small_picture update update "$dialog_edge"
make_swatch blue '#16283a' '#2b4f73' '#406182' '#5a7b9c'
make_swatch gray '#2b2b2b' '#565656' '#676767' '#818181'
make_swatch turquoise '#103a37' '#1f736e' '#35827d' '#4f9c97'
make_swatch purple '#221c3a' '#433773' '#564b82' '#70659c'
make_swatch orange '#4d2800' '#9a4f00' '#a56118' '#bf7b32'
make_swatch black '#000000' '#000000' '#202020' '#606060'
make_opaque_picture splash
make_opaque_picture viewer_floor
make_cursor cursor_turn
make_cursor cursor_turning

#!/bin/bash
# Installs what is missing, builds Orvanel and starts it on the shipped template pages.
# With a display the window opens there. Without one it opens in a virtual display, and a screenshot
# is left whose path is printed. ORVANEL_VARIANT=win64 starts the 64-bit program.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
need_root "$@"
cd "$ORVANEL_ROOT"
variant=${ORVANEL_VARIANT:-win32}
mkdir -p "$ORVANEL_CACHE"

install_packages $PACKAGES_BUILD $PACKAGES_RUN
# A virtual display of its own while the prefixes are made, and for the program when there is none.
virtual=
if [ -z "${DISPLAY:-}" ] || ! xdpyinfo >/dev/null 2>&1; then
    virtual=yes
    trap end_display EXIT
    begin_display
fi
make_wines
build_variant "$variant"

program=$ORVANEL_ROOT/build/$variant/orvanel.exe
if [ -z "$virtual" ]; then
    exec "$ORVANEL_ROOT/tools/wine${variant#win}.sh" "$program" "$@"
fi

screenshot=$ORVANEL_ROOT/build/orvanel.png
"$ORVANEL_ROOT/tools/wine${variant#win}.sh" "$program" "$@" &
runner=$!
for _ in $(seq 300); do
    window=$(xdotool search --onlyvisible --name '^Orvanel$' 2>/dev/null | head -1 || true)
    [ -n "$window" ] && break
    kill -0 "$runner" 2>/dev/null || break
    sleep 0.2
done
if [ -z "${window:-}" ]; then
    echo "Orvanel did not open its window." >&2
    kill "$runner" 2>/dev/null || true
    exit 1
fi
sleep 3 # the first frames: models are compiled as they are first drawn
/usr/bin/import-im6.q16 -window root "$screenshot"
xdotool windowfocus --sync "$window" key Escape
wait "$runner"
echo "Screenshot: $screenshot"

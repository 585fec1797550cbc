#!/bin/bash
# Runs a 32-bit Windows program under Wine: wine32.sh program.exe [arguments]
# Wine runs in its own small Debian. What that needs to see of this machine is mounted in a mount
# namespace of this process alone, so nothing stays mounted whatever happens.
. "$(dirname "$0")/lib.sh"
# A Wine server that still runs sees only what was mounted when it started: whoever works in several
# checkouts at once mounts the folder that holds them all.
ORVANEL_WINE_BIND=${ORVANEL_WINE_BIND:-$ORVANEL_ROOT}
export WINE32_ROOT ORVANEL_WINE_BIND WINE_PROXY
INSIDE_PREFIX=${ORVANEL_PREFIX:-$WINE32_PREFIX}
export INSIDE_PREFIX ORVANEL_CWD=$PWD
exec unshare --mount --propagation private /bin/bash -c '
set -e
mkdir -p "$WINE32_ROOT$ORVANEL_WINE_BIND" "$WINE32_ROOT/tmp/.X11-unix" /tmp/.X11-unix
mount --bind "$ORVANEL_WINE_BIND" "$WINE32_ROOT$ORVANEL_WINE_BIND"
mount --bind /tmp/.X11-unix "$WINE32_ROOT/tmp/.X11-unix"
mount -t proc proc "$WINE32_ROOT/proc"
mount --bind /dev "$WINE32_ROOT/dev"
exec chroot "$WINE32_ROOT" /usr/bin/env -i PATH=/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin HOME=/root USER=root LC_ALL=C.UTF-8 \
    DISPLAY="$DISPLAY" WINEPREFIX="$INSIDE_PREFIX" WINEARCH=win32 WINEDEBUG="$WINEDEBUG" \
    WINEDLLOVERRIDES="$WINEDLLOVERRIDES" http_proxy="$WINE_PROXY" CI="$CI" \
    /bin/sh -c "cd \"\$0\" 2>/dev/null; exec wine \"\$@\"" "$ORVANEL_CWD" "$@"
' wine32 "$@"

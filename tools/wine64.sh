#!/bin/bash
# Runs a 64-bit Windows program under Wine: wine64.sh program.exe [arguments]
. "$(dirname "$0")/lib.sh"
export LC_ALL=C.UTF-8 # file names with accents
export http_proxy=$WINE_PROXY
export WINEPREFIX=${ORVANEL_PREFIX:-$WINE64_PREFIX} WINEARCH=win64
exec /usr/lib/wine/wine64 "$@"

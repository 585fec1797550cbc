#!/bin/bash
# Runs a command in a virtual display with a window manager and ends both: with_display.sh command…
. "$(dirname "$0")/lib.sh"
trap end_display EXIT
begin_display
"$@"

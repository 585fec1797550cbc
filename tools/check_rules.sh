#!/bin/bash
# Rules of the house that no compiler knows. Prints what breaks them; fails when anything does.
cd "$(dirname "$0")/.." || exit 1
bad=0

complain() { # rule, offending lines
    [ -z "$2" ] && return
    printf '%s\n%s\n\n' "$1" "$2"
    bad=1
}

sources=$(git ls-files '*.cpp' '*.h')
product=$(git ls-files 'app/*' 'page/*' 'scene/*' 'assets/*' 'actions/*' 'editing/*' 'dialogs/*' \
    'update/*' 'platform/*' |
    grep -E '\.(cpp|h)$')

complain "<windows.h> stays at the edge of the program:" "$(
    grep -lE '#include <(windows|winsock2|shlobj|shellapi|commctrl)\.h>' $product |
        grep -vE '^platform/(win32/|socket_calls\.)|^app/(orvanel|main_window|window_procedure)\.|^scene/gl_window\.|^dialogs/[a-z_]*\.|^actions/menu(_windows|_draw|_icon_cache|_image|_items)?\.')"
complain "Objects of the menus are destroyed where they are counted (platform/win32/object_count.h):" "$(
    grep -nE '\b(DeleteObject|DeleteDC|DestroyMenu|DestroyIcon)\(' actions/*.cpp)"
complain "Text is copied by platform/text.h only:" "$(
    grep -nE '\b(strcpy|strcat|sprintf|vsprintf|strncpy|strncat|gets)\(' $sources)"
complain "No iostreams in the product:" "$(grep -nE '#include <(iostream|fstream|sstream)>' $product)"
complain "A source includes its own header first:" "$(
    for source in $(echo "$product" | grep '\.cpp$'); do
        header=${source%.cpp}.h
        [ -e "$header" ] || continue
        first=$(grep -m1 '#include' "$source")
        [ "$first" = "#include \"$header\"" ] || echo "$source: $first"
    done)"
complain "The first thing the program does is to restrict where libraries come from:" "$(
    grep -A1 '^int WINAPI WinMain' app/orvanel.cpp | sed 1d |
        grep -v 'process_restrict_libraries();')"
complain "Every header compiles alone:" "$(
    for header in $(echo "$product" | grep '\.h$' | grep -vE 'win32/|gl_window|main_window|menu_windows'); do
        grep -q '^#include <windows.h>' "$header" && continue # a side of the program without a native build
        echo "#include \"$header\"" |
            g++ -std=c++20 -I. -Wall -Wextra -fsyntax-only -x c++ - 2>&1 | head -3
    done)"
exit $bad

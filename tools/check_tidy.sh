#!/bin/bash
# clang-tidy over the core (it does not know the cross compiler's Windows headers). A file whose
# findings are known to be none (same bytes of it, of the headers that it includes and of the
# configuration) is not looked at again, by no checkout on this machine.
. "$(dirname "$0")/lib.sh"
cd "$ORVANEL_ROOT" || exit 1
stamps=$ORVANEL_CACHE/tidy
mkdir -p "$stamps"
find "$stamps" -type f -mtime +30 -delete
libraries=$(pkg-config --cflags freetype2)
configuration=$(cat .clang-tidy CMakeLists.txt tools/check_tidy.sh | sha256sum)

check() {
    local sources stamp
    sources=$(g++ -std=c++20 -I. $libraries -MM -MT '' "$1") || return 1
    sources=$(tr -d ':\\\n' <<<"$sources")
    stamp=$stamps/$( (echo "$configuration"; sha256sum $sources) | sha256sum | cut -c1-32)
    [ -e "$stamp" ] && touch "$stamp" && return 0
    clang-tidy-14 --quiet -p build/native --warnings-as-errors='*' "$1" 2>/dev/null && touch "$stamp"
}
export -f check
export stamps libraries configuration
git ls-files 'platform/*.cpp' 'platform/posix/*.cpp' 'page/*.cpp' 'assets/*.cpp' 'actions/*.cpp' \
    'scene/*.cpp' 'editing/*.cpp' 'dialogs/rules/*.cpp' 'update/*.cpp' 'app/*.cpp' |
    grep -vE '^platform/win32/|^app/(orvanel|main_window|window_procedure)\.cpp|^scene/gl_window\.cpp|^actions/menu(_draw|_icon_cache|_image|_items)?\.cpp' |
    xargs -P "$(nproc)" -I{} bash -c 'check {}'

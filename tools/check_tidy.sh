#!/bin/bash
# clang-tidy over all that the program is made of: the core as it is built for this machine, and what
# needs the Windows headers as it is built for 32-bit Windows, with the cross compiler's headers.
# tests/, tools/, bench/ and fuzz/ stay out: nothing of theirs is shipped. A file whose findings are
# known to be none (same bytes of it, of the headers that it includes and of the configuration) is not
# looked at again, by no checkout on this machine.
. "$(dirname "$0")/lib.sh"
cd "$ORVANEL_ROOT" || exit 1
stamps=$ORVANEL_CACHE/tidy
mkdir -p "$stamps"
find "$stamps" -type f -mtime +30 -delete

# How each file is compiled. Folders of this script's own: builds that run at the same time write
# theirs anew, and the tests compile some files once more.
configure() { # preset
    local log=build/tidy-$1/configure.log
    mkdir -p "build/tidy-$1"
    cmake --preset "$1" -B "build/tidy-$1" -DORVANEL_TESTS=OFF >"$log" 2>&1 || { cat "$log"; return 1; }
}
configure native &
configure win32 || exit 1
wait $! || exit 1

# The cross compiler's folders without those of GCC's own headers, in whose place clang has its own.
windows_folders=$(i686-w64-mingw32-g++ -E -v -x c++ /dev/null 2>&1 >/dev/null |
    sed -n '/^#include </,/^End of search/s/^ //p' |
    grep -vxF -e "$(i686-w64-mingw32-g++ -print-file-name=include)" \
        -e "$(i686-w64-mingw32-g++ -print-file-name=include-fixed)")
windows_options="--extra-arg=-nostdinc++ $(printf -- ' --extra-arg=-isystem%s' $windows_folders)"
# Windows hands pointers over as numbers (parameters of messages, data kept with windows and menu
# items): every procedure turns them back.
windows_options="$windows_options --checks=-performance-no-int-to-ptr"
libraries=$(pkg-config --cflags freetype2)
configuration=$( (cat .clang-tidy CMakeLists.txt tools/check_tidy.sh; echo "$windows_options") | sha256sum)

check() {
    local compiler="g++ $libraries" options="-p build/tidy-native" sources stamp
    if ! grep -qF "\"file\": \"$ORVANEL_ROOT/$1\"" build/tidy-native/compile_commands.json; then
        compiler="i686-w64-mingw32-g++ -Iresources"
        options="-p build/tidy-win32 $windows_options"
    fi
    # The system's headers are not among them: reading those is left out where it works without.
    sources=$($compiler -std=c++20 -I. -MM -MT '' -nostdinc -MG "$1" 2>/dev/null ||
        $compiler -std=c++20 -I. -MM -MT '' "$1") || return 1
    sources=$(tr -d ':\\\n' <<<"$sources")
    stamp=$stamps/$( (echo "$configuration"; sha256sum $sources) | sha256sum | cut -c1-32)
    [ -e "$stamp" ] && touch "$stamp" && return 0
    clang-tidy-14 --quiet $options --warnings-as-errors='*' "$1" 2>/dev/null && touch "$stamp"
}
export -f check
export ORVANEL_ROOT stamps libraries windows_options configuration
git ls-files 'platform/*.cpp' 'page/*.cpp' 'assets/*.cpp' 'actions/*.cpp' 'scene/*.cpp' \
    'editing/*.cpp' 'dialogs/*.cpp' 'update/*.cpp' 'app/*.cpp' |
    xargs -P "$(nproc)" -I{} bash -c 'check {}'

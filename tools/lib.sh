# Sourced by the scripts beside it: where things are kept, and what the machine needs.

ORVANEL_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# Kept between runs and between checkouts: both Wines and the compiler cache.
ORVANEL_CACHE=${ORVANEL_CACHE:-/var/cache/orvanel}
WINE32_ROOT=$ORVANEL_CACHE/wine32
WINE64_PREFIX=$ORVANEL_CACHE/prefix64
WINE32_PREFIX=/root/prefix32 # inside WINE32_ROOT
export CCACHE_DIR=${CCACHE_DIR:-$ORVANEL_CACHE/ccache}
export CCACHE_BASEDIR=$ORVANEL_ROOT CCACHE_NOHASHDIR=1
export CCACHE_SLOPPINESS=pch_defines,time_macros # what precompiled headers need

# Wine asks for browser and .NET packages at first use and writes menu entries; none is wanted.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
export WINEDEBUG=${WINEDEBUG:--all}
# What runs under Wine here asks nobody outside: to it the system's proxy is a port of this machine
# where nothing listens. A proxy set in the prefix's own Internet settings is used in its place.
WINE_PROXY=http://127.0.0.1:9

PACKAGES_BUILD="ca-certificates ccache cmake g++ g++-mingw-w64-i686 g++-mingw-w64-x86-64 git googletest
  libegl-dev libfreetype-dev libgl-dev libgl1-mesa-dri libglu1-mesa-dev libssl-dev ninja-build pkg-config"
# Wine's signatures are those of libgnutls30, which it only recommends.
PACKAGES_RUN="debootstrap fonts-wine imagemagick libgnutls30 openbox wine64 x11-utils xdotool xvfb"
PACKAGES_TEST="clang-14 clang-format-14 clang-tidy-14 iproute2 libclang-rt-14-dev python3
  python3-pil python3-pytest"
PACKAGES_BENCH="libbenchmark-dev libcurl4-openssl-dev libpugixml-dev libtinyobjloader-dev python3"
PACKAGES_ARTWORK="icoutils librsvg2-bin"

need_root() {
    [ "$(id -u)" = 0 ] && return
    echo "Installing packages and running 32-bit Wine need root; asking sudo." >&2
    exec sudo --preserve-env=DISPLAY,XAUTHORITY,CI,ORVANEL_CACHE "$0" "$@"
}

# Installs what of the named packages is missing; says nothing when all is there.
install_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} = 0 ] && return
    echo "Installing: ${missing[*]}"
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >"$ORVANEL_CACHE/apt.log" 2>&1 ||
        { tail -20 "$ORVANEL_CACHE/apt.log"; return 1; }
}

# 32-bit Wine lives in a small Debian of its own: adding the i386 architecture to the machine fails
# where its libraries are of other versions than the archive's. The marker tells a finished one from
# one that was interrupted.
make_wine32_root() {
    [ -e "$WINE32_ROOT/.complete" ] && return
    echo "Setting up 32-bit Wine in $WINE32_ROOT (once, about a minute)"
    rm -rf "$WINE32_ROOT"
    debootstrap --arch=i386 --variant=minbase \
        --include=wine32,wine,fonts-wine,libgl1-mesa-dri,libgl1,libglu1-mesa,libgnutls30 \
        bookworm "$WINE32_ROOT" >"$ORVANEL_CACHE/debootstrap.log" 2>&1 ||
        { tail -20 "$ORVANEL_CACHE/debootstrap.log"; return 1; }
    touch "$WINE32_ROOT/.complete"
}

# A prefix whose user folders are its own: Wine would link them to the home folder.
make_prefix() { # runner, prefix as this machine sees it
    [ -e "$2/.complete" ] && return
    echo "Making the Wine prefix $2 (once)"
    rm -rf "$2"
    mkdir -p "$2"
    "$1" wineboot --init >"$ORVANEL_CACHE/wineboot.log" 2>&1 ||
        { tail -20 "$ORVANEL_CACHE/wineboot.log"; return 1; }
    local user link
    for user in "$2"/drive_c/users/*; do
        for link in "$user"/*; do
            [ -L "$link" ] || continue
            rm "$link"
            mkdir "$link"
        done
    done
    touch "$2/.complete"
}

# Wine does not look into the folder of fonts-wine by itself here; without Tahoma it would put a much
# wider face in its place, and texts would not be tested as they are seen.
give_tahoma() { # prefix
    local face
    mkdir -p "$1/drive_c/windows/Fonts"
    for face in tahoma.ttf tahomabd.ttf; do
        [ -e "$1/drive_c/windows/Fonts/$face" ] ||
            cp "/usr/share/wine/fonts/$face" "$1/drive_c/windows/Fonts/"
    done
}

# Programs look up even the address of this machine by its name.
give_hosts() {
    [ -e "$WINE32_ROOT/etc/hosts" ] || echo "127.0.0.1 localhost" >"$WINE32_ROOT/etc/hosts"
}

make_wines() {
    make_wine32_root
    give_hosts
    make_prefix "$ORVANEL_ROOT/tools/wine64.sh" "$WINE64_PREFIX"
    make_prefix "$ORVANEL_ROOT/tools/wine32.sh" "$WINE32_ROOT$WINE32_PREFIX"
    give_tahoma "$WINE64_PREFIX"
    give_tahoma "$WINE32_ROOT$WINE32_PREFIX"
}

# A second prefix beside the usual one, for what runs at the same time. Prints what ORVANEL_PREFIX
# wants.
second_prefix() { # preset
    local usual=$WINE64_PREFIX outside=
    [ "$1" = win64 ] || { usual=$WINE32_PREFIX outside=$WINE32_ROOT; }
    local copy=$outside$usual.dialogs
    if [ ! -e "$copy" ]; then
        rm -rf "$copy.new"
        cp -a "$outside$usual" "$copy.new" && mv "$copy.new" "$copy" || return 1
    fi
    echo "$usual.dialogs"
}

# Keeps Wine's services up in a prefix, which all programs after it share, until end_wine. Fails when
# Wine does not start.
begin_wine() { # preset, prefix or nothing for the usual one
    export ORVANEL_PREFIX=$2
    coproc KEEPER { exec "$ORVANEL_ROOT/tools/wine${1#win}.sh" "build/$1/tests/prefix_keeper.exe" 2>/dev/null; }
    # Bash takes these away as soon as the program ends.
    WINE_KEEPER=${KEEPER_PID:-} KEEPER_INPUT=${KEEPER[1]:-}
    local output=${KEEPER[0]:-}
    [ -n "$output" ] && read -r -t 60 <&"$output"
}

end_wine() {
    [ -n "${KEEPER_INPUT:-}" ] && exec {KEEPER_INPUT}>&-
    KEEPER_INPUT=
    local tenth
    for tenth in $(seq 100); do
        [ -n "${WINE_KEEPER:-}" ] && kill -0 "$WINE_KEEPER" 2>/dev/null || return 0
        sleep 0.1
    done
    kill "$WINE_KEEPER" 2>/dev/null
    return 0
}

# Starts a virtual display with a window manager on a free number and sets DISPLAY; end_display ends
# both. GL is drawn by the processor.
begin_display() {
    local number_file
    number_file=$(mktemp)
    Xvfb -displayfd 3 -screen 0 "${1:-1920x1080x24}" -nolisten tcp 3>"$number_file" 2>/dev/null &
    XVFB_PID=$!
    for _ in $(seq 100); do
        [ -s "$number_file" ] && break
        sleep 0.1
    done
    DISPLAY=:$(tr -d '\n' <"$number_file")
    export DISPLAY
    rm -f "$number_file"
    openbox >/dev/null 2>&1 &
    OPENBOX_PID=$!
    sleep 0.3
}

end_display() {
    [ -z "${OPENBOX_PID:-}" ] || kill "$OPENBOX_PID" 2>/dev/null || true
    [ -z "${XVFB_PID:-}" ] || kill "$XVFB_PID" 2>/dev/null || true
    wait ${OPENBOX_PID:-} ${XVFB_PID:-} 2>/dev/null || true
    OPENBOX_PID= XVFB_PID=
    return 0
}

build_variant() { # preset
    [ -e "build/$1/build.ninja" ] || cmake --preset "$1" >"$ORVANEL_CACHE/configure-$1.log" 2>&1 ||
        { cat "$ORVANEL_CACHE/configure-$1.log"; return 1; }
    # Quiet when all goes well; the whole output when it does not.
    mkdir -p build
    cmake --build --preset "$1" >"build/build-$1.log" 2>&1 ||
        { grep -vE '^\[[0-9]+/[0-9]+\] (Building|Linking)' "build/build-$1.log"; return 1; }
}

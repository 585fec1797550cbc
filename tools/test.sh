#!/bin/bash
# Installs what is missing, builds everything and runs every test: source checks, the core natively
# under sanitizers, all tests as 32-bit and 64-bit Windows programs, the fuzzers over their seeds, and
# the program end to end with mouse and keyboard. Ends with "N passed, N failed".
#   tools/test.sh [stage…]     only these stages: checks native win64 win32 fuzz e2e
#   FUZZ_SECONDS=600 tools/test.sh fuzz     a longer run of each fuzzer
set -uo pipefail
. "$(dirname "$0")/lib.sh"
need_root "$@"
cd "$ORVANEL_ROOT"
mkdir -p "$ORVANEL_CACHE" build
stages=${*:-checks native win64 win32 fuzz e2e}
fuzz_seconds=${FUZZ_SECONDS:-20}
jobs=$(nproc)
reports=$ORVANEL_ROOT/build/reports

wants() {
    case " $stages " in *" $1 "*) return 0 ;; esac
    return 1
}

say() {
    printf '\n== %s (%s)\n' "$1" "$(date +%T)"
}

install_packages $PACKAGES_BUILD $PACKAGES_RUN $PACKAGES_TEST || exit 1
# A display with a window manager of its own; fixed size, so that window sizes can be asserted.
trap end_display EXIT
begin_display 1920x1080x24
make_wines || exit 1
rm -rf "$reports" build/*/reports/*.xml
mkdir -p "$reports"
export ORVANEL_REPORTS=$reports

# A step outside the test runners counts as one test.
step() { # name, command…
    local name=$1 output=$reports/$1.log
    shift
    if "$@" >"$output" 2>&1; then
        echo passed >"$reports/$name.step"
    else
        echo failed >"$reports/$name.step"
        echo "FAILED: $name"
        tail -40 "$output"
    fi
}

build_step() { # preset
    build_variant "$1" && return
    echo failed >"$reports/build-$1.step"
    return 1
}

run_ctest() { # preset, name of the run, programs at a time, ctest's choice of tests…
    local preset=$1 name=$2 at_once=$3
    shift 3
    ctest --test-dir "build/$preset" --output-junit "$reports/ctest-$name.xml" -j "$at_once" "$@" \
        --output-on-failure --no-tests=error >"$reports/ctest-$name.log" 2>&1 ||
        grep -E 'FAILED|Failed|\*\*\*|Failure|error:|ERROR: ' "$reports/ctest-$name.log" | head -60
    [ -e "$reports/ctest-$name.xml" ]
}

# Tests on one desktop run one at a time, as they share one foreground window. Two halves, each on a
# display and in a prefix of its own, wait side by side.
windows_dialogs='^test_(dialog|options)'

run_windows_tests() { # preset, name of the half, prefix or nothing for the usual one, ctest's choice…
    local preset=$1 half=$2 prefix=$3
    shift 3
    trap 'end_wine; end_display' EXIT
    begin_display 1920x1080x24
    begin_wine "$preset" "$prefix" && run_ctest "$preset" "$preset.$half" 1 "$@" && return
    echo failed >"$reports/ctest-$preset.$half.step"
    echo "FAILED: Wine or ctest, $preset.$half"
}

run_fuzzers() {
    build_step fuzz || return
    local fuzzer name running=0
    for fuzzer in build/fuzz/fuzz/fuzz_*; do
        [ -x "$fuzzer" ] && [ -f "$fuzzer" ] || continue
        name=${fuzzer##*/fuzz_}
        mkdir -p "build/fuzz/corpus/$name"
        step "fuzz-$name" nice -n 19 "$fuzzer" -max_total_time="$fuzz_seconds" -timeout=10 -rss_limit_mb=4096 \
            -max_len=65536 -dict="fuzz/$name.dict" -artifact_prefix="$reports/fuzz-$name-" \
            -print_final_stats=1 "build/fuzz/corpus/$name" "fuzz/seeds/$name" &
        running=$((running + 1))
        if [ "$running" -ge "$jobs" ]; then
            wait -n
            running=$((running - 1))
        fi
    done
    wait $(jobs -rp | grep -vxF -e "$XVFB_PID" -e "$OPENBOX_PID") 2>/dev/null
}

# The program is single in its prefix and its tests want the foreground: whatever runs at the same time
# has a prefix and a display of its own.
run_e2e() { # preset, name of the group, prefix inside 32-bit Wine or nothing, pytest's arguments…
    local preset=$1 name=e2e-$1-$2 prefix=$3
    shift 3
    trap end_display EXIT
    begin_display 1920x1080x24
    ORVANEL_VARIANT=$preset ORVANEL_PREFIX=$prefix ORVANEL_REPORTS=$reports/$name \
        /usr/bin/python3 -m pytest -q -p no:cacheprovider "$@" --junit-xml="$reports/$name.xml" \
        -o junit_suite_name="$name" >"$reports/$name.log" 2>&1 ||
        tail -60 "$reports/$name.log"
    [ -e "$reports/$name.xml" ] || echo failed >"$reports/$name.step"
    end_display
}

if wants checks; then
    say "Source checks"
    step format bash -c "git ls-files '*.cpp' '*.h' | xargs clang-format-14 --dry-run --Werror"
    step house-rules tools/check_rules.sh
fi
if wants native; then
    say "Core, native, with sanitizers"
    build_step native && { run_ctest native native "$jobs" || echo failed >"$reports/ctest-native.step"; }
fi
# All at once: most of the time a Windows test waits for windows and clocks, and what searches the
# sources and the parsers for faults leaves it the processor.
runners=
if wants fuzz || wants checks; then
    say "Fuzzers, $fuzz_seconds seconds each, and the deeper source checks"
    (
        wants fuzz && run_fuzzers
        wants checks && step clang-tidy nice -n 19 tools/check_tidy.sh
    ) &
    runners=$!
fi
# The 32-bit ones first: they take the longest.
for variant in win32 win64; do
    if wants $variant; then
        say "Windows programs under Wine, $variant"
        build_step $variant || continue
        # Without a prefix of their own the two halves would be in each other's way.
        second=$(second_prefix $variant) || { echo failed >"$reports/prefix-$variant.step"; continue; }
        (run_windows_tests $variant page "" -E "$windows_dialogs") &
        runners="$runners $!"
        (run_windows_tests $variant dialogs "$second" -R "$windows_dialogs") &
        runners="$runners $!"
    fi
done
[ -z "$runners" ] || wait $runners
if wants e2e; then
    say "End to end"
    for variant in win32 win64; do
        build_step $variant
    done
    # Two halves of it with the program we ship, and of the 64-bit one that it starts, hands a page
    # over, runs an action and ends.
    dialogs="tests/e2e/test_dialogs_*.py tests/e2e/test_update.py"
    (run_e2e win32 page "" tests/e2e $(printf -- '--ignore=%s ' $dialogs)) &
    runners=$!
    (
        run_e2e win32 dialogs "$(second_prefix win32)" $dialogs
        run_e2e win64 page "" tests/e2e \
            -k "first_start or second_start or runs_its_first_action or escape_ends"
    ) &
    wait $runners $!
fi
say "All done; logs and pictures in build/reports and build/*/pictures"
/usr/bin/python3 tools/summarise.py "$reports" build

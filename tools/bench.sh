#!/bin/bash
# Runs the benchmarks and records their results with machine and date in bench/results.
#   tools/bench.sh native [benchmark arguments…]     the core, Google Benchmark
#   tools/bench.sh wine                              start and frame of the program under Wine
set -euo pipefail
. "$(dirname "$0")/lib.sh"
need_root "$@"
cd "$ORVANEL_ROOT"
mkdir -p "$ORVANEL_CACHE" bench/results
date=$(date +%F)
kind=${1:-native}
shift || true

case $kind in
native)
    install_packages $PACKAGES_BUILD $PACKAGES_BENCH
    build_variant bench
    # Memory costs as much as the machine's other guests leave of it, and that changes from second to
    # second: the rivals take turns and are compared by their medians.
    build/bench/orvanel_bench --benchmark_enable_random_interleaving=true --benchmark_repetitions=11 \
        --benchmark_min_time=0.2 --benchmark_report_aggregates_only=true \
        --benchmark_out="bench/results/$date-native.json" --benchmark_out_format=json "$@"
    ;;
wine)
    install_packages $PACKAGES_BUILD $PACKAGES_RUN $PACKAGES_BENCH
    trap end_display EXIT
    begin_display
    make_wines
    for variant in win32 win64; do
        build_variant $variant
        cmake --build --preset $variant --target wine_bench >/dev/null
        /usr/bin/python3 bench/wine/record.py $variant "bench/results/$date-$variant.json"
    done
    ;;
*)
    echo "tools/bench.sh native|wine" >&2
    exit 2
    ;;
esac

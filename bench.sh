#!/usr/bin/env bash
# Measures Quillgate against bare library calls and prints the ratios; see docs/performance.md.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh

usage() {
    cat <<'TEXT'
Usage: ./bench.sh [--no-install] [-- BENCHMARK-ARGUMENTS]

Builds and runs the benchmarks, several interleaved rounds of each, and prints the ratio of the minima.
Arguments behind -- go to the program, as in ./bench.sh -- --benchmark_filter=List
TEXT
}

install=yes
while [ $# -gt 0 ]; do
    case $1 in
        --no-install) install=no ;;
        --help | -h) usage; exit 0 ;;
        --) shift; break ;;
        *) usage >&2; exit 2 ;;
    esac
    shift
done

[ $install = no ] || install_missing "to build and measure Quillgate" "${build_packages[@]}" "${demo_packages[@]}"
build release quillgate-bench
QT_QPA_PLATFORM=offscreen LD_PRELOAD=libnss_wrapper.so build/release/bench/quillgate-bench \
    --benchmark_repetitions=5 --benchmark_enable_random_interleaving=true --benchmark_min_time=0.1 "$@"

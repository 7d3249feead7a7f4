#!/usr/bin/env bash
# Installs what is missing, builds the fuzz targets and runs each for a while. What they find is kept below
# build/fuzz/corpus, so that the next run goes on from there.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh

usage() {
    cat <<'TEXT'
Usage: ./fuzz.sh [--no-install] [--seconds N] [--target NAME]

Runs every parser of foreign bytes under libFuzzer, AddressSanitizer and UndefinedBehaviorSanitizer, and prints a
table. Ends with 1 when a target has found something; what made it fail is kept in build/fuzz/findings.
  --no-install    do not install Debian packages, take the machine as it is
  --seconds N     seconds for each target (60)
  --target NAME   this target alone, as cms
  --help          this text
TEXT
}

install=yes
seconds=60
only=
while [ $# -gt 0 ]; do
    case $1 in
        --no-install) install=no ;;
        --seconds) seconds=${2:?--seconds needs a number}; shift ;;
        --target) only=${2:?--target needs a name}; shift ;;
        --help | -h) usage; exit 0 ;;
        *) usage >&2; exit 2 ;;
    esac
    shift
done

[ $install = no ] || install_missing "to fuzz Quillgate" "${build_packages[@]}" "${demo_packages[@]}" "${fuzz_packages[@]}"
build fuzz fuzz_targets

built=build/fuzz/fuzz
findings=build/fuzz/findings
mkdir -p "$findings"
# The seeds' keys are new each time; the corpus of earlier runs still leads to the same places.
LD_PRELOAD=libnss_wrapper.so ASAN_OPTIONS=verify_asan_link_order=0 "$built/fuzz-seeds"

export LSAN_OPTIONS=suppressions=$PWD/fuzz/leaks.supp:print_suppressions=0

# run_target NAME: runs one target, prints its line of the table, and fails when it does.
run_target() {
    local name=$1 log=$findings/$1.log result=well
    local corpus=build/fuzz/corpus/$name
    mkdir -p "$corpus"
    # CIniFile tells the screen what it refuses: that is shut off.
    "$built/fuzz_$name" -max_total_time="$seconds" -max_len=20000 -timeout=20 -rss_limit_mb=2048 -print_final_stats=1 -close_fd_mask=1 \
        -artifact_prefix="$findings/$name-" "$corpus" "$built/seeds/$name" >"$log" 2>&1 || result=FOUND
    printf '%-15s %12s %10s %8s  %s\n' "$name" "$(last stat::number_of_executed_units: "$log")" \
        "$(coverage "$log")" "$(find "$corpus" -type f | wc -l)" "$result"
    [ $result = well ] || { grep -E 'ERROR|SUMMARY|what\(\)|runtime error' "$log" || tail -3 "$log"; return 1; }
}

last() { grep -a "^$1" "$2" | tail -1 | awk '{print $2}'; }
coverage() { grep -aoE 'cov: [0-9]+' "$1" | tail -1 | cut -d' ' -f2; }

printf '%-15s %12s %10s %8s  %s\n' target runs coverage corpus result
failed=0
for target in "$built"/fuzz_*; do
    name=${target##*/fuzz_}
    [ -d "$built/seeds/$name" ] || continue
    [ -z "$only" ] || [ "$only" = "$name" ] || continue
    run_target "$name" || failed=1
    found=yes
done
[ -n "${found:-}" ] || { echo "There is no target $only" >&2; exit 2; }
exit $failed

#!/usr/bin/env bash
# Compares three lists of the toolkit's operations: what the wrappers call, what the two libraries of the release build
# export, and the table of docs/toolkit.md. Prints what is missing where, and fails when anything is.
#
# A row of the table says "works", "not supported" or "-" (not an operation of that library) for each side, and names
# the test file that shows it, below tests/. That file must be there and mention the operation.
set -euo pipefail
cd "$(dirname "$0")/.."
export LC_ALL=C

build=${1:-build/release}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
missing=0

# complain TEXT FILE: prints each line of a file behind a text; any line is a failure.
complain() {
    [ -s "$2" ] || return 0
    sed "s|^|$1: |" "$2"
    missing=1
}

# Rows as "operation|ZRTK|GPKI|test", without blanks at the ends and without backticks.
awk '/^## /{table = /^## Operations$/} table && /^\| `/' docs/toolkit.md |
    sed 's/`//g; s/^| *//; s/ *|$//; s/ *| */|/g' > "$scratch/rows"

check_side() {
    local prefix=$1 library=$2 column=$3
    grep -rhoE "\"${prefix}_[A-Za-z0-9_]+\"" API/ZRAPIWrap | tr -d '"' | sort -u > "$scratch/called"
    nm -D --defined-only "$build/toolkit/$library" | awk '{print $3}' | grep "^${prefix}_" | sort -u > "$scratch/exported"
    awk -F'|' -v p="${prefix}_" -v c="$column" '$c == "works" || $c == "not supported" {print p $1}' "$scratch/rows" |
        sort > "$scratch/listed"
    awk -F'|' -v c="$column" '$c != "works" && $c != "not supported" && $c != "-"' "$scratch/rows" > "$scratch/strange"
    comm -23 "$scratch/called" "$scratch/exported" > "$scratch/result"
    complain "not exported" "$scratch/result"
    comm -23 "$scratch/exported" "$scratch/called" > "$scratch/result"
    complain "exported, but called by nobody" "$scratch/result"
    sort -u "$scratch/called" "$scratch/exported" | comm -23 - "$scratch/listed" > "$scratch/result"
    complain "no row in docs/toolkit.md" "$scratch/result"
    sort -u "$scratch/called" "$scratch/exported" | comm -13 - "$scratch/listed" > "$scratch/result"
    complain "row of no operation" "$scratch/result"
    uniq -d "$scratch/listed" > "$scratch/result"
    complain "two rows" "$scratch/result"
    complain "neither works nor not supported nor -" "$scratch/strange"
}

check_tests() {
    local operation tests file
    : > "$scratch/result"
    while IFS='|' read -r operation _ _ tests; do
        for file in ${tests//,/ }; do
            grep -qF "${operation##*_}" "tests/$file" 2>/dev/null || echo "$operation ($file)" >> "$scratch/result"
        done
        [ -n "$tests" ] || echo "$operation" >> "$scratch/result"
    done < "$scratch/rows"
    complain "no test" "$scratch/result"
}

check_side ZRTK libZRToolkitV30-v3.4.2.20.so 2
check_side GPKI libgpkiapi_v15.so 3
check_tests
exit $missing

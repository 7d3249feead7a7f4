#!/usr/bin/env bash
# Runs clang-tidy over the sources of the release build, or over the files named. A file is looked at again only
# when it, a header of ours or the configuration has changed since it passed.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build/release
stamps=$build/tidy
mkdir -p "$stamps"
state=$(git ls-files '*.h' .clang-tidy | xargs cat | sha256sum | cut -d' ' -f1)
export build stamps state

check() {
    local file=$1 stamp
    stamp=$stamps/$({ echo "$state"; cat "$file"; } | sha256sum | cut -d' ' -f1)
    [ -e "$stamp" ] && return 0
    clang-tidy --quiet -p "$build" "$file" 2>/dev/null && touch "$stamp"
}
export -f check

# The product's sources that the build compiles, from its list of compilations. Tests are left to the compiler and
# to the formatter: looking at them as well would double the time.
own_sources() {
    grep -o '"file": "[^"]*"' "$build/compile_commands.json" | cut -d'"' -f4 | sort -u |
        grep -v /build/ | sed "s|^$PWD/||" | grep -v '^tests/'
}

if [ $# -gt 0 ]; then printf '%s\n' "$@"; else own_sources; fi | xargs -P "$(nproc)" -I{} bash -c 'check {}'

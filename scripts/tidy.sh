#!/usr/bin/env bash
# Runs clang-tidy over the sources of the release build, or over the files named. What has passed is looked at again
# only when it, a header of ours or the configuration has changed.
#
# Most of the time goes into the headers of libraries, so that sources are looked at several at once, in the way of a
# unity build; where that does not compile, because two sources have helpers of one name, each is looked at by itself.
set -euo pipefail
cd "$(dirname "$0")/.."

alone=build/tidy/alone
together=build/tidy/together
stamps=build/tidy/stamps
mkdir -p "$stamps"
state=$(git ls-files '*.h' .clang-tidy | xargs cat | sha256sum | cut -d' ' -f1)
export alone together stamps state

# Nothing is printed but findings.
tidy() { clang-tidy --quiet --checks=-bugprone-suspicious-include -p "$@" 2>/dev/null; }

check() {
    local file=$1 stamp
    stamp=$stamps/$({ echo "$state"; cat "$file"; } | sha256sum | cut -d' ' -f1)
    [ -e "$stamp" ] && return 0
    tidy "$alone" "$file" && touch "$stamp"
}

# check_together UNITY: the sources that a file of the unity build includes.
check_together() {
    local unity=$1 sources stamp source
    mapfile -t sources < <(sed -n 's/^#include "\(.*\)"$/\1/p' "$unity" | grep -v /build/)
    [ ${#sources[@]} -gt 0 ] || return 0
    stamp=$stamps/$({ echo "$state"; cat "${sources[@]}"; } | sha256sum | cut -d' ' -f1)
    [ -e "$stamp" ] && return 0
    # One source's local may have the name of another's helper.
    tidy "$together" --extra-arg=-Wno-shadow "$unity" >/dev/null && touch "$stamp" && return 0
    for source in "${sources[@]}"; do check "$source" || return 1; done
    touch "$stamp"
}
export -f tidy check check_together

# The product's sources that a build compiles, from its list of compilations. Tests are left to the compiler and to
# the formatter: looking at them as well would double the time.
own_sources() {
    grep -o '"file": "[^"]*"' "$1/compile_commands.json" | cut -d'"' -f4 | sort -u | grep -v "^$PWD/\($together/\)\?tests/"
}

cmake --preset release -B "$alone" -DCMAKE_UNITY_BUILD=OFF >/dev/null
if [ $# -gt 0 ]; then
    printf '%s\n' "$@" | xargs -P "$(nproc)" -I{} bash -c 'check {}'
    exit
fi
cmake --preset release -B "$together" -DQUILLGATE_LINT=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=8 >/dev/null
own_sources "$together" | grep /unity_ | xargs -P "$(nproc)" -I{} bash -c 'check_together {}'
own_sources "$together" | grep -v /build/ | sed "s|^$PWD/||" | xargs -P "$(nproc)" -I{} bash -c 'check {}'

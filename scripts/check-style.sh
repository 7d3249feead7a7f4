#!/usr/bin/env bash
# Style checks: formatting, the project's own rules, the pages of the interface, the list of operations, and the linter over
# every source of the release build.
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t sources < <(git ls-files '*.h' '*.cpp' '*.c')
clang-format --dry-run -Werror "${sources[@]}"

# Unbounded or unterminated copies have one bounded helper; anything else is a mistake.
if git grep -nE '\b(strcpy|strcat|sprintf|vsprintf|strncpy|gets)\(' -- API dialogs toolkit tools; then
    echo "use copyText or snprintf instead of the above" >&2
    exit 1
fi
# Tests wait for conditions.
if git grep -nE '\b(sleep|usleep|sleep_for|qSleep)\(' -- tests; then
    echo "wait for the condition instead of sleeping" >&2
    exit 1
fi

# Every function, parameter and field of the host headers has its text, or the making of the pages fails.
undescribed=$(git grep -L '@file' -- 'include/quillgate/*.h' || true)
if [ -n "$undescribed" ]; then
    echo "$undescribed: without a @file comment the pages pass the header over in silence" >&2
    exit 1
fi
mkdir -p build
doxygen docs/Doxyfile

# What the wrappers call, the toolkit exports, the manual lists and the tests mention is one.
./scripts/toolkit-symbols.sh

./scripts/tidy.sh "$@"

#!/usr/bin/env bash
# check-headers.sh DIRECTORY: each header of the interface compiles alone, as a host's compiler would take it.
set -euo pipefail
include=$1
# A header of macros alone makes an empty unit, which C forbids; a host's file is never empty.
host='int host(void); int host(void) { return 0; }'
failed=0
for header in "$include"/quillgate/*.h; do
    for compiler in "gcc -xc -std=c11" "clang -xc -std=c11" "g++ -xc++ -std=c++17" "clang++ -xc++ -std=c++17"; do
        # shellcheck disable=SC2086 # words, on purpose
        echo "#include \"quillgate/${header##*/}\"
$host" | $compiler -I"$include" -Wall -Wextra -pedantic -Werror -fsyntax-only - || {
            echo "${header##*/} with $compiler" >&2
            failed=1
        }
    done
done
exit $failed

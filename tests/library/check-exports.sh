#!/usr/bin/env bash
# check-exports.sh LIBRARY LIST: the dynamic symbols are those of the list, no more and no less; each typed name reads
# as the list says; and the plain name is the same code.
set -euo pipefail
library=$1 list=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

grep -v '^#' "$list" | grep . >"$work/rows"
# A row is "signature mangled" or one plain name.
awk '/ _Z/ { split($1, name, "("); print name[1]; print $NF; next } { print }' "$work/rows" | sort >"$work/expected"
nm -D --defined-only "$library" | awk '{ print $NF }' | sort >"$work/exported"
diff -u "$work/expected" "$work/exported" || { echo "exported symbols differ from $list"; exit 1; }

grep ' _Z' "$work/rows" >"$work/typed"
awk '{ print $NF }' "$work/typed" | c++filt >"$work/demangled"
sed 's/ _Z[^ ]*$//' "$work/typed" | diff -u - "$work/demangled" || { echo "a signature of $list is wrong"; exit 1; }

nm -D --defined-only "$library" | awk '{ print $NF, $1 }' >"$work/addresses"
awk 'NR == FNR { at[$1] = $2; next }
     { split($1, name, "("); if (at[name[1]] != at[$NF]) { print name[1] " is other code than " $NF; bad = 1 } }
     END { exit bad }' "$work/addresses" "$work/typed"
echo "$(wc -l <"$work/exported") symbols as listed"

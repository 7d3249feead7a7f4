#!/usr/bin/env bash
# check-dependencies.sh LIBRARY: needs Qt 5 and the C and C++ run-time libraries, and no cryptographic library: those are
# loaded from the work directory when a session starts.
set -euo pipefail
allowed='libQt5(Core|Gui|Widgets)\.so\.5|libstdc\+\+\.so\.6|libgcc_s\.so\.1|libm\.so\.6|libc\.so\.6|ld-linux-x86-64\.so\.2'
needed=$(objdump -p "$1" | awk '$1 == "NEEDED" { print $2 }' | grep -vE '^lib(asan|ubsan)\.so')
echo "$needed"
if echo "$needed" | grep -vxE "$allowed"; then
    echo "the above must not be needed"
    exit 1
fi
[ "$(objdump -p "$1" | awk '$1 == "SONAME" { print $2 }')" = libquillgate.so.1 ]

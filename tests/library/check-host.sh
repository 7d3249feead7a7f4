#!/usr/bin/env bash
# check-host.sh SAMPLES NSS_WRAPPER HOST...: HOST, which gets a work directory and a password as its last arguments, lists
# the home directory of SAMPLES: the serial numbers that it prints are those that openssl reads from the files.
set -euo pipefail
samples=$1 nss_wrapper=$2
shift 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

echo "tester:x:$(id -u):$(id -g)::$samples/home:/bin/sh" >"$work/passwd"
echo "tester:x:$(id -g):" >"$work/group"
LD_PRELOAD=$nss_wrapper NSS_WRAPPER_PASSWD=$work/passwd NSS_WRAPPER_GROUP=$work/group \
    "$@" "$samples/work" for-this-test | sort >"$work/listed"

find "$samples/home" -iname signcert.der -o -iname '*_sig.cer' | while read -r file; do
    openssl x509 -inform DER -in "$file" -noout -serial
done | sed 's/serial=//' | tr A-F a-f | sort >"$work/expected"
[ -s "$work/expected" ]
diff -u "$work/expected" "$work/listed"
echo "$(wc -l <"$work/listed") certificates listed"

#!/usr/bin/env bash
# Installs what the tests need, builds, and runs all tests. A second run only builds what has changed.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh

usage() {
    cat <<'TEXT'
Usage: ./test.sh [--no-install] [--preset release|debug|asan] [-- CTEST-ARGUMENTS]

Builds Quillgate and runs all of its tests.
  --no-install    do not install Debian packages, take the machine as it is
  --preset NAME   build and test this preset (release; asan runs them under the sanitizers)
  --help          this text
Arguments behind -- go to ctest, as in ./test.sh -- -R dialogs
TEXT
}

install=yes
preset=release
while [ $# -gt 0 ]; do
    case $1 in
        --no-install) install=no ;;
        --preset) preset=${2:?--preset needs a name}; shift ;;
        --help | -h) usage; exit 0 ;;
        --) shift; break ;;
        *) usage >&2; exit 2 ;;
    esac
    shift
done

[ $install = no ] || install_missing "to build and test Quillgate" \
    "${build_packages[@]}" "${demo_packages[@]}" "${test_packages[@]}"
build "$preset" all
ctest --preset "$preset" "$@"

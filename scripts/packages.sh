# What Quillgate needs from Debian, and the functions that install and build. Sourced by demo.sh and test.sh.
# shellcheck shell=bash

# To compile and link the library, the toolkit and the tools.
build_packages=(g++ cmake ninja-build ccache pkg-config qtbase5-dev libssl-dev libldap-dev libp11-kit-dev nettle-dev libcli11-dev
                libgtest-dev libgmock-dev libbenchmark-dev libnss-wrapper)
# Fonts for the Korean dialog, and OpenSSL's legacy provider (libssl3), which knows the SEED cipher.
demo_packages=(fonts-nanum libssl3)
# Independent programs that the tests compare with, a display, and the style checks.
test_packages=(openssl gnutls-bin libnss3-tools softhsm2 opensc slapd python3 xvfb xauth binutils clang clang-format
               clang-tidy doxygen librsvg2-bin imagemagick fontconfig)
# libFuzzer and the sanitizers of clang, and what the fuzz targets' seeds are made with.
fuzz_packages=(clang libclang-rt-dev openssl)

# install_missing WHY PACKAGE...: installs with apt what dpkg does not have; says what and why, asks for sudo when
# not root. Does nothing, and touches no network, when all is there.
install_missing() {
    local why=$1; shift
    local missing=()
    local package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    echo "Installing from Debian, $why: ${missing[*]}"
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "There is no sudo here: install the above as root." >&2; return 1; }
        echo "(this needs administrator rights; sudo asks for your password)"
        root=(sudo)
    fi
    "${root[@]}" apt-get update -qq
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# build PRESET TARGET...: configures once, then builds.
build() {
    local preset=$1; shift
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target "$@"
}

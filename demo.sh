#!/usr/bin/env bash
# From a bare Debian machine to a certificate dialog: installs what is missing, builds, writes sample certificates and
# a work directory, and shows the dialog on them.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh

usage() {
    cat <<'TEXT'
Usage: ./demo.sh [--no-install] [--language kor|eng] [--view] [--screenshots DIR] [--unattended]

Shows Quillgate's certificate dialog on sample certificates. Your own home directory is not touched: the demo
gives the program another one, build/demo/home. Without a display the same dialog runs off-screen, and the demo
picks a certificate and types the password by mouse and keyboard events.
  --no-install       do not install Debian packages, take the machine as it is
  --language LANG    kor (default) or eng
  --view             show the certificate viewer too: double-click a certificate in the list, or let the demo do
                     so where it uses the dialog itself
  --screenshots DIR  save pictures of the windows in DIR
  --unattended       let the demo use the dialog even where there is a display
  --help             this text
TEXT
}

install=yes
language=kor
screenshots=
unattended=no
view=no
while [ $# -gt 0 ]; do
    case $1 in
        --no-install) install=no ;;
        --language) language=${2:?--language needs kor or eng}; shift ;;
        --screenshots) screenshots=${2:?--screenshots needs a directory}; shift ;;
        --unattended) unattended=yes ;;
        --view) view=yes ;;
        --help | -h) usage; exit 0 ;;
        *) usage >&2; exit 2 ;;
    esac
    shift
done
case $language in kor | eng) ;; *) usage >&2; exit 2 ;; esac

[ $install = no ] || install_missing "to build and show Quillgate" "${build_packages[@]}" "${demo_packages[@]}"
build release quillgate-demo quillgate-samples workdir

demo=$PWD/build/demo
password='quillgate1!'
if [ ! -f "$demo/passwords.txt" ]; then
    rm -rf "$demo"
    mkdir -p "$demo"
    build/release/tools/samples/quillgate-samples --password "$password" "$demo" >"$demo/passwords.new"
    mv "$demo/passwords.new" "$demo/passwords.txt"
fi
cat "$demo/passwords.txt"

# libnss-wrapper answers the library's question for the home directory from this file.
printf '%s:x:%s:%s::%s:/bin/sh\n' "$(id -un)" "$(id -u)" "$(id -g)" "$demo/home" >"$demo/passwd"
printf '%s:x:%s:\n' "$(id -gn)" "$(id -g)" >"$demo/group"

# Where Qt keeps its sockets; a machine without a login session has none.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    mkdir -p -m 700 "$demo/run"
    export XDG_RUNTIME_DIR=$demo/run
fi

arguments=(--work "$demo/work" --language "$language")
[ -z "$screenshots" ] || { mkdir -p "$screenshots"; arguments+=(--screenshots "$screenshots"); }
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    echo "There is no display here: the dialog runs off-screen, driven by mouse and keyboard events."
    export QT_QPA_PLATFORM=offscreen
    unattended=yes
fi
[ $unattended = no ] || arguments+=(--unattended --holder 홍길동 --password "$password")

if [ $view = yes ]; then
    arguments+=(--view)
    [ $unattended = yes ] || echo "Double-click a certificate to look at it in the viewer."
fi

NSS_WRAPPER_PASSWD="$demo/passwd" NSS_WRAPPER_GROUP="$demo/group" LD_PRELOAD=libnss_wrapper.so \
    build/release/quillgate-demo "${arguments[@]}"

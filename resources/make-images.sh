#!/bin/bash
# Makes every picture of the resource tree from its SVG source. Needs the Debian packages librsvg2-bin, imagemagick,
# fontconfig and fonts-nanum. The results are committed, so that a build needs none of them.
set -euo pipefail

HERE=$(cd "$(dirname "$0")" && pwd)
readonly HERE
readonly SVG="$HERE/svg"
readonly MEDIA=(HDD MOVE USIM TOKEN SMCARD PHONE)
readonly LOGOS=(Logo BriskSealLogo NTSLogo Logo_Bank Logo_Gov Logo_Stock)
# The name of the renewal image begins with a small letter, unlike the two others. Hosts know it so.
readonly STATES=(Cert_Valid Cert_Invalid cert_Renewal)
readonly ICON_SIZES=(16 32 48)
readonly PRODUCT_SIZES=(16 24 32 48 64 128 256)
readonly WHEEL_FRAMES=12
readonly WINDOW_GREY='#efefef'
readonly TOOLS_MISSING=77 # ctest reads it as "skipped"
# Another release of the renderer may shade an edge or a letter otherwise: up to one pixel in a thousand may differ
# from the committed picture by more than a twelfth of the scale.
readonly SHADE_TOLERANCE=8%
readonly PIXELS_PER_DIFFERENCE=1000

usage() {
  cat <<'TEXT'
usage: make-images.sh [--check]
  (nothing)  makes bmp/image, png/image and icons/image again
  --check    makes them in a temporary directory and compares them with the committed ones
TEXT
}

require_tools() {
  local tool font missing=()
  for tool in rsvg-convert convert compare fc-list; do
    command -v "$tool" >/dev/null || missing+=("$tool")
  done
  for font in NanumSquare NanumBarunGothic; do
    [[ -n $(fc-list "$font" 2>/dev/null) ]] || missing+=("font $font")
  done
  ((${#missing[@]} == 0)) && return
  printf 'make-images.sh: missing: %s\n' "${missing[*]}" >&2
  printf 'apt-get install librsvg2-bin imagemagick fontconfig fonts-nanum\n' >&2
  exit "$TOOLS_MISSING"
}

# save FILE CONVERT-ARGUMENTS...: the picture without what tells when it was made
save() {
  convert "${@:2}" -strip -define png:exclude-chunks=date,time "$1"
}

# bitmap SOURCE FILE: 24 bits a pixel, without the transparency that BMP readers disagree about
bitmap() {
  rsvg-convert "$1" -o "$WORK/flat.png"
  save "BMP3:$2" "$WORK/flat.png" -background "$WINDOW_GREY" -alpha remove -alpha off -type TrueColor
}

# media_button MEDIUM LANGUAGE SUFFIX
media_button() {
  rsvg-convert --accept-language "$2" "$SVG/media/$1.svg" -o "$WORK/button.png"
  # Beside the tile's rim, which only the pressed picture has, 50 by 60 pixels are left.
  save "PNG32:$OUT/png/image/$1_N$3.png" "$WORK/button.png" -crop 50x60+1+1 +repage
  rsvg-convert --accept-language "$2" --stylesheet "$SVG/media/pressed.css" "$SVG/media/$1.svg" -o "$WORK/button.png"
  save "PNG32:$OUT/png/image/$1_P$3.png" "$WORK/button.png"
}

# media_icon MEDIUM: the 42 by 42 units around the pictogram, in each size
media_icon() {
  local size frames=()
  for size in "${ICON_SIZES[@]}"; do
    rsvg-convert --stylesheet "$SVG/media/icon.css" --width $((size * 52 / 42)) --keep-aspect-ratio \
      "$SVG/media/$1.svg" -o "$WORK/icon.png"
    convert "$WORK/icon.png" -crop "${size}x${size}+$(((10 * size + 42) / 84))+$(((3 * size + 42) / 84))" +repage \
      "$WORK/icon$size.png"
    frames+=("$WORK/icon$size.png")
  done
  save "$OUT/icons/image/$1.ico" "${frames[@]}"
}

# GIF pixels are opaque or clear: the half-clear ones are mixed with the window's grey.
wheel() {
  local frame frames=()
  for ((frame = 0; frame < WHEEL_FRAMES; frame++)); do
    echo ".wheel { transform: rotate($((frame * 360 / WHEEL_FRAMES))deg); }" >"$WORK/turn.css"
    rsvg-convert --stylesheet "$WORK/turn.css" "$SVG/icon/Loading.svg" -o "$WORK/frame.png"
    frames+=("$WORK/frame$frame.png")
    convert \( "$WORK/frame.png" -background "$WINDOW_GREY" -alpha remove -alpha off \) \
      \( "$WORK/frame.png" -alpha extract -threshold 8% \) -compose CopyOpacity -composite "${frames[-1]}"
  done
  save "$OUT/icons/image/Loading.gif" -dispose Background -delay 8 -loop 0 "${frames[@]}"
}

# The lines of the drawing merge below 32 pixels: the two smallest sizes have a drawing of their own.
product_icon() {
  local source=Quillgate
  (($1 < 32)) && source=Quillgate_small
  rsvg-convert --width "$1" --height "$1" "$SVG/icon/$source.svg" -o "$WORK/product.png"
  save "PNG32:$OUT/icons/image/Quillgate_$1.png" "$WORK/product.png"
}

# make_all DIRECTORY
make_all() {
  local name
  OUT=$1
  mkdir -p "$OUT"/{bmp,png,icons}/image
  for name in "${MEDIA[@]}"; do
    media_button "$name" ko ''
    media_button "$name" en E
    media_icon "$name"
  done
  for name in "${LOGOS[@]}"; do bitmap "$SVG/logo/$name.svg" "$OUT/bmp/image/$name.bmp"; done
  for name in "${STATES[@]}"; do bitmap "$SVG/state/$name.svg" "$OUT/bmp/image/$name.bmp"; done
  for name in "${PRODUCT_SIZES[@]}"; do product_icon "$name"; done
  wheel
}

# list DIRECTORY: the pictures in it
list() {
  (cd "$1" && find bmp png icons -type f | LC_ALL=C sort)
}

# same_picture FILE FILE: all frames count, one below the other
same_picture() {
  local width height differing
  convert "$1" -append "PNG32:$WORK/left.png"
  convert "$2" -append "PNG32:$WORK/right.png"
  [[ $(identify -format %wx%h "$WORK/left.png") == $(identify -format %wx%h "$WORK/right.png") ]] || return 1
  read -r width height < <(identify -format '%w %h\n' "$WORK/left.png")
  differing=$(compare -channel RGBA -metric AE -fuzz "$SHADE_TOLERANCE" "$WORK/left.png" "$WORK/right.png" null: 2>&1) ||
    true
  ((differing <= width * height / PIXELS_PER_DIFFERENCE))
}

# same_list NAME FILE FILE
same_list() {
  diff "$2" "$3" && return
  printf 'the committed files (<) are not those of %s (>)\n' "$1" >&2
  return 1
}

check() {
  local file wrong=0
  make_all "$WORK/made"
  list "$HERE" >"$WORK/committed"
  list "$WORK/made" >"$WORK/sources"
  sed -n 's:.*<file>\(.*\)</file>.*:\1:p' "$HERE/quillgate.qrc" | LC_ALL=C sort >"$WORK/packed"
  same_list 'the sources' "$WORK/committed" "$WORK/sources" || wrong=1
  same_list quillgate.qrc "$WORK/committed" "$WORK/packed" || wrong=1
  while read -r file; do
    same_picture "$HERE/$file" "$WORK/made/$file" && continue
    printf '%s is not what its source makes\n' "$file" >&2
    wrong=1
  done < <(LC_ALL=C comm -12 "$WORK/committed" "$WORK/sources")
  return "$wrong"
}

case "${1-}" in
  '') task=(make_all "$HERE") ;;
  --check) task=(check) ;;
  --help) usage && exit ;;
  *) usage >&2 && exit 2 ;;
esac
require_tools
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
"${task[@]}"

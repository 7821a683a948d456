#!/bin/sh
# Renders the SVG sources in qml/image/svg to the PNG files and the window icon that the
# image bundle holds: NAME.png, and NAME@2x.png in twice its size for screens that are scaled. The
# same sources and tools always give the same bytes.
#
# usage: tools/render-artwork.sh [output directory]      (default: qml/image)
set -eu

if [ "${1-}" = --help ]; then
    sed -n '2,/^set -eu/{/^#/s/^# \{0,1\}//p}' "$0"
    exit
fi

root=$(cd "$(dirname "$0")/.." && pwd)
sources=$root/qml/image/svg
out=${1:-$root/qml/image}

need() { # tool, Debian package that has it
    command -v "$1" >/dev/null && return
    echo "$0: '$1' is missing; install the Debian package '$2'" >&2
    exit 1
}
need rsvg-convert librsvg2-bin
need pngquant pngquant
need optipng optipng
need icotool icoutils

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$out"

render() { # source name, width, height, "palette" or "full", PNG file
    rsvg-convert --width "$2" --height "$3" --output "$5" "$sources/$1.svg"
    if [ "$4" = palette ]; then
        pngquant --speed 1 --strip --force --ext .png "$5"
    fi
    optipng -quiet -o2 -strip all -force "$5"
}

# The large pictures take a dithered palette: half the bytes, and no difference the eye finds.
# PNG name            source             width height colours
while read -r name source width height colours; do
    render "$source" "$width" "$height" "$colours" "$work/$name.png"
    render "$source" $((2 * width)) $((2 * height)) "$colours" "$work/$name@2x.png"
    mv "$work/$name.png" "$work/$name@2x.png" "$out"
done <<'TABLE'
bg                    bg                   640  420  palette
chooseDirPageBg       chooseDirPageBg      640  100  full
installPage1          installPage1         640  420  palette
installPage2          installPage2         640  420  palette
installPage3          installPage3         640  420  palette
installSuccessBg      installSuccessBg     640  420  palette
installPageSy         installPageSy        360  220  palette
installPageSy2        installPageSy2       360  220  palette
installPageSy3        installPageSy3       360  220  palette
installBtnBg          installBtnBg         192   48  full
installBtnBgHover     installBtnBgHover    192   48  full
useNowBtnBg           useNowBtnBg          192   48  full
comboxBg              comboxBg              90   30  full
comboxBgHover         comboxBgHover         90   30  full
comboxPopBg           comboxPopBg           90  126  full
dropDown              dropDown              10    6  full
drop                  drop                   8   12  full
checkBoxNor           checkBoxNor           16   16  full
checkBoxHigh          checkBoxHigh          16   16  full
lineEditBg            lineEditBg           482   34  full
rightBg               rightBg               88   34  full
slideBg               slideBg                5   80  full
fgBg                  fgBg                   5    5  full
progressBarBg         progressBarBg        586    8  full
progressBarValue      progressBarValue     586    8  full
mini                  mini                  22   17  full
main_close            main_close            18   16  full
logo                  logo                 200  200  full
logoNew               logoNew               28   28  full
logoBig               badge                256  256  full
main_logo             badge                 64   64  full
TABLE

# Up to 32 pixels the icon shows the plain mark, above it the full badge.
set --
for size in 16 24 32 48 64 128 256; do
    if [ "$size" -le 32 ]; then source=badge-small; else source=badge; fi
    render "$source" "$size" "$size" full "$work/$size.png"
    if [ "$size" -ge 64 ]; then raw=--raw=; else raw=; fi
    set -- "$@" "$raw$work/$size.png"
done
icotool --create --output="$out/small.ico" "$@"

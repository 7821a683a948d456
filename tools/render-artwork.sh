#!/bin/sh
# Renders the SVG sources in qml/image/svg to the PNG files and the window icon that the
# image bundle holds. The same sources and tools always give the same bytes.
#
# usage: tools/render-artwork.sh [output directory]      (default: qml/image)
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
sources=$root/qml/image/svg
out=${1:-$root/qml/image}

need() { # tool, Debian package that has it
    command -v "$1" >/dev/null && return
    echo "$0: '$1' is missing; install the Debian package '$2'" >&2
    exit 1
}
need rsvg-convert librsvg2-bin
need optipng optipng
need icotool icoutils

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$out"

render() { # source name, width, height, PNG file
    rsvg-convert --width "$2" --height "$3" --output "$4" "$sources/$1.svg"
    optipng -quiet -o2 -strip all -force "$4"
}

#  PNG name           source             width height
while read -r name source width height; do
    render "$source" "$width" "$height" "$work/$name.png"
    mv "$work/$name.png" "$out/$name.png"
done <<'TABLE'
bg                    bg                   640  420
chooseDirPageBg       chooseDirPageBg      640  100
installPage1          installPage1         640  420
installPage2          installPage2         640  420
installPage3          installPage3         640  420
installSuccessBg      installSuccessBg     640  420
installPageSy         installPageSy        360  220
installPageSy2        installPageSy2       360  220
installPageSy3        installPageSy3       360  220
installBtnBg          installBtnBg         192   48
installBtnBgHover     installBtnBgHover    192   48
useNowBtnBg           useNowBtnBg          192   48
comboxBg              comboxBg              90   30
comboxBgHover         comboxBgHover         90   30
comboxPopBg           comboxPopBg           90  126
dropDown              dropDown              10    6
drop                  drop                   8   12
checkBoxNor           checkBoxNor           16   16
checkBoxHigh          checkBoxHigh          16   16
lineEditBg            lineEditBg           482   34
rightBg               rightBg               88   34
slideBg               slideBg                5   80
fgBg                  fgBg                   5    5
progressBarBg         progressBarBg        586    8
progressBarValue      progressBarValue     586    8
mini                  mini                  22   17
main_close            main_close            18   16
logo                  logo                 200  200
logoNew               logoNew               28   28
logoBig               badge                256  256
main_logo             badge                 64   64
TABLE

# Up to 32 pixels the icon shows the plain mark, above it the full badge.
set --
for size in 16 24 32 48 64 128 256; do
    if [ "$size" -le 32 ]; then source=badge-small; else source=badge; fi
    render "$source" "$size" "$size" "$work/$size.png"
    if [ "$size" -ge 64 ]; then set -- "$@" "--raw=$work/$size.png"; else set -- "$@" "$work/$size.png"; fi
done
icotool --create --output="$out/small.ico" "$@"

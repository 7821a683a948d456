#!/bin/sh
# Makes qml/fonts/*.ttf: the glyphs that the translations, the language list and paths need, cut out
# of two free fonts. Run it after a change of a translation and check the fonts in.
#
# usage: tools/make-font-subset.sh [output directory]
# needs: scripts/install-packages.sh artwork
set -eu

if [ "${1-}" = --help ]; then
    sed -n '2,/^set -eu/{/^#/s/^# \{0,1\}//p}' "$0"
    exit
fi

root=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)
out=${1:-$root/qml/fonts}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$out"

han=/usr/share/fonts/truetype/wqy/wqy-microhei.ttc
arabic=/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf

# Debian puts fontTools beside its own interpreter, which need not be the first one in PATH.
python=/usr/bin/python3

# What no translation contains: the language list, and the letters of a path.
names=$root/settings/DataManagerLanguage.cpp

# Writes chars-han and chars-arabic: the Arabic font gets only what the other one does not have.
"$python" - "$root/qml/internationalization" "$names" "$han" "$arabic" "$work" <<'PY'
import pathlib, re, sys
import xml.etree.ElementTree as ElementTree
from fontTools.ttLib import TTFont

translations, names, han, arabic, work = sys.argv[1:]
wanted = {chr(code) for code in range(0x20, 0x7F)}
for text in re.findall(r'"([^"\n]*)"', pathlib.Path(names).read_text(encoding="utf-8")):
    wanted |= set(text)
for source in sorted(pathlib.Path(translations).glob("*.ts")):
    for node in ElementTree.parse(source).iter():
        if node.tag in ("source", "translation"):
            wanted |= set(node.text or "")
wanted = {char for char in wanted if char.isprintable()}

covered = {char for char in wanted if ord(char) in TTFont(han, fontNumber=0).getBestCmap()}
rest = wanted - covered
nowhere = {char for char in rest if ord(char) not in TTFont(arabic).getBestCmap()}
if nowhere:
    sys.exit("in neither font: " + " ".join(f"U+{ord(char):04X}" for char in sorted(nowhere)))
for name, chars in (("chars-han", covered), ("chars-arabic", rest)):
    pathlib.Path(work, name).write_text("".join(sorted(chars)), encoding="utf-8")
PY

# The .ttc holds the proportional face at index 0 and the monospaced one at 1. Arabic letters join
# through the layout features, so that font keeps all of them.
hb-subset --face-index=0 --name-IDs='*' --text-file="$work/chars-han" \
    --output-file="$work/vorn-subset.ttf" "$han"
hb-subset --name-IDs='*' --layout-features='*' --drop-tables+=MATH \
    --text-file="$work/chars-arabic" --output-file="$work/vorn-subset-arabic.ttf" "$arabic"

# Each subset gets a family name of its own: under the old name it would stand in for the complete
# font where that one is installed. Copyright, trademark and licence entries stay.
rename_font() {
    "$python" - "$work/$1.ttf" "$out/$1.ttf" "$2" <<'PY'
import sys
from fontTools.ttLib import TTFont

source, target, family = sys.argv[1:]
font = TTFont(source, recalcTimestamp=False)
names = font["name"]
original = names.getDebugName(4)
names.names = [entry for entry in names.names if entry.nameID not in (16, 17, 18)]
for identifier, text in (
    (1, family),
    (2, "Regular"),
    (3, family),
    (4, family),
    (6, family.replace(" ", "")),
    (10, f"Modified: a subset of {original}, renamed."),
):
    names.setName(text, identifier, 3, 1, 0x409)
font.save(target, reorderTables=None)
PY
}
rename_font vorn-subset 'Vorn Subset'
rename_font vorn-subset-arabic 'Vorn Subset Arabic'

# Debian's copyright file leaves out a part of the Arabic font's licence; the font carries it all.
cat /usr/share/doc/fonts-wqy-microhei/copyright /usr/share/common-licenses/Apache-2.0 \
    >"$out/vorn-subset.LICENSE"
"$python" - "$arabic" >"$out/vorn-subset-arabic.LICENSE" <<'PY'
import sys
from fontTools.ttLib import TTFont

names = TTFont(sys.argv[1])["name"]
print("\n".join(line.rstrip() for line in names.getDebugName(13).splitlines()))
PY

ls -l "$out"/*.ttf

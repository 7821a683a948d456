#!/usr/bin/env bash
# Reduces ICU's data in a bundle to what Qt asks for: converters, normalisation, collation, time zones
# and the resources that these read. Texts, units, currencies and transliterations for 500 languages,
# which Qt has of its own or not at all, go. The library keeps its soname and its one symbol.
#     packaging/reduce-icu.sh LIBRARY WORK_DIR     LIBRARY: .../libicudata.so.NN
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/lib.sh"
[ $# -eq 2 ] || fail "usage: packaging/reduce-icu.sh LIBRARY WORK_DIR"

library=$(readlink -e "$1")
work=$2
major=${library##*.so.}
data=$work/icudt${major}l.dat
reduced=$work/reduced/icudt${major}l.dat # the name of the file is the name of the package in it
kept_languages='root|pool|res_index|en|de|id|in|ru|zh|zh_Hant'

rm -rf "$work"
mkdir -p "$work/reduced"

# The library is one symbol in its read-only data.
read -r address size < <(readelf --dyn-syms -W "$library" \
    | awk -v name="icudt${major}_dat" '$8 == name { print $2, $3 }')
read -r section < <(readelf -SW "$library" | sed 's/^ *\[ *[0-9]*\] *//' \
    | awk '$1 == ".rodata" { print $3 }')
objcopy -O binary --only-section=.rodata "$library" "$work/rodata"
tail -c "+$((0x$address - 0x$section + 1))" "$work/rodata" | head -c "$((size))" >"$data"

# unneeded: the names of the items that go, of those on standard input.
unneeded() {
    # Converters of mainframes (EBCDIC) and of Lotus, and large ones that QTextCodec does not list.
    # What is left are those of Unix, Windows, Mac OS, DOS and the web.
    local mainframe='ebcdic-xml-us|lmb-excp|gsm-03.38-2009|ibm-(37|273|277|278|280|284|285|290|297|420|424|500|803|838|870|871|875|918|930|933|935|937|939|1025|1026|1047|1097|1112|1122|1123|1130|1132|1137|1364|1371|1388|1390|1399|114[0-9]|115[3-8]|1160|1164|4899|4971|5123|8482|12712|16684|16804|4517)_.*'
    local unlisted='euc-tw-2014|icu-internal-compound-.*|ibm-(964|954|5471|33722)_.*'
    sed -E \
        -e "/^($kept_languages)\.res\$/d" \
        -e "/^zone\/($kept_languages|tzdbNames)\.res\$/d" \
        -e '/^coll\/(zh|yue|ja|ko).*\.res$/p' -e '/^coll\//d' \
        -e '/^(currencyNumericCodes|dayPeriods|genderList|grammaticalFeatures|pluralRanges|units|langInfo)\.res$/p' \
        -e '/^(icustd|icuver|keyTypeData|likelySubtags|metaZones|metadata|numberingSystems|plurals|supplementalData|timezoneTypes|windowsZones|zoneinfo64)\.res$/d' \
        -e "/^($mainframe|$unlisted)\.cnv\$/p" -e '/\.cnv$/d' \
        -e '/\.nrm$/d' -e '/^(cnvalias|ulayout)\.icu$/d' | sort -u
}
icupkg -l "$data" | unneeded >"$work/unneeded.lst"
[ -s "$work/unneeded.lst" ] || fail "Nothing of ICU's data is known: $library"
icupkg -r "$work/unneeded.lst" "$data" "$reduced"

cat >"$work/data.s" <<ASSEMBLER
    .section .rodata
    .balign 16
    .globl icudt${major}_dat
    .type icudt${major}_dat, @object
icudt${major}_dat:
    .incbin "$reduced"
    .size icudt${major}_dat, . - icudt${major}_dat
    .section .note.GNU-stack, "", @progbits
ASSEMBLER
as -o "$work/data.o" "$work/data.s"
ld -shared -s --build-id=none -z noexecstack -soname "libicudata.so.$major" -o "$library" "$work/data.o"
say "ICU's data: $((size / 1000000)) MB became $(($(stat -c %s "$library") / 1000000)) MB."

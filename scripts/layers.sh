# shellcheck shell=bash
# The layers that scripts/check.sh keeps. Sourced; every function prints what it refuses and is
# false then.

# Room, and what its sources may include. A file of another room is named in full.
layers_of_sources() {
    cat <<'END'
base
crypto      base
lines       base
settings    base
installer   settings base
api         installer lines crypto settings base
app         api installer lines crypto settings base
uninstaller app/StartUp.h settings base
END
}

# Folder, and the folders that its scenes may import.
layers_of_scenes() {
    cat <<'END'
qml/parts
qml/VORN    parts
qml/pages   VORN parts
qml         pages VORN parts
uninstaller pages VORN parts
END
}

# against_the_arrows LAYERS: reads lines "FILE IMPORTED" and prints those that LAYERS do not allow.
# What is imported is a folder or a file in one; a name without a folder is a neighbour.
against_the_arrows() {
    awk -v layers="$("$1")" '
        BEGIN {
            count = split(layers, rows, "\n")
            for (row = 1; row <= count; row++) {
                words = split(rows[row], word, " ")
                known[word[1]] = 1
                for (i = 2; i <= words; i++) allowed[word[1], word[i]] = 1
            }
        }
        {
            room = $1
            sub(/\/[^\/]*$/, "", room)
            folder = $2
            sub(/\/.*/, "", folder)
            neighbour = room
            sub(/.*\//, "", neighbour)
            if (!(room in known) || folder == neighbour) next
            if ((room, folder) in allowed || (room, $2) in allowed) next
            print $1 " must not use " $2
            refused = 1
        }
        END { exit refused }'
}

# Only names with a folder: the others are generated or beside the file.
includes_of() { sed -nE 's|^#include "([a-z]+/[^"]+)".*|\1|p' "$1" | sed "s|^|$1 |"; }
imports_of() { sed -nE 's|^ *import "(qrc:/+\|\.\./)?([^"]+)".*|\2|p' "$1" | sed "s|^|$1 |"; }

# A colour is a literal or made from numbers. "transparent" is none.
colours_of() {
    sed -E 's|//.*||' "$1" | grep -nE "\"#[0-9a-fA-F]{3,8}\"|Qt\.(rgba|hsla|hsva|lighter|darker|tint)|[cC]olor[A-Za-z]*: .*\"[a-z]+\"" \
        | grep -vE '[cC]olor[A-Za-z]*: [^"]*"transparent"[^"]*$' | sed "s|^|$1:|"
}
families_of() {
    grep -nE '\<family: ' "$1" | grep -vE 'family: Theme\.fontFamily\>' | sed "s|^|$1:|"
}

each() {
    local reader=$1 file
    shift
    for file in "$@"; do "$reader" "$file"; done
}

source_layers() { each includes_of "$@" | against_the_arrows layers_of_sources; }
scene_layers() { each imports_of "$@" | against_the_arrows layers_of_scenes; }

# Colours stand in the theme, and where a control states its defaults; the font there only.
outside_the_theme() {
    local file found
    found=$(for file in "$@"; do
        case "$file" in
            qml/parts/Theme.qml) ;;
            qml/VORN/*) families_of "$file" ;;
            *)
                colours_of "$file" || true
                families_of "$file"
                ;;
        esac
    done) || true
    [ -z "$found" ] || { printf '%s\n' "$found" && return 1; }
}

# A check that refuses nothing would be of no use: each has to refuse what it is for.
layers_are_kept() {
    local tree
    tree=$(mktemp -d)
    mkdir -p "$tree/lines" "$tree/api" "$tree/qml/parts" "$tree/qml/pages" "$tree/qml/VORN" "$tree/uninstaller"
    (
        cd "$tree" || exit
        printf '#include "crypto/Encryption.h"\n' >lines/A.h
        printf '#include "app/PXLog.h"\n' >uninstaller/A.h
        printf '#include "app/StartUp.h"\n' >uninstaller/B.h
        printf '#include "lines/A.h"\n#include "api/B.h"\n' >api/A.h
        printf 'import QtQuick 2.9\nimport "../pages"\n' >qml/parts/A.qml
        printf 'import "../parts"\nText { font.family: "Arial" }\n' >qml/VORN/B.qml
        printf 'import "../VORN"\nText { color: "#123456" }\n' >qml/pages/A.qml
        printf 'Text { color: "red" }\n' >qml/pages/B.qml
        printf 'Text { color: "transparent"; font.family: Theme.fontFamily }\n' >qml/pages/C.qml
        sees "lines" "lines/A.h must not use crypto/Encryption.h" source_layers lines/A.h api/A.h
        sees "uninstaller" "uninstaller/A.h must not use app/PXLog.h" source_layers uninstaller/[AB].h
        sees "parts" "qml/parts/A.qml must not use pages" scene_layers qml/*/[AB].qml
        sees "colours" "qml/pages/A.qml:2:Text { color: \"#123456\" }
qml/pages/B.qml:1:Text { color: \"red\" }" outside_the_theme qml/pages/[ABC].qml
        sees "fonts" 'qml/VORN/B.qml:2:Text { font.family: "Arial" }' outside_the_theme qml/VORN/B.qml
    )
    local result=$?
    rm -rf "$tree"
    return "$result"
}

# sees NAME TEXT COMMAND...: the command refuses, and prints just this text.
sees() {
    local name=$1 text=$2 seen
    shift 2
    if seen=$("$@") || [ "$seen" != "$text" ]; then
        printf 'The check of %s saw "%s" instead of "%s"\n' "$name" "$seen" "$text"
        exit 1
    fi
}

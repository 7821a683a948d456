#!/usr/bin/env bash
# Tries the header of the packed file and the start script, with a small script for the installer:
# nothing is drawn and nothing outside a temporary directory is written. Takes half a minute.
#     packaging/try-start.sh [VornInstall.run]   (default: out/package/VornInstall.run)
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/lib.sh"
case "${1-}" in -h | --help) say "usage: packaging/try-start.sh [VornInstall.run]" && exit ;; esac

run_file=$(readlink -e "${1-$root/out/package/VornInstall.run}") \
    || fail "There is no packed installer: run scripts/package.sh first"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
commands=$work/commands
mkdir "$commands" "$work/tmp"
error=$work/error

# The bundle with a script instead of the installer: "$1" is its text.
bundle_with() {
    rm -rf "$work/bundle"
    "$run_file" --quiet --noexec --target "$work/bundle"
    printf '#!/bin/sh\n%s\n' "$1" >"$work/bundle/VornInstall"
}

# start VARIABLE=VALUE...: starts it on a display that does not exist; nothing looks at it.
start() {
    env -i PATH="$commands:/usr/bin:/bin" HOME="$work" DISPLAY=:4711 LANG=C.UTF-8 "$@" \
        sh "$work/bundle/start.sh" 2>"$error" </dev/null
}

told() { grep -F -- "$1" "$error"; }
status_of() { local expected=$1 && shift && local got=0 && { "$@" || got=$?; } && [ "$got" -eq "$expected" ]; }

# What the installer does when it is told TARGET: launcher first, then files.
installs_into() {
    # shellcheck disable=SC2016 # the script expands it
    printf 'rm -f VornRun.sh; echo "pkexec env LD_LIBRARY_PATH=%s/lib  QT_QPA_PLATFORM_PLUGIN_PATH=x" >VornRun.sh
mkdir -p "%s" && cp -R . "%s" && %s' "$1" "$1" "$1" "$2"
}

try_unpacking() {
    say "== unpacking"
    local private=$work/private
    mkdir "$private"
    echo secret >"$private/key"
    chmod 700 "$private" && chmod 600 "$private/key"
    check "a directory with files of others is refused" status_of 1 "$run_file" --quiet --target "$private"
    check "nothing is unpacked there" test "$(ls "$private")" = key
    check "its mode is left as it was" test "$(stat -c %a "$private" "$private/key" | xargs)" = "700 600"
    (umask 000 && "$run_file" --quiet --noexec --target "$work/open")
    check "under umask 000 the directory is its owner's alone" test "$(stat -c %a "$work/open")" = 700
    check "nothing in it can be written by others" not eval "find '$work/open' -perm /022 | grep ."
    check "the checksum is compared" "$run_file" --check
    cp "$run_file" "$work/broken.run"
    printf x | dd of="$work/broken.run" bs=1 seek=9000000 conv=notrunc status=none
    check "a flipped byte is told" status_of 2 "$work/broken.run" --check
    check "and nothing is started" status_of 2 env TMPDIR="$work/tmp" SETUP_NOCHECK=1 "$work/broken.run" --quiet
    check "and nothing is left" not eval "ls -A '$work/tmp' | grep ."
}

try_environment() {
    say "== environment"
    bundle_with "env >'$work/environment'"
    start LD_LIBRARY_PATH=/nowhere QT_PLUGIN_PATH=/nowhere QML2_IMPORT_PATH=/nowhere \
        QT_QPA_PLATFORM_PLUGIN_PATH=/nowhere QT_STYLE_OVERRIDE=x QT_QPA_PLATFORM=minimal \
        QT_QUICK_CONTROLS_STYLE=x OPENSSL_CONF=/nowhere ICU_DATA=/nowhere QT_SCALE_FACTOR=2 || true
    check "paths of the session do not reach the installer" not grep -E '/nowhere|=x$|=minimal' "$work/environment"
    check "the user's scale does" grep -x QT_SCALE_FACTOR=2 "$work/environment"
    check "debug lines are off" grep -Fx 'QT_LOGGING_RULES=*.debug=false' "$work/environment"
    start QT_LOGGING_RULES='*.debug=true' || true
    check "unless the user wants them" grep -Fx 'QT_LOGGING_RULES=*.debug=true' "$work/environment"
}

try_modes() {
    say "== modes"
    bundle_with true
    echo '{}' >"$work/bundle/VornData.json"
    chmod 600 "$work/bundle/VornData.json" && chmod 600 "$work/bundle/qt.conf"
    check "a bundle is started again" start
    check "settings stay private" test "$(stat -c %a "$work/bundle/VornData.json")" = 600
    check "a file of the bundle gets its mode back" test "$(stat -c %a "$work/bundle/qt.conf")" = 644
    echo >"$work/bundle/letter"
    check "a file of somebody else is refused" status_of 1 start
    check "and named" told letter
}

try_outcome() {
    say "== outcome"
    local target=$work/target
    bundle_with true
    check "nothing begun: status 0" status_of 0 start
    bundle_with "$(installs_into "$target" true)"
    check "all there: status 0" status_of 0 start
    bundle_with "$(installs_into "$target" "rm -r '$target/lib'")"
    check "a lack: status 1" status_of 1 start
    check "and one sentence" test "$(grep -c 'The installation is not complete: [0-9]* of [0-9]* files' "$error")" = 1
    check "in German" status_of 1 start LANG=de_DE.UTF-8
    check "as it should be" told "Die Installation ist nicht vollständig"
    bundle_with "$(installs_into "$target" "exit 3")"
    check "the installer's own status goes on" status_of 3 start
}

# As somebody who is not root; runs only where root tries.
try_rights() {
    say "== rights"
    local bundle=$work/bundle
    chmod 755 "$work" && chmod 777 "$work/tmp"
    bundle_with "env >'$work/tmp/environment'; id -u >'$work/tmp/uid'"
    chown -R nobody "$bundle"
    as_nobody() {
        rm -f "$work/tmp"/*
        env -i PATH="$commands:/usr/bin:/bin" HOME="$work/tmp" DISPLAY=:4711 LANG=C.UTF-8 \
            setpriv --reuid 65534 --clear-groups sh "$bundle/start.sh" 2>"$error" </dev/null
    }
    printf '#!/bin/sh\nexit 126\n' >"$commands/pkexec"
    chmod 755 "$commands/pkexec"
    check "a declined question" as_nobody
    check "is told" told "Administrator rights were not given: choose a directory of your own; the client itself needs pkexec to start."
    check "and the window comes" test "$(cat "$work/tmp/uid")" = 65534
    printf '#!/bin/sh\nexit 127\n' >"$commands/pkexec"
    check "a failed question" as_nobody
    check "is told, too" told "could not be asked"
    printf '#!/bin/sh\nPKEXEC_UID=1000; export PKEXEC_UID; exec "$@"\n' >"$commands/pkexec"
    check "an agreed question" as_nobody
    check "is not" not test -s "$error"
    check "debug lines are off on the other side" grep -Fx 'QT_LOGGING_RULES=*.debug=false' "$work/tmp/environment"
    check "the stand-in for xdg-open comes first" grep -E '^PATH=[^:]*/bundle/\.runtime-opener:' "$work/tmp/environment"
    rm "$commands/pkexec"
}

faults=0
try_unpacking
try_environment
try_modes
try_outcome
[ "$(id -u)" -ne 0 ] || try_rights
[ "$faults" -eq 0 ] || fail "$faults faults"
say "The start script is tried."

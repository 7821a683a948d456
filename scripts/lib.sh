# shellcheck shell=bash
# What the scripts of this folder share. Sourced; `root` is the checkout, whatever the directory.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export root

# What the first lines of a script say of it, which is its usage.
describe() { awk 'NR > 1 && !/^#/ { exit } NR > 1 && !/shellcheck/ { sub(/^# ?/, ""); print }' "$1"; }

# Sourced without arguments of its own, this file sees the script's: --help is answered here for all.
for argument in "$@"; do
    if [ "$argument" = --help ]; then
        describe "$0"
        exit
    fi
done
unset argument

say() { printf '%s\n' "$*"; }

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

not() { ! "$@"; }

# check WHAT COMMAND...: goes on after a fault, so that one run shows them all, and counts it in
# `faults`. What the command printed explains the fault.
faults=0
check() {
    local what=$1 log
    shift
    log=$(mktemp)
    if ! "$@" >"$log" 2>&1; then
        faults=$((faults + 1))
        {
            say "NOT SO: $what"
            sed 's/^/    /' "$log"
        } >&2
    fi
    rm -f "$log"
}

# quietly LOG COMMAND...: the output goes to LOG and is shown only when the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 || {
        tail -n 60 "$log" >&2
        fail "Failed: $* (all of its output: $log)"
    }
}

# wait_until SECONDS COMMAND...: tries the command ten times a second; false when it never succeeds.
wait_until() {
    local tries=$(($1 * 10))
    shift
    until "$@" >/dev/null 2>&1; do
        tries=$((tries - 1))
        [ "$tries" -gt 0 ] || return 1
        sleep 0.1
    done
}

# stop PID...: ends processes that this script started, by force when they do not listen.
stop() {
    local pid
    for pid in "$@"; do
        kill "$pid" 2>/dev/null || continue
        wait_until 5 not_running "$pid" || kill -9 "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
}

# A zombie has ended: only its parent does not know yet.
not_running() {
    [ ! -r "/proc/$1/stat" ] || [ "$(sed 's/.*) //' "/proc/$1/stat" | cut -c1)" = Z ]
}

# configure FOLDER OPTION...: prepares a build folder; an existing one keeps what did not change.
configure() {
    local folder=$1
    shift
    quietly "$folder/configure.log" cmake -S "$root" -B "$folder" -G Ninja \
        -DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_EXPORT_COMPILE_COMMANDS=ON "$@"
}

# build_installer FOLDER SERVER TARGET...: a release build that talks to the server at that address.
build_installer() {
    local folder=$1 server=$2
    shift 2
    configure "$folder" -DCMAKE_BUILD_TYPE=Release -DVORN_TESTS=OFF \
        -DVORN_API_BASE_ADDRESS="$server" \
        -DVORN_MIRROR_ADDRESSES="$server/us/cookie.txt;$server/eu/cookie.txt;$server/ca/cookie.txt;$server/asia/cookie.txt" \
        -DVORN_IP_LOOKUP_ADDRESS="$server/lookup" \
        -DVORN_WEB_SIGN_IN_HOST="$server" \
        -DVORN_CHAT_GROUP_LINK="$server/page/chat_group" \
        -DVORN_UPDATE_PLACEHOLDER="$server/"
    quietly "$folder/build.log" cmake --build "$folder" --target "$@"
}

# stage_bundle BUILD FOLDER: an unpacked installation bundle: the installer, its icon and channel,
# and the tree of a small sample client.
stage_bundle() {
    rm -rf "$2"
    mkdir -p "$2"
    cp -R "$root/packaging/sample-client/." "$2/"
    cp "$1/app/VornInstall" "$root/qml/image/small.ico" "$2/"
    printf '{"channel": "official"}\n' >"$2/Channel.json"
}

# single_file BUNDLE FILE WORK: packs an unpacked bundle. The header tells where the archive begins,
# which depends on the header's length. WORK is a folder for what comes in between.
single_file() {
    local archive=$3/bundle.tar.gz header=$3/header.sh
    tar -C "$1" --sort=name --mtime="@${SOURCE_DATE_EPOCH-0}" --owner=0 --group=0 --numeric-owner \
        --format=gnu -cf - . | gzip -9n >"$archive"
    sed -e "s/@SUM@/$(sha256sum <"$archive" | cut -c 1-64)/" \
        -e "s/@KILOBYTES@/$(du -sk --apparent-size "$1" | cut -f1)/" \
        "$root/packaging/header.sh" >"$header"
    sed -i "s/@OFFSET@/$(printf %08d $(($(stat -c %s "$header") + 1)))/" "$header"
    cat "$header" "$archive" >"$2"
    chmod 755 "$2"
}

# agreeing_pkexec FOLDER: puts a pkexec there that asks nobody and runs its arguments.
agreeing_pkexec() {
    mkdir -p "$1"
    # shellcheck disable=SC2016 # the script expands it
    printf '#!/bin/sh\nexec "$@"\n' >"$1/pkexec"
    chmod +x "$1/pkexec"
}

# Codes of the interface languages, in the order of the list: en zh_hk ...
languages_of_the_scene() {
    sed -n 's/^ *{"_\([a-z_]*\)", ":.*/\1/p' "$root/settings/DataManagerLanguage.cpp"
}

# Where a click goes, in the window's own pixels.
# shellcheck disable=SC2034 # other scripts read it
declare -A position=(
    [language box]="575 63" [agreement check box]="37 387" [custom path]="560 387"
    [path field]="200 447" [browse]="572 447" [quick install]="320 320" [try it now]="320 324" [nowhere]="320 110"
    [start up check box]="37 493" [shortcut check box]="300 493" [close]="611 28"
    [uninstall]="414 336" [done]="320 324")

# choose_in_open_list ROW: in the language list, whose box has the focus.
choose_in_open_list() {
    local row
    xdotool key Home
    for ((row = 0; row < $1; row++)); do xdotool key Down; done
    xdotool key Return
}

# start_display FOLDER SIZE [DPI]: a virtual display; sets display_pid and DISPLAY. Its log is in FOLDER.
start_display() {
    rm -f "$1/display" # of the display before
    # Without -noreset it refuses whoever comes in the moment after its last client has gone.
    Xvfb -displayfd 3 -screen 0 "$2x24" -dpi "${3-96}" -nolisten tcp -noreset \
        3>"$1/display" 2>"$1/xvfb.log" &
    # shellcheck disable=SC2034 # the caller stops it
    display_pid=$!
    wait_until 20 test -s "$1/display" || fail "Xvfb does not start: $(cat "$1/xvfb.log")"
    DISPLAY=:$(cat "$1/display")
    export DISPLAY
    unset WAYLAND_DISPLAY XAUTHORITY
}

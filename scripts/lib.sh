# shellcheck shell=bash
# What the scripts of this folder share. Sourced; `root` is the checkout, whatever the directory.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export root

say() { printf '%s\n' "$*"; }

fail() {
    printf '%s\n' "$*" >&2
    exit 1
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

# start_display FOLDER SIZE: a virtual display; sets display_pid and DISPLAY. Its log is in FOLDER.
start_display() {
    # Without -noreset it refuses whoever comes in the moment after its last client has gone.
    Xvfb -displayfd 3 -screen 0 "$2x24" -dpi 96 -nolisten tcp -noreset \
        3>"$1/display" 2>"$1/xvfb.log" &
    # shellcheck disable=SC2034 # the caller stops it
    display_pid=$!
    wait_until 20 test -s "$1/display" || fail "Xvfb does not start: $(cat "$1/xvfb.log")"
    DISPLAY=:$(cat "$1/display")
    export DISPLAY
    unset WAYLAND_DISPLAY XAUTHORITY
}

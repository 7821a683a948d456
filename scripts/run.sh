#!/usr/bin/env bash
# Builds the installer, unpacks a bundle with a small sample client and starts the installer in it,
# against a development API server on this machine.
#     scripts/run.sh             in a window; without a display as --virtual
#     scripts/run.sh --virtual   clicks through the installation on a virtual display, takes
#                                pictures of the pages and checks what was installed
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

out=$root/out
build=$root/build/run
preferred_port=18471 # the addresses are compiled in: the same port again rebuilds nothing

virtual=no
case "${1-}" in
    "") ;;
    --virtual) virtual=yes ;;
    *) fail "usage: scripts/run.sh [--virtual]" ;;
esac

has_display() {
    [ -n "${WAYLAND_DISPLAY-}" ] || { [ -n "${DISPLAY-}" ] && timeout 10 xdpyinfo >/dev/null 2>&1; }
}

# Sets server_pid and server (the address). A second checkout may hold the preferred port.
start_server() {
    local port
    rm -f "$out/server.port" "$out/server.jsonl"
    for port in "$preferred_port" 0; do
        python3 "$root/tools/dev_api_server.py" --port "$port" --port-file "$out/server.port" \
            --log "$out/server.jsonl" >"$out/server.log" 2>&1 &
        server_pid=$!
        if wait_until 10 server_decided && [ -s "$out/server.port" ]; then
            server=http://127.0.0.1:$(cat "$out/server.port")
            say "Development API server: $server (requests: out/server.jsonl)"
            return
        fi
        stop "$server_pid"
    done
    fail "The development API server does not start: $(cat "$out/server.log")"
}

server_decided() { [ -s "$out/server.port" ] || not_running "$server_pid"; }

run_in_window() {
    say "Starting the installer from out/bundle (its debug lines: out/installer.log)"
    [ -w /opt ] || say "/opt needs administrator rights: choose a directory of yours (Custom path)."
    (cd "$out/bundle" \
        && QT_QPA_PLATFORM="${QT_QPA_PLATFORM-xcb;wayland}" quietly "$out/installer.log" ./VornInstall)
    say "The installer has ended."
}

# The walk writes where an installation writes. It gets mounts of its own, so that the machine's
# /opt, menu and autostart entries stay as they are; where the kernel refuses that, the walk
# installs into a directory below out/ and leaves menu and autostart alone.
walk_virtually() {
    local mounts=(unshare --mount --propagation private)
    [ "$(id -u)" -eq 0 ] || mounts+=(--map-root-user)
    if [[ $root/ == /opt/* ]]; then
        say "This checkout lies below /opt: installing into out/own-target, no menu entries."
        "$root/scripts/walk.sh" --own-target
    elif ! "${mounts[@]}" mount -t tmpfs tmpfs /opt 2>/dev/null; then
        say "The kernel refuses private mounts: installing into out/own-target, no menu entries."
        "$root/scripts/walk.sh" --own-target
    else
        "${mounts[@]}" "$root/scripts/walk.sh" --private
    fi
}

"$root/scripts/install-packages.sh" build run
if [ "$virtual" = no ] && ! has_display; then
    say "There is no display: using a virtual one."
    virtual=yes
fi
"$root/scripts/install-packages.sh" "$([ "$virtual" = yes ] && echo virtual || echo display)"

mkdir -p "$out"
server_pid=
trap 'stop $server_pid' EXIT
start_server
say "Building"
build_installer "$build" "$server" VornInstall
stage_bundle "$build" "$out/bundle"
if [ "$virtual" = yes ]; then walk_virtually; else run_in_window; fi

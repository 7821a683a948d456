#!/usr/bin/env bash
# Does to the installer what full disks, broken files and dead servers do, and prints one line of
# the table in docs/faults.md for each fault. It needs mounts and a network of its own.
#     scripts/faults.sh          the whole table (about three minutes)
#     scripts/faults.sh ROW...   single rows, named as the functions in scripts/faults/rows.sh
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
# shellcheck source=scripts/faults/rows.sh
source "$(dirname "${BASH_SOURCE[0]}")/faults/rows.sh"

work=$root/out/faults
build=$root/build/faults
bundle=$work/bundle
target=/opt/VornVPN # the scene's default
settings=$target/VornData.json
marker=$work/client-started
server=http://127.0.0.1:18471

# --- the table --------------------------------------------------------------------------------

faults=0

# begin FAULT HOW [SIZE]: a fresh bundle, an empty /opt of that size, a server that behaves well.
begin() {
    fault=$1 how=$2 outcome="" result=""
    umount /opt 2>/dev/null || true
    mount -t tmpfs -o "size=${3-512m}" tmpfs /opt
    mkdir "$target"
    rm -rf "$bundle" "$marker"
    : >"$work/server.jsonl"
    cp -a "$work/staged" "$bundle"
    rules '{}'
    surroundings=()
}

# expect TEXT COMMAND...: what has to be seen now.
expect() {
    local text=$1
    shift
    if ! "$@" >"$work/expect.log" 2>&1; then
        faults=$((faults + 1))
        text="NOT SO: $text ($(head -c 200 "$work/expect.log" | tr '\n' ' '))"
    fi
    outcome+=${outcome:+; }$text
}

end() { say "| $fault | $how | $outcome | ${result:-none} |"; }

# --- the installer ----------------------------------------------------------------------------

rules() { printf '%s\n' "$1" >"$work/rules.json"; }

start_server() {
    rm -f "$work/server.port"
    python3 "$root/tools/dev_api_server.py" --port "${server##*:}" --rules "$work/rules.json" \
        --port-file "$work/server.port" --log "$work/server.jsonl" >"$work/server.log" 2>&1 &
    server_pid=$!
    wait_until 20 test -s "$work/server.port" || fail "No server: $(cat "$work/server.log")"
}

# Sets pid, window and start_work, the processor's hundredths of a second until the window was there:
# others may use the machine too. What the row put into `surroundings` is the environment's.
start() {
    rm -f "$bundle/VornRun.sh"
    cd "$bundle"
    env PATH="$work/bin:$PATH" HOME="$work/home" XDG_RUNTIME_DIR="$work/home" LC_ALL=C.UTF-8 \
        VORN_SAMPLE_MARKER="$marker" "${surroundings[@]}" ./VornInstall >"$work/installer.log" 2>&1 &
    pid=$!
    cd "$root"
    wait_until 60 has_window || fail "$fault: no window: $(tail -c 500 "$work/installer.log")"
    start_work=$(awk '{ print $14 + $15 }' "/proc/$pid/stat")
}

has_window() { window=$(xdotool search --onlyvisible --pid "$pid" | head -n 1) && [ -n "$window" ]; }

click() { xdotool mousemove --window "$window" "$1" "$2" click 1; }

# The launchers are the first that an installation writes.
quick_install() {
    local began=${EPOCHREALTIME/./}
    wait_until 20 click_until_there || fail "$fault: \"Quick Install\" does nothing"
    answer_ms=$(((${EPOCHREALTIME/./} - began) / 1000))
}

click_until_there() {
    click 320 320
    sleep 0.1
    test -e "$bundle/VornRun.sh"
}

close_window() {
    click 611 28
    ended
}

# "Try It Now" appears after five seconds; until then nothing is there to be clicked.
try_it_now() {
    wait_until 60 click_until_ended || fail "$fault: the finish page does not end the installer"
    ended
}

click_until_ended() {
    click 320 324
    sleep 0.3
    not_running "$pid"
}

ended() {
    local code=0
    wait_until 60 not_running "$pid" || fail "$fault: the installer does not end"
    { wait "$pid" || code=$?; } 2>/dev/null # bash tells of kills
    result+=${result:+, then }$code
    [ "$code" -eq "${1-0}" ] || expect "exit code ${1-0}" false
}

# --- what is seen -----------------------------------------------------------------------------

readonly json_files=(VornData.json CommonUsedLine.json Channel.json)

complete() { diff -rq "${json_files[@]/#/--exclude=}" "$bundle" "$target"; }
is_settings() { python3 -c 'import json, sys; assert json.load(open(sys.argv[1]))["installPath"]' "$1"; }
keeps_account() { grep -F '"userName": "kept@vorn.example"' "$1" && is_settings "$1"; }
no_cut_files() { [ -z "$(find "$target" "$bundle" -name 'qt_temp*' -o -name '*.json.?*')" ]; }
asked() { grep -F "$1" "$work/server.jsonl" | grep -F '"signature": "ok"'; }

# earlier_settings DIR: as an earlier installation left them.
earlier_settings() {
    printf '{"userName": "kept@vorn.example", "installPath": "%s", "softUseLanguage": "_en"}\n' \
        "$target" >"$1/VornData.json"
}

# A directory that takes a while to copy and comes first.
add_many_files() {
    mkdir "$bundle/A-tree"
    (cd "$bundle/A-tree" && seq -w 20000 | xargs touch)
}

# Stops the installer in the middle of that directory.
stop_in_copy() {
    local deadline=$((SECONDS + 60))
    until [ -e "$target/A-tree/00100" ] || [ "$SECONDS" -gt "$deadline" ]; do :; done
    kill -STOP "$pid"
    [ -e "$target/A-tree/00100" ] || fail "$fault: the copy does not begin"
    expect "stopped in mid-copy" test ! -e "$target/A-tree/20000"
}

fill() { head -c 1G /dev/zero >"$1/fill" 2>/dev/null || true; }

all_rows=(full_disk full_disk_settings read_only_target target_is_file target_removed killed
    settings_files two_installers servers clock_backwards missing_commands many_installations)

# --- the run ----------------------------------------------------------------------------------

if [ "${1-}" != --inside ]; then
    "$root/scripts/install-packages.sh" build run virtual faults
    private=(unshare --mount --net --propagation private)
    [ "$(id -u)" -eq 0 ] || private+=(--map-root-user)
    if [[ $root/ == /opt/* ]] || ! "${private[@]}" mount -t tmpfs tmpfs /opt 2>/dev/null; then
        say "Every row is skipped: the kernel refuses private mounts, or this checkout is in /opt."
        exit 0
    fi
    build_installer "$build" "$server" VornInstall vorn-fault-driver
    exec "${private[@]}" "$0" --inside "$@"
fi
shift

rm -rf "$work"
mkdir -p "$work/bin" "$work/home"
chmod 700 "$work/home"
agreeing_pkexec "$work/bin"
stage_bundle "$build" "$work/staged"
ip link set lo up
mount -t tmpfs tmpfs /usr/share/applications
mount -t tmpfs tmpfs /etc/xdg
mkdir /etc/xdg/autostart

# shellcheck disable=SC2046 # one process a word
trap 'stop $(jobs -p)' EXIT
start_server
start_display "$work" 1400x1100
[ $# -gt 0 ] || set -- "${all_rows[@]}"
printf "%s\n" "| fault | how | outcome | exit code |" "|---|---|---|---|"
for row in "$@"; do "$row"; done
[ "$faults" -eq 0 ] || fail "$faults outcomes are not as they should be (logs of the last row: $work)"

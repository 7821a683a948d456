#!/usr/bin/env bash
# Does to the installer what full disks, broken files and dead servers do, and prints one line of
# the table in docs/faults.md for each fault. It needs mounts and a network of its own.
#     scripts/faults.sh          the whole table (about five minutes)
#     scripts/faults.sh ROW...   single rows, named as the functions below
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

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
    rm -rf "$bundle" "$marker" "$work/server.jsonl"
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

not() { ! "$@"; }

# --- the installer ----------------------------------------------------------------------------

rules() { printf '%s\n' "$1" >"$work/rules.json"; }

start_server() {
    python3 "$root/tools/dev_api_server.py" --port "${server##*:}" --rules "$work/rules.json" \
        --port-file "$work/server.port" --log "$work/server.jsonl" >"$work/server.log" 2>&1 &
    server_pid=$!
    wait_until 20 test -s "$work/server.port" || fail "No server: $(cat "$work/server.log")"
}

# Sets pid and window. What the row put into `surroundings` is the environment's.
start() {
    rm -f "$bundle/VornRun.sh"
    cd "$bundle"
    env PATH="$work/bin:$PATH" HOME="$work/home" XDG_RUNTIME_DIR="$work/home" LC_ALL=C.UTF-8 \
        VORN_SAMPLE_MARKER="$marker" "${surroundings[@]}" ./VornInstall >"$work/installer.log" 2>&1 &
    pid=$!
    started+=("$pid")
    cd "$root"
    wait_until 60 has_window || fail "$fault: no window: $(tail -c 500 "$work/installer.log")"
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

# --- the rows ---------------------------------------------------------------------------------

full_disk() {
    begin "full disk during the copy" "target on a tmpfs of 64 KiB, one file has 1 MiB" 64k
    earlier_settings "$target"
    head -c 1M /dev/urandom >"$bundle/A-big"
    start
    quick_install
    close_window
    expect "the copy stops" not complete
    expect "no cut file stays" test ! -e "$target/A-big"
    expect "no temporary file stays" no_cut_files
    expect "the settings are whole and keep the account" keeps_account "$settings"
    end
}

full_disk_settings() {
    begin "full disk while settings are written" \
        "target and bundle on tmpfs, filled up between the copy and the end" 8m
    mount -t tmpfs -o size=8m tmpfs "$bundle"
    cp -a "$work/staged/." "$bundle/"
    earlier_settings "$bundle"
    cp "$bundle/VornData.json" "$work/before.json"
    start
    quick_install
    wait_until 30 complete || expect "the tree is complete" false
    fill /opt
    fill "$bundle"
    close_window
    expect "the target's old settings are whole" cmp "$work/before.json" "$settings"
    expect "the bundle's too" cmp "$work/before.json" "$bundle/VornData.json"
    expect "no temporary file stays" no_cut_files
    umount "$bundle"
    end
}

read_only_target() {
    begin "read-only target" "/opt mounted read-only, with an earlier installation's settings"
    earlier_settings "$target"
    cp "$settings" "$work/before.json"
    mount -o remount,ro /opt
    start
    quick_install
    try_it_now
    expect "nothing is copied" not complete
    expect "the old settings are whole" cmp "$work/before.json" "$settings"
    expect "the bundle's settings are written" keeps_account "$bundle/VornData.json"
    expect "no temporary file stays" no_cut_files
    end
}

target_is_file() {
    begin "target that cannot be created" "/opt/VornVPN is a regular file"
    rmdir "$target"
    say precious >"$target"
    start
    quick_install
    try_it_now
    expect "the file is as it was" grep -qx precious "$target"
    expect "the bundle's settings are written" is_settings "$bundle/VornData.json"
    end
}

target_removed() {
    begin "target removed during the copy" "the installer is stopped in mid-copy, rm -rf, continued"
    add_many_files
    start
    quick_install
    stop_in_copy
    rm -rf "$target"
    kill -CONT "$pid"
    close_window
    expect "nothing is put there again" test ! -e "$target"
    expect "the bundle has no temporary file" test -z "$(find "$bundle" -name 'qt_temp*')"
    expect "the bundle's settings are written" is_settings "$bundle/VornData.json"
    end
}

killed() {
    begin "kill -9 during the copy, second run" "SIGKILL in mid-copy over earlier settings, started again"
    earlier_settings "$target"
    add_many_files
    start
    quick_install
    stop_in_copy
    kill -KILL "$pid"
    ended 137
    expect "the settings are whole after the kill" keeps_account "$settings"
    start
    quick_install
    try_it_now
    expect "the second run installs everything" complete
    expect "no temporary file stays" no_cut_files
    expect "the account is kept" keeps_account "$settings"
    end
}

# broken KIND FILE: nothing, or what should not be there.
broken() {
    rm -rf "$2"
    case "$1" in
        empty) : >"$2" ;;
        cut) printf '{"userName": "ke' >"$2" ;;
        binary) head -c 65536 /dev/urandom >"$2" ;;
        "of 50 MB") python3 -c 'print("{\"pad\": \"" + "x" * 50_000_000 + "\"}")' >"$2" ;;
        "of 50 MB of areas") python3 -c 'print("[" + ",".join(["{\"usedNum\": 1}"] * 3_125_000) + "]")' >"$2" ;;
        "of 25 million lines") head -c 25M /dev/zero | tr '\0' '\n' >"$2" ;;
        directory) mkdir "$2" ;;
        pipe) mkfifo "$2" ;;
        "dangling link") ln -s /nowhere/file "$2" ;;
        "below a regular file") ln -s "$bundle/VORN/file" "$2" ;;
    esac
}

settings_files() {
    local kind file
    for kind in empty cut binary "of 50 MB" "of 25 million lines" directory pipe "dangling link" \
        "below a regular file"; do
        begin "VornData.json $kind" "in the bundle and in the target"
        broken "$kind" "$bundle/VornData.json"
        broken "$kind" "$target/VornData.json"
        start
        quick_install
        close_window
        expect "everything is installed" complete
        if [ -f "$settings" ]; then
            expect "new settings are written" is_settings "$settings"
        else
            expect "it is left as it was" test ! -f "$settings"
        fi
        end
    done
    for kind in empty cut binary "of 50 MB of areas" directory pipe "dangling link" \
        "below a regular file"; do
        begin "CommonUsedLine.json and Channel.json $kind" "in the bundle"
        for file in CommonUsedLine.json Channel.json; do broken "$kind" "$bundle/$file"; done
        start
        quick_install
        close_window
        expect "everything is installed" complete
        for file in CommonUsedLine.json Channel.json; do
            [ ! -f "$bundle/$file" ] || expect "$file as it was" cmp "$bundle/$file" "$target/$file"
        done
        expect "settings are written" is_settings "$settings"
        end
    done
}

two_installers() {
    local first first_window second second_window
    begin "two installers at once" "one bundle, one target, both clicked in the same moment"
    add_many_files
    start
    first=$pid first_window=$window
    start
    second=$pid second_window=$window
    xdotool windowmove --sync "$second_window" 0 0
    xdotool mousemove --window "$first_window" 320 320 click 1 \
        mousemove --window "$second_window" 320 320 click 1
    quick_install
    for pid in "$first" "$second"; do
        window=$first_window
        [ "$pid" = "$first" ] || window=$second_window
        try_it_now
    done
    expect "both install" grep -c '' "$marker"
    expect "everything is installed" complete
    expect "no temporary file stays" no_cut_files
    expect "the settings are whole" is_settings "$settings"
    end
}

servers() {
    local name rule
    while IFS='|' read -r name rule; do
        begin "server $name" "every path: ${rule:-no server}"
        if [ -n "$rule" ]; then rules "{\"*\": $rule}"; else stop "$server_pid"; fi
        start
        quick_install
        expect "the window answers within a second" test "$answer_ms" -lt 1000
        try_it_now
        expect "everything is installed" complete
        expect "the settings are whole" is_settings "$settings"
        expect "the client starts" wait_until 10 test -s "$marker"
        [ -n "$rule" ] || start_server
        end
    done <<'END'
dead|
silent|{"silent": true}
fails|{"status": 500}
sends garbage|{"garbage": 100000}
is a captive portal|{"text": "<html><body>Please log in</body></html>"}
cuts its replies|{"cut": true}
slow|{"delay": 3}
END
}

clock_backwards() {
    begin "clock going backwards" "libfaketime: two days back between copy and \"Try It Now\""
    say +0d >"$work/clock"
    surroundings=(LD_PRELOAD=/usr/lib/x86_64-linux-gnu/faketime/libfaketimeMT.so.1
        FAKETIME_TIMESTAMP_FILE="$work/clock" FAKETIME_NO_CACHE=1 FAKETIME_DONT_FAKE_MONOTONIC=1)
    start
    quick_install
    wait_until 20 asked '["flag", "language"]' || expect "the language is reported" false
    say -2d >"$work/clock"
    try_it_now
    expect "the progress runs on" true
    expect "everything is installed" complete
    expect "the report of the start is signed well" asked '["flag", "start"]'
    end
}

missing_commands() {
    mkdir -p "$work/no-commands" "$work/no-pkexec"
    ln -sf "$(command -v chmod)" "$(command -v rm)" "$work/no-pkexec/"
    begin "no chmod, rm, pkexec in PATH" "PATH is an empty directory"
    surroundings=(PATH="$work/no-commands")
    start
    quick_install
    try_it_now
    expect "everything is installed" complete
    expect "the launchers are not executable" test ! -x "$target/VornRun.sh"
    end
    begin "no pkexec in PATH" "PATH has chmod and rm only"
    surroundings=(PATH="$work/no-pkexec")
    start
    quick_install
    try_it_now
    expect "everything is installed" complete
    expect "the launchers are executable" test -x "$target/VornRun.sh"
    expect "the client does not start" test ! -e "$marker"
    end
}

many_installations() {
    local before after
    begin "200 installations in one process" "tools/fault-driver.cpp: memory after 20 and after 200"
    cd "$bundle"
    result=0
    QT_QPA_PLATFORM=offscreen timeout 300 "$build/tools/vorn-fault-driver" "$work/staged" "$target" 200 \
        >"$work/driver.txt" 2>"$work/driver.log" || result=$?
    cd "$root"
    { read -r before && read -r after; } <"$work/driver.txt" || before=0 after=999999
    expect "$before KiB, then $after KiB: less than 1 MiB more" test $((after - before)) -lt 1024
    end
}

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
# shellcheck disable=SC2016 # the script expands it
printf '#!/bin/sh\nexec "$@"\n' >"$work/bin/pkexec"
chmod +x "$work/bin/pkexec"
stage_bundle "$build" "$work/staged"
ip link set lo up
mount -t tmpfs tmpfs /usr/share/applications
mount -t tmpfs tmpfs /etc/xdg
mkdir /etc/xdg/autostart

started=() server_pid="" display_pid=""
trap 'stop "${started[@]}" $server_pid $display_pid' EXIT
start_server
start_display "$work" 1400x1100
[ $# -gt 0 ] || set -- "${all_rows[@]}"
printf "%s\n" "| fault | how | outcome | exit code |" "|---|---|---|---|"
for row in "$@"; do "$row"; done
[ "$faults" -eq 0 ] || fail "$faults outcomes are not as they should be (logs of the last row: $work)"

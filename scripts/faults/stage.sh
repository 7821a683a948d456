# shellcheck shell=bash
# The stage of the fault table: a bundle, a target, a server and a display, and what a row says of
# them. scripts/faults.sh sources this file.
# shellcheck disable=SC2034,SC2154 # the rows read what is set here, and set what is read here

work=$root/out/faults
bundle=$work/bundle
target=/opt/VornVPN # the scene's default
settings=$target/VornData.json
marker=$work/client-started
server=http://127.0.0.1:18471
stranger=12345 # the number of another user
menu_entry=/usr/share/applications/Vorn.desktop
autostart_entry=/etc/xdg/autostart/Vorn.desktop

all_rows=(full_disk full_disk_settings read_only_target target_is_file target_removed killed closed_in_copy signals
    two_installers settings_files list_files left_behind header_splitting
    planted_launchers planted_settings planted_owner planted_directory planted_pipe planted_entry
    servers watchdog lookup mirrors big_reply downloads
    clock_backwards missing_commands no_thread umasks many_installations
    packed_umasks packed_names packed_signal packed_damaged packed_target
    start_declined start_without_pkexec start_environment start_target start_twice start_incomplete
    removal_killed removal_swapped removal_manifest removal_nested removal_scene removal_earlier)

# --- the table --------------------------------------------------------------------------------

readonly not_so=9 # what a row exits with when an outcome is not as it should be

# run_rows ROW...: each in a process of its own, so that nothing of it stays.
run_rows() {
    local row code row_faults=0
    stage_everything
    printf '%s\n' "| fault | how | outcome | exit code |" "|---|---|---|---|"
    for row in "$@"; do
        case_of_row=""
        [[ $row != *:* ]] || case_of_row=${row#*:}
        set +e # the row has its own
        (
            set -e
            # shellcheck disable=SC2046 # one process a word
            trap 'stop $(jobs -p); clear_places' EXIT
            "${row%%:*}"
        )
        code=$?
        set -e
        case "$code" in
            0 | "$not_so") ;;
            *) say "| $row | | NOT SO: the row goes on to its end (status $code) | |" | tee -a "$work/not-so" ;;
        esac
        row_faults=$((row_faults + code))
    done
    [ "$row_faults" -eq 0 ] \
        || fail "$(grep -c . "$work/not-so") outcomes are not as they should be (logs of the last row: $work)"
}

stage_everything() {
    umask 022
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
    start_display "$work" 1400x1100
}

clear_places() {
    umount "$bundle/VornData.json" "$bundle" 2>/dev/null || true
    while umount /opt 2>/dev/null; do :; done
    rm -f "$menu_entry" "$autostart_entry"
}

# wanted CASE: this case of the row was asked for.
wanted() { [ -z "$case_of_row" ] || [ "$case_of_row" = "$1" ]; }

# begin FAULT HOW [SIZE]: a fresh bundle, an empty /opt of that size, a server that behaves well.
begin() {
    fault=$1 how=$2 outcome="" result=""
    clear_places
    mount -t tmpfs -o "size=${3-512m}" tmpfs /opt
    mkdir "$target"
    rm -rf "$bundle" "$marker" "$work/victims"
    mkdir "$work/victims"
    cp -a "$work/staged" "$bundle"
    surroundings=() mask=022 program=(./VornInstall)
    rules '{}'
    start_server
}

# expect TEXT COMMAND...: what has to be seen now.
expect() {
    local text=$1
    shift
    if ! "$@" >"$work/expect.log" 2>&1; then
        text="NOT SO: $text ($(head -c 200 "$work/expect.log" | tr '\n' ' '))"
        say "$text" >>"$work/not-so"
        is_so=no
    fi
    outcome+=${outcome:+; }$text
}

end() {
    stop "$server_pid"
    say "| $fault | $how | $outcome | ${result:-none} |"
    [ "${is_so-yes}" = yes ] || row_failed=1
    is_so=yes
}

# What a row cannot go on without.
give_up() {
    expect "$1" false
    end
    exit "$not_so"
}

# Ends a row of which a case was not as it should be.
tell() { [ -z "${row_failed-}" ] || exit "$not_so"; }

# another_user: rows with another user need real root, who can be one.
another_user() {
    setpriv --reuid "$stranger" --clear-groups true 2>/dev/null && return
    say "| $1 | needs another user, whom only root can be | skipped | |"
    return 1
}

# --- the server -------------------------------------------------------------------------------

rules() { printf '%s\n' "$1" >"$work/rules.json"; }

start_server() {
    rm -f "$work/server.port"
    : >"$work/server.jsonl"
    python3 "$root/tools/dev_api_server.py" --port "${server##*:}" --rules "$work/rules.json" \
        --port-file "$work/server.port" --log "$work/server.jsonl" >"$work/server.log" 2>&1 &
    server_pid=$!
    wait_until 20 test -s "$work/server.port" || fail "No server: $(cat "$work/server.log")"
}

asked() { grep -F "$1" "$work/server.jsonl" | grep -F '"signature": "ok"'; }

# --- the installer ----------------------------------------------------------------------------

# Starts `program` in the bundle. Sets pid and window. What the row put into `surroundings` is the
# environment's.
launch() {
    rm -f "$bundle/VornRun.sh"
    (
        cd "$bundle"
        umask "$mask"
        exec env --default-signal=HUP,INT PATH="$work/bin:$PATH" HOME="$work/home" XDG_RUNTIME_DIR="$work/home" \
            LC_ALL=C.UTF-8 VORN_SAMPLE_MARKER="$marker" "${surroundings[@]}" "${program[@]}"
    ) >"$work/installer.log" 2>&1 &
    pid=$!
}

# Also sets start_work, the processor's hundredths of a second until the window was there: others
# may use the machine too.
start() {
    launch
    wait_until 60 has_window || give_up "the window comes"
    start_work=$(awk '{ print $14 + $15 }' "/proc/$pid/stat")
}

has_window() { window=$(xdotool search --onlyvisible --pid "$pid" | head -n 1) && [ -n "$window" ]; }

# click NAME: where lib.sh says that it is.
click() {
    local x y
    read -r x y <<<"${position[$1]}"
    xdotool mousemove --window "$window" "$x" "$y" click 1
}

# The launchers are the first that an installation writes.
quick_install() {
    local began=${EPOCHREALTIME/./}
    wait_until 20 click_until_there || give_up "\"Quick Install\" installs"
    answer_ms=$(((${EPOCHREALTIME/./} - began) / 1000))
}

click_until_there() {
    click "quick install"
    sleep 0.1
    test -f "$bundle/VornRun.sh"
}

close_window() {
    click close
    ended "$@"
}

# "Try It Now" appears after five seconds; until then nothing is there to be clicked.
try_it_now() {
    wait_until 60 click_until_ended || give_up "the finish page ends the installer"
    ended "$@"
}

click_until_ended() {
    click "try it now"
    sleep 0.3
    not_running "$pid"
}

ended() {
    local code=0
    wait_until 60 not_running "$pid" || give_up "the program ends"
    { wait "$pid" || code=$?; } 2>/dev/null # bash tells of kills
    result+=${result:+, then }$code
    [ "$code" -eq "${1-0}" ] || expect "exit code ${1-0}" false
}

# --- what is seen -----------------------------------------------------------------------------

readonly json_files=(VornData.json CommonUsedLine.json Channel.json)

complete() { diff -rq "${json_files[@]/#/--exclude=}" --exclude='manifest.old.txt' --exclude='.runtime*' "$bundle" "$target"; }
is_settings() { python3 -c 'import json, sys; assert json.load(open(sys.argv[1]))["installPath"]' "$1"; }
keeps_account() { grep -F '"userName": "kept@vorn.example"' "$1" && is_settings "$1"; }
no_cut_files() {
    [ -z "$(find "$target" "$bundle" -name 'qt_temp*' -o -name '*.json.?*' -o -name '.vorn.*' \
        -o -name '.*.sh.*')" ]
}
# Its kind, device and number: "directory 42 1234".
identity() { stat -c '%F %d %i' "$1"; }
is_still() { [ "$(identity "$1")" = "$2" ]; }

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
    wait_until 20 is_stopped "$pid" || give_up "the installer stops"
    [ -e "$target/A-tree/00100" ] || give_up "the copy begins"
    expect "stopped in mid-copy" test ! -e "$target/A-tree/20000"
}

# With all its threads: one may still be in a call when the signal has been sent.
is_stopped() { not grep -hE '^State:.[^Tt]' "/proc/$1"/task/*/status; }

fill() { head -c 1G /dev/zero >"$1/fill" 2>/dev/null || true; }

# Every file there and itself, as the packed bundle has it.
write_manifest() {
    : >"$1/manifest.txt"
    (cd "$1" && find . -type f -printf '%P\n') | LC_ALL=C sort >"$work/manifest"
    cp "$work/manifest" "$1/manifest.txt"
}

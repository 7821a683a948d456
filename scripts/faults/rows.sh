#!/usr/bin/env bash
# The rows of the fault table; scripts/faults.sh sources this file and runs them.
# shellcheck disable=SC2034,SC2154 # it also sets what they read, and reads what they set

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
        "of 50 MB of areas") many_areas >"$2" ;;
        "of 25 million lines") head -c 25M /dev/zero | tr '\0' '\n' >"$2" ;;
        directory) mkdir "$2" ;;
        pipe) mkfifo "$2" ;;
        "dangling link") ln -s /nowhere/file "$2" ;;
        "below a regular file") ln -s "$bundle/VORN/file" "$2" ;;
    esac
}

many_areas() {
    python3 -c 'import json
area = {"lineArea": "Germany", "usedNum": 1, "lineUsedList": [{"lineId": 1, "usedNum": 1}]}
print(json.dumps([area] * 570_000))'
}

settings_files() {
    local kind file
    for kind in empty cut binary "of 50 MB" "of 25 million lines" directory pipe "dangling link" \
        "below a regular file"; do
        begin "VornData.json $kind" "in the bundle and in the target"
        broken "$kind" "$bundle/VornData.json"
        broken "$kind" "$target/VornData.json"
        start
        expect "the window comes after less than 5 s of work" test "$start_work" -lt 500
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
        expect "the window comes after less than 5 s of work" test "$start_work" -lt 500
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
    local first first_window second second_window over
    for over in "a new target" "an earlier installation"; do
        begin "two installers at once into $over" "one bundle, both clicked in the same moment"
        add_many_files
        rmdir "$target"
        [ "$over" = "a new target" ] || cp -a "$bundle" "$target"
        start
        first=$pid first_window=$window
        start
        second=$pid second_window=$window
        xdotool windowmove --sync "$second_window" 0 0
        xdotool mousemove --window "$first_window" 320 320 click 1 \
            mousemove --window "$second_window" 320 320 click 1
        quick_install
        pid=$first window=$first_window
        try_it_now
        pid=$second window=$second_window
        try_it_now
        expect "everything is installed" complete
        expect "no temporary file stays" no_cut_files
        expect "the settings are whole" is_settings "$settings"
        end
    done
}

servers() {
    local name rule
    while IFS='|' read -r name rule; do
        begin "server $name" "every path: ${rule:-no server}"
        if [ -n "$rule" ]; then rules "{\"*\": $rule}"; else stop "$server_pid"; fi
        start
        quick_install
        expect "the window answers within two seconds" test "$answer_ms" -lt 2000
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

stamps_fall() {
    local stamps
    mapfile -t stamps < <(sed -n 's/.*"_timestamp": "\([0-9]*\)".*/\1/p' "$work/server.jsonl")
    [ "${stamps[-1]}" -lt "${stamps[0]}" ]
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
    expect "the requests carry the earlier time" stamps_fall
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
    expect "the launchers are executable" test -x "$target/VornRun.sh"
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
    local before after code=0
    begin "200 installations in one process" "tools/fault-driver.cpp: memory after 20 and after 200"
    (cd "$bundle" && QT_QPA_PLATFORM=offscreen timeout 300 "$build/tools/vorn-fault-driver" \
        "$work/staged" "$target" 200) >"$work/driver.txt" 2>"$work/driver.log" || code=$?
    result=$code
    { read -r before && read -r after; } <"$work/driver.txt" || before=0 after=999999
    expect "$before KiB, then $after KiB: less than 1 MiB more" test $((after - before)) -lt 1024
    end
}

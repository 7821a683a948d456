# shellcheck shell=bash
# Rows of the fault table: the machine. scripts/faults.sh sources this file.
# shellcheck disable=SC2034,SC2154 # stage.sh reads what is set here, and sets what is read here

stamps_fall() {
    local stamps
    mapfile -t stamps < <(sed -n 's/.*"_timestamp": "\([0-9]*\)".*/\1/p' "$work/server.jsonl")
    [ "${stamps[-1]}" -lt "${stamps[0]}" ]
}


clock_backwards() {
    local began
    begin "clock going backwards" "libfaketime: two days back between copy and \"Try It Now\""
    say +0d >"$work/clock"
    surroundings=(LD_PRELOAD=/usr/lib/x86_64-linux-gnu/faketime/libfaketimeMT.so.1
        FAKETIME_TIMESTAMP_FILE="$work/clock" FAKETIME_NO_CACHE=1 FAKETIME_DONT_FAKE_MONOTONIC=1)
    start
    began=$SECONDS
    quick_install
    wait_until 20 asked '["flag", "language"]' || expect "the language is reported" false
    say -2d >"$work/clock"
    # "Try It Now" is there only when the progress has come to its end, which takes five seconds.
    wait_until 60 click_until_ended || give_up "the progress runs on"
    expect "the progress runs on" test $((SECONDS - began)) -ge 4
    ended
    expect "the requests carry the earlier time" stamps_fall
    expect "everything is installed" complete
    expect "the report of the start is signed well" asked '["flag", "start"]'
    end
    tell
}

missing_commands() {
    mkdir -p "$work/no-commands" "$work/no-pkexec"
    ln -sf "$(command -v chmod)" "$(command -v rm)" "$work/no-pkexec/"
    if wanted "no command"; then
        begin "no chmod, rm, pkexec in PATH" "PATH is an empty directory"
        surroundings=(PATH="$work/no-commands")
        start
        quick_install
        try_it_now
        expect "everything is installed" complete
        expect "the launchers are executable" test -x "$target/VornRun.sh"
        end
    fi
    if wanted "no pkexec"; then
        begin "no pkexec in PATH" "PATH has chmod and rm only"
        surroundings=(PATH="$work/no-pkexec")
        start
        quick_install
        try_it_now
        expect "everything is installed" complete
        expect "the launchers are executable" test -x "$target/VornRun.sh"
        expect "the client does not start" test ! -e "$marker"
        end
    fi
    tell
}

no_thread() {
    begin "no thread to be had" "strace: every clone after the first page fails with EAGAIN"
    start
    strace -f -qq -o /dev/null -e trace=clone,clone3 -e inject=clone,clone3:error=EAGAIN -p "$pid" \
        2>"$work/strace.log" &
    wait_until 10 grep -q '^TracerPid:.[1-9]' "/proc/$pid/status" || give_up "strace attaches"
    quick_install
    try_it_now
    expect "everything is installed" complete
    expect "the settings are whole" is_settings "$settings"
    end
    tell
}

# What all may write, but the launchers, which they may; what not all may read, but the settings.
writable_by_all() {
    find "$target" "$menu_entry" "$autostart_entry" ! -type l -perm /022 ! -name '*Run.sh' ! -name Vorn.desktop | grep .
}
closed_to_others() {
    find "$target" "$menu_entry" "$autostart_entry" ! -type l ! -perm -004 ! -name VornData.json | grep .
}

umasks() {
    for mask_tried in 000 077; do
        wanted "$mask_tried" || continue
        begin "umask $mask_tried" "the installer started directly"
        mask=$mask_tried
        start
        quick_install
        close_window
        expect "everything is installed" complete
        expect "only the launchers can be changed by others" not writable_by_all
        expect "all but the settings can be read by others" not closed_to_others
        expect "the settings are their owner's alone" test "$(stat -c %a "$settings")" = 600
        end
    done
    tell
}

many_installations() {
    local before after code=0
    begin "200 installations in one process" "tools/fault-driver.cpp: memory after 20 and after 200"
    (cd "$bundle" && QT_QPA_PLATFORM=offscreen timeout 300 "$build/tools/vorn-fault-driver" install \
        "$work/staged" "$target" 200) >"$work/driver.txt" 2>"$work/driver.log" || code=$?
    result=$code
    { read -r before && read -r after; } <"$work/driver.txt" || before=0 after=999999
    expect "$before KiB, then $after KiB: less than 1 MiB more" test $((after - before)) -lt 1024
    end
    tell
}

# shellcheck shell=bash
# Rows of the fault table: disks, kills and two at once. scripts/faults.sh sources this file.
# shellcheck disable=SC2034,SC2154 # stage.sh reads what is set here, and sets what is read here

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
    tell
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
    tell
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
    tell
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
    tell
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
    tell
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
    tell
}

# The bundle's own settings cannot be replaced, so that a copy that ended later would bring them.
closed_in_copy() {
    begin "window closed during the copy" "the bundle's settings are mounted read-only"
    printf '{"installPath": "/elsewhere"}\n' >"$bundle/VornData.json"
    mount --bind "$bundle/VornData.json" "$bundle/VornData.json"
    mount -o remount,bind,ro "$bundle/VornData.json"
    add_many_files
    start
    quick_install
    stop_in_copy
    kill -CONT "$pid"
    close_window
    expect "everything is installed" complete
    expect "the settings are this installation's" grep -F "\"installPath\": \"$target\"" "$settings"
    umount "$bundle/VornData.json"
    end
    tell
}

# Each signal at another stage; the installation that follows finds nothing in its way.
signals() {
    local stage signal number
    while read -r stage signal number; do
        wanted "$stage" || continue
        begin "SIG$signal at the $stage" "over earlier settings; then a second run"
        earlier_settings "$target"
        add_many_files
        start
        case "$stage" in
            first-page) ;;
            copy)
                quick_install
                stop_in_copy
                ;;
            finish-page)
                quick_install
                wait_until 60 test -e "$target/VornRun.sh" || give_up "the copy ends"
                sleep 6 # the page comes after five seconds
                ;;
        esac
        kill "-$signal" "$pid"
        kill -CONT "$pid" 2>/dev/null || true # it may have ended already
        ended "$number"
        expect "the settings are whole" keeps_account "$settings"
        start
        quick_install
        try_it_now
        expect "the second run installs everything" complete
        expect "no temporary file stays" no_cut_files
        expect "the account is kept" keeps_account "$settings"
        end
    done <<'END'
first-page TERM 143
copy HUP 129
finish-page INT 130
END
    tell
}

two_installers() {
    local first first_window second second_window over x y
    for over in "a new target" "an earlier installation"; do
        wanted "$over" || continue
        begin "two installers at once into $over" "one bundle, both clicked in the same moment"
        add_many_files
        rmdir "$target"
        [ "$over" = "a new target" ] || cp -a "$bundle" "$target"
        start
        first=$pid first_window=$window
        start
        second=$pid second_window=$window
        xdotool windowmove --sync "$second_window" 0 0
        read -r x y <<<"${position[quick install]}"
        xdotool mousemove --window "$first_window" "$x" "$y" click 1 \
            mousemove --window "$second_window" "$x" "$y" click 1
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
    tell
}

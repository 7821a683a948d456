# shellcheck shell=bash
# Rows of the fault table: the start script of the bundle. scripts/faults.sh sources this file.
# shellcheck disable=SC2034,SC2154 # stage.sh reads what is set here, and sets what is read here

# The bundle with its start script and manifest; what the script would show in a window goes to
# told.txt.
with_start_script() {
    cp "$root"/packaging/start*.sh "$bundle/"
    write_manifest "$bundle"
    printf '#!/bin/sh\nprintf "%%s\\n" "$*" >>"%s"\n' "$work/told.txt" >"$work/bin/zenity"
    chmod +x "$work/bin/zenity"
    rm -f "$work/told.txt"
    program=(./start.sh)
}

# as_user: the next start is another user's, in a bundle of his own.
as_user() {
    chown -R "$stranger:$stranger" "$bundle"
    chmod o+x "$work" "$root" "$root/out"
    mkdir -p "$work/home-of-user"
    chown "$stranger" "$work/home-of-user"
    surroundings+=(HOME="$work/home-of-user" XDG_RUNTIME_DIR="$work/home-of-user")
    program=(setpriv --reuid "$stranger" --regid "$stranger" --clear-groups "${program[@]}")
}

# The script may run the installer in a process of its own.
installer_pid() {
    local link
    for link in /proc/[0-9]*/exe; do
        if [ "$(readlink "$link" 2>/dev/null)" = "$bundle/VornInstall" ]; then
            installer=${link//[!0-9]/}
            return
        fi
    done
    return 1
}

installer_has_window() {
    installer_pid && window=$(xdotool search --onlyvisible --pid "$installer" | head -n 1) && [ -n "$window" ]
}

start_by_script() {
    launch
    wait_until 60 installer_has_window || give_up "the window comes ($(tail -c 200 "$work/installer.log" | tr '\n' ' '))"
}

told() { { cat "$work/installer.log" "$work/told.txt" 2>/dev/null || true; } | tr '\n' ' ' | tr -s ' ' | grep -F "$1"; }

start_declined() {
    another_user "declined question for rights" || return 0
    begin "declined question for rights" "a user starts start.sh; pkexec ends with 126"
    with_start_script
    mkdir -p "$work/declining"
    printf '#!/bin/sh\nexit 126\n' >"$work/declining/pkexec"
    chmod +x "$work/declining/pkexec"
    surroundings=(PATH="$work/declining:$work/bin:$PATH")
    as_user
    start_by_script
    expect "the script says what can be done" told "a directory of your own"
    click close
    wait_until 20 not_running "$pid" || give_up "the program ends"
    result=$(wait "$pid"; echo $?)
    end
    tell
}

start_without_pkexec() {
    another_user "no pkexec on the machine" || return 0
    begin "no pkexec on the machine" "a user starts start.sh; PATH has all other programs"
    with_start_script
    mkdir -p "$work/no-pkexec-at-all"
    cp -rsf /usr/bin/. "$work/no-pkexec-at-all/"
    rm -f "$work/no-pkexec-at-all/pkexec" "$work/no-pkexec-at-all/zenity"
    ln -s "$work/bin/zenity" "$work/no-pkexec-at-all/zenity"
    surroundings=(PATH="$work/no-pkexec-at-all")
    as_user
    start_by_script
    expect "the script says that the client needs it" told "pkexec"
    expect "and what can be done" told "a directory of your own"
    click close
    wait_until 20 not_running "$pid" || give_up "the program ends"
    result=$(wait "$pid"; echo $?)
    end
    tell
}

# A library of another name than the system's would be empty here, and a module without a plug-in.
start_environment() {
    begin "hostile environment" "LD_LIBRARY_PATH, LD_PRELOAD, QT_PLUGIN_PATH, QML2_IMPORT_PATH and more lead to broken files"
    with_start_script
    local broken=$work/victims/broken
    mkdir -p "$broken/QtQuick.2" "$broken/platforms"
    : >"$broken/libQt5Core.so.5"
    : >"$broken/platforms/libqxcb.so"
    printf 'module QtQuick\nplugin missing\n' >"$broken/QtQuick.2/qmldir"
    surroundings=(LD_LIBRARY_PATH="$broken" LD_PRELOAD="$broken/libQt5Core.so.5"
        QT_PLUGIN_PATH="$broken" QT_QPA_PLATFORM_PLUGIN_PATH="$broken/platforms"
        QML2_IMPORT_PATH="$broken" QML_IMPORT_PATH="$broken" QT_STYLE_OVERRIDE=missing
        QT_QUICK_CONTROLS_STYLE=missing)
    start_by_script
    quick_install
    expect "no variable reaches the program" not grep -zE "$broken" "/proc/$installer/environ"
    try_it_now
    expect "everything is installed" complete
    end
    tell
}

# Modes of others' files, and nothing installed with the bundle that is not of it.
start_target() {
    begin "bundle unpacked into a directory of others' files" ".ssh/id of mode 600, notes.txt of mode 640"
    with_start_script
    mkdir -m 700 "$bundle/.ssh"
    printf 'key\n' >"$bundle/.ssh/id"
    printf 'notes\n' >"$bundle/notes.txt"
    chmod 600 "$bundle/.ssh/id"
    chmod 640 "$bundle/notes.txt"
    launch
    wait_until 30 script_decided || give_up "the script decides"
    expect "no window comes" not installer_pid
    expect "a sentence says why" told "into an empty directory"
    expect "the modes stay" test "$(stat -c %a "$bundle/.ssh" "$bundle/.ssh/id" "$bundle/notes.txt" | tr '\n' ' ')" = "700 600 640 "
    if installer_has_window; then click close; fi
    wait_until 20 not_running "$pid" || give_up "the script ends"
    result=$(wait "$pid"; echo $?)
    expect "exit code 1" test "$result" = 1
    end
    tell
}
script_decided() { not_running "$pid" || installer_has_window; }

start_twice() {
    begin "second start of a bundle that was kept" "its VornData.json holds a password"
    with_start_script
    earlier_settings "$bundle"
    chmod 600 "$bundle/VornData.json"
    start_by_script
    expect "the settings stay their owner's alone" test "$(stat -c %a "$bundle/VornData.json")" = 600
    quick_install
    close_window
    expect "nothing that is printed holds the account" not grep -F kept@vorn.example "$work/installer.log"
    expect "also after the installation" test "$(stat -c %a "$bundle/VornData.json")" = 600
    end
    tell
}

start_incomplete() {
    begin "an installation that is not complete" "/opt mounted read-only; start.sh looks at what is there"
    with_start_script
    mount -o remount,ro /opt
    start_by_script
    quick_install
    try_it_now 1
    expect "a sentence says how many files lack, and where" told "$target"
    end
    tell
}

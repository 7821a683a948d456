# shellcheck shell=bash
# Rows of the fault table: the uninstaller. scripts/faults.sh sources this file.
# shellcheck disable=SC2034,SC2154 # stage.sh reads what is set here, and sets what is read here

# An installation with sixty files more, both entries, and a neighbour that nobody may touch.
installed() {
    local entry
    cp "$build/uninstaller/Uninstall" "$bundle/Uninstall"
    mkdir "$bundle/A-tree"
    (cd "$bundle/A-tree" && seq -w 60 | xargs touch)
    write_manifest "$bundle"
    cp -a "$bundle/." "$target/"
    printf '#!/bin/sh\n' | tee "$target/VornRun.sh" >"$target/UninstallRun.sh"
    earlier_settings "$target"
    for entry in "$menu_entry" "$autostart_entry"; do
        printf '[Desktop Entry]\nExec=%s/VornRun.sh\n' "$target" >"$entry"
    done
    mkdir /opt/neighbour
    printf 'precious\n' >/opt/neighbour/VORN
    printf 'VORN\n' >/opt/neighbour/manifest.txt
}

start_uninstaller() {
    program=("$target/Uninstall")
    launch
    wait_until 60 has_window || give_up "the uninstaller's window comes"
}

# Clicks until the first file is gone, or the program.
uninstall() { wait_until 20 click_until_removed || give_up "the uninstaller removes"; }
click_until_removed() {
    click uninstall
    sleep 0.2
    not_running "$pid" || [ ! -e "$target/A-tree/01" ]
}

finish_removal() {
    wait_until 60 click_done || give_up "the uninstaller's button closes it"
    ended
}
# Where the button is depends on what is told; Escape closes every report.
click_done() {
    xdotool key Escape
    sleep 0.3
    not_running "$pid"
}

all_gone() { [ ! -e "$target" ] && [ ! -e "$menu_entry" ] && [ ! -e "$autostart_entry" ]; }
neighbour_is_there() { [ "$(cat /opt/neighbour/VORN)" = precious ]; }

removal_killed() {
    local kill_at
    begin "uninstaller killed at every tenth unlink" "strace: SIGKILL at unlink 1, 11, 21, ...; then a second run"
    installed
    cp -a "$target" "$work/victims/whole"
    result="137, then 0"
    for kill_at in 1 11 21 31 41 51 61 71; do
        rm -rf "$target" && cp -a "$work/victims/whole" "$target"
        program=(strace -f -qq -o "$work/strace.log" -e "trace=unlink,unlinkat"
            -e "inject=unlink,unlinkat:signal=KILL:when=$kill_at" "$target/Uninstall")
        launch
        wait_until 60 traced_window || give_up "the uninstaller's window comes"
        wait_until 30 click_traced || give_up "the uninstaller ends"
        [ -e "$target/VORN" ] || [ -e "$target/UninstallRun.sh" ] || [ ! -e "$target" ] \
            || expect "at unlink $kill_at the uninstaller's launcher is still there" false
        [ -e "$target" ] || break
        expect "at $kill_at it can be started again" test -x "$target/Uninstall" -a -s "$target/manifest.txt"
        start_uninstaller
        uninstall_rest
        expect "the second run finishes it" all_gone
    done
    expect "the neighbour stays" neighbour_is_there
    end
    tell
}
uninstall_rest() {
    wait_until 60 click_rest || give_up "the second run ends"
    wait "$pid" || true
}
click_rest() {
    click uninstall
    sleep 0.2
    [ ! -e "$target/manifest.txt" ] || return 1
    click_done
}
# The window is the traced program's.
traced_window() {
    local child
    child=$(pgrep -P "$pid" | head -n 1) && window=$(xdotool search --onlyvisible --pid "$child" | head -n 1) \
        && [ -n "$window" ]
}
click_traced() {
    not_running "$pid" && return
    click uninstall
    sleep 0.2
    click_done
}

# The uninstaller holds its directory; the name leads elsewhere meanwhile.
removal_swapped() {
    begin "parent swapped while the uninstaller asks" "/opt/VornVPN renamed, a link to the neighbour in its place"
    installed
    cp -a /opt/neighbour "$work/victims/neighbour"
    start_uninstaller
    mv "$target" /opt/moved
    ln -s /opt/neighbour "$target"
    local try
    for try in 1 2 3 4 5 6; do
        click uninstall
        sleep 0.5
    done
    wait_until 20 click_done || true
    stop "$pid"
    result=any
    expect "the neighbour stays" neighbour_is_there
    expect "the link's directory has all its files" diff -r "$work/victims/neighbour" /opt/neighbour
    end
    tell
}

removal_manifest() {
    local kind
    for kind in "of 22 million lines" "of 3 GiB"; do
        wanted "$kind" || continue
        begin "manifest $kind" "in the target" 2g
        installed
        case "$kind" in
            "of 3 GiB") truncate -s 3G "$target/manifest.txt" ;;
            *) { yes VORN || true; } | head -n 22000000 >"$target/manifest.txt" ;;
        esac
        start_uninstaller
        expect "less than 500 MiB of memory are taken" small_while_removing
        finish_removal
        expect "nothing is removed" test -x "$target/Uninstall" -a -e "$target/VORN"
        expect "the neighbour stays" neighbour_is_there
        end
    done
    tell
}
small_while_removing() {
    local try
    for try in 1 2 3 4 5 6 7 8 9 10; do
        click uninstall
        sleep 0.3
    done
    [ "$(awk '/^VmHWM/ { print $2 }' "/proc/$pid/status")" -lt $((500 * 1024)) ]
}

removal_nested() {
    begin "20,000 nested directories" "in the target, of somebody else"
    installed
    python3 - "$target" <<'END'
import os, sys
os.chdir(sys.argv[1])
for _ in range(20_000):
    os.mkdir("d")
    os.chdir("d")
END
    start_uninstaller
    uninstall
    finish_removal
    expect "what the installation brought is gone" test ! -e "$target/VORN" -a ! -e "$target/A-tree"
    expect "the others stay" test -d "$target/d/d/d"
    end
    tell
}

removal_scene() {
    local code=0
    begin "uninstaller whose scene does not load" "QML2_IMPORT_PATH leads to a QtQuick without a plug-in"
    installed
    mkdir -p "$work/victims/broken/QtQuick.2"
    printf 'module QtQuick\nplugin missing\n' >"$work/victims/broken/QtQuick.2/qmldir"
    surroundings=(QML2_IMPORT_PATH="$work/victims/broken")
    program=("$target/Uninstall")
    launch
    wait_until 30 closed_or_shown || give_up "the uninstaller says something"
    if ! not_running "$pid"; then xdotool windowfocus "$window" key --window "$window" Return key Return || true; fi
    wait_until 10 not_running "$pid" || give_up "a message can be closed"
    { wait "$pid" || code=$?; } 2>/dev/null
    result=$code
    expect "a message and exit code 1" test "$code" -eq 1 -a -s "$work/installer.log"
    expect "nothing is removed" test -e "$target/VORN"
    end
    tell
}
closed_or_shown() { not_running "$pid" || has_window; }

removal_earlier() {
    begin "files of the version before" "a second installation of a bundle that lacks old.txt; then uninstalled"
    installed
    printf 'old\n' >"$target/old.txt"
    (cd "$target" && printf 'old.txt\n' >>manifest.txt)
    start
    quick_install
    try_it_now
    expect "everything is installed" test -e "$target/UninstallRun.sh" -a -e "$target/old.txt"
    start_uninstaller
    uninstall
    finish_removal
    expect "nothing of either version stays" all_gone
    expect "the neighbour stays" neighbour_is_there
    end
    tell
}

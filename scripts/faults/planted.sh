# shellcheck shell=bash
# Rows of the fault table: what another user planted before root came. scripts/faults.sh sources this
# file.
# shellcheck disable=SC2034,SC2154 # stage.sh reads what is set here, and sets what is read here

# plant_link PLACE VICTIM: another user's link to a file that is not his to change.
plant_link() {
    printf 'precious\n' >"$2"
    chmod 600 "$2"
    ln -s "$2" "$1"
    chown -h "$stranger:$stranger" "$1"
}

untouched() { [ "$(cat "$1")" = precious ] && [ "$(stat -c %a "$1")" = 600 ]; }

planted_launchers() {
    another_user "links planted at the launchers' names" || return 0
    begin "links planted at the launchers' names" \
        "another user's, to root's files: VornRun.sh in the target, UninstallRun.sh in the bundle"
    plant_link "$bundle/UninstallRun.sh" "$work/victims/first"
    plant_link "$target/VornRun.sh" "$work/victims/second"
    start
    quick_install
    try_it_now
    expect "the files keep content and mode" untouched "$work/victims/first"
    expect "the other one too" untouched "$work/victims/second"
    expect "everything is installed" complete
    expect "the launchers are files" test -z "$(find "$bundle" "$target" -name '*Run.sh' -type l)"
    end
    tell
}

planted_settings() {
    another_user "link planted at the settings' name" || return 0
    begin "link planted at the settings' name" "another user's, in the target, to root's file"
    plant_link "$settings" "$work/victims/first"
    start
    quick_install
    close_window
    expect "the file keeps content and mode" untouched "$work/victims/first"
    expect "everything else is installed" complete
    end
    tell
}

planted_owner() {
    another_user "another user's file at the settings' name" || return 0
    begin "another user's file at the settings' name" "in root's target; the bundle holds a password"
    earlier_settings "$target"
    chown "$stranger:$stranger" "$settings"
    start
    quick_install
    close_window
    expect "the settings are root's" test "$(stat -c '%u %a' "$settings")" = "0 600"
    end
    tell
}

planted_directory() {
    another_user "directory of the target that is a link" || return 0
    begin "directory of the target that is a link" "another user's, lib -> a directory elsewhere"
    mkdir "$work/victims/elsewhere"
    ln -s "$work/victims/elsewhere" "$target/lib"
    chown -h "$stranger:$stranger" "$target/lib"
    start
    quick_install
    try_it_now
    expect "nothing lands elsewhere" test -z "$(ls -A "$work/victims/elsewhere")"
    end
    tell
}

planted_pipe() {
    begin "pipe at a launcher's name" "UninstallRun.sh in the bundle"
    mkfifo "$bundle/UninstallRun.sh"
    start
    quick_install
    expect "the window answers within two seconds" test "$answer_ms" -lt 2000
    try_it_now
    expect "everything is installed" complete
    expect "the launcher is a file" test -f "$target/UninstallRun.sh"
    end
    tell
}

planted_entry() {
    another_user "another user's file at the menu entry's name" || return 0
    begin "another user's file at the menu entry's name" "and one at the autostart entry's"
    local entry
    for entry in "$menu_entry" "$autostart_entry"; do
        printf 'theirs\n' >"$entry"
        chown "$stranger:$stranger" "$entry"
    done
    start
    quick_install
    try_it_now
    for entry in "$menu_entry" "$autostart_entry"; do
        expect "$(dirname "$entry") has root's own entry" test "$(stat -c %u "$entry")" = 0
        expect "it starts the client" grep -Fx "Exec=$target/VornRun.sh" "$entry"
    done
    end
    tell
}

# shellcheck shell=bash
# Rows of the fault table: the packed file and its unpacking. scripts/faults.sh sources this file.
# shellcheck disable=SC2034,SC2154 # stage.sh reads what is set here, and sets what is read here

# The bundle as one file, which unpacks below $unpacking.
packed() {
    with_start_script
    unpacking=$work/victims/tmp
    mkdir "$unpacking"
    single_file "$bundle" "$work/victims/VornInstall.run" "$work/victims"
    program=("$work/victims/VornInstall.run" --quiet)
    surroundings=(TMPDIR="$unpacking")
}

# The installer that was unpacked, wherever that is.
start_packed() {
    launch
    wait_until 60 unpacked_has_window || give_up "the window comes ($(tail -c 200 "$work/installer.log" | tr '\n' ' '))"
}
unpacked_has_window() {
    bundle=$(find "$unpacking" -mindepth 2 -maxdepth 2 -name VornInstall -printf '%h\n') \
        && [ -n "$bundle" ] && installer_has_window
}

packed_umasks() {
    for mask_tried in 000 077; do
        wanted "$mask_tried" || continue
        begin "umask $mask_tried while unpacking" "the packed file is started"
        packed
        mask=$mask_tried
        local packed_from=$bundle
        start_packed
        expect "nobody else can enter the directory" test "$(stat -c %a "$bundle")" = 700
        expect "nobody else can write in it" test -z "$(find "$bundle" ! -type l -perm /022)"
        quick_install
        try_it_now
        bundle=$packed_from
        expect "everything is installed" installed_from_packed
        expect "only the launchers can be changed by others" not writable_by_all
        expect "all but the settings can be read by others" not closed_to_others
        expect "nothing unpacked stays" test -z "$(ls -A "$unpacking")"
        end
    done
    tell
}
# Its launcher is not among the files that are packed.
installed_from_packed() {
    local file
    while IFS= read -r file; do
        cmp "$bundle/$file" "$target/$file" || [[ $file == *.json ]] || return
    done <"$bundle/manifest.txt"
}

packed_names() {
    begin "3,000 names taken where it unpacks" "VornVPN.1 to VornVPN.3000, directories of another user"
    packed
    (cd "$unpacking" && seq -f 'VornVPN.%g' 3000 | xargs mkdir -m 777)
    chown "$stranger:$stranger" "$unpacking"/* 2>/dev/null || true
    chmod 1777 "$unpacking"
    local packed_from=$bundle
    start_packed
    expect "its directory is new" test "$(stat -c '%u %a' "$bundle")" = "$(id -u) 700"
    quick_install
    try_it_now
    bundle=$packed_from
    expect "everything is installed" installed_from_packed
    expect "the taken names are left alone" test "$(find "$unpacking" -mindepth 1 | wc -l)" -eq 3000
    end
    tell
}

packed_signal() {
    local deadline
    begin "SIGTERM while unpacking" "20,000 files more"
    add_many_files
    packed
    launch
    deadline=$((SECONDS + 60))
    until is_unpacking || [ "$SECONDS" -gt "$deadline" ]; do :; done
    kill -TERM "$pid"
    ended 15
    expect "nothing unpacked stays" test -z "$(ls -A "$unpacking")"
    expect "nothing is started" not installer_pid
    end
    tell
}
is_unpacking() { [ -n "$(find "$unpacking" -mindepth 3 -name '0*0' -print -quit)" ]; }

packed_damaged() {
    begin "damaged file" "one byte of its archive is another one"
    packed
    printf x | dd of="$work/victims/VornInstall.run" bs=1 seek=200000 conv=notrunc status=none
    launch
    ended 2
    expect "a sentence says so" told "is damaged"
    expect "nothing unpacked stays" test -z "$(ls -A "$unpacking")"
    end
    tell
}

packed_target() {
    begin "--target with a directory of others' files" ".ssh/id of mode 600"
    packed
    mkdir -m 700 "$unpacking/.ssh"
    printf 'key\n' >"$unpacking/.ssh/id"
    chmod 600 "$unpacking/.ssh/id"
    chmod 711 "$unpacking"
    program+=(--target "$unpacking")
    launch
    ended 1
    expect "a sentence says why" told "choose an empty one"
    expect "nothing is unpacked" test "$(ls -A "$unpacking")" = .ssh
    expect "the modes stay" test "$(stat -c %a "$unpacking" "$unpacking/.ssh" "$unpacking/.ssh/id" | xargs)" = "711 700 600"
    end
    tell
}

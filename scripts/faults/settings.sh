# shellcheck shell=bash
# Rows of the fault table: files that are read at the start. scripts/faults.sh sources this file.
# shellcheck disable=SC2034,SC2154 # stage.sh reads what is set here, and sets what is read here

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

# A link is left alone or gives way to whole settings; nothing is put where it leads.
link_or_settings() { is_still "$settings" "$1" || is_settings "$settings"; }

settings_files() {
    local kind before
    for kind in empty cut binary "of 50 MB" "of 25 million lines" directory pipe "dangling link" \
        "below a regular file"; do
        wanted "$kind" || continue
        begin "VornData.json $kind" "in the bundle and in the target"
        broken "$kind" "$bundle/VornData.json"
        broken "$kind" "$target/VornData.json"
        before=$(identity "$settings")
        start
        expect "the window comes after less than 5 s of work" test "$start_work" -lt 500
        quick_install
        close_window
        expect "everything is installed" complete
        case "$kind" in
            directory | pipe) expect "it is left as it was" is_still "$settings" "$before" ;;
            *link | below*)
                expect "it is left or gives way to whole settings" link_or_settings "$before"
                expect "nothing is put where it leads" test ! -e /nowhere -a -f "$bundle/VORN"
                ;;
            *) expect "new settings are written" is_settings "$settings" ;;
        esac
        end
    done
    tell
}

list_files() {
    local kind file
    for kind in empty cut binary "of 50 MB of areas" directory pipe "dangling link" \
        "below a regular file"; do
        wanted "$kind" || continue
        begin "CommonUsedLine.json and Channel.json $kind" "in the bundle"
        for file in CommonUsedLine.json Channel.json; do broken "$kind" "$bundle/$file"; done
        start
        expect "the window comes after less than 5 s of work" test "$start_work" -lt 500
        quick_install
        close_window
        case "$kind" in
            *pipe) expect "everything before them is installed" test -x "$target/VORN" ;;
            *) expect "everything is installed" complete ;;
        esac
        for file in CommonUsedLine.json Channel.json; do
            [ ! -f "$bundle/$file" ] || expect "$file as it was" cmp "$bundle/$file" "$target/$file"
        done
        expect "settings are written" is_settings "$settings"
        end
    done
    tell
}

# A killed writer leaves its file; the next one sweeps it.
left_behind() {
    begin "temporary files of killed writers" "VornData.json.AbCdEf with a password in it, in the target"
    earlier_settings "$target"
    cp "$settings" "$settings.AbCdEf"
    start
    quick_install
    close_window
    expect "it is gone" test ! -e "$settings.AbCdEf"
    expect "the account is kept" keeps_account "$settings"
    end
    tell
}

header_splitting() {
    begin "line breaks in a stored session" 'VornData.json: "session": "s\r\n_planted: 1"'
    printf '{"session": "s\\r\\n_planted: 1", "uid": 7, "installPath": "%s"}\n' "$target" >"$bundle/VornData.json"
    start
    quick_install
    try_it_now
    expect "the session is sent on one line" asked '"_session": "s_planted: 1"'
    expect "no request has a header more" not grep -F '"_planted"' "$work/server.jsonl"
    expect "the report of the start is signed well" asked '["flag", "start"]'
    end
    tell
}

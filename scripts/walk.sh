#!/usr/bin/env bash
# Clicks through an installation on a virtual display, takes a picture of each page and checks what
# was installed and what the server was asked. scripts/run.sh calls it when bundle and server stand.
#     scripts/walk.sh --private      in a mount namespace of its own: installs as users do
#     scripts/walk.sh --own-target   into out/own-target, without menu and autostart entries
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

out=$root/out
bundle=$out/bundle
pictures=$out/screenshots
marker=$out/sample-client-started
frames=$out/walk/frames
menu_entry=/usr/share/applications/Vorn.desktop
autostart_entry=/etc/xdg/autostart/Vorn.desktop

# The window stands in the middle of the screen; positions are the window's own.
screen_width=1280 screen_height=800
window_width=640 window_height=520 page_height=420
window_x=$(((screen_width - window_width) / 2))
window_y=$(((screen_height - window_height) / 2))
mapfile -t languages < <(languages_of_the_scene)

# --- private places ---------------------------------------------------------------------------

# Puts an empty directory over DIR. Where DIR is missing, its nearest parent is covered by a copy,
# so that nothing has to be created on the machine.
cover() {
    local place=$1 copy
    if [ -d "$place" ]; then
        mount -t tmpfs tmpfs "$place"
        return
    fi
    until [ -d "$place" ]; do place=$(dirname "$place"); done
    copy=$(mktemp -d "$out/walk/copy.XXXXXX")
    cp -a "$place/." "$copy/" 2>/dev/null || true
    mount -t tmpfs tmpfs "$place"
    cp -a "$copy/." "$place/"
    rm -rf "$copy"
    mkdir -p "$1"
}

# --- the window -------------------------------------------------------------------------------

# The installer sees a home directory and a pkexec of its own; the latter runs its arguments.
start_installer() {
    mkdir -p "$out/walk/home" "$out/walk/runtime"
    chmod 700 "$out/walk/runtime"
    agreeing_pkexec "$out/walk/bin"
    cd "$bundle"
    env -u QT_QPA_PLATFORM -u QT_SCALE_FACTOR PATH="$out/walk/bin:$PATH" HOME="$out/walk/home" \
        XDG_RUNTIME_DIR="$out/walk/runtime" LC_ALL=C.UTF-8 VORN_SAMPLE_MARKER="$marker" \
        ./VornInstall >"$out/installer.log" 2>&1 &
    installer_pid=$!
    cd "$root"
    wait_until 30 xdotool search --onlyvisible --pid "$installer_pid" \
        || fail "The installer shows no window: $(tail -n 20 "$out/installer.log")"
}

point_at() {
    local x y
    read -r x y <<<"${position[$1]}"
    xdotool mousemove $((window_x + x)) $((window_y + y))
}

click() {
    point_at "$1"
    xdotool click 1
}

# grab FILE [HEIGHT]: the window as it is now. Below the pages it is transparent, which is black
# without a compositor, so only the open path panel is taken in full height.
grab() {
    import -silent -window root \
        -crop "${window_width}x${2:-$page_height}+$window_x+$window_y" +repage "$1"
}

fingerprint() { convert "$1" "${@:2}" rgba:- | md5sum; }

# picture NAME [HEIGHT]: waits until the page stands still and looks unlike the last picture.
last_picture=
picture() {
    local file=$pictures/$1.png before="" now tries=100
    grab "$file" "${2-}"
    now=$(fingerprint "$file")
    until [ "$now" = "$before" ] && [ "$now" != "$last_picture" ]; do
        tries=$((tries - 1))
        [ "$tries" -gt 0 ] || fail "The page \"$1\" does not appear or does not stand still"
        sleep 0.1
        before=$now
        grab "$file" "${2-}"
        now=$(fingerprint "$file")
    done
    last_picture=$now
}

choose_language() {
    click "language box"
    wait_until 5 list_is_open || fail "The language list does not open"
    choose_in_open_list "$1"
    click nowhere # or the box would keep the ring of the keyboard
}

# Height and top of the white list below its box, read from a strip beside the texts.
list_extent() {
    grab "$out/walk/list.png"
    convert "$out/walk/list.png" -crop 6x300+612+80 +repage -threshold 75% -format '%@' info: \
        | awk -F '[x+]' '{ print $2, 80 + $4 }'
}

list_is_open() {
    local height top
    read -r height top <<<"$(list_extent)"
    [ "$height" -gt 90 ] && [ "$height" -lt 200 ] && [ "$top" -lt 100 ]
}

# The part of the page that changes with the illustration, and with nothing else.
illustration() { fingerprint "$1" -crop 640x240+0+60; }

# The progress page moves, so frames are taken until three illustrations and what follows them have
# been seen, the initial page not counted. What stands in one frame only was caught half drawn. The
# picture of an illustration is the middle one of its frames.
picture_progress() {
    local deadline=$((SECONDS + 60)) number=0 group=0 pages=0 before now
    local -a first=()
    rm -rf "$frames"
    mkdir -p "$frames"
    before=$(illustration "$pictures/path-panel.png")
    until [ "$pages" -eq 4 ]; do
        [ "$SECONDS" -lt "$deadline" ] \
            || fail "Wanted three illustrations and the finish page, saw $pages (out/walk/frames)"
        grab "$frames/$number.png"
        now=$(illustration "$frames/$number.png")
        if [ "$now" != "$before" ]; then
            before=$now group=0 first[pages]=$number
        fi
        # Before the first change the initial page is still there.
        if [ "${#first[@]}" -gt "$pages" ] && [ $((group += 1)) -eq 2 ]; then pages=$((pages + 1)); fi
        number=$((number + 1))
        sleep 0.05
    done
    for group in 0 1 2; do
        cp "$frames/$(((first[group] + first[group + 1] - 1) / 2)).png" \
            "$pictures/progress-$((group + 1)).png"
    done
    last_picture=
}

# Outside the rounded corners the window is transparent, so the pictures become it too.
clear_corners() {
    local file
    for file in "$pictures"/*.png; do
        convert "$file" -bordercolor black -border 1 -alpha set -fuzz 6% -fill none \
            -floodfill +0+0 black -shave 1x1 "$file"
    done
}

# --- the checks -------------------------------------------------------------------------------

# asked PATH [FIELDS]: the server answered this signed request; FIELDS is how its form begins.
asked() {
    grep -F "\"path\": \"$1\"" "$out/server.jsonl" | grep -F '"signature": "ok"' \
        | grep -F "\"status\": 200" | grep -F "\"fields\": [${2-}"
}

fetched() { grep -F '"method": "GET"' "$out/server.jsonl" | grep "\"path\": \"$1\""; }

unsigned_call() { grep -F '"path": "/api/' "$out/server.jsonl" | grep -vF '"signature": "ok"'; }

check_requests() {
    check "the discovery files were fetched" fetched '/[a-z]*/cookie.txt'
    check "the public address was looked up" fetched /lookup
    check "the region was asked for" asked /api/system/region ']'
    check "the init record was asked for" asked /api/system/index '["is_first_install", "1"]]'
    check "the language was reported" asked /api/system/log \
        '["flag", "language"], ["type", ""], ["language", "_en"]]'
    check "the start was reported" asked /api/system/log '["flag", "start"]]'
    check "every API call was signed" not unsigned_call
}

check_installation() {
    check "the bundle's tree is in $target" \
        diff -r --exclude VornData.json --exclude '.*' "$bundle" "$target"
    check "VornData.json tells settings" python3 -m json.tool "$target/VornData.json"
    check "VornData.json is its owner's only" test "$(stat -c %a "$target/VornData.json")" = 600
    local script
    for script in VornRun UninstallRun; do
        check "$script.sh may be run by all" test "$(stat -c %a "$target/$script.sh")" = 777
    done
    check "the sample client was started by VornRun.sh" \
        diff "$marker" <(printf '%s\n' "$target/VORN" "$target/lib" "$target/plugins" "$target/qml")
    if [ "$private" = yes ]; then
        check "the menu entry starts the client" grep -Fx "Exec=$target/VornRun.sh" "$menu_entry"
        check "the autostart entry starts it" grep -Fx "Exec=$target/VornRun.sh" "$autostart_entry"
        keep_generated "$menu_entry" menu.desktop
        keep_generated "$autostart_entry" autostart.desktop
    fi
    keep_generated "$target/VornRun.sh" VornRun.sh
    keep_generated "$target/UninstallRun.sh" UninstallRun.sh
}

# scripts/check.sh reads what the installer wrote when the private places are gone.
keep_generated() {
    mkdir -p "$out/generated"
    if [ -e "$1" ]; then cp "$1" "$out/generated/$2"; fi
}

# --- the walk ---------------------------------------------------------------------------------

case "${1-}" in
    --private) private=yes target=/opt/VornVPN ;;
    --own-target) private=no target=$out/own-target ;;
    *) fail "usage: scripts/walk.sh --private | --own-target (scripts/run.sh calls it)" ;;
esac
rm -rf "$pictures" "$out/walk" "$out/own-target" "$out/generated" "$marker"
mkdir -p "$pictures" "$out/walk"
if [ "$private" = yes ]; then
    for place in /opt "$(dirname "$menu_entry")" "$(dirname "$autostart_entry")"; do
        cover "$place"
    done
fi

display_pid="" installer_pid=""
trap 'stop $installer_pid $display_pid' EXIT
start_display "$out/walk" "${screen_width}x$screen_height"
start_installer

say "Clicking through the installation"
point_at nowhere
wait_until 20 asked /api/system/index || fail "The installer did not ask for its init record"
picture initial
click "language box"
picture language-list
click "language box"
for ((index = ${#languages[@]} - 1; index >= 0; index--)); do
    choose_language "$index"
    picture "initial-${languages[index]}"
done

click "custom path"
point_at nowhere
picture path-panel "$window_height"
if [ "$private" = no ]; then
    click "path field"
    xdotool key ctrl+a
    xdotool type --delay 5 "$target"
    click "start up check box"
    click "shortcut check box"
fi
click "quick install"
point_at nowhere
picture_progress
picture finish
clear_corners
click "try it now"
wait_until 20 not_running "$installer_pid" || fail "\"Try It Now\" does not end the installer"
check "the installer ended well" wait "$installer_pid"
check "the sample client was started" wait_until 20 test -s "$marker"

check_requests
check_installation
[ "$faults" -eq 0 ] || fail "The walk found $faults faults. Pictures: $pictures, logs: $out"
say "Everything is installed as it should be. The pictures of the pages are in $pictures:"
(cd "$pictures" && printf '    %s\n' ./*.png)

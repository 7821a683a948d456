#!/usr/bin/env bash
# Takes pictures of every page in every language, at 96, 144 and 192 dots per inch: out/gallery,
# one folder a density and language. For people to look at; scripts/walk.sh checks what happens.
#     scripts/gallery.sh            all of them (about ten minutes)
#     scripts/gallery.sh 192 de     one density, one language: en zh_hk id ru de
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

out=$root/out/gallery
build=$root/build/run
bundle=$out/bundle
installed=$out/installed
nobody="http://127.0.0.1:1" # the pages need no server
screen_width=1600 screen_height=1200
mapfile -t all_languages < <(languages_of_the_scene)

# begin PROGRAM HEIGHT: starts it in its folder and sets where its window stands.
begin() {
    local folder=$bundle
    [ "$1" = VornInstall ] || folder=$installed
    (cd "$folder" && exec env HOME="$out/home" XDG_RUNTIME_DIR="$out/home" \
        LC_ALL=C.UTF-8 "./$1" >"$out/$1.log" 2>&1) &
    program_pid=$!
    wait_until 30 xdotool search --onlyvisible --pid "$program_pid" \
        || fail "$1 shows no window: $(tail -n 20 "$out/$1.log")"
    window_height=$(($2 * factor))
    window_x=$(((screen_width - 640 * factor) / 2))
    window_y=$(((screen_height - window_height) / 2))
    point_at nowhere
}

point_at() {
    local x y
    read -r x y <<<"${position[$1]}"
    xdotool mousemove $((window_x + x * factor)) $((window_y + y * factor))
}

click() {
    point_at "$1"
    xdotool click 1
}

choose_language() {
    local row
    for row in "${!all_languages[@]}"; do
        [ "${all_languages[row]}" = "$language" ] || continue
        click "language box"
        sleep 0.5
        choose_in_open_list "$row"
        click nowhere
        sleep 0.5
    done
}

# type_path PATH: into the path field, which loses the focus then, since its cursor blinks.
type_path() {
    click "path field"
    xdotool key ctrl+a
    xdotool type --delay 5 "$1"
    click nowhere
}

# picture NAME [whole]: the window, or the whole screen, when it has stood still for half a second.
picture() {
    local file=$out/$density/$language/$1.png before="" now="" same=0 tries=60
    local part=(-crop "$((640 * factor))x$window_height+$window_x+$window_y" +repage)
    [ "${2-}" != whole ] || part=()
    until [ "$same" -eq 5 ] || [ "$tries" -eq 0 ]; do
        tries=$((tries - 1))
        now=$(timeout 3 import -silent -window root "${part[@]}" rgba:- | md5sum) || continue
        if [ "$now" = "$before" ]; then same=$((same + 1)); else same=0; fi
        before=$now
        sleep 0.1
    done
    mkdir -p "$(dirname "$file")"
    timeout 10 import -silent -window root "${part[@]}" "$file"
}

end() {
    stop "$program_pid"
    program_pid=""
}

installer_pages() {
    begin VornInstall 520
    picture initial
    choose_language
    picture initial
    click "language box"
    picture language-list
    click "language box"
    click "custom path"
    point_at nowhere
    picture panel
    type_path home/u/VornVPN
    picture panel-relative
    mkdir -p "$installed"
    echo VORN >"$installed/manifest.txt"
    type_path "$installed"
    picture panel-update
    type_path /dev/null/VornVPN
    picture panel-refused
    type_path "$out/small/VornVPN"
    picture panel-small
    sleep 1
    click browse
    wait_until 10 dialog_is_open || true
    picture folder-dialog whole
    xdotool key Escape
    click "quick install"
    point_at nowhere
    sleep 2
    import -silent -window root \
        -crop "$((640 * factor))x$window_height+$window_x+$window_y" +repage \
        "$out/$density/$language/installing.png"
    sleep 4
    picture finish-failure
    end
}

dialog_is_open() { [ "$(xdotool search --onlyvisible --pid "$program_pid" | wc -l)" -gt 1 ]; }

# What the uninstaller cannot remove it tells: here a directory of somebody else's in its way.
uninstaller_pages() {
    rm -rf "$installed"
    stage_bundle "$build" "$installed"
    cp "$build/uninstaller/Uninstall" "$installed/"
    (cd "$installed" && find . -type f -printf '%P\n') >"$installed/manifest.txt"
    touch "$installed/one of the user's own files"
    printf '{"softUseLanguage": "_%s"}\n' "$language" >"$installed/VornData.json"
    begin Uninstall 420
    picture uninstall-question
    click uninstall
    point_at nowhere
    picture uninstall-report
    end
}

density=96 language=en program_pid="" display_pid=""
densities=(96 144 192) languages=("${all_languages[@]}")
case $# in
    0) ;;
    2) densities=("$1") languages=("$2") ;;
    *) fail "$(describe "$0")" ;;
esac
for language in "${languages[@]}"; do
    [[ " ${all_languages[*]} " == *" $language "* ]] || fail "There is no language $language. $(describe "$0")"
done

"$root/scripts/install-packages.sh" build run virtual
if [ "${VORN_GALLERY_PRIVATE-}" != yes ]; then
    say "Building"
    build_installer "$build" "$nobody" VornInstall Uninstall
    rm -rf "$out"
    mkdir -p "$out/home"
    chmod 700 "$out/home"
    # What a page could write outside of out/ goes into mounts of its own.
    private=(unshare --mount --propagation private)
    [ "$(id -u)" -eq 0 ] || private+=(--map-root-user)
    VORN_GALLERY_PRIVATE=yes "${private[@]}" "${BASH_SOURCE[0]}" "$@"
    exit
fi

for place in /usr/share/applications /etc/xdg/autostart; do
    [ ! -d "$place" ] || mount -t tmpfs tmpfs "$place"
done
mkdir "$out/small"
mount -t tmpfs -o size=64k tmpfs "$out/small"
stage_bundle "$build" "$bundle"
trap 'stop $program_pid $display_pid' EXIT
for density in "${densities[@]}"; do
    factor=$((density < 168 ? 1 : 2))
    start_display "$out" "${screen_width}x$screen_height" "$density"
    for language in "${languages[@]}"; do
        uninstaller_pages
        installer_pages
    done
    stop "$display_pid"
done
say "The pictures are in $out."

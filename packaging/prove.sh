#!/usr/bin/env bash
# Proves a packed installer in a clean Debian: unpacks it, clicks through the installation, starts the
# client, uninstalls, and compares the system before and after. As root, as a user who agrees to the
# installer's question for rights, and as one who declines. Needs root, changes nothing outside
# out/prove, and takes a few minutes.
#     packaging/prove.sh [SUITE [VornInstall.run]]   (default: bookworm out/package/VornInstall.run)
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/lib.sh"
case "${1-}" in
    -h | --help) say "usage: packaging/prove.sh [SUITE [VornInstall.run]]    SUITE: bookworm, trixie" && exit ;;
esac

work=$root/out/prove
# What every desktop has and the bundle therefore does not bring, and nothing else.
desktop=libgl1,libegl1,libgbm1,libx11-6,libx11-xcb1,libxcb1,libxcb-dri2-0,libxcb-dri3-0
desktop+=,libwayland-client0,fontconfig,libfreetype6,libharfbuzz0b,libfribidi0,libexpat1,libuuid1
desktop+=,libice6,libsm6,zlib1g,libcom-err2,libp11-kit0

screen_width=1280 screen_height=800

make_clean_system() {
    [ ! -e "$clean/.complete" ] || return 0
    local mirror
    # shellcheck disable=SC2016 # apt-get expands it
    mirror=$(apt-get indextargets --format '$(REPO_URI) $(CODENAME) $(COMPONENT)' 'Created-By: Packages' \
        | awk '$2 == "bookworm" && $3 == "main" { print $1; exit }')
    [ -n "$mirror" ] || fail "apt-get knows no mirror of Debian"
    say "Making a clean Debian ($suite, once) in $clean"
    rm -rf "$clean"
    quietly "$work/debootstrap.log" debootstrap --variant=minbase --include="$desktop" \
        "$suite" "$clean" "$mirror"
    chroot "$clean" useradd --create-home --shell /bin/sh tester
    mkdir -p "$clean/usr/share/applications" "$clean/etc/xdg/autostart" # as desktops have them
    rm -rf "$clean"/var/cache/apt/archives/*.deb
    touch "$clean/.complete"
}

# --- inside the namespace -----------------------------------------------------------------------

# The clean system with a layer of its own on top.
mount_system() {
    mkdir -p "$work/layer" "$work/system"
    mount -t tmpfs tmpfs "$work/layer"
    mkdir "$work/layer/upper" "$work/layer/work"
    mount -t overlay overlay -o "lowerdir=$clean,upperdir=$work/layer/upper,workdir=$work/layer/work" \
        "$work/system"
    mount -t proc proc "$work/system/proc"
    mount --rbind /dev "$work/system/dev"
    mkdir -p "$work/system/tmp/.X11-unix"
    # Only the sockets: the checkout itself may lie below /tmp.
    mkdir -p /tmp/.X11-unix
    mount -t tmpfs -o mode=1777 tmpfs /tmp/.X11-unix
    mount --bind /tmp/.X11-unix "$work/system/tmp/.X11-unix"
}

# pkexec clears the environment, starts in root's home and, where the user agrees, as root. This one
# asks nobody: it agrees to all, or declines for the installer and runs the launchers as the user.
put_pkexec() {
    local answer="" as_root=""
    if [ "$1" = agrees ]; then
        cp "$system/usr/bin/setpriv" "$system/usr/bin/become"
        chmod 4755 "$system/usr/bin/become"
        as_root="become --reuid 0 --regid 0 --clear-groups"
    else
        # shellcheck disable=SC2016 # the other shell expands it
        answer='case "$*" in *VornInstall*) exit 126 ;; esac'
    fi
    cat >"$system/usr/bin/pkexec" <<STUB
#!/bin/sh
$answer
cd /root 2>/dev/null || cd /
exec $as_root env -i PATH="\$PATH" HOME=/root VORN_SAMPLE_MARKER="\$VORN_SAMPLE_MARKER" "\$@"
STUB
    chmod 755 "$system/usr/bin/pkexec"
}

# Everything but times.
snapshot() {
    (
        cd "$system"
        find . -xdev -printf '%y %m %u:%g %p %l\n' | sort
        find . -xdev -type f -print0 | sort -z | xargs -0 sha256sum
    ) >"$1"
}

# inside COMMAND: as the user of this round, without any variable but a session's.
inside() {
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 HOME="$home" DISPLAY="$DISPLAY" \
        VORN_SAMPLE_MARKER="$home/marker" "${@:2}" chroot --userspec="$user" "$system" \
        /bin/sh -c "cd; $1"
}

# find_process NAME: sets pid.
find_process() {
    local link
    for link in /proc/[0-9]*/exe; do
        case "$(readlink "$link" 2>/dev/null)" in
            */"$1") pid=${link//[!0-9]/} && return ;;
        esac
    done
    return 1
}

has_window() { xdotool search --onlyvisible --pid "$pid"; }

wait_for_window() {
    wait_until 60 find_process "$1" || fail "$1 does not start: $(tail -n 20 "$work/$round-$1.log")"
    wait_until 60 has_window || fail "$1 shows no window: $(tail -n 20 "$work/$round-$1.log")"
    window_y=$(((screen_height - $2) / 2))
    xdotool windowfocus "$(has_window | tail -n 1)" 2>/dev/null || true
    stand_still 3
}

click() {
    local x y
    read -r x y <<<"${position[$1]}"
    xdotool mousemove $(((screen_width - 640) / 2 + x)) $((window_y + y)) click 1
}

picture() { import -silent -window root "$1"; }

# stand_still TENTHS: waits until the screen has not changed for so long.
stand_still() {
    local same=0 before="" now tries=300
    while [ "$same" -lt "$1" ] && [ "$tries" -gt 0 ]; do
        now=$(import -silent -window root rgba:- | md5sum)
        if [ "$now" = "$before" ]; then same=$((same + 1)); else same=0; fi
        before=$now tries=$((tries - 1))
        sleep 0.1
    done
}

# Of what the bundle brings, nothing is taken from elsewhere; Qt is not there elsewhere at all.
mapped_from_elsewhere() {
    local from
    from=$(dirname "$(readlink "/proc/$1/exe")")
    awk '$6 ~ /^\// { print $6 }' "/proc/$1/maps" | sort -u | while IFS= read -r file; do
        case "$file" in
            "$from"/*) ;;
            *[Qq]t5* | */libq*) echo "$file" ;;
            *.so*) [ ! -e "$from/lib/${file##*/}" ] || echo "$file" ;;
        esac
    done | grep .
}

check_process() {
    check "$1 maps no Qt file from outside the bundle" not mapped_from_elsewhere "$pid"
    check "$1 maps Qt from the bundle" grep -q '/lib/libQt5Core\.so\.5' "/proc/$pid/maps"
    check "$1 drew with no GL driver" not grep -E '_dri\.so|libLLVM' "/proc/$pid/maps"
}

install_it() {
    inside "./VornInstall.run" >"$work/$round-VornInstall.log" 2>&1 &
    wait_for_window VornInstall 520
    local expected=$uid
    [ "$target" != /opt/VornVPN ] || expected=0
    check "the installer's user is number $expected" test "$(stat -c %u "/proc/$pid")" = "$expected"
    check_process VornInstall
    if [ "$target" != /opt/VornVPN ]; then
        click "custom path"
        stand_still 3
        click "path field"
        xdotool key ctrl+a
        xdotool type --delay 20 "$target"
        stand_still 3
    fi
    picture "$work/$round-installer.png"
    click "quick install"
    sleep 1
    stand_still 15
    picture "$work/$round-finish.png"
    click "try it now"
    wait_until 30 not_running "$pid" || fail "\"Try It Now\" does not end the installer"
    wait_until 30 test -s "$system$home/marker" || true
}

check_installation() {
    check "every file of the manifest is in $target, as it was packed" same_files
    check "it can be read by all" not unreadable
    check "the client was started with the launcher's paths" diff "$system$home/marker" \
        <(printf '%s\n' "$target/VORN" "$target/lib" "$target/plugins" "$target/qml")
    local entry
    for entry in usr/share/applications etc/xdg/autostart; do
        if [ "$target" = /opt/VornVPN ]; then
            check "/$entry/Vorn.desktop starts it" \
                grep -Fx "Exec=$target/VornRun.sh" "$system/$entry/Vorn.desktop"
        else
            check "/$entry has no entry, since the user may not write there" \
                not test -e "$system/$entry/Vorn.desktop"
        fi
    done
    check "nothing of the unpacked bundle is left" not unpacked_left
}

same_files() {
    (cd "$unpacked" && xargs -d '\n' sha256sum <manifest.txt) \
        | (cd "$system$target" && sha256sum --quiet -c -)
}
unreadable() { find "$system$target" ! -perm -004 ! -name VornData.json | grep .; }
unpacked_left() { find "$system/tmp" -mindepth 1 -maxdepth 1 ! -name .X11-unix | grep .; }

# The character data are reduced, and what Qt answers must not show it.
check_codecs() {
    cp "$work/codecs" "$system/tmp/codecs"
    check "codecs, order and time zones are those of the full data" diff "$work/codecs.expected" \
        <(inside /tmp/codecs LD_LIBRARY_PATH="$target/lib")
    rm "$system/tmp/codecs"
}

# The client of a launcher finds its plug-ins with the launcher's variables alone, without qt.conf.
check_launcher_variables() {
    mkdir "$system/tmp/elsewhere"
    cp "$system$target/Uninstall" "$system/tmp/elsewhere/Elsewhere"
    inside "exec /tmp/elsewhere/Elsewhere" LD_LIBRARY_PATH="$target/lib" \
        QT_QPA_PLATFORM_PLUGIN_PATH="$target/plugins" QML2_IMPORT_PATH="$target/qml" \
        >"$work/$round-Elsewhere.log" 2>&1 &
    wait_for_window Elsewhere 420
    check "a program elsewhere finds all with the launcher's variables" \
        grep -q "$target/plugins/platforms/libqxcb.so" "/proc/$pid/maps"
    xdotool key Escape
    wait_until 10 not_running "$pid" || check "it closes with Escape" false
    rm -r "$system/tmp/elsewhere"
}

uninstall_it() {
    inside "exec $target/UninstallRun.sh" >"$work/$round-Uninstall.log" 2>&1 &
    wait_for_window Uninstall 420
    check_process Uninstall
    picture "$work/$round-question.png"
    click uninstall
    sleep 1
    stand_still 10
    picture "$work/$round-removed.png"
    check "$target is gone while the window still shows it" not test -e "$system$target"
    click "done"
    wait_until 20 not_running "$pid" || fail "The uninstaller's button does not close it"
    rm -f "$system$home/marker"
}

# one_round NAME USER TARGET AGREES
one_round() {
    round=$1 user=$2 target=$3
    local agrees=$4
    IFS=: read -r _ _ uid _ _ home _ < <(grep "^$user:" "$clean/etc/passwd")
    say "== $round"
    mount_system
    system=$work/system
    put_pkexec "$agrees"
    install -o "$uid" -m 755 "$run_file" "$system$home/VornInstall.run"
    unpacked=$work/layer/unpacked
    "$run_file" --quiet --noexec --target "$unpacked" >/dev/null

    Xvfb -displayfd 3 -nolock -ac -screen 0 "${screen_width}x${screen_height}x24" -nolisten tcp \
        3>"$work/layer/display" 2>"$work/xvfb.log" &
    wait_until 20 test -s "$work/layer/display" || fail "Xvfb does not start: $(cat "$work/xvfb.log")"
    DISPLAY=:$(cat "$work/layer/display")
    export DISPLAY

    snapshot "$work/$round.before"
    install_it
    check_installation
    check_codecs
    check_launcher_variables
    uninstall_it
    snapshot "$work/$round.after"
    check "the system is as before" diff "$work/$round.before" "$work/$round.after"
    [ "$faults" -eq 0 ] || fail "$round: $faults faults (pictures and logs: $work)"
}

if [ "${1-}" = --round ]; then
    suite=$2 run_file=$3
    clean=$work/$suite
    one_round "${@:4}"
    exit
fi

suite=${1-bookworm}
clean=$work/$suite
run_file=$(readlink -e "${2-$root/out/package/VornInstall.run}") \
    || fail "There is no packed installer: run scripts/package.sh first"
[ "$(id -u)" -eq 0 ] || fail "Only root can make and enter a clean system"
"$root/scripts/install-packages.sh" build virtual prove
mkdir -p "$work"
make_clean_system
# shellcheck disable=SC2046 # several words
g++ -fPIC -o "$work/codecs" "$root/packaging/codecs.cpp" $(pkg-config --cflags --libs Qt5Core)
LC_ALL=C.UTF-8 "$work/codecs" >"$work/codecs.expected"
for arguments in "root root /opt/VornVPN agrees" "agreeing-user tester /opt/VornVPN agrees" \
    "declining-user tester /home/tester/VornVPN declines"; do
    # The processes of a round end with their namespace; there is no network in it.
    # shellcheck disable=SC2086 # several words
    unshare --mount --pid --fork --mount-proc --net --propagation private --kill-child \
        "${BASH_SOURCE[0]}" --round "$suite" "$run_file" $arguments
done
say "The packed installer is proven in $suite. Pictures and logs: $work"

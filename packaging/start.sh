#!/bin/sh
# Starts the installer from its unpacked bundle: looks first at what it needs from the machine, and
# asks for the rights that the default directory and the menu entries need. Whoever declines can
# still install into a directory of their own.
needed_glibc=2.35

# Every compiled QML file would stay behind in the home directory, and the bundle has another place
# each time, so that it would never be read again.
export QML_DISABLE_DISK_CACHE=1

# What is installed for all must be readable for all, however careful the user is with own files.
umask 022

# Shown where the user looks: in the terminal, else in a window of whatever program shows one.
tell() {
    printf '%s\n' "$1" >&2
    [ -t 2 ] && return
    [ -n "${DISPLAY-}${WAYLAND_DISPLAY-}" ] || return
    if command -v zenity >/dev/null; then
        zenity --warning --no-wrap --title VornVPN --text "$1"
    elif command -v kdialog >/dev/null; then
        kdialog --title VornVPN --sorry "$1"
    elif command -v xmessage >/dev/null; then
        xmessage -center "$1"
    fi >/dev/null 2>&1
}

give_up() {
    tell "$1"
    exit 1
}

# at_least VERSION NEEDED, both MAJOR.MINOR
at_least() {
    [ "${1%%.*}" -gt "${2%%.*}" ] \
        || { [ "${1%%.*}" -eq "${2%%.*}" ] && [ "${1#*.}" -ge "${2#*.}" ]; }
}

free_kilobytes() {
    place=$1
    while [ ! -d "$place" ]; do place=$(dirname "$place"); done
    df -Pk "$place" 2>/dev/null | awk 'NR == 2 { print $4 }'
}

look_at_the_machine() {
    [ -n "${DISPLAY-}${WAYLAND_DISPLAY-}" ] \
        || give_up "VornVPN is installed in a window: start it from a graphical session."
    machine=$(uname -m)
    [ "$machine" = x86_64 ] \
        || give_up "VornVPN needs a 64-bit PC (x86_64), and this computer is of the kind $machine."

    glibc=$(getconf GNU_LIBC_VERSION 2>/dev/null)
    glibc=${glibc#* }
    case $glibc in
        [0-9]*.[0-9]*)
            at_least "$(printf '%s' "$glibc" | cut -d. -f1,2)" "$needed_glibc" || give_up \
                "VornVPN needs the C library glibc $needed_glibc or later, and this system has $glibc." ;;
        *) give_up "VornVPN needs the C library glibc $needed_glibc or later, and this system has another one." ;;
    esac

    ./start.sh --may-run 2>/dev/null || give_up \
        "The directory $directory does not allow programs to be run: set TMPDIR to a directory that does and start again."

    missing=$(for file in ./VornInstall ./plugins/platforms/libqxcb.so; do
        LD_TRACE_LOADED_OBJECTS=1 /lib64/ld-linux-x86-64.so.2 "$file" 2>/dev/null
    done | awk '/not found/ { print $1 }' | sort -u | tr '\n' ' ')
    case " $missing" in
        " ") ;;
        *" libGL.so.1 "*) give_up \
            "The graphics library libGL.so.1 is missing: install the package libgl1 (libglvnd-glx, mesa-libGL) and start again." ;;
        *) give_up "These libraries of the system are missing: ${missing% }." ;;
    esac

    space=$(free_kilobytes .)
    [ "${space:-1024}" -ge 1024 ] \
        || give_up "The disk of $directory is full: set TMPDIR to a directory with room and start again."
    needed=$(du -sk . 2>/dev/null | cut -f1)
    space=$(free_kilobytes /opt)
    [ "${space:-$needed}" -ge "${needed:-0}" ] || tell \
        "VornVPN needs $((needed / 1024)) MB, and /opt has only $((space / 1024)) MB left: choose another directory."
}

# A program that pkexec starts has neither this directory nor this display. Without a runtime
# directory Qt would leave one in /tmp; a hidden one is not installed and goes with the bundle.
start_as_root() {
    set -- DISPLAY="${DISPLAY-}" XAUTHORITY="${XAUTHORITY:-$HOME/.Xauthority}" \
        QML_DISABLE_DISK_CACHE=1 XDG_RUNTIME_DIR="$directory/.runtime-root"
    if [ -n "${WAYLAND_DISPLAY-}" ]; then
        case $WAYLAND_DISPLAY in
            /*) set -- "$@" WAYLAND_DISPLAY="$WAYLAND_DISPLAY" ;;
            *) set -- "$@" WAYLAND_DISPLAY="${XDG_RUNTIME_DIR-}/$WAYLAND_DISPLAY" ;;
        esac
    fi
    # shellcheck disable=SC2016 # the other shell expands it
    pkexec env "$@" /bin/sh -c 'umask 022; cd "$1" && mkdir -p -m 700 .runtime-root && exec ./VornInstall' \
        sh "$directory"
}

[ "${1-}" = --may-run ] && exit 0
cd "$(dirname "$0")" || exit 1
directory=$(pwd -P)
chmod -R u+rwX,go+rX,go-w . 2>/dev/null
look_at_the_machine
if [ "$(id -u)" -ne 0 ] && command -v pkexec >/dev/null; then
    start_as_root
    status=$?
    case $status in
        126 | 127) ;; # declined, or nobody there to ask
        *) exit "$status" ;;
    esac
fi
if [ -z "${XDG_RUNTIME_DIR-}" ] && mkdir -p -m 700 .runtime; then
    export XDG_RUNTIME_DIR="$directory/.runtime"
fi
exec ./VornInstall

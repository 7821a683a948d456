#!/bin/sh
# Starts the installer from its unpacked bundle: looks first at what it needs from the machine, and
# asks for the rights that the default directory and the menu entries need. Whoever declines can
# still install into a directory of their own. In the end it looks whether all files are there.
#     start.sh                      what a user starts
#     start.sh --run ./VornInstall  its second half, as root: prints what is lacking in the end
#     start.sh --open-as-user URL   opens a page in the browser of the user who asked for root
#     start.sh --may-run            nothing: can a program here be run
needed_glibc=2.35

# What is installed for all must be readable for all, however careful the user is with own files.
umask 022

# What the caller's session may say about how Qt draws and logs.
kept_settings="QT_LOGGING_RULES QT_QPA_PLATFORM QT_SCALE_FACTOR QT_SCREEN_SCALE_FACTORS
    QT_AUTO_SCREEN_SCALE_FACTOR QT_ENABLE_HIGHDPI_SCALING QT_FONT_DPI QT_IM_MODULE QT_ACCESSIBILITY
    QT_LINUX_ACCESSIBILITY_ALWAYS_ON QT_X11_NO_MITSHM"
# What a desktop tells a program about itself: for the texts and for the browser.
session="LANG LANGUAGE LC_ALL LC_MESSAGES XDG_CURRENT_DESKTOP XDG_SESSION_TYPE XDG_DATA_DIRS
    DESKTOP_SESSION KDE_FULL_SESSION KDE_SESSION_VERSION GNOME_DESKTOP_SESSION_ID BROWSER"

# Libraries, plug-ins, modules and data come from the bundle and from the system, whatever paths the
# session has for its own programs.
clean_environment() {
    unset LD_LIBRARY_PATH LD_PRELOAD LD_AUDIT
    # shellcheck disable=SC2046 # one word a name
    unset $(awk -v kept="$kept_settings" 'BEGIN {
        count = split(kept, names)
        for (i = 1; i <= count; i++) is_kept[names[i]] = 1
        for (name in ENVIRON)
            if (name ~ /^(LD|Q[A-Z0-9]*|ICU|OPENSSL|GLIBC|GCONV|MALLOC|FONTCONFIG|LIBGL|MESA|EGL|GBM|XKB)_[A-Za-z0-9_]*$/ \
                    || name ~ /^(LOCPATH|XLOCALEDIR)$/)
                if (!(name in is_kept)) print name
    }')
    case ${QT_QPA_PLATFORM-} in
        xcb | wayland | wayland-egl | "xcb;wayland" | "wayland;xcb") ;;
        *) unset QT_QPA_PLATFORM ;; # the bundle has no other
    esac
    # Every compiled QML file would stay behind in the home directory, and the bundle has another
    # place each time, so that it would never be read again.
    export QML_DISABLE_DISK_CACHE=1
    # Debug lines hold the password, and the journal of the session keeps what a program prints.
    export QT_LOGGING_RULES="${QT_LOGGING_RULES-*.debug=false}"
}

# Shown where the user looks: in the terminal, else in a window of whatever program shows one.
tell() {
    printf '%s\n' "$1" >&2
    [ -t 2 ] && return
    [ -n "${DISPLAY-}${WAYLAND_DISPLAY-}" ] || return
    if command -v zenity >/dev/null; then
        zenity --warning --no-markup --width 420 --title VornVPN --text "$1"
    elif command -v kdialog >/dev/null; then
        kdialog --title VornVPN --sorry "$1"
    elif command -v xmessage >/dev/null; then
        xmessage -center -xrm '*international: true' -title VornVPN "$(fold_text "$1")"
    fi >/dev/null 2>&1
}

give_up() {
    tell "$(text "$@")"
    exit 1
}

# at_least VERSION NEEDED, both MAJOR.MINOR
at_least() {
    [ "${1%%.*}" -gt "${2%%.*}" ] \
        || { [ "${1%%.*}" -eq "${2%%.*}" ] && [ "${1#*.}" -ge "${2#*.}" ]; }
}

existing_part() {
    place=$1
    while [ ! -d "$place" ]; do place=$(dirname "$place"); done
    printf '%s\n' "$place"
}

free_kilobytes() { df -Pk "$(existing_part "$1")" 2>/dev/null | awk 'NR == 2 { print $4 }'; }

look_at_the_machine() {
    [ -n "${DISPLAY-}${WAYLAND_DISPLAY-}" ] || give_up no-session
    machine=$(uname -m)
    [ "$machine" = x86_64 ] || give_up machine "$machine"

    glibc=$(getconf GNU_LIBC_VERSION 2>/dev/null)
    glibc=${glibc#* }
    case $glibc in
        [0-9]*.[0-9]*)
            at_least "$(printf '%s' "$glibc" | cut -d. -f1,2)" "$needed_glibc" \
                || give_up glibc "$needed_glibc" "$glibc" ;;
        *) give_up other-libc "$needed_glibc" ;;
    esac

    ./start.sh --may-run 2>/dev/null || give_up noexec "$directory"

    missing=$(for file in ./VornInstall ./plugins/platforms/libqxcb.so; do
        LD_TRACE_LOADED_OBJECTS=1 /lib64/ld-linux-x86-64.so.2 "$file" 2>/dev/null
    done | awk '/not found/ && !told[$1]++ { printf "%s ", $1 }')
    case " $missing" in
        " ") ;;
        *" libGL.so.1 "*) give_up libgl ;;
        *) give_up libraries "${missing% }" ;;
    esac

    space=$(free_kilobytes .)
    [ "${space:-1024}" -ge 1024 ] || give_up full "$directory"
    needed=$(du -sk . 2>/dev/null | cut -f1)
    space=$(free_kilobytes /opt)
    [ "${space:-$needed}" -ge "${needed:-0}" ] \
        || tell "$(text room $((needed / 1024)) $((space / 1024)))"
}

# What is neither in the manifest nor written by the programs; the bundle has no links.
files_of_others() {
    find . -mindepth 1 -path './.runtime*' -prune -o ! -type d -printf '%y %P\n' | awk '
        FILENAME == "manifest.txt" { known["f " $0] = 1; next }
        $0 in known { next }
        /^f (VornRun\.sh|UninstallRun\.sh|(VornData|CommonUsedLine|VersionInfo|UpdateInfo)\.json|(error)?log\.txt|manifest\.old\.txt)([.][^\/]*)?$/ { next }
        { print substr($0, 3); exit }' manifest.txt -
}

# Modes as they were packed, if a copy of the bundle lost them. Nothing but the bundle is touched.
restore_modes() {
    chmod go-w .
    awk -F / '{
        print
        directory = $1
        for (i = 1; i < NF; i++) {
            if (!told[directory]++) print directory
            directory = directory "/" $(i + 1)
        }
    }' manifest.txt | xargs -d '\n' chmod u+rwX,go+rX,go-w --
}

# --- the installation and what came of it -------------------------------------------------------

# A new file each time that an installation begins.
launcher() { stat -c '%i %z' VornRun.sh 2>/dev/null; }

# The launcher names the directory that the installer was told.
install_path() {
    content=$(cat VornRun.sh)
    content=${content#*LD_LIBRARY_PATH=}
    path=${content%%/lib  QT_QPA_PLATFORM_PLUGIN_PATH=*}
    case $path in
        /*) printf '%s' "$path" ;;
        *) printf '%s' "$directory/$path" ;;
    esac
}

names_and_sizes() { (cd "$1" 2>/dev/null && xargs -d '\n' stat -L -c '%s %n' 2>/dev/null); }

# Prints what is lacking, if anything is.
look_after() {
    target=$(install_path)
    lack=$({
        names_and_sizes "$target" <manifest.txt
        echo
        names_and_sizes . <manifest.txt
    } | awk '$0 == "" { is_ours = 1; next } !is_ours { there[$0] = 1; next } !($0 in there) { count++ } END { print count + 0 }')
    [ "$lack" -gt 0 ] || return 0
    place=$(existing_part "$target")
    space=$(free_kilobytes "$place")
    if [ ! -w "$place" ]; then
        reason=-rights
    elif [ "${space:-1024}" -lt 1024 ]; then
        reason=-room
    else
        reason=
    fi
    text "lack$reason" "$lack" "$(wc -l <manifest.txt)" "$target"
    return 1
}

# What the installer prints goes where errors go, and so does what it starts and leaves running.
run_installer() {
    before=$(launcher)
    ./VornInstall >&2
    status=$?
    [ "$status" -eq 0 ] && [ "$(launcher)" != "$before" ] || return "$status"
    look_after
}

# Browsers refuse to run as root, and root has no session. Made before root comes, so that whoever
# unpacked the bundle can remove it.
make_opener() {
    mkdir -p .runtime-opener
    cat >.runtime-opener/xdg-open <<'OPENER'
#!/bin/sh
exec /bin/sh "${0%/*}/../start.sh" --open-as-user "$@"
OPENER
    chmod 755 .runtime-opener/xdg-open
}

put_opener_in_front() {
    case ${PKEXEC_UID:-${SUDO_UID-}} in
        "" | 0 | *[!0-9]*) ;; # nobody asked for root: root's own xdg-open it is
        *) PATH="$directory/.runtime-opener:$PATH" ;;
    esac
}

open_as_user() {
    uid=${PKEXEC_UID:-${SUDO_UID-}}
    entry=$(getent passwd "$uid") || exit 1
    IFS=: read -r name _ _ gid _ home _ <<ENTRY
$entry
ENTRY
    authority=${XAUTHORITY-}
    [ "$(stat -c %u "$authority" 2>/dev/null)" = "$uid" ] || authority=$home/.Xauthority
    address=$1
    set -- HOME="$home" USER="$name" LOGNAME="$name" DISPLAY="${DISPLAY-}" XAUTHORITY="$authority" \
        PATH=/usr/local/bin:/usr/bin:/bin:/usr/local/games:/usr/games
    [ -z "${WAYLAND_DISPLAY-}" ] || set -- "$@" WAYLAND_DISPLAY="$WAYLAND_DISPLAY"
    runtime=/run/user/$uid
    [ ! -d "$runtime" ] || set -- "$@" XDG_RUNTIME_DIR="$runtime"
    [ ! -S "$runtime/bus" ] || set -- "$@" DBUS_SESSION_BUS_ADDRESS="unix:path=$runtime/bus"
    for variable in $session; do
        eval "value=\${$variable-}"
        [ -z "$value" ] || set -- "$@" "$variable=$value"
    done
    cd "$home" 2>/dev/null || cd /
    exec setpriv --reuid "$uid" --regid "$gid" --init-groups env -i "$@" xdg-open "$address"
}

# A program that pkexec starts has neither this directory nor this display. Without a runtime
# directory Qt would leave one in /tmp; a hidden one is not installed and goes with the bundle.
start_as_root() {
    set -- DISPLAY="${DISPLAY-}" XAUTHORITY="${XAUTHORITY:-$HOME/.Xauthority}" \
        XDG_RUNTIME_DIR="$directory/.runtime-root"
    if [ -n "${WAYLAND_DISPLAY-}" ]; then
        case $WAYLAND_DISPLAY in
            /*) set -- "$@" WAYLAND_DISPLAY="$WAYLAND_DISPLAY" ;;
            *) set -- "$@" WAYLAND_DISPLAY="${XDG_RUNTIME_DIR-}/$WAYLAND_DISPLAY" ;;
        esac
    fi
    for variable in $session $kept_settings; do
        eval "value=\${$variable-}"
        [ -z "$value" ] || set -- "$@" "$variable=$value"
    done
    # shellcheck disable=SC2016 # the other shell expands it
    pkexec env "$@" /bin/sh -c 'cd "$1" && exec /bin/sh ./start.sh --run ./VornInstall' sh "$directory"
}

# The sentences come before the window: whoever reads them knows what to choose in it.
ask_for_rights() {
    if ! command -v pkexec >/dev/null; then
        tell "$(text no-pkexec)"
        return
    fi
    report=$(start_as_root)
    status=$?
    case $status in
        126) tell "$(text declined)" ;;
        127) tell "$(text not-asked)" ;; # nobody there to ask
        *)
            [ -z "$report" ] || tell "$report"
            exit "$status"
            ;;
    esac
}

case ${1-} in
    --may-run) exit 0 ;;
    -h | --help) exec sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0" ;;
esac
cd "$(dirname "$0")" || exit 1
directory=$(pwd -P)
# shellcheck source=packaging/start-texts.sh
. ./start-texts.sh
find_language
case ${1-} in
    --open-as-user) open_as_user "$2" ;;
    --run)
        clean_environment
        mkdir -p -m 700 .runtime-root
        put_opener_in_front
        run_installer
        exit
        ;;
esac
clean_environment
other=$(files_of_others)
[ -z "$other" ] || give_up others "$directory" "$other"
restore_modes
look_at_the_machine
make_opener
[ "$(id -u)" -eq 0 ] || ask_for_rights
if [ -z "${XDG_RUNTIME_DIR-}" ] && mkdir -p -m 700 .runtime; then
    export XDG_RUNTIME_DIR="$directory/.runtime"
fi
[ "$(id -u)" -ne 0 ] || put_opener_in_front
report=$(run_installer)
status=$?
[ -z "$report" ] || tell "$report"
exit "$status"

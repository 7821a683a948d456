#!/bin/sh
# VornVPN's installer in one file: this script, and behind it the bundle as a gzipped tar archive.
# It unpacks the bundle into a directory that nobody else can enter, compares the checksum, starts
# start.sh there and removes the directory in the end.
umask 077
# Neither tar nor the checksum is led by the caller's session.
unset LD_LIBRARY_PATH LD_PRELOAD LD_AUDIT TAR_OPTIONS GZIP POSIXLY_CORRECT CDPATH

offset=@OFFSET@ # of the archive in this file, counted from 1
sum=@SUM@
kilobytes=@KILOBYTES@ # what the unpacked bundle takes
file=$0
directory=
is_kept=
is_started=yes
is_quiet=
is_room_asked=yes

help() {
    cat <<END
usage: $file [option ...] [-- argument for the start script ...]
    --target DIR    unpack into DIR and keep it
    --keep          unpack into the directory VornVPN and keep it
    --noexec        unpack, and start nothing
    --nodiskspace   do not ask whether there is room
    --quiet         tell errors only
    --check         compare the checksum, and do nothing else
    --list          list what is in the archive, and do nothing else
    --tar ARGUMENTS hand the archive to tar ("--tar xvf FILE ..."), and do nothing else
    --info          tell what this is, and do nothing else
Without an option the installer starts.
END
}

say() { [ -n "$is_quiet" ] || printf '%s\n' "$1" >&2; }

fail() {
    printf '%s\n' "$1" >&2
    exit "${2-1}"
}

archive() { tail -c "+$offset" "$file"; }

is_whole() { [ "$(archive | sha256sum | cut -c 1-64)" = "$sum" ]; }

damaged() { fail "Error in SHA256 checksums: $file is damaged, download it again." 2; }

# The mode of the directory itself is not the archive's, but what it was made with.
unpack() { archive | gzip -cd | tar -xpf - --no-overwrite-dir -C "$directory"; }

while [ $# -gt 0 ]; do
    case $1 in
        -h | --help)
            help
            exit 0
            ;;
        --info)
            echo "VornVPN: $kilobytes KB unpacked, gzip, SHA256 $sum"
            exit 0
            ;;
        --check)
            is_whole || damaged
            say "SHA256 checksums are OK. All good."
            exit 0
            ;;
        --list)
            archive | gzip -cd | tar -tvf -
            exit
            ;;
        --tar)
            [ $# -gt 1 ] || fail "$(help)"
            operation=$2
            shift 2
            archive | gzip -cd | tar "$operation" - "$@"
            exit
            ;;
        --target)
            [ -n "${2-}" ] || fail "$(help)"
            directory=$2
            is_kept=yes
            shift
            ;;
        --keep) is_kept=yes ;;
        --noexec) is_started= ;;
        --nodiskspace) is_room_asked= ;;
        -q | --quiet) is_quiet=yes ;;
        --accept | --noprogress | --nox11 | --nochown | --noexec-cleanup) ;; # nothing to leave out
        --) shift && break ;;
        -*) fail "Unrecognized flag : $1
$(help)" ;;
        *) break ;;
    esac
    shift
done

if [ -n "$is_kept" ]; then
    directory=${directory:-VornVPN}
    if [ -n "$is_started" ] && [ ! -f "$directory/manifest.txt" ] && [ -n "$(ls -A "$directory" 2>/dev/null)" ]; then
        fail "The directory $directory holds other files, and they would be installed, too: choose an empty one."
    fi
    is_whole || damaged
    mkdir -p -- "$directory" || fail "Cannot create the directory $directory"
    case $directory in -*) directory=./$directory ;; esac
else
    # A name that nobody can know, made anew until it is free.
    directory=$(mktemp -d "${TMPDIR:-/tmp}/VornVPN.XXXXXXXXXX") \
        || fail "Cannot create a directory in ${TMPDIR:-/tmp}: set TMPDIR to one where you may write."
    # shellcheck disable=SC2317 # the trap calls it
    clean_up() {
        wait
        cd / && rm -rf "$directory"
    }
    trap clean_up EXIT
    trap 'exit 15' HUP INT QUIT TERM
fi

if [ -n "$is_room_asked" ]; then
    room=$(df -Pk "$directory" 2>/dev/null | awk 'NR == 2 { print $4 }')
    [ "${room:-$kilobytes}" -ge "$kilobytes" ] || fail \
        "Not enough space left in ${directory%/*} ($room KB): unpacking takes $kilobytes KB. Set TMPDIR to a directory with room."
fi

# Nobody sees the directory before the checksum is compared, so that both can go on at once.
say "Unpacking VornVPN"
unpack &
[ -n "$is_kept" ] || is_whole || damaged
wait $! || fail "$file could not be unpacked into $directory"
[ -n "$is_started" ] || exit 0

cd "$directory" || exit 1
sh ./start.sh "$@"
# The status goes on through the cleaning up.
exit $?

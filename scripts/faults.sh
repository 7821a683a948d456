#!/usr/bin/env bash
# Does to the installer what full disks, broken files, dead servers and other users do, and prints a
# line of the table in docs/faults.md for each fault. It needs mounts and a network of its own.
#     scripts/faults.sh              the whole table (about ten minutes)
#     scripts/faults.sh ROW...       single rows, named as the functions in scripts/faults/*.sh;
#                                    ROW:CASE is one case of a row that has several
#     scripts/faults.sh --sanitized [ROW...]   the same with a build under the sanitizers
#     scripts/faults.sh --prove [ROW...]       breaks the product once for each row, as
#                                    scripts/faults/proofs.sh says, and expects the row to notice
#     scripts/faults.sh --list       the names of the rows
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
here=$root/scripts/faults
for part in stage disks settings planted network machine packed start_script uninstaller proofs; do
    # shellcheck source=scripts/faults/stage.sh
    source "$here/$part.sh"
done
unset part

mode=run
case "${1-}" in
    --sanitized | --prove | --list | --inside) mode=${1#--} && shift ;;
    --*) fail "There is no option $1. $(describe "$0")" ;;
esac
if [ "$mode" = list ]; then
    printf '%s\n' "${all_rows[@]}"
    exit
fi

programs=(VornInstall Uninstall vorn-fault-driver)

# A sanitized program is larger than the full disk, must be loaded before all others and takes memory
# that it does not give back.
plain_rows=(full_disk_settings clock_backwards many_installations)

# build_programs BUILD SOURCE OPTION...
build_programs() {
    local folder=$1
    root=$2 build_installer "$folder" "$server" "${programs[@]}"
}

# in_private SOURCE BUILD ROW...: runs the rows where the machine's own files are out of reach.
in_private() {
    local source=$1
    shift
    local private=(unshare --mount --net --pid --fork --mount-proc --kill-child --propagation private)
    [ "$(id -u)" -eq 0 ] || private+=(--map-root-user)
    "${private[@]}" "$source/scripts/faults.sh" --inside "$@"
}

private_places() {
    local private=(unshare --mount --net --propagation private)
    [ "$(id -u)" -eq 0 ] || private+=(--map-root-user)
    [[ $root/ != /opt/* ]] && "${private[@]}" mount -t tmpfs tmpfs /opt 2>/dev/null
}

case "$mode" in
    inside)
        # shellcheck disable=SC2034 # stage.sh reads it
        build=$1
        shift
        run_rows "$@"
        ;;
    *)
        "$root/scripts/install-packages.sh" build run virtual faults
        if ! private_places; then
            say "Every row is skipped: the kernel refuses private mounts, or this checkout is in /opt."
            exit 0
        fi
        if [ $# -eq 0 ] && [ "$mode" = sanitized ]; then
            mapfile -t all_rows < <(printf '%s\n' "${all_rows[@]}" | grep -vxFf <(printf '%s\n' "${plain_rows[@]}"))
            say "Left out, since the sanitizers are in their way: ${plain_rows[*]}"
        fi
        [ $# -gt 0 ] || [ "$mode" = prove ] || set -- "${all_rows[@]}"
        case "$mode" in
            run)
                build_programs "$root/build/faults" "$root"
                in_private "$root" "$root/build/faults" "$@"
                ;;
            sanitized)
                export ASAN_OPTIONS=detect_leaks=0
                configure "$root/build/faults-asan" -DVORN_SANITIZE=ON
                build_programs "$root/build/faults-asan" "$root"
                in_private "$root" "$root/build/faults-asan" "$@"
                ;;
            prove) prove "$@" ;;
        esac
        ;;
esac

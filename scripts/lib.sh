# shellcheck shell=bash
# What the scripts of this folder share. Sourced; `root` is the checkout, whatever the directory.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export root

say() { printf '%s\n' "$*"; }

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# quietly LOG COMMAND...: the output goes to LOG and is shown only when the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 || {
        tail -n 60 "$log" >&2
        fail "Failed: $* (all of its output: $log)"
    }
}

# wait_until SECONDS COMMAND...: tries the command ten times a second; false when it never succeeds.
wait_until() {
    local tries=$(($1 * 10))
    shift
    until "$@" >/dev/null 2>&1; do
        tries=$((tries - 1))
        [ "$tries" -gt 0 ] || return 1
        sleep 0.1
    done
}

# stop PID...: ends processes that this script started, by force when they do not listen.
stop() {
    local pid
    for pid in "$@"; do
        kill "$pid" 2>/dev/null || continue
        wait_until 5 not_running "$pid" || kill -9 "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
}

# A zombie has ended: only its parent does not know yet.
not_running() {
    [ ! -r "/proc/$1/stat" ] || [ "$(sed 's/.*) //' "/proc/$1/stat" | cut -c1)" = Z ]
}

# configure FOLDER OPTION...: prepares a build folder; an existing one keeps what did not change.
configure() {
    local folder=$1
    shift
    quietly "$folder/configure.log" cmake -S "$root" -B "$folder" -G Ninja \
        -DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_EXPORT_COMPILE_COMMANDS=ON "$@"
}

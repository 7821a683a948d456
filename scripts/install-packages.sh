#!/usr/bin/env bash
# Installs the Debian packages that are missing for the given purposes (see scripts/packages).
#     scripts/install-packages.sh build run
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

[ $# -gt 0 ] || fail "usage: scripts/install-packages.sh PURPOSE... (see scripts/packages)"

wanted=()
for purpose in "$@"; do
    mapfile -t -O "${#wanted[@]}" wanted < <(awk -v purpose="$purpose" '$1 == purpose { print $2 }' \
        "$root/scripts/packages")
done
[ ${#wanted[@]} -gt 0 ] || fail "scripts/packages knows nothing for: $*"

if ! command -v dpkg-query apt-get >/dev/null; then
    say "This is no Debian system, so nothing is installed. What Debian calls ${wanted[*]} is needed."
    exit 0
fi

# ccache, git and the like may also come from elsewhere, but only dpkg knows what is complete.
mapfile -t missing < <(comm -23 <(printf '%s\n' "${wanted[@]}" | sort -u) \
    <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null \
        | sed -n 's/^installed //p' | sort -u))
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || fail "These packages are missing and only root can install them:" \
        "apt-get install ${missing[*]}"
    as_root=(sudo)
fi

say "Installing ${missing[*]}"
apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y \
        -o DPkg::Lock::Timeout=600 "$@"
}
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# The package lists of a fresh machine are empty or old: only then are they fetched.
if ! apt install --no-install-recommends "${missing[@]}" >"$log" 2>&1 \
    && ! { apt update && apt install --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    fail "apt-get could not install: ${missing[*]}"
fi

#!/usr/bin/env bash
# Makes the single file that users download, and the bundle that it unpacks.
#     scripts/package.sh PAYLOAD_DIR [--output DIR] [--allow-example] [--sign KEY] [-DVORN_...=VALUE ...]
# PAYLOAD_DIR      the client's tree; its executable is called VORN, and it brings no Qt of its own
# --output DIR     where bundle/, VornInstall.run and SHA256SUMS go (default: out/package)
# --allow-example  package an installer whose addresses lead nowhere or to this machine only
# --sign KEY       sign SHA256SUMS with this key of gpg: SHA256SUMS.asc
# -D...            the deployment's addresses (cmake/Deployment.cmake)
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

usage="usage: scripts/package.sh PAYLOAD_DIR [--output DIR] [--allow-example] [--sign KEY] [-DVORN_...=VALUE ...]"
build=$root/build/package
output=$root/out/package
payload=""
key=""
allow_example=no
options=()
while [ $# -gt 0 ]; do
    case "$1" in
        -h | --help) say "$usage" && exit ;;
        --output | --sign)
            { [ $# -gt 1 ] && [ -n "$2" ] && [[ $2 != -* ]]; } || fail "$1 needs a value."$'\n'"$usage"
            case "$1" in
                --output) output=$2 ;;
                --sign) key=$2 ;;
            esac
            shift
            ;;
        --allow-example) allow_example=yes ;;
        -D*) options+=("$1") ;;
        -*) fail "There is no option $1."$'\n'"$usage" ;;
        *) payload=$1 ;;
    esac
    shift
done
[ -n "$payload" ] || fail "$usage"
[ -d "$payload" ] || fail "There is no directory $payload"
payload=$(cd "$payload" && pwd -P)
mkdir -p "$output"
output=$(cd "$output" && pwd -P)
bundle=$output/bundle

# A constant, so that the same sources yield the same bytes: file times end up in what rcc and tar
# write.
export SOURCE_DATE_EPOCH=1700000000
export QT_RCC_SOURCE_DATE_OVERRIDE=$SOURCE_DATE_EPOCH
export LC_ALL=C TZ=UTC
umask 022

# The copier that installs follows links and leaves hidden files out.
check_payload() {
    if [ ! -f "$payload/VORN" ] || [ ! -x "$payload/VORN" ]; then
        fail "The payload has no executable named VORN: $payload"
    fi
    local odd
    odd=$(cd "$payload" && find . -mindepth 1 \( -name '.*' -o -name $'*\n*' -o ! -type f ! -type d \))
    [ -z "$odd" ] || fail "Links, hidden and special files cannot be installed:" "$odd"
    local name
    for name in VornInstall start.sh start-texts.sh qt.conf manifest.txt VornRun.sh UninstallRun.sh VornData.json; do
        [ ! -e "$payload/$name" ] || fail "The payload has a file $name: this name is the installer's."
    done
    [ ! -e "$payload/Uninstall" ] || say "The payload's Uninstall is left out: the bundle has its own."
}

build_programs() {
    say "Building"
    # Addresses given to an earlier run must not stay.
    rm -f "$build/CMakeCache.txt"
    configure "$build" -DCMAKE_BUILD_TYPE=Release -DVORN_TESTS=OFF \
        -DCMAKE_CXX_FLAGS="-ffile-prefix-map=$root=." "${options[@]}"
    check_addresses
    quietly "$build/build.log" cmake --build "$build" --target VornInstall Uninstall
}

check_addresses() {
    local odd
    odd=$(grep -E '^VORN_(API_BASE_ADDRESS|MIRROR_ADDRESSES|IP_LOOKUP_ADDRESS|OAUTH_CLIENT_ID|WEB_SIGN_IN_HOST|CHAT_GROUP_LINK|UPDATE_PLACEHOLDER):' \
        "$build/CMakeCache.txt" | sed 's/:[A-Z]*=/ = /' \
        | grep -iE '\.example([/:;"]|$)|//(localhost|127\.|0\.0\.0\.0|\[::1?\])' || true)
    [ -z "$odd" ] && return
    [ "$allow_example" = yes ] || fail "These addresses lead nowhere or to this machine only. Give" \
        "the deployment's with -D, or say --allow-example:"$'\n'"$odd"
    say "As allowed, the installer has addresses that lead nowhere or to this machine only."
}

is_elf() { [ "$(head -c 4 "$1" | tr -d '\0')" = $'\x7fELF' ]; }

stage() {
    say "Collecting"
    rm -rf "$bundle"
    mkdir -p "$bundle"
    cp -R "$payload/." "$bundle/"
    local file binaries=""
    rm -f "$bundle/Uninstall"
    while IFS= read -r file; do
        if is_elf "$file"; then binaries+="${binaries:+;}$file"; fi
    done < <(find "$bundle" -type f)
    cp "$build/app/VornInstall" "$build/uninstaller/Uninstall" "$bundle/"
    strip "$bundle/VornInstall" "$bundle/Uninstall"
    [ -e "$bundle/small.ico" ] || cp "$root/qml/image/small.ico" "$bundle/"
    [ -e "$bundle/Channel.json" ] || printf '{"channel": "official"}\n' >"$bundle/Channel.json"
    quietly "$build/collect.log" cmake -DBUNDLE="$bundle" -DPAYLOAD="$payload" \
        -DPROGRAMS="VornInstall;Uninstall" -DPAYLOAD_BINARIES="$binaries" \
        -DQML_SOURCES="$root/qml;$root/uninstaller" \
        -DQT_PLUGINS="$(qmake -qt5 -query QT_INSTALL_PLUGINS)" \
        -DQT_QML="$(qmake -qt5 -query QT_INSTALL_QML)" -DQT_BINS="$(qmake -qt5 -query QT_HOST_BINS)" \
        -DQT_TRANSLATIONS="$(qmake -qt5 -query QT_INSTALL_TRANSLATIONS)" \
        -P "$root/packaging/collect.cmake"
    reduce_icu "$binaries"
    cp "$root/packaging/start.sh" "$root/packaging/start-texts.sh" "$bundle/"
}

# A client that uses ICU itself may need any of its data.
reduce_icu() {
    local file
    while IFS= read -r file; do
        if readelf -d "$file" | grep -q 'NEEDED.*libicu'; then
            say "The payload uses ICU: its data stay as they are."
            return
        fi
    done < <(tr ';' '\n' <<<"$1" | grep .)
    "$root/packaging/reduce-icu.sh" "$bundle/lib"/libicudata.so.* "$build/icu"
}

# Directories with nothing in them would be installed and belong to no file.
tidy() {
    find "$bundle" -mindepth 1 -type d -empty -delete
    find "$bundle" -type d -exec chmod 755 {} +
    find "$bundle" -type f -perm /111 ! -name '*.so*' -exec chmod 755 {} +
    find "$bundle" -type f \( ! -perm /111 -o -name '*.so*' \) -exec chmod 644 {} +
    chmod 755 "$bundle/VornInstall" "$bundle/Uninstall" "$bundle/VORN" "$bundle/start.sh"
    (cd "$bundle" && : >manifest.txt && find . -type f | sed 's|^\./||' | sort >manifest.txt)
}

# start.sh tells users which C library is old enough; the libraries decide it.
check_glibc() {
    local told needed file
    told=$(sed -n 's/^needed_glibc=//p' "$root/packaging/start.sh")
    needed=$(while IFS= read -r file; do
        if is_elf "$bundle/$file"; then readelf -V "$bundle/$file"; fi
    done <"$bundle/manifest.txt" | grep -oE 'GLIBC_[0-9]+\.[0-9]+' | sort -uV | tail -n 1)
    [ "$(printf '%s\n' "${needed#GLIBC_}" "$told" | sort -V | tail -n 1)" = "$told" ] \
        || fail "packaging/start.sh asks for glibc $told, and the bundle needs ${needed#GLIBC_}"
    say "The bundle needs glibc ${needed#GLIBC_} or later."
}

check_bundle() {
    local odd
    odd=$(find "$bundle" -mindepth 1 \( -name '.*' -o ! -type f ! -type d \))
    [ -z "$odd" ] || fail "The bundle has links, hidden or special files:" "$odd"
    check_glibc
}

make_single_file() {
    say "Packing"
    single_file "$bundle" "$output/VornInstall.run" "$build"
    rm -f "$output/SHA256SUMS.asc"
    (cd "$output" && sha256sum VornInstall.run >SHA256SUMS)
    [ -z "$key" ] || gpg --batch --yes --armor --local-user "$key" --detach-sign \
        --output "$output/SHA256SUMS.asc" "$output/SHA256SUMS" || fail "gpg cannot sign with $key"
}

check_payload
"$root/scripts/install-packages.sh" build run package
build_programs
stage
tidy
check_bundle
make_single_file
say "$(wc -l <"$bundle/manifest.txt") files, $(du -sm "$bundle" | cut -f1) MB in $bundle," \
    "packed $(($(stat -c %s "$output/VornInstall.run") / 1000000)) MB:"
say "    $output/VornInstall.run"
say "    $output/SHA256SUMS"
[ -z "$key" ] || say "    $output/SHA256SUMS.asc"

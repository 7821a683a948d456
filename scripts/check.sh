#!/usr/bin/env bash
# Reads the project without running it; needs no build but --deep.
#     scripts/check.sh            layout, scripts, scene, translations, C++ (half a minute)
#     scripts/check.sh --deep     clang-tidy and clazy; needs build/test (scripts/test.sh --unit)
#     scripts/check.sh --written  what the last virtual installation wrote (out/generated)
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
# shellcheck source=scripts/layers.sh
source "$root/scripts/layers.sh"
cd "$root"

# files PATTERN...: the checked-in files and the new ones, one a line.
files() { git -c safe.directory='*' ls-files --cached --others --exclude-standard -- "$@" | existing; }
existing() { while IFS= read -r file; do [ ! -f "$file" ] || printf '%s\n' "$file"; done; }

shell_scripts() {
    files '*.sh' .ci 'packaging/**' | while IFS= read -r file; do
        if [[ $(head -n 1 "$file" | tr -d '\0') =~ ^#!.*(bash|sh)$ ]] || grep -q "^# shellcheck shell=" "$file"; then
            printf '%s\n' "$file"
        fi
    done
}

unfinished_translations() {
    local file report bad=0
    for file in $(files '*.ts'); do
        report=$(lrelease "$file" -qm /dev/null 2>&1)
        if grep -qE '[1-9][0-9]* unfinished|Ignored [1-9]' <<<"$report"; then
            printf '%s\n' "$file" "$report"
            bad=1
        fi
    done
    return "$bad"
}

# Every package that is installed has its reason in the README.
packages_in_readme() {
    local package bad=0
    while read -r _ package _; do
        grep -qF "\`$package\`" README.md || { echo "README.md does not name $package" && bad=1; }
    done < <(grep -v '^#' scripts/packages)
    return "$bad"
}

python_compiles() {
    files '*.py' | PYTHONPYCACHEPREFIX=$(mktemp -d) xargs -r -d '\n' python3 -m py_compile
}

# passedByValue: what QML calls takes its texts by value. literalWithCharPtrCompare: QCOMPARE of a
# char array compares the text. syntaxError: cppcheck 2.10 cannot read a lambda that initialises a
# constexpr table; both compilers and clang-tidy do.
read_cpp() {
    local sources
    mapfile -t sources < <(files '*.cpp' ':!fuzz' ':!bench')
    cppcheck --quiet --std=c++17 --library=qt --inline-suppr --error-exitcode=1 -j "$(nproc)" \
        --enable=warning,performance,portability --suppress=unknownMacro \
        --suppress=passedByValue --suppress=literalWithCharPtrCompare:tests/* \
        --suppress=syntaxError:crypto/Encryption.cpp -I . \
        "${sources[@]}"
}

quick() {
    mapfile -t cpp < <(files '*.cpp' '*.h')
    check "clang-format changes nothing" clang-format --dry-run -Werror "${cpp[@]}"
    mapfile -t scripts < <(shell_scripts)
    check "the layers are kept" layers_are_kept
    check "includes run with the layers" source_layers "${cpp[@]}"
    mapfile -t scene < <(files '*.qml')
    check "imports run with the layers" scene_layers "${scene[@]}"
    check "colours and fonts stand in the theme" outside_the_theme "${scene[@]}"
    check "shellcheck finds nothing" shellcheck -x "${scripts[@]}"
    check "Python compiles" python_compiles
    check "qmllint finds nothing" qmllint "${scene[@]}"
    check "every translation is finished" unfinished_translations
    check "README.md gives a reason for every package" packages_in_readme
    check "cppcheck finds nothing" read_cpp
}

# The launchers hold the install path unquoted, as the client's updater expects them.
written() {
    check "shellcheck finds nothing in the launchers" shellcheck -e SC2086 out/generated/*.sh
    mapfile -t entries < <(find out/generated -name '*.desktop')
    [ ${#entries[@]} -eq 0 ] || check "the desktop entries are valid" desktop-file-validate "${entries[@]}"
}

deep() {
    local compiled=build/test
    [ -f "$compiled/compile_commands.json" ] || fail "Run scripts/test.sh --unit first: it builds"
    mapfile -t sources < <(files '*.cpp' ':!fuzz' ':!bench')
    check "clang-tidy finds nothing" each_file clang-tidy -p "$compiled" --quiet "${sources[@]}"
    # Two properties of the API client have no change signal on purpose: QML only writes them. What
    # clazy says of the tests is about speed.
    mapfile -t sources < <(files '*.cpp' ':!fuzz' ':!bench' ':!tests')
    check "clazy finds nothing" each_file clazy-standalone -p "$compiled" \
        -checks=level1,no-qproperty-without-notify "${sources[@]}"
}

# each_file COMMAND... FILE...: runs a slow reader on as many files at once as there are processors.
each_file() {
    local command=() output
    while [[ $1 != *.cpp ]]; do
        command+=("$1")
        shift
    done
    output=$(printf '%s\n' "$@" | xargs -d '\n' -n 1 -P "$(nproc)" "${command[@]}" 2>&1) || {
        printf '%s\n' "$output"
        return 1
    }
    if grep -qE '(warning|error):' <<<"$output"; then
        printf '%s\n' "$output"
        return 1
    fi
}

case "${1-}" in
    "") stage=quick purposes=(build test) ;;
    --deep) stage=deep purposes=(build deep) ;;
    --written) stage=written purposes=(test) ;;
    *) fail "usage: scripts/check.sh [--deep | --written]" ;;
esac
"$root/scripts/install-packages.sh" "${purposes[@]}"
"$stage"
[ "$faults" -eq 0 ] || fail "$faults of the checks found faults."

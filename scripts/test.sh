#!/usr/bin/env bash
# Everything that must hold, from a fresh clone: the test programs, the checks of the sources, a
# whole installation on a virtual display, and the test programs once more under the sanitizers.
#     scripts/test.sh              all of it, the quickest first
#     scripts/test.sh STAGE...     --unit --checks --walk --sanitize, and of those that take longer:
#         --deep      clang-tidy and clazy
#         --threads   ThreadSanitizer over what threads share
#         --repeat    every program twenty times, eight at once, beside two busy loops
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

# run_tests FOLDER OPTION...: builds with warnings as errors and runs the test programs headless.
run_tests() {
    local folder=$1
    configure "$@" -DCMAKE_BUILD_TYPE=Debug -DVORN_WERROR=ON
    quietly "$folder/build.log" cmake --build "$folder"
    ctest --test-dir "$folder" --output-on-failure -j "$(nproc)"
}

unit() { run_tests "$root/build/test"; }
sanitize() { run_tests "$root/build/asan" -DVORN_SANITIZE=ON; }

# A test that waits on the clock fails here sooner than on a quiet machine.
repeat() {
    local folder=$root/build/test busy=()
    configure "$folder" -DCMAKE_BUILD_TYPE=Debug -DVORN_WERROR=ON
    quietly "$folder/build.log" cmake --build "$folder"
    for _ in 1 2; do
        (while :; do :; done) &
        busy+=($!)
    done
    # shellcheck disable=SC2064 # the loops that run now
    trap "stop ${busy[*]}" EXIT
    ctest --test-dir "$folder" --output-on-failure --repeat until-fail:20 -j8
    stop "${busy[@]}"
    trap - EXIT
}

# What threads share: the queue of copies and the looks at install paths.
threads() {
    local folder=$root/build/tsan programs=(tst_operating_files tst_install_path)
    configure "$folder" -DCMAKE_BUILD_TYPE=Debug -DVORN_SANITIZE_THREADS=ON
    quietly "$folder/build.log" cmake --build "$folder" --target "${programs[@]}"
    ctest --test-dir "$folder" --output-on-failure -R "^($(IFS='|' && printf '%s' "${programs[*]}"))\$"
}
checks() { "$root/scripts/check.sh"; }
deep() { "$root/scripts/check.sh" --deep; }
walk() {
    "$root/scripts/run.sh" --virtual
    "$root/scripts/check.sh" --written
}

[ $# -gt 0 ] || set -- --unit --checks --walk --sanitize
for stage in "$@"; do
    case "$stage" in
        --unit | --checks | --walk | --sanitize | --threads | --deep | --repeat) ;;
        *) fail "There is no stage $stage. $(describe "$0")" ;;
    esac
done

"$root/scripts/install-packages.sh" build run virtual test
for stage in "$@"; do
    say "== ${stage#--}"
    started=$SECONDS
    "${stage#--}"
    say "== ${stage#--}: good, $((SECONDS - started)) s"
done

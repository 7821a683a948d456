#!/usr/bin/env bash
# Runs each fuzz target on its seeds under the sanitizers.
#     scripts/fuzz.sh [SECONDS [TARGET...]]     a minute each, all of them
# What a target finds is left in out/fuzz as crash-* and becomes a row of a test.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

seconds=${1:-60}
[ $# -gt 0 ] && shift
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(cipher router answers hot_update address files sign_in catalogue
    signature manifest)
build=$root/build/fuzz

"$root/scripts/install-packages.sh" build fuzz
configure "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ -DVORN_FUZZ=ON \
    -DVORN_TESTS=OFF
quietly "$build/build.log" cmake --build "$build" --target "${targets[@]/#/fuzz_}"

for target in "${targets[@]}"; do
    found=$root/out/fuzz/$target
    mkdir -p "$found/corpus"
    say "== $target, $seconds s"
    # Inputs that were of use go to the first folder, the seeds are only read.
    LSAN_OPTIONS=suppressions=$root/fuzz/lsan.supp:print_suppressions=0 \
        "$build/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=10 \
        -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$found/" \
        "$found/corpus" "$root/fuzz/seeds/$target" >"$found/log" 2>&1 || {
        tail -n 40 "$found/log" >&2
        fail "$target found something: $found"
    }
    grep -E 'number_of_executed_units|new_units_added|peak_rss' "$found/log"
done

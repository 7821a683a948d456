#!/usr/bin/env bash
# Measures how fast the program is, each time beside a yardstick in the same run, and compares the
# ratios with their goals. Fails when one misses its goal by more than a tenth (the start: by a
# quarter); counts have no slack.
#     scripts/bench.sh            half a dozen minutes
#     scripts/bench.sh --quick    fewer repetitions
#     scripts/bench.sh --write    also puts the table into docs/benchmarks.md
# TMPDIR chooses where files are copied; without it that is memory, which copies alike every time.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
cd "$root"

repetitions=15 rounds=10 write=no
for option in "$@"; do
    case "$option" in
        --quick) repetitions=5 rounds=3 ;;
        --write) write=yes ;;
        *) fail "usage: scripts/bench.sh [--quick] [--write]" ;;
    esac
done

build=build/bench
results=$build/results
page=docs/benchmarks.md
scripts/install-packages.sh build run bench

say "Building"
configure "$build" -DCMAKE_BUILD_TYPE=Release -DVORN_TESTS=OFF -DVORN_BENCH=ON
quietly "$build/build.log" cmake --build "$build" --target vorn-bench startup-probe
mkdir -p "$results"

# Root may keep other work of the machine out of the measurement.
urgently() { if chrt -f 1 true 2>/dev/null; then chrt -f 1 "$@"; else "$@"; fi; }

say "Measuring functions"
if [ -z "${TMPDIR-}" ] && [ -w /dev/shm ]; then export TMPDIR=/dev/shm; fi
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
(cd "$home" && HOME=$home quietly "$root/$results/functions.log" \
    urgently "$root/$build/bench/vorn-bench" --rows="$root/$results/functions.tsv" \
    --benchmark_repetitions="$repetitions" --benchmark_min_time=0.1 \
    --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true)

say "Measuring the start"
quietly "$results/start.log" bench/startup/measure.py "$build/bench/startup-probe" \
    "$results/start.tsv" --rounds "$rounds"

# table FORMAT: a line a row; the exit code tells whether every goal is met, give or take its slack.
table() {
    awk -F '\t' -v format="$1" '
        function verdict(slack) {
            if ($3 == "-") return ""
            if ($3 == "=") return $2 == $4 ? "yes" : "no"
            # The start is never to take twice as long.
            slack = $1 ~ /objects/ ? 1 : $1 ~ /^start/ ? 1.25 : 1.1
            if ($3 == "<=") return $2 <= $4 ? "yes" : $2 <= $4 * slack ? "nearly" : "no"
            return $2 >= $4 ? "yes" : $2 * slack >= $4 ? "nearly" : "no"
        }
        {
            ok = verdict()
            if (ok == "no") missed = 1
            goal = $3 == "-" ? "" : $3 " " $4
            printf format "\n", $1, $2, goal, ok, $5
        }
        END { exit missed }' "$results/start.tsv" "$results/functions.tsv"
}

say ""
missed=0
table '%-60s %9.2f  %-8s %-7s %s' || missed=1

if [ "$write" = yes ]; then
    {
        sed '/^<!-- results -->$/q' "$page"
        printf '\n%s, %s processors (%s), Qt %s, %s\n\n' "$(date -u +%F)" "$(nproc)" \
            "$(sed -n 's/^model name.*: //p' /proc/cpuinfo | head -n 1)" \
            "$(qmake -query QT_VERSION 2>/dev/null || echo 5.15)" \
            "$(sed -n 's/^PRETTY_NAME="\(.*\)"/\1/p' /etc/os-release)"
        printf '| what | measured | goal | met | details |\n|---|---|---|---|---|\n'
        table '| %s | %.2f | %s | %s | %s |' || true
        printf '\n'
        sed -n '/^<!-- end of results -->$/,$p' "$page"
    } >"$results/page.md"
    mv "$results/page.md" "$page"
    say "Written: $page"
fi
[ "$missed" -eq 0 ] || fail "A goal is missed by more than its slack"

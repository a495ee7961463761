#!/usr/bin/env bash
# Runs every fuzzer for a while, two at a time, and fails when one finds something.
#
#   tools/checks/run_fuzzers.sh [SECONDS]     seconds for each; else FUZZ_SECONDS, else 60
#
# FUZZ_BUILD names the build folder (build/fuzz), FUZZ_TARGETS the fuzzers to run, without "_fuzzer" (all). The
# fuzzers start from a copy of fuzz/corpus, which stays as it is. What they find stands in findings/ in the build
# folder, what they wrote in logs/.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=${FUZZ_BUILD:-$root/build/fuzz}
export seconds=${1:-${FUZZ_SECONDS:-60}}
export root build findings=$build/findings logs=$build/logs

targets=${FUZZ_TARGETS:-}
if [ -z "$targets" ]; then
    for source in "$root"/fuzz/*_fuzzer.cpp; do
        targets+=" $(basename "$source" _fuzzer.cpp)"
    done
fi
scratch=$(mktemp -d)
export scratch
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$findings" "$logs"

# The dictionary of a target is named by the first word of its name.
run_one() {
    local target=$1
    local program=$build/bin/${target}_fuzzer
    local dictionary=$root/fuzz/${target%%_*}.dict
    mkdir -p "$scratch/$target/corpus" "$scratch/$target/tmp"
    cp "$root/fuzz/corpus/$target"/* "$scratch/$target/corpus/"
    export TMPDIR=$scratch/$target/tmp
    if "$program" "$scratch/$target/corpus" -dict="$dictionary" -max_total_time="$seconds" -max_len=65536 \
        -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$findings/$target-" \
        >"$logs/$target.log" 2>&1; then
        echo "$target: $(sed -n 's/^stat::number_of_executed_units: *//p' "$logs/$target.log") runs," \
            "nothing found (last: $(grep -o 'cov: [0-9]* ft: [0-9]*' "$logs/$target.log" | tail -1))"
    else
        echo "$target: FAILED"
        grep -E '^(==|This must hold|SUMMARY|.*runtime error)' "$logs/$target.log" || tail -5 "$logs/$target.log"
        local input
        input=$(sed -n 's/^.*Test unit written to //p' "$logs/$target.log" | tail -1)
        if [ -n "$input" ]; then
            echo "  input:     $input"
            echo "  reproduce: $program $input"
        fi
        return 1
    fi
}
export -f run_one

# $targets is a list of words; "$1" belongs to the inner shell.
# shellcheck disable=SC2086,SC2016
if ! printf '%s\n' $targets | xargs -P 2 -n 1 bash -c 'run_one "$1"' run_one; then
    echo "At least one fuzzer failed; the full logs stand in $logs" >&2
    exit 1
fi

#!/usr/bin/env bash
# Builds the fuzzers and runs each for a time, going on from the inputs that earlier runs have kept in
# build/fuzz/corpus/TARGET. What makes a target fail is kept beside them: build/fuzz/fuzz/TARGET_fuzz FILE repeats it.
# Usage: scripts/fuzz.sh [SECONDS] [TARGET...]      (default: 60 seconds, all targets)
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=60
if [[ ${1:-} =~ ^[1-9][0-9]*$ ]]; then
    seconds=$1
    shift
fi

scripts/setup.sh fuzz
cmake --preset fuzz >/dev/null
cmake --build build/fuzz >&2
cd build/fuzz
targets=("$@")
[ $# -gt 0 ] || mapfile -t targets < <(basename -s _fuzz fuzz/*_fuzz)

log=$(mktemp)
trap 'rm -f "$log"' EXIT
failed=0
for target in "${targets[@]}"; do
    mkdir -p "corpus/$target"
    if "fuzz/${target}_fuzz" -max_total_time="$seconds" -max_len=128 -len_control=0 -print_final_stats=1 \
        -artifact_prefix="$PWD/corpus/$target-" "corpus/$target" >"$log" 2>&1; then
        executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
        echo "$target: $executions executions, $(find "corpus/$target" -type f | wc -l) inputs kept"
    else
        tail -n 40 "$log"
        failed=1
    fi
done
exit $failed

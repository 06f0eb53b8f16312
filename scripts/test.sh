#!/usr/bin/env bash
# Builds and runs all tests: with g++ and clang++, for 32-bit, and under the sanitizers, with the fuzzers for a moment.
# Usage: scripts/test.sh [PRESET...]      (default: release clang m32 asan tsan, then scripts/lint.sh)
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh tool test
presets=("$@")
[ $# -gt 0 ] || presets=(release clang m32 asan tsan)

for preset in "${presets[@]}"; do
    echo "== $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build "build/$preset"
    ctest --preset "$preset" --no-tests=error
done
[ $# -gt 0 ] || scripts/lint.sh

#!/usr/bin/env bash
# Builds the benchmarks and runs them. All arguments are theirs, e.g. scripts/bench.sh --benchmark_filter=ImgLut
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh bench
# A folder of its own, so that nothing but the benchmarks' packages is needed and build/release keeps its options.
cmake --preset release -B build/bench -DZKIT_BUILD_TESTS=OFF -DZKIT_BUILD_TOOL=OFF >/dev/null
cmake --build build/bench --target zkit_bench >&2
exec build/bench/bench/zkit_bench "$@"

#!/bin/sh
# Builds the benchmarks and runs them. All arguments are theirs, e.g. scripts/bench.sh --benchmark_filter=ImgLut
set -eu
cd "$(dirname "$0")/.."

missing=""
for package in g++ cmake ninja-build libbenchmark-dev libopencv-core-dev libopencv-imgproc-dev; do
    dpkg-query --show --showformat='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
        missing="$missing $package"
done
if [ -n "$missing" ]; then
    echo "Installing$missing" >&2
    asRoot=""
    [ "$(id -u)" -eq 0 ] || asRoot=sudo
    $asRoot apt-get update -qq
    # shellcheck disable=SC2086 # one argument for each package
    $asRoot apt-get install -y -qq --no-install-recommends $missing >/dev/null
fi

# A folder of its own, so that nothing but the benchmarks' packages is needed and build/release keeps its options.
cmake --preset release -B build/bench -DZKIT_BUILD_TESTS=OFF -DZKIT_BUILD_TOOL=OFF >/dev/null
cmake --build build/bench --target zkit_bench >&2
exec build/bench/bench/zkit_bench "$@"

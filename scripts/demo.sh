#!/usr/bin/env bash
# Builds the kit and measures the pictures given, or a scene that the tool renders itself.
# Usage: scripts/demo.sh [IMAGE...]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)

"$top/scripts/setup.sh" tool
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# A folder of its own: the tool alone needs less than the tests do.
if ! (cd "$top" && cmake --preset release -B build/demo -DZKIT_BUILD_TESTS=OFF -DZKIT_BUILD_BENCHMARKS=OFF &&
    cmake --build build/demo) >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi

[ $# -gt 0 ] || set -- --scene
"$top/build/demo/tools/zkit" measure "$@"

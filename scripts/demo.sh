#!/usr/bin/env bash
# Builds the kit and inspects the pictures given, or a scene that the tool renders itself. The results are printed; the
# pictures with what was found drawn over them, and their histograms, are written into build/demo/drawings.
# Usage: scripts/demo.sh [OPTION or IMAGE or FOLDER...]     (the options of zkit inspect)
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
drawings=$top/build/demo/drawings
status=0
"$top/build/demo/tools/zkit" inspect --overlay "$drawings" --plots "$drawings" "$@" || status=$?
[ $status -eq 2 ] || echo "drawings: $drawings" >&2
exit $status

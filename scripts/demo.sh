#!/usr/bin/env bash
# Builds the kit and measures the pictures given, or a scene that the tool renders itself.
# Usage: scripts/demo.sh [IMAGE...]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)

"$top/scripts/setup.sh" tool
(
    cd "$top"
    cmake --preset release -DZKIT_BUILD_TESTS=OFF -DZKIT_BUILD_BENCHMARKS=OFF
    cmake --build build/release
) >/tmp/zkit-demo.$$ 2>&1 || { cat /tmp/zkit-demo.$$ >&2; rm -f /tmp/zkit-demo.$$; exit 1; }
rm -f /tmp/zkit-demo.$$

if [ $# -eq 0 ]; then
    exec "$top/build/release/tools/zkit" measure --scene
fi
exec "$top/build/release/tools/zkit" measure "$@"

#!/usr/bin/env bash
# Every operation declared in a public header is named in a test and in a benchmark, so that none is forgotten quietly.
# Usage: operations.sh PROJECT
set -euo pipefail
cd "$1"

status=0
mapfile -t operations < <(grep -hoE '\b(Img[A-Z][A-Za-z0-9]*)\(' include/zkit/img/*.h | tr -d '(' | sort -u)
[ ${#operations[@]} -gt 0 ] || { echo "no operation found"; exit 1; }
for operation in "${operations[@]}"; do
    for place in tests bench; do
        grep -rqw --include='*.cpp' --include='*.h' "$operation" "$place" ||
            { echo "$operation is declared but not in $place/"; status=1; }
    done
done
echo "${#operations[@]} operations"
exit $status

#!/usr/bin/env bash
# No operation is forgotten quietly: every one that a public header declares has a row in the table by which the contract
# test, the hostile one and the fuzzer call it, a test of its own and a benchmark, and every family of workers is driven
# against its plain one.
# Usage: operations.sh PROJECT
set -euo pipefail
cd "$1"

status=0
missing() {
    echo "$1"
    status=1
}

mapfile -t operations < <(grep -hoE '\bImg[A-Z][A-Za-z0-9]*\(' include/zkit/img/*.h | tr -d '(' | sort -u)
[ ${#operations[@]} -gt 0 ] || missing "no operation found"
for operation in "${operations[@]}"; do
    grep -qE "\b$operation[(),]" tests/support/operations.cpp || missing "$operation has no row among all operations"
    grep -rqE --include='*_test.cpp' --exclude-dir=frame "\b$operation\b" tests || missing "$operation has no test"
    grep -rqE "\"$operation\"" bench || missing "$operation has no benchmark"
done

mapfile -t families < <(grep -rhoE 'struct [A-Za-z0-9]+Workers' src | awk '{ print $2 }')
for family in "${families[@]}"; do
    grep -rqE "(Sets|Bands)<$family>" tests/workers || missing "$family is not driven in tests/workers"
done
echo "${#operations[@]} operations, ${#families[@]} families of workers"
exit $status

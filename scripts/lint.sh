#!/usr/bin/env bash
# Checks the format and runs clang-tidy over every source file. Needs the compile commands of the release preset.
# Usage: scripts/lint.sh [--fix]      (--fix formats in place)
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t sources < <(git ls-files '*.h' '*.cpp')
if [ "${1:-}" = --fix ]; then
    clang-format -i "${sources[@]}"
    exit
fi
echo "== format"
clang-format --dry-run --Werror "${sources[@]}"

echo "== clang-tidy"
mapfile -t units < <(git ls-files 'src/*.cpp' 'tools/*.cpp')
for i in "${!units[@]}"; do # the packed workers, listed once, are compiled for several instruction sets
    grep -q "${units[$i]}" build/release/compile_commands.json || unset "units[$i]"
done
printf '%s\0' "${units[@]}" | xargs -0 -n 4 -P "$(nproc)" clang-tidy -p build/release --quiet 2>/dev/null
echo "lint: ${#units[@]} files clean"

#!/usr/bin/env bash
# Checks the format of all source files and runs clang-tidy over those given, by default all. Needs the compile commands
# of the release preset.
# Usage: scripts/lint.sh [FILE...]    scripts/lint.sh --fix      (--fix formats in place)
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
units=("$@")
[ $# -gt 0 ] || mapfile -t units < <(git ls-files 'src/*.cpp' 'tools/*.cpp')
# The analyzer takes most of a minute for the many paths through a file of packed workers, and a third of the time of one
# that reads a command line through the parser's templates; the sanitizers see more there.
# shellcheck disable=SC2016 # the file is the inner shell's argument
printf '%s\0' "${units[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -c '
    case $0 in *_packed.cpp | tools/main.cpp | tools/manual.cpp | */command.cpp) checks=-clang-analyzer-* ;;
        *) checks= ;;
    esac
    clang-tidy -p build/release --quiet --checks="$checks" "$0" 2>/dev/null || { echo "clang-tidy: $0 has findings"; exit 1; }'
echo "lint: ${#units[@]} files clean"

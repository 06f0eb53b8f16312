#!/usr/bin/env bash
# Installs what is missing of the Debian packages that a task needs. Says what it installs, and nothing when all is there.
# Usage: scripts/setup.sh [tool] [test] [fuzz] [bench]      (libraries and tool alone: tool)
set -euo pipefail

packages=(g++ cmake ninja-build pkg-config)
for task in "$@"; do
    case $task in
    tool) packages+=(libpng-dev libtiff-dev libjpeg62-turbo-dev libcairo2-dev libcli11-dev nlohmann-json3-dev) ;;
    test) packages+=(git googletest libgtest-dev clang libclang-rt-14-dev clang-format clang-tidy binutils g++-multilib doxygen) ;;
    fuzz) packages+=(clang libclang-rt-14-dev) ;;
    bench) packages+=(libbenchmark-dev libopencv-core-dev libopencv-imgproc-dev) ;;
    *) echo "setup.sh: unknown task '$task' (tool, test, fuzz, bench)" >&2; exit 2 ;;
    esac
done

missing=()
for package in "${packages[@]}"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "setup: installing ${missing[*]}"
root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "setup: run as root, or install sudo" >&2; exit 1; }
    root=(sudo)
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${root[@]}" apt-get update -qq &&
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"; } \
    >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi

#!/usr/bin/env bash
# Installs the kit, moves the installation, and builds and runs a small program against it: once through the CMake
# package, once through pkg-config.
# Usage: run.sh BUILD_DIRECTORY COMPILER LIBRARY_DIRECTORY
set -euo pipefail
build=$1 compiler=$2 libdir=$3
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/first" >"$work/install.log"
mv "$work/first" "$work/moved"
if grep -rlF -e "$work/first" -e "$build" "$work/moved"/*/cmake "$work/moved"/*/*/cmake "$work/moved"/*/pkgconfig \
    "$work/moved"/*/*/pkgconfig 2>/dev/null; then
    echo "these files know where the kit was built or installed"
    exit 1
fi

cmake -S "$here" -B "$work/cmake" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_PREFIX_PATH="$work/moved" >"$work/cmake.log"
cmake --build "$work/cmake" >>"$work/cmake.log" || { cat "$work/cmake.log"; exit 1; }
"$work/cmake/consumer"

export PKG_CONFIG_PATH="$work/moved/$libdir/pkgconfig"
read -ra flags <<<"$(pkg-config --cflags --libs zkit-img)"
"$compiler" -std=c++17 "$here/consumer.cpp" -o "$work/consumer" "${flags[@]}"
LD_LIBRARY_PATH="$work/moved/$libdir" "$work/consumer"

if [ -x "$work/moved/bin/zkit" ]; then
    "$work/moved/bin/zkit" --version
fi

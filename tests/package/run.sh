#!/usr/bin/env bash
# Installs the kit, moves the installation, and builds and runs the examples against it through the CMake package, and a
# small program through pkg-config.
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

cmake -S "$here/../../examples" -B "$work/examples" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$work/moved" >"$work/cmake.log"
cmake --build "$work/examples" >>"$work/cmake.log" || { cat "$work/cmake.log"; exit 1; }
ctest --test-dir "$work/examples" --output-on-failure --no-tests=error

export PKG_CONFIG_PATH="$work/moved/$libdir/pkgconfig"
read -ra flags <<<"$(pkg-config --cflags --libs zkit-img)"
"$compiler" -std=c++17 "$here/consumer.cpp" -o "$work/consumer" "${flags[@]}"
LD_LIBRARY_PATH="$work/moved/$libdir" "$work/consumer"

if [ -x "$work/moved/bin/zkit" ]; then
    "$work/moved/bin/zkit" --version
    [ -s "$work/moved/share/man/man1/zkit.1" ] || { echo "the manual page is missing"; exit 1; }
fi

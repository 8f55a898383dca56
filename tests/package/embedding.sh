#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# embedding.sh SOURCE: builds a program that has this tree within its own, on a machine that lacks
# all that only the tests and tools of the tree need.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() { echo "embedding: $*" >&2; exit 1; }

for way in add_subdirectory FetchContent; do
    cmake -S "$here/consumers/embedding" -B "$scratch/$way" -G Ninja -DBY=$way \
        -DCMAKE_UNITY_BUILD=ON \
        -DFETCHCONTENT_SOURCE_DIR_PELLARVINE="$1" -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON \
        -DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON -DCMAKE_DISABLE_FIND_PACKAGE_Python3=ON \
        -DCMAKE_DISABLE_FIND_PACKAGE_Qt6Designer=ON -DCMAKE_DISABLE_FIND_PACKAGE_Qt6Test=ON \
        >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }
    if grep -rlF 'file(INSTALL' --include=cmake_install.cmake "$scratch/$way"; then
        fail "by $way, the host installs what is not its own"
    fi
done

# A program of Core alone builds Core alone.
way=add_subdirectory
cmake --build "$scratch/$way" --target host >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }
"$scratch/$way/host"
libraries=$(cd "$scratch/$way/pellarvine/lib" && echo *.so)
[ "$libraries" = libpellarvinecore.so ] || fail "for Core, the host built $libraries"

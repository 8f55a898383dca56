#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# consumers.sh BUILD: installs that build into a fresh prefix, moves the prefix, and builds and runs
# programs against it that know nothing of this tree.
set -euo pipefail
build=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

DESTDIR='' cmake --install "$build" --prefix "$scratch/first" >/dev/null
mv "$scratch/first" "$scratch/prefix"
prefix=$scratch/prefix
fail() { echo "consumers: $*" >&2; exit 1; }

# Public headers only, and nothing that points back into this tree or the first prefix.
found=$(cd "$prefix/include/pellarvine" && find . -type f ! -name '*.h')
[ -z "$found" ] || fail "installed beside the headers: $found"
[ ! -e "$prefix/include/pellarvine/Platform/LayoutEngine.h" ] || fail "internals are installed"
library=$(dirname "$(find "$prefix" -name libpellarvinecore.so)")
[[ -d $library/cmake/Pellarvine && -f $library/pkgconfig/pellarvine.pc ]] \
    || fail "no package files beside the library"
if grep -rE "$scratch/first|$build" "$library/cmake" "$library/pkgconfig"; then
    fail "the package names the place it was built in"
fi
# Programs find the libraries of a prefix by themselves, also those that they do not link.
unset LD_LIBRARY_PATH
export QT_QPA_PLATFORM=offscreen

# Programs of Core need nothing that only the other components do.
declare -A without=([uic]='')
for package in Qt6Gui Qt6Network Qt6UiTools Qt6Widgets Fontconfig ICU PkgConfig; do
    without[core]+=" -DCMAKE_DISABLE_FIND_PACKAGE_$package=ON"
done
for consumer in core uic; do
    # shellcheck disable=SC2086 # a list of words
    cmake -S "$here/consumers/$consumer" -B "$scratch/$consumer" -G Ninja ${without[$consumer]} \
        -DCMAKE_PREFIX_PATH="$prefix" >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }
    cmake --build "$scratch/$consumer" >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }
    "$scratch/$consumer/consumer"
done

# A reader follows the tutorial. Its commands are run, and a program that they start is ended.
tutorial=$here/../../docs/tutorial.md
examples=$(cd "$here/../../examples" && pwd)
mkdir "$scratch/reader"
# shellcheck disable=SC2016 # for the shell that runs them
{
    echo 'run() { timeout 3 "$1" || [ $? = 124 ]; }'
    sed -n '/^```sh$/,/^```$/ { /^```/d; /^sudo apt /d; p }' "$tutorial" \
        | sed -E -e "s#/usr/share/doc/pellarvine-doc/examples#$examples#" \
            -e 's#^[a-z]+/build/[a-z]+$#run &#'
} >"$scratch/commands"
[ "$(grep -c '^run ' "$scratch/commands")" = 2 ] || fail "the tutorial starts no programs"
(cd "$scratch/reader" && HOME=$scratch/reader CMAKE_PREFIX_PATH=$prefix PATH=$prefix/bin:$PATH \
    CMAKE_GENERATOR=Ninja bash -e "$scratch/commands") >"$scratch/log" 2>&1 \
    || { cat "$scratch/log"; fail "the tutorial's commands fail"; }
"$scratch/reader/notes/build/notes" --help | grep -q '\[file\]' || fail "the notes do not start"
told=$(sed -nE 's/.*some ([0-9]+) lines of.*/\1/p' "$tutorial")
lines=$(cat "$examples"/notes/*.{cpp,h} | grep -cvE '^ *(//.*)?$')
((lines * 10 > told * 9 && lines * 10 < told * 11)) || fail "the notes have $lines lines, not $told"

# A program that the command writes builds, starts and passes its test.
(cd "$scratch" && "$prefix/bin/pellarvine" new letters >/dev/null)
cmake -S "$scratch/letters" -B "$scratch/letters/build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }
cmake --build "$scratch/letters/build" >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }
# Its forms are checked at each build, with its own classes.
cp "$scratch/letters/Greeting.ui" "$scratch/right.ui"
sed -i 's/owner\.greeting/owner.greting/' "$scratch/letters/Greeting.ui"
if cmake --build "$scratch/letters/build" >"$scratch/log" 2>&1; then
    fail "a misspelt form is built"
fi
grep -q 'Greeting.ui:.*GreetingController has no key "greting"' "$scratch/log" ||
    { cat "$scratch/log"; exit 1; }
cp "$scratch/right.ui" "$scratch/letters/Greeting.ui"
cmake --build "$scratch/letters/build" >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }
# The target of lupdate finds the texts of the forms, too.
cmake --build "$scratch/letters/build" -t letters_lupdate >"$scratch/log" 2>&1 ||
    { cat "$scratch/log"; exit 1; }
if grep -E 'type="(vanished|obsolete)"' "$scratch/letters/letters_de.ts"; then
    fail "lupdate drops translations of the written program"
fi
(cd "$scratch/letters/build" && ctest --output-on-failure) >"$scratch/log" 2>&1 \
    || { cat "$scratch/log"; exit 1; }
"$scratch/letters/build/letters" --help | grep -q Usage || fail "the written program does not start"
DESTDIR='' cmake --install "$scratch/letters/build" --prefix "$scratch/letters/installed" >/dev/null
for file in applications/org.example.letters.desktop metainfo/org.example.letters.metainfo.xml; do
    [ -e "$scratch/letters/installed/share/$file" ] || fail "the written program has no $file"
done
if grep -rE '@[A-Z]+@' "$scratch/letters" --exclude-dir=build; then
    fail "the written program holds placeholders"
fi

# pkg-config sets no path in the programs.
export PKG_CONFIG_PATH=$library/pkgconfig LD_LIBRARY_PATH=$library
for package in pellarvine-core pellarvine; do
    source=$here/consumers/pkg-config/main.cpp
    [ $package = pellarvine ] || source=$here/consumers/core/main.cpp
    read -ra flags < <(pkg-config --cflags --libs $package)
    g++ -fPIC "$source" "${flags[@]}" -o "$scratch/plain"
    "$scratch/plain"
done
if pkg-config --libs pellarvine-core | grep -E '(pellarvine|Qt6)(gui|network|widgets)' -i; then
    fail "pkg-config wants more for Core"
fi

# The command finds its second program wherever the two are.
"$prefix/bin/pellarvine" color fff | grep -q '#FFFFFF' || fail "the command finds no program for text"

# An unknown component and a version that this does not serve are told, not ignored.
mkdir "$scratch/wrong"
for request in 'COMPONENTS Sound' '99.0' '0.1'; do
    printf '%s\n' 'cmake_minimum_required(VERSION 3.22)' 'project(wrong LANGUAGES NONE)' \
        "find_package(Pellarvine $request REQUIRED)" >"$scratch/wrong/CMakeLists.txt"
    if cmake -S "$scratch/wrong" -B "$scratch/wrong/build" -G Ninja \
        -DCMAKE_PREFIX_PATH="$prefix" >"$scratch/log" 2>&1; then
        fail "find_package(Pellarvine $request) succeeded"
    fi
    grep -qF "${request##* }" "$scratch/log" || { cat "$scratch/log"; exit 1; }
    rm -rf "$scratch/wrong/build"
done

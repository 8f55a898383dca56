#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# needed.sh FOLDER: a library in it needs no other that its component does not stand on.
set -euo pipefail
failed=0

# needs_none_of COMPONENT PATTERN
needs_none_of() {
    local needed
    needed=$(readelf --dynamic "$folder/libpellarvine$1.so" | grep NEEDED)
    grep -q libQt6Core <<<"$needed" || { echo "needed: $1 needs no Qt"; failed=1; }
    if grep -E "$2" <<<"$needed"; then
        echo "needed: lib of $1 needs these"
        failed=1
    fi
}

folder=$1
needs_none_of core 'pellarvine|Qt6(Gui|Widgets|Network|UiTools)|icu|fontconfig|xcb'
needs_none_of gui 'pellarvine(widgets|network)|Qt6(Widgets|Network|UiTools)|xcb'
needs_none_of network 'pellarvine(gui|widgets)|Qt6(Gui|Widgets|UiTools)|icu|fontconfig|xcb|crypto'
exit $failed

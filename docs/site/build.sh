#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# build.sh INPUT GALLERY OUTPUT: builds the documentation into OUTPUT/html, and
# OUTPUT/pellarvine.qch for Qt Assistant. INPUT is the folder "site" of a build, GALLERY the program.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
tree=$(cd "$here/../.." && pwd)
input=$(realpath "$1")
gallery=$(realpath "$2")
mkdir -p "$3"
site=$(realpath "$3")/html
log=$(mktemp)
trap 'rm -f "$log"' EXIT
export PYTHONDONTWRITEBYTECODE=1
export QT_QPA_PLATFORM=offscreen

rm -rf "$site"
mkdir -p "$site"
python3 "$here/headers.py" "$tree" "$input"
python3 "$here/pages.py" "$tree" "$input" "$gallery"
failed=0
(cd "$tree" && doxygen - <<<"@INCLUDE = $input/Doxyfile
HTML_OUTPUT = $site") || failed=1 # the site is there all the same
# Corrects doxygen's Markdown: addresses in code, bars in the code of tables, bold code.
sed -E -i -e ':again; s#(<code>[^<]*)<a href="https?:[^"]*">([^<]*)</a>#\1\2#; t again' \
    -e ':bar; s#(<code>[^<]*)\\[|]#\1|#; t bar' \
    -e 's#[*][*] ?(<code>[^<]*</code>)[*][*]#<b>\1</b>#g' "$site"/*.html
# On narrow screens, long names in tables break after "::".
sed -E -i '/class="markdownTable/{:name; s#(>[^<>]*::)(\w)#\1<wbr/>\2#; t name}' "$site"/*.html
# It does not end a link whose text spans lines, and takes the rest of the page for its text.
if grep -lE '@ref |&lt;(h1|tt)&gt;' "$site"/*.html >"$log"; then
    echo "build.sh: a link is not read: is its text on two lines? $(tr '\n' ' ' <"$log")" >&2
    failed=1
fi
cat "$here/search.css" >>"$site/search/search.css"
"$gallery" --screenshots "$site/gallery/light" --scale 2 2>"$log" || { cat "$log"; exit 1; }
"$gallery" --screenshots "$site/gallery/dark" --scale 2 --dark 2>"$log" || { cat "$log"; exit 1; }
# The start page's pictures of gallery pages become those of the site, which are there in dark too.
sed -i 's#<img src="gallery.png"#<img src="inspector.png"#' "$site/index.html"
dark='media="(prefers-color-scheme: dark)"'
for picture in "$site"/gallery/light/*.png; do
    name=$(basename "$picture")
    sed -E -i -e "s#<img src=\"$name\"([^>]*)>#<picture><source srcset=\"gallery/dark/$name\" $dark/>\\
<img src=\"gallery/light/$name\"\\1></picture>#g" "$site/index.html"
done

# Doxygen lists its own files for Qt Assistant; the pictures of the gallery are not among them.
pictures=$(cd "$site" && find gallery -name '*.png' | sort | sed 's#.*#<file>&</file>#' \
    | tr -d '\n')
sed -i "s#</files>#$pictures</files>#" "$site/index.qhp"
helpGenerator=$(qtpaths6 --query QT_INSTALL_LIBEXECS)/qhelpgenerator
"$helpGenerator" -platform offscreen "$site/index.qhp" -o "$site/../pellarvine.qch" >"$log" 2>&1 \
    || { cat "$log"; exit 1; }
rm "$site/index.qhp"
exit $failed

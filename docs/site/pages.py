#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""pages.py SOURCES OUTPUT GALLERY: makes what the site has beyond the headers and the Markdown.

For every page of the gallery program a page with its picture and with what it shows, the same
picture in the reference of each of those classes, and the header of all pages with the list of
them. The pictures themselves are made by script/docs.
"""
import functools
import html
import re
import subprocess
import sys
from pathlib import Path

WIDTH, HEIGHT = 1000, 680  # of the gallery's pictures, in device-independent pixels
REFERENCE = (("annotated", "Classes"), ("namespaces", "Namespaces"),
             ("namespacemembers", "Functions and constants"), ("files", "Headers"))


def read_map(path):
    """What gallery.txt says: a page's name, and the classes and headers that it shows."""
    lines = [line for line in path.read_text(encoding="utf-8").splitlines()
             if line and not line.startswith("#")]
    return {name: shown.split() for name, shown in (line.split(":", 1) for line in lines)}


def title_of(name):
    return "Title bar" if name == "titlebar" else name.replace("-", " ").capitalize()


def page_id(name):
    return "gallery_" + name.replace("-", "_")


def picture(name, link=False):
    image = (f'<picture><source srcset="gallery/dark/{name}.png"'
             f' media="(prefers-color-scheme: dark)"/>'
             f'<img src="gallery/light/{name}.png" width="{WIDTH}" height="{HEIGHT}"'
             f' alt="The gallery’s page {title_of(name)}"/></picture>')
    if link:
        image = (f'<a href="{page_id(name)}.html">{image}'
                 f'<figcaption>In the gallery: {title_of(name)}</figcaption></a>')
    return f'@htmlonly<figure class="shot{" link" if link else ""}">{image}</figure>@endhtmlonly'


def gallery_page(name, shown):
    parts = [f"# {title_of(name)} {{#{page_id(name)}}}", picture(name),
             # The style sheet hides the classes' own pictures in here.
             '@htmlonly<div class="gallery">@endhtmlonly',
             f"`build/dev/bin/gallery --page {name}` opens this page."]
    for item in shown:
        if item.endswith(".h"):
            parts += [f"## &lt;pellarvine/{item}&gt;", f"@copydoc {item}",
                      f'Reference: @ref {item}']
        else:
            parts += [f"## {item}", f"@copydoc {item}", f"Reference: @ref {item}"]
    return "\n\n".join([*parts, "@htmlonly</div>@endhtmlonly"]) + "\n"


def class_pictures(names, shown_on):
    """A picture and a link for the reference of every class that some page shows."""
    first = {}
    for name in names:
        for item in shown_on[name]:
            if not item.endswith(".h"):
                first.setdefault(item, name)
    return "".join(f"/** @class {item}\n\n{picture(name, link=True)}\n*/\n\n"
                   for item, name in first.items())


def guide(sources):
    """The Markdown pages in the order in which to read them: doxygen's file names, titles."""
    yield "index", "Overview"
    yield from entries(sources, sorted((sources / "docs").glob("*.md"),
                                       key=lambda page: (page.stem != "tutorial", page)))
    yield from entries(sources, [sources / "CONTRIBUTING.md", sources / "CHANGELOG.md"])


def entries(sources, pages):
    """Of pages of Markdown: doxygen's file names, and the titles."""
    for path in pages:
        title = re.match(r"# (?:Recipe: )?(.+?)(?: \{#.*)?\n", path.read_text(encoding="utf-8"))[1]
        stem = str(path.relative_to(sources).with_suffix(""))
        yield file_name(stem), title[0].upper() + title[1:]


@functools.cache
def doxygen_version():
    version = subprocess.run(["doxygen", "--version"], check=True, stdout=subprocess.PIPE,
                             text=True).stdout
    return tuple(map(int, re.match(r"(\d+)\.(\d+)\.(\d+)", version).groups()))


def file_name(stem):
    """The name that doxygen gives to the file of a Markdown page; it has changed in 1.9.8."""
    if doxygen_version() >= (1, 9, 8):
        return "md_" + stem.replace("/", "_2")
    return "md_" + re.sub(r"\W", "_", stem)


def navigation(sources, names):
    recipes = sorted((sources / "docs/recipes").glob("*.md"))
    groups = (("Guide", list(guide(sources))),
              ("Recipes", list(entries(sources, recipes))),
              ("Gallery", [(page_id(name), title_of(name)) for name in names]),
              ("Reference", REFERENCE))
    return "\n".join(
        f"<h2>{heading}</h2>\n<ul>\n" + "\n".join(
            f'<li><a href="$relpath^{target}.html">{html.escape(title)}</a></li>'
            for target, title in items) + "\n</ul>"
        for heading, items in groups)


def main():
    sources, output, gallery = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3]
    shown_on = read_map(sources / "docs/site/gallery.txt")
    names = subprocess.run([gallery, "--list"], check=True, stdout=subprocess.PIPE,
                           text=True).stdout.split()
    if lost := [name for name in names if name not in shown_on]:
        sys.exit(f"docs/site/gallery.txt: no line for the gallery's {', '.join(lost)}")
    if unknown := [name for name in shown_on if name not in names]:
        sys.exit(f"docs/site/gallery.txt: the gallery has no page {', '.join(unknown)}")

    pages = output / "pages"
    pages.mkdir(parents=True, exist_ok=True)
    for old in pages.iterdir():
        old.unlink()
    for name in names:
        (pages / f"{name}.md").write_text(gallery_page(name, shown_on[name]), encoding="utf-8")
    (pages / "pictures.dox").write_text(class_pictures(names, shown_on), encoding="utf-8")
    header = (sources / "docs/site/header.html").read_text(encoding="utf-8")
    (output / "header.html").write_text(header.replace("@navigation@", navigation(sources, names)),
                                        encoding="utf-8")


main()

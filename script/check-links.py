#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check-links.py FOLDER: fails if a page below FOLDER leads to nothing.

Local links, anchors, images and what else a page names have to be there; links to elsewhere have
to be https. Nothing is fetched.
"""
import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit


class Page(HTMLParser):
    """The anchors that a page has, and what it names: (line, address) pairs."""

    def __init__(self, path):
        super().__init__()
        self.anchors = {""}
        self.names = []
        self.feed(path.read_text(encoding="utf-8", errors="replace"))
        self.close()

    def handle_starttag(self, tag, attrs):
        line = self.getpos()[0]
        for name, value in attrs:
            if value is None:
                continue
            if name == "id" or (tag == "a" and name == "name"):
                self.anchors.add(value)
            elif name in ("href", "src", "poster", "data"):
                self.names.append((line, value))
            elif name == "srcset":
                self.names += [(line, part.split()[0]) for part in value.split(",")]


def problem(folder, path, address, pages):
    """What is wrong with an address on a page; None if nothing is."""
    parts = urlsplit(address)
    if parts.scheme in ("javascript", "mailto", "data"):
        return None
    if parts.scheme or parts.netloc:
        return None if parts.scheme == "https" else "not https"
    target = (path.parent / unquote(parts.path)).resolve() if parts.path else path
    if not target.is_relative_to(folder):
        return "leads out of the site"
    if not target.is_file():
        return "no such file"
    if target in pages and unquote(parts.fragment) not in pages[target].anchors:
        return "no such anchor"
    return None


def main():
    folder = Path(sys.argv[1]).resolve()
    pages = {path: Page(path) for path in sorted(folder.rglob("*.html"))}
    if not pages:
        sys.exit(f"check-links: no pages in {folder}")
    dead = [f"{path.relative_to(folder)}:{line}: {address}: {what}"
            for path, page in pages.items() for line, address in page.names
            if (what := problem(folder, path, address, pages))]
    print("\n".join(dead + [f"check-links: {sum(len(page.names) for page in pages.values())} links"
                            f" on {len(pages)} pages, {len(dead)} dead"]))
    sys.exit(1 if dead else 0)


main()

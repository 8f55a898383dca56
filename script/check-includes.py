#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""check-includes.py: fails if an #include of the libraries points the wrong way.

A folder includes itself and the folders below it. A public header includes only public headers, as
the others are not installed. Run from the root of the tree.
"""
import re
import sys
from pathlib import Path

PLATFORM = ["Base", "KeyValue", "Text", "Drawing", "View", "Layout", "Controls", "Scenes", "Window"]
# Each place of the libraries, and the places that it includes.
ALLOWED = {
    f"Platform/{name}": {f"Platform/{lower}" for lower in PLATFORM[: rank + 1]}
    for rank, name in enumerate(PLATFORM)
}
ALLOWED["Platform/Network"] = {"Platform/Base", "Platform/Network"}
ALLOWED["Shared"] = {*ALLOWED, "Shared"}
ALLOWED["Ostrevane"] = ALLOWED["Shared"] | {"Ostrevane"}
ALLOWED["Pellarvine"] = ALLOWED["Ostrevane"] | {"Pellarvine"}

INCLUDE = re.compile(r'\s*#\s*include\s*(?:"([^"]+)"|<pellarvine/(\w+)/([^>]+)>)')
PUBLIC = re.compile(r"pellarvine_public_headers\(\s*\w+([^)]*)\)")


def place(path):
    """The folder of Platform, or the room, that a path is in."""
    return "/".join(path.parts[: 2 if path.parts[0] == "Platform" else 1])


def public_headers(rooms):
    """The path of each public header, by the name that programs include it as."""
    paths = {}
    for room in rooms:
        for listing in Path(room).rglob("CMakeLists.txt"):
            for names in PUBLIC.findall(listing.read_text(encoding="utf-8")):
                for name in names.split():
                    paths[room, Path(name).name] = listing.parent / name
    return paths


def target(path, quoted, room, name, public):
    """The file of ours that an #include of `path` names; None if it is generated."""
    if room:
        return public.get((room, name), Path(room) / name)
    candidates = (folder / quoted for folder in (path.parent, Path(), Path("Platform")))
    return next((candidate for candidate in candidates if candidate.is_file()), None)


def includes(path, public):
    """What a file includes of ours: (line, path) pairs."""
    for line, text in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if found := INCLUDE.match(text):
            if included := target(path, *found.groups(), public):
                yield line, included


def main():
    rooms = sorted({name.split("/")[0] for name in ALLOWED})
    public = public_headers(rooms)
    installed = set(public.values())
    problems = []
    sources = (path for room in rooms for suffix in ("h", "cpp")
               for path in Path(room).rglob(f"*.{suffix}"))
    for path in sorted(sources):
        for line, included in includes(path, public):
            if place(included) not in ALLOWED[place(path)]:
                problems.append(f"{path}:{line}: {place(path)} may not include {included}")
            if path in installed and included not in installed:
                problems.append(f"{path}:{line}: a public header includes {included}, an internal one")
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())

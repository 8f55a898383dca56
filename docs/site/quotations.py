#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""quotations.py PAGE FOLDER: fails unless the code on a page of Markdown is that of a program.

Each block of code is fenced, and follows a line that names its file: **main.cpp**. The lines of the
block have to be in that file of FOLDER, whitespace aside; a line of "…" alone stands for any lines
left out. Blocks of commands, ```sh, are not looked at.
"""
import re
import sys
from pathlib import Path


def blocks(page):
    """The page's blocks: line number, language, the line before, the lines inside."""
    before, inside, block = "", None, None
    for number, line in enumerate(page.splitlines(), 1):
        if line.startswith("```"):
            if inside is None:
                block, inside = (number, line[3:].strip(), before), []
            else:
                yield (*block, inside)
                inside = None
        elif inside is not None:
            inside.append(line)
        elif line.strip():
            before = line.strip()
    if inside is not None:
        sys.exit(f"quotations: the block of line {block[0]} has no end")


def squeezed(text):
    return re.sub(r"\s+", "", text)


def missing(lines, contents):
    """The first of the block's lines that `contents` does not go on with; None if all are there."""
    rest, piece = squeezed(contents), ""
    for line in [*lines, "…"]:
        if line.strip() != "…":
            piece += squeezed(line)
            if piece not in rest:
                return line.strip()
        else:
            rest, piece = rest[rest.index(piece) + len(piece):], ""
    return None


def main():
    page, folder = Path(sys.argv[1]), Path(sys.argv[2])
    problems, count = [], 0
    for number, language, before, lines in blocks(page.read_text(encoding="utf-8")):
        if language == "sh":
            continue
        count += 1
        name = re.fullmatch(r"\*\*([\w.]+)\*\*", before)
        if not name or not (folder / name[1]).is_file():
            problems.append(f"{page}:{number}: names no file of {folder}")
        elif (line := missing(lines, (folder / name[1]).read_text(encoding="utf-8"))) is not None:
            problems.append(f"{page}:{number}: not so in {name[1]}: {line}")
    if not count:
        problems.append(f"{page}: has no code")
    sys.exit("\n".join(problems) or 0)


main()

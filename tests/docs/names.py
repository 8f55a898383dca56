#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""names.py SOURCES HEADERS PAGE...: fails for a name on a page that no public header has.

Names are those with a namespace of the library, such as NS::Window. Targets of CMake, of the same
form, are left out.
"""
import re
import sys
from pathlib import Path

NAME = re.compile(r"\b(?:NS|CA|CG|Pellarvine)::(\w+)")
TARGETS = {"Pellarvine", "Core", "Gui", "Widgets", "Network"}
# Keys of the metainfo file.
KEYS = {"Authors", "Credits", "Libraries"}


def main():
    sources, headers = Path(sys.argv[1]), Path(sys.argv[2])
    known = set(TARGETS | KEYS)
    for header in headers.read_text(encoding="utf-8").split():
        known.update(re.findall(r"\w+", (sources / header).read_text(encoding="utf-8")))
    problems = []
    for page in sys.argv[3:]:
        text = Path(page).read_text(encoding="utf-8")
        for number, line in enumerate(text.splitlines(), 1):
            problems += [f"{page}:{number}: no public header has {match[0]}"
                         for match in NAME.finditer(line) if match[1] not in known]
    sys.exit("\n".join(problems) or 0)


main()

#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""debian-changelog.py: prints CHANGELOG.md in the format of debian/changelog.

Entries that are not released yet belong to the version of Platform/Base/Version.h.
"""

import datetime
import email.utils
import pathlib
import re
import textwrap

root = pathlib.Path(__file__).resolve().parent.parent
maintainer = re.search("^Maintainer: (.*)$", (root / "debian/control").read_text(), re.M)[1]
numbers = re.findall(
    r"#define PELLARVINE_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)",
    (root / "Platform/Base/Version.h").read_text(),
)
current = ".".join(numbers)

dates = {}
entries = {current: []}  # versions in the order of the file, the current one first
for line in (root / "CHANGELOG.md").read_text().splitlines():
    if heading := re.fullmatch(r"## \[(.+?)\](?: - (\S+))?", line):
        version = heading[1] if heading[2] else current
        dates[version] = heading[2]
        entries.setdefault(version, [])
    elif line.startswith("- "):
        entries[version].append(line[2:])
    elif line.startswith("  "):
        entries[version][-1] += " " + line.strip()

for version, texts in entries.items():
    date = dates.get(version) or datetime.date.today().isoformat()
    print(f"pellarvine ({version}) unstable; urgency=medium\n")
    for text in texts:
        print(textwrap.fill(text, 78, initial_indent="  * ", subsequent_indent="    "))
    midnight = datetime.datetime.fromisoformat(date).replace(tzinfo=datetime.timezone.utc)
    print(f"\n -- {maintainer}  {email.utils.format_datetime(midnight)}\n")

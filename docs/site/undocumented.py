#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""undocumented.py SOURCES OUTPUT: fails if a public header has a name without a comment.

Doxygen does not warn of enumerators, nor of names in an undocumented file or namespace. So this
reads the XML of everything that doxygen has seen.
"""
import shutil
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

import headers

MENTIONED = ("briefdescription", "detaileddescription", "inbodydescription")


def is_documented(element):
    return any("".join(element.find(tag).itertext()).strip()
               for tag in MENTIONED if element.find(tag) is not None)


def undocumented(compound):
    """What is public and undocumented in a class, a namespace or a file: (place, name) pairs."""
    scope = compound.findtext("compoundname")
    place = compound.find("location")
    if compound.get("kind") != "file" or compound.find(".//memberdef") is not None:
        if not is_documented(compound):
            yield place, f"{compound.get('kind')} {scope}"
    for member in compound.iter("memberdef"):
        kind, name = member.get("kind"), member.findtext("name")
        if member.get("prot") == "private" or "detail::" in name:
            continue
        if kind == "friend" and member.findtext("type") in ("class", "friend class"):
            continue
        if not is_documented(member):
            yield member.find("location"), f"{kind} {scope}::{name}{member.findtext('argsstring') or ''}"
        for value in member.iter("enumvalue"):
            if not is_documented(value):
                yield member.find("location"), f"enumerator {scope}::{value.findtext('name')}"


def main():
    sources, output = Path(sys.argv[1]), Path(sys.argv[2])
    copied = headers.copy(sources, output)
    shutil.rmtree(output / "check", ignore_errors=True)
    (output / "check").mkdir(parents=True)
    failed = subprocess.run(["doxygen", output / "Doxyfile.check"], check=False).returncode != 0
    seen = set()
    for file in sorted((output / "check/xml").glob("*.xml")):
        compound = ElementTree.parse(file).getroot().find("compounddef")
        if compound is None or compound.get("kind") in ("dir", "page") \
                or compound.get("prot") == "private":
            continue
        place = compound.find("location").get("file")
        if place == "[generated]":  # namespaces of which a header names something and opens none
            continue
        seen.add(place.removeprefix("include/pellarvine/"))
        for place, name in undocumented(compound):
            failed = True
            print(f"{place.get('file')}:{place.get('line', 1)}: {name} is not documented")
    for header in copied:
        if header not in seen:
            failed = True
            print(f"{header}: doxygen has not read it")
    sys.exit(1 if failed else 0)


main()

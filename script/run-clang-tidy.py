#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""run-clang-tidy.py BUILD [--alone] [clang-tidy options]: clang-tidy over the sources of the tree.

BUILD has the compile commands. Sources with the same options are read in groups, as one source that
includes them: most of the time goes into the headers, which are then read once a group. Sources
that define the same local names are kept apart; what that misses is told by clang's errors, and
read one by one. With --alone all are read one by one.

A clean source is read again only after a change of anything that its verdict depends on: sources,
headers, options, .clang-tidy and clang-tidy itself. The verdicts are in build/clang-tidy.
"""
import hashlib
import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from functools import cache
from pathlib import Path

GROUP_SIZE = 20
ROOT = Path.cwd()
BUILD = ROOT / sys.argv[1]
ALONE = "--alone" in sys.argv[2:]
TIDY = ["clang-tidy", "--quiet", *(option for option in sys.argv[2:] if option != "--alone")]
VERDICTS = ROOT / "build/clang-tidy"


def run(*command):
    return subprocess.run(command, cwd=BUILD, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True)


@cache
def digest(path):
    return hashlib.sha256(Path(path).read_bytes()).hexdigest()


@cache
def tool():
    """The part of a verdict's key that all have in common."""
    return [run("clang-tidy", "--version").stdout, digest(ROOT / ".clang-tidy"), *TIDY]


# A declaration in a namespace, which begins at the start of a line.
DECLARATION = re.compile(r"^(?!using |return |namespace )\S[\w:<>,*&\]\[ ]*?[ *&](?!operator)(\w+)"
                         r"(?= ?[;={(\[]| :|$)", re.M)


def groups():
    """(options, sources) pairs that cover each source of the tree once."""
    by_options = {}
    seen = set()
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        source = Path(entry["file"])
        if source not in seen and BUILD not in source.parents:
            seen.add(source)
            command = re.sub(r" -o \S+ -c \S+$", "", entry["command"])
            by_options.setdefault(tuple(shlex.split(command)[1:]), []).append(source)
    for options, sources in by_options.items():
        open_groups = []
        for source in sorted(sources):
            names = set(DECLARATION.findall(source.read_text(encoding="utf-8")))
            for others, taken in [] if ALONE else open_groups:
                if len(others) < GROUP_SIZE and taken.isdisjoint(names):
                    others.append(source)
                    taken |= names
                    break
            else:
                open_groups.append(([source], names))
        yield from ((options, others) for others, _ in open_groups)


def key(options, source):
    """The name of a verdict; None where a header is missing."""
    found = run("clang++", "-w", "-M", *options, source)
    if found.returncode != 0:
        return None
    headers = re.split(r"(?<!\\)\s+", found.stdout.replace("\\\n", " ").strip())[1:]
    paths = sorted(BUILD / header.replace("\\ ", " ") for header in headers)
    parts = [*tool(), *options, *(f"{path} {digest(path)}" for path in paths)]
    return hashlib.sha256("\0".join(parts).encode()).hexdigest()


def read_one(options, source):
    """What clang-tidy finds in a source; empty if it is clean."""
    name = key(options, source)
    verdict = VERDICTS / str(name)
    if verdict.exists():
        return verdict.read_text()
    result = run(*TIDY, source, "--", *options)
    found = result.stdout if result.returncode != 0 else ""
    if name and (not found or "[clang-diagnostic-error" in found):
        verdict.write_text(found)
    return found


def read(group):
    """What clang-tidy finds in a group; empty if all are clean."""
    options, sources = group
    if len(sources) == 1:
        return read_one(options, sources[0])
    text = "".join(f'#include "{source}" // NOLINT(bugprone-suspicious-include)\n'
                   for source in sources)
    together = VERDICTS / (hashlib.sha256(text.encode()).hexdigest() + ".cpp")
    together.write_text(text)
    # A local name of one source may be declared in another one, too.
    found = read_one((*options, "-Wno-shadow"), together)
    clashing = set(re.findall(r"^(.+?):\d+:\d+: error: .*\[clang-diagnostic-error", found, re.M))
    if not clashing:
        return found
    apart = [source for source in sources if str(source) in clashing] or sources
    rest = [source for source in sources if source not in apart]
    return "".join([*(read((options, [source])) for source in apart),
                    read((options, rest)) if rest else ""])


def main():
    VERDICTS.mkdir(parents=True, exist_ok=True)
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        findings = [found for found in pool.map(read, groups()) if found]
    print(*findings, sep="\n", end="")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())

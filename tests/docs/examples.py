#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""examples.py SOURCES OUTPUT HEADERS TEMPLATE...: puts the documentation's examples into programs.

An example is an indented block in a comment of a public header, numbered from 1 within the header,
or a fenced block of C++ or XML on a page of docs/recipes. In a template, the line

    // example: Shared/Encryptor.h 2

stands for that example (without a number, the first), and "// text of: …" for a string literal of
it. OUTPUT gets a source for each template, NAME.cpp for NAME.cpp.in. Compilers report its errors at
the lines of the headers.

It fails for an example that no template has, and for a header that has neither an example nor a
line in without-example.txt.
"""
import re
import sys
from pathlib import Path

EXAMPLE = re.compile(r"^\s*///     ")
CALL = re.compile(r"^ *// (example|text of): (\S+?)(?: (\d+))?$")


class Example:
    """A block of lines, and the place of the first."""

    def __init__(self, path, number):
        self.path, self.number, self.lines, self.is_used = path, number, [], False

    def code(self):
        return f'#line {self.number} "{self.path}"\n' + "\n".join(self.lines)

    def text(self):
        return 'R"__(' + "\n".join(self.lines) + ')__"'


def examples_of_header(path):
    found, current = [], None
    for number, line in enumerate(path.read_text(encoding="utf-8").split("\n"), 1):
        if EXAMPLE.match(line):
            if not current:
                current = Example(path, number)
                found.append(current)
            current.lines.append(line.strip().removeprefix("///     "))
        elif current and line.strip() == "///":
            current.lines.append("")
        else:
            current = None
    return found


def examples_of_page(path):
    found, current = [], None
    for number, line in enumerate(path.read_text(encoding="utf-8").split("\n"), 1):
        if line.startswith("```"):
            current = None
            if line[3:] in ("cpp", "xml"):
                current = Example(path, number + 1)
                found.append(current)
        elif current:
            current.lines.append(line)
    return found


def read_list(path):
    lines = [line for line in path.read_text(encoding="utf-8").splitlines()
             if line and not line.startswith("#")]
    return {name: int(number or 0) for name, number in
            (re.match(r"(\S+?)(?: (\d+))?: ", line).groups() for line in lines)}


def main():
    sources, output, headers = (Path(argument) for argument in sys.argv[1:4])
    here = Path(__file__).parent
    examples, problems = {}, []
    for header in headers.read_text(encoding="utf-8").split():
        path = sources / header
        if not path.read_text(encoding="utf-8").split("\n", 2)[1].startswith("// Not API"):
            examples[f"{path.relative_to(sources).parts[0]}/{path.name}"] = examples_of_header(path)
    for page in sorted((sources / "docs/recipes").glob("*.md")):
        examples[f"recipes/{page.stem}"] = examples_of_page(page)

    for name, number in read_list(here / "without-example.txt").items():
        if number and len(examples.get(name, [])) >= number:
            examples[name][number - 1].is_used = True
        elif number or examples.pop(name, None) != []:
            problems.append(f"without-example.txt: {name} is not as it says there")
    problems += [f"{name}: has no example; write one or name it in without-example.txt"
                 for name, found in examples.items() if not found]

    def replacement(template, number, match):
        kind, name, index = match[1], match[2], int(match[3] or 1)
        if len(examples.get(name, [])) < index:
            problems.append(f"{template}:{number}: there is no example {index} in {name}")
            return ""
        example = examples[name][index - 1]
        example.is_used = True
        return example.code() if kind == "example" else example.text()

    for template in map(Path, sys.argv[4:]):
        woven = [f'#line 1 "{template}"']
        for number, line in enumerate(template.read_text(encoding="utf-8").splitlines(), 1):
            if match := CALL.match(line):
                woven += [replacement(template, number, match), f'#line {number + 1} "{template}"']
            else:
                woven.append(line)
        source, text = output / template.stem, "\n".join(woven) + "\n"
        if not source.is_file() or source.read_text(encoding="utf-8") != text:
            source.parent.mkdir(parents=True, exist_ok=True)
            source.write_text(text, encoding="utf-8")

    problems += [f"{example.path}:{example.number}: no test has this example"
                 for found in examples.values() for example in found if not example.is_used]
    sys.exit("\n".join(problems) or 0)


main()

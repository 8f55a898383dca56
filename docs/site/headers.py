#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""headers.py SOURCES OUTPUT: copies the public headers for doxygen, comments completed.

Reads the headers that OUTPUT/headers.txt lists below SOURCES, and writes them to
OUTPUT/include/pellarvine.

In our headers a property is documented once, at its getter or at its Q_PROPERTY, and a setter
stands below its getter without words of its own. Doxygen wants a comment for every name, so the
copy gives the property its getter's comment, setters and signals a sentence that leads to it, and
Qt's usual constructor and comparison by members the usual one. Between `/// @{` and `/// @}` the
first comment is that of all. A page that a comment names becomes a link. Destructors, copying and
moving, and overrides without a comment are left out. All else stays as it is, and lines keep their
numbers.

A header whose first lines say "Not API" is not copied.

OUTPUT/qt.tags gets the Qt classes that the headers and the Markdown name, with their pages on
doc.qt.io.
"""
import re
import shutil
import subprocess
import sys
from pathlib import Path

ACCESS = re.compile(r"\b(READ|WRITE|NOTIFY|RESET)\s+(\w+)")
PROPERTY = re.compile(r"Q_PROPERTY\(\s*(.+?)\s*\b(\w+)\s+(?:READ|MEMBER)\b")
PARENT = re.compile(r"^explicit \w+\(Q(Widget|Object) \*parent = nullptr\)")
SPECIAL = re.compile(r"^(?:virtual )?~\w+\(|^(?:constexpr )?(\w+)\((?:const )?\1 &&?\w*\)"
                     r"|^(\w+) &operator=\((?:const )?\2 &&?\w*\)")

PAGE = re.compile(r"\bdocs/[\w/-]+\.md\b")

# Names of Qt headers that are no classes.
WITHOUT_PAGE = {"QHashFunctions", "QStringLiteral", "QVariantHash", "QVariantList", "QVariantMap"}


class Declaration:
    """A property or a function declaration: lines first to last, and the comment that it has."""

    def __init__(self, lines, first):
        self.first = self.last = first
        text = ""
        while True:
            code = lines[self.last].split("//")[0]
            text += " " + code.strip()
            if text.count("(") == text.count(")") and (text.rstrip()[-1:] in (";", "}", ")")
                                                       or "{" in text):
                break
            self.last += 1
            if self.last == len(lines):
                self.last -= 1
                break
        self.text = text.strip()
        self.comment = comment_of(lines, self.first, self.last)
        self.group_comment = ""
        self.property = None
        self.name = None
        if match := PROPERTY.match(self.text):
            self.property = match[2]
            self.access = dict(ACCESS.findall(self.text))
        elif match := re.search(r"([~\w]+|operator\S+)\s*\(", self.text):
            self.name = match[1]


def comment_of(lines, first, last):
    """The first paragraph of the comment above or behind a declaration; empty if it has none."""
    behind = [line.split("///<", 1)[1].strip() for line in lines[first:last + 1] if "///<" in line]
    if behind:
        for line in lines[last + 1:]:
            if not line.strip().startswith("///<"):
                break
            behind.append(line.strip().removeprefix("///<").strip())
        return " ".join(behind)
    above = []
    while first > 0 and (line := lines[first - 1].strip()).startswith("///") \
            and not line.startswith(("///<", "/// @{", "/// @}", "///@")):
        above.insert(0, line.removeprefix("///").strip())
        first -= 1
    return " ".join(above[:above.index("")] if "" in above else above)


def getter_names(setter):
    stem = setter.removeprefix("set")
    return (stem[0].lower() + stem[1:], "is" + stem, "has" + stem) if stem != setter else ()


def declarations(lines):
    """The properties and functions of a header, a list for each class."""
    classes = [[]]
    group = None  # the members since "/// @{"
    line = 0
    while line < len(lines):
        text = lines[line].strip()
        if text in ("Q_OBJECT", "Q_GADGET") or re.match(r"(class|struct)\b.*[^;]$", text):
            classes.append([])
        elif "(" in text and not text.startswith(("//", "#", ":", ",")):
            member = Declaration(lines, line)
            classes[-1].append(member)
            line = member.last
            if group is not None:
                group.append(member)
                member.group_comment = group[0].comment
        elif text == "/// @{" and not lines[line - 1].strip().startswith("///"):
            group = []
            lines[line] = ""
        elif text == "/// @}" and group is not None:
            group = None
            lines[line] = ""
        line += 1
    return classes


def complete(members, lines):
    def put(declaration, comment):
        code = lines[declaration.first]
        indent = len(code) - len(code.lstrip())
        lines[declaration.first] = f"{code[:indent]}/** {comment} */ {code[indent:]}"
        declaration.comment = comment

    functions = [member for member in members if member.name]
    commented = {}
    for function in functions:
        is_setter = re.match(r"set[A-Z]", function.name)
        if not function.comment and function.group_comment and not is_setter:
            put(function, function.group_comment)
        if function.comment:
            commented.setdefault(function.name, function.comment)
    told = {}  # signals, with the getters of what they tell of
    for member in members:
        if not member.property:
            continue
        getter = member.access.get("READ", member.property)
        if not member.comment and getter in commented:
            put(member, commented[getter])
        if not member.comment:
            continue
        told.setdefault(member.access.get("NOTIFY"), []).append(getter)
        for function in functions:
            if function.comment:
                continue
            if function.name == getter:
                put(function, f"The property `{member.property}`: {member.comment}")
            elif function.name == member.access.get("WRITE"):
                put(function, f"Sets {getter}().")
            elif function.name == member.access.get("RESET"):
                put(function, f"Resets {getter}() to its default.")
    for function in functions:
        if function.comment:
            continue
        if function.name in told:
            getters = " or ".join(f"{getter}()" for getter in told[function.name])
            put(function, f"Emitted when {getters} has changed.")
        elif match := PARENT.match(function.text):
            put(function, "The object belongs to `parent`, which may be null.")
        elif function.name.startswith("operator==") and function.text.endswith("= default;"):
            put(function, "Whether all members are equal.")
        elif SPECIAL.match(function.text) or re.search(r"\)[\w ]* override\b", function.text):
            for line in range(function.first, function.last + 1):
                lines[line] = ""
        else:
            for getter in getter_names(function.name):
                if getter in commented:
                    put(function, f"Sets {getter}().")
                    break


def write_qt_tags(sources, output):
    """A tag file, for doxygen to link to Qt's own reference. Debian packages none for Qt 6."""
    qt = Path(subprocess.run(["qtpaths6", "--query", "QT_INSTALL_HEADERS"], check=True,
                             stdout=subprocess.PIPE, text=True).stdout.strip())
    names = set()
    for path in [*(output / "include").rglob("*.h"), *(sources / "docs").rglob("*.md")]:
        names.update(re.findall(r"\bQ[A-Z]\w+", path.read_text(encoding="utf-8")))
    classes = [name for name in sorted(names - WITHOUT_PAGE) if list(qt.glob(f"Qt*/{name}"))]
    compounds = "".join(f'<compound kind="class"><name>{name}</name>'
                        f'<filename>{name.lower()}.html</filename></compound>\n'
                        for name in classes)
    (output / "qt.tags").write_text(f"<tagfile>\n{compounds}</tagfile>\n", encoding="utf-8")


def copy(sources, output, links_pages=False):
    """Copies the public headers; returns what they are included as, "Platform/NSView.h"."""
    copied = []
    shutil.rmtree(output / "include", ignore_errors=True)
    for header in (output / "headers.txt").read_text(encoding="utf-8").split():
        lines = (sources / header).read_text(encoding="utf-8").split("\n")
        if lines[1].startswith("// Not API"):
            continue
        for members in declarations(lines):
            complete(members, lines)
        if links_pages:
            lines = [PAGE.sub(r"[\g<0>](\g<0>)", line) if "///" in line else line
                     for line in lines]
        included_as = Path(header).parts[0] + "/" + Path(header).name
        target = output / "include/pellarvine" / included_as
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text("\n".join(lines), encoding="utf-8")
        copied.append(included_as)
    return copied


if __name__ == "__main__":
    copy(Path(sys.argv[1]), Path(sys.argv[2]), links_pages=True)
    write_qt_tags(Path(sys.argv[1]), Path(sys.argv[2]))

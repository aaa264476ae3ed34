#!/usr/bin/env -S python3 -B
"""exports.txt, the public headers and the built library name the same functions, no more, no less.

All of them carry the version node VLX_1.
"""

import re
import subprocess

from common import BUILD, ROOT, Rule, exported, files, without_comments

NODE = "VLX_1"
LIST = ROOT / "src" / "exports.txt"


def declared():
    """The functions that the public headers declare with TS_API: their file and line."""
    found = {}
    for path in files("include", suffixes=(".h",)):
        text = without_comments(path.read_text(encoding="utf-8"))
        text = re.sub(r"^[ \t]*#[^\n]*", "", text, flags=re.M)
        for match in re.finditer(r"\bTS_API\b[^;(]*?(\w+)\s*\(", text):
            found[match.group(1)] = (path, text.count("\n", 0, match.start()) + 1)
    return found


def visible(library):
    """The dynamic symbols that the library defines: name to version."""
    output = subprocess.run(["nm", "-D", "--defined-only", "--with-symbol-versions", library],
                            check=True, capture_output=True, text=True).stdout
    symbols = {}
    for line in output.splitlines():
        _, kind, symbol = line.split()
        name, _, version = symbol.partition("@")
        if kind != "A" or name != NODE:
            symbols[name] = version.lstrip("@")
    return symbols


rule = Rule()
listed = exported()
headers = declared()
library = rule.need(BUILD / "lib" / "libvlx.so")
symbols = visible(library)
for name, line in listed.items():
    if name not in headers:
        rule.fail(LIST, line, f"{name} is not declared in a public header")
    if name not in symbols:
        rule.fail(LIST, line, f"{name} is not in {library.name}")
for name, (path, line) in headers.items():
    if name not in listed:
        rule.fail(path, line, f"{name} is declared, but not in {LIST.name}")
for name, version in symbols.items():
    if name not in listed:
        rule.fail(library, 0, f"{name} is visible, but not in {LIST.name}")
    elif version != NODE:
        rule.fail(library, 0, f"{name} has the version '{version}' and not {NODE}")
if list(listed) != sorted(listed):
    rule.fail(LIST, 0, "the names are not in order")
rule.finish(f"{len(listed)} exported functions in {LIST.name}, the headers and {library.name}")

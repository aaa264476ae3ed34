#!/usr/bin/env -S python3 -B
"""Names of folders and units in src/.

A unit `ts*.cpp` has at most eight letters, its trace name is its file's stem, and it defines at most
one exported function; an exported function stands in such a unit, whose last letter tells the member
(x for Ex, u, w). The functions of the facade are short and stand together in units `facade/vlx*.cpp`.
"""

import re

from common import ROOT, Rule, exported, files

FOLDERS = {"frame", "locale", "chars", "convert", "streams", "strings", "collate", "mapping", "text", "catalog",
           "facade", "host"}
HOST_FOLDERS = {"posix", "windows", "zbq"}
MEMBERS = {"Ex": "x", "U": "u", "W": "w"}

DEFINITION = re.compile(r"^(?:[A-Za-z_][\w\s*&:]*?[\s*&])(\w+)\((?![^)]*\);)")
TRACE = re.compile(r'^TS_TRACE_UNIT\("([^"]*)"\);')


def is_unit(path):
    return path.suffix == ".cpp" and path.stem.startswith("ts")


def is_facade(path):
    return path.suffix == ".cpp" and path.parent.name == "facade" and path.stem.startswith("vlx")


def check_function(path, line, name):
    if name.startswith("NLS1_"):
        if not is_facade(path) or len(path.stem) > 8:
            rule.fail(path, line, f"{name} belongs in a unit facade/vlx*.cpp of at most eight letters")
        return
    member = re.search(r"[a-z](Ex|U|W)$", name)
    if not is_unit(path):
        rule.fail(path, line, f"{name} is exported, and this is no unit ts*.cpp")
    elif member and path.stem[-1] != MEMBERS[member.group(1)]:
        rule.fail(path, line, f"the unit of {name} should end in {MEMBERS[member.group(1)]}")


def check_unit(path, text):
    functions = []
    for number, line in enumerate(text, 1):
        trace = TRACE.match(line)
        if trace and trace.group(1) != path.stem:
            rule.fail(path, number, f'the trace name "{trace.group(1)}" is not {path.stem}')
        found = DEFINITION.match(line)
        if found and found.group(1) in names:
            functions.append(found.group(1))
            check_function(path, number, found.group(1))
    if len(functions) > 1 and not is_facade(path):
        rule.fail(path, 1, "one exported function a unit, here are " + ", ".join(functions))
    if is_unit(path) and not re.fullmatch(r"[a-z0-9]{3,8}", path.stem):
        rule.fail(path, 1, "a unit's name has at most eight small letters")
    return functions


rule = Rule()
names = exported()
units = files("src", suffixes=(".cpp",))
defined = []
for path in units:
    defined += check_unit(path, path.read_text(encoding="utf-8").splitlines())
for name, line in names.items():
    if defined.count(name) != 1:
        rule.fail(ROOT / "src" / "exports.txt", line, f"{name} is defined {defined.count(name)} times")
for folder in [path for path in (ROOT / "src").rglob("*") if path.is_dir()]:
    known = HOST_FOLDERS if folder.parent.name == "host" else FOLDERS
    if folder.name not in known or folder.parent not in (ROOT / "src", ROOT / "src" / "host"):
        rule.fail(folder, 0, "no folder of this name belongs here")
rule.finish(f"{len(units)} units, {len(defined)} exported functions in them")

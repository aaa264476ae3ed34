#!/usr/bin/env -S python3 -B
"""The library runs no code when it is loaded, and no static of a function is made at its first call.

An object with a static constructor has an .init_array section or an initialiser of its own; one with
a static that is made at run time has a guard variable.
"""

import re
import subprocess

from common import BUILD, Rule

TARGETS = {"vlx_core": "src", "vlx_host": "src/host"}
SECTION = re.compile(r"\s(\.(?:init_array|ctors|fini_array|dtors)\S*)")
SYMBOL = re.compile(r"\s(_GLOBAL__\w+|_ZGV\w+|_Z41__static_initialization\w+)")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def sources(target, folder):
    """The objects of a target, with the source that the build system made each from."""
    place = BUILD / folder / "CMakeFiles" / f"{target}.dir"
    found = sorted(rule.need(place).rglob("*.o"))
    for path in found:
        name = str(path.relative_to(place)).removesuffix(".o")
        yield path, f"{folder}/{name}"


rule = Rule()
count = 0
for target, folder in TARGETS.items():
    objects = 0
    for path, source in sources(target, folder):
        objects += 1
        for section in sorted(set(SECTION.findall(output("objdump", "-h", path)))):
            rule.fail(source, 1, f"the object has a section {section}")
        for symbol in sorted(set(SYMBOL.findall(output("nm", path)))):
            rule.fail(source, 1, f"the object has {symbol}")
    if objects == 0:
        rule.fail(folder, 0, f"no objects of {target}")
    count += objects
rule.finish(f"{count} objects of {' and '.join(TARGETS)}")

#!/usr/bin/env -S python3 -B
"""The functions of src/exports.txt are those that programs are linked against: the list in
checks/interface.txt. A name that leaves it breaks a program that is installed somewhere."""

from common import ROOT, Rule, exported, lines

COUNT = 200
LIST = ROOT / "checks" / "interface.txt"

rule = Rule()
promised = [line for line in lines(LIST) if line and not line.startswith("#")]
listed = exported()
for name in promised:
    if promised.count(name) > 1:
        rule.fail(LIST, 0, f"{name} stands there twice")
    if name not in listed:
        rule.fail(ROOT / "src" / "exports.txt", 0, f"{name} is missing")
for name, line in listed.items():
    if name not in promised:
        rule.fail(ROOT / "src" / "exports.txt", line, f"{name} is no function of the interface")
if len(promised) != COUNT:
    rule.fail(LIST, 0, f"there are {len(promised)} names and not {COUNT}")
rule.finish(f"{len(promised)} functions of the interface")

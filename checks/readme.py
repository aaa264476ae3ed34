#!/usr/bin/env -S python3 -B
"""The program in README.md compiles, runs and prints what the README says; links between documents
lead somewhere."""

import os
import re
import subprocess
import tempfile
from pathlib import Path

from common import BUILD, ROOT, Rule, files

README = ROOT / "README.md"
PROGRAM = re.compile(r"^```c\n(.*?)^```\n.*?^```text\n(.*?)^```$", re.M | re.S)
BLOCK = re.compile(r"^```text\n(.*?)^```$", re.M | re.S)
LINK = re.compile(r"\]\(([^)#\s]+)(?:#[^)]*)?\)")


def run(source):
    """Compiles the program against the built library and gives its messages and output."""
    with tempfile.TemporaryDirectory() as folder:
        program = Path(folder) / "program"
        compiled = subprocess.run(
            [os.environ.get("CC", "gcc"), "-std=c11", "-Wall", "-Wextra", "-Wpedantic", "-Werror",
             "-x", "c", "-", "-o", program, f"-I{ROOT / 'include'}", f"-L{BUILD / 'lib'}", "-lvlx",
             f"-Wl,-rpath,{BUILD / 'lib'}", f"-Wl,-rpath-link,{BUILD / 'lib'}"],
            input=source, capture_output=True, text=True, check=False)
        if compiled.returncode:
            return "it does not compile:\n" + compiled.stderr
        environment = dict(os.environ, TS_LOCALEDIR=str(BUILD / "locale"))
        done = subprocess.run([program], capture_output=True, text=True, check=False, timeout=60,
                              env=environment)
        return done.stdout if done.returncode == 0 else f"it ends with {done.returncode}\n"


def check_program(text):
    found = PROGRAM.search(text)
    if not found:
        rule.fail(README, 1, "there is no program with its output")
        return
    rule.need(BUILD / "lib" / "libvlx.so")
    rule.need(BUILD / "locale" / "control.nls")
    source, expected = found.groups()
    if (given := run(source)) != expected:
        rule.fail(README, text.count("\n", 0, found.start()) + 1,
                  f"the program gives\n{given}instead of\n{expected}")


def check_report(text):
    """The output of the small product is the golden one, with which the tests compare it."""
    found = [block for block in BLOCK.findall(text) if block.startswith("Offene Posten")]
    golden = (ROOT / "tests" / "tools" / "cli" / "golden" / "report.txt").read_text(encoding="utf-8")
    if [block.strip() for block in found] != [golden.strip()]:
        rule.fail(README, 1, "the reports of the small product are not the golden ones")


def check_links(path):
    text = path.read_text(encoding="utf-8")
    links = [match for match in LINK.finditer(text) if "://" not in match.group(1)]
    for match in links:
        if not (path.parent / match.group(1)).exists():
            rule.fail(path, text.count("\n", 0, match.start()) + 1, f"{match.group(1)} is not there")
    return len(links)


rule = Rule()
check_program(README.read_text(encoding="utf-8"))
check_report(README.read_text(encoding="utf-8"))
documents = [*ROOT.glob("*.md"), *files("docs", "examples", "data", suffixes=(".md",))]
count = sum(map(check_links, documents))
rule.finish(f"the program of {README.name}, {count} links in {len(documents)} documents")

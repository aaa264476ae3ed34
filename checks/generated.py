#!/usr/bin/env -S python3 -B
"""Data and examples that a program made are what it makes today; tables.py does it for src/.

Each generator writes into an empty directory, and every file that it writes is compared with the one
in the project. A generator that is not built, or whose source is not installed, is not checked, and
the result says so; with --strict that is an error.
"""

import filecmp
import subprocess
import sys
import tempfile
from pathlib import Path

from common import BUILD, ROOT, Rule

IMPORTER = BUILD / "bin" / "vlx-import"
CLDR = Path("/usr/share/unicode/cldr/common/main")
GLIBC = Path("/usr/share/i18n/locales/ve_ZA")

# What it makes, the command without its directory, what it needs, the folder of the results.
GENERATORS = [
    ("examples", [ROOT / "examples" / "make-examples"], [], "examples"),
    ("code pages", [IMPORTER, "codepages", "-o"], [IMPORTER], "data/codepages"),
    ("younger characters", [IMPORTER, "characters", "-o"], [IMPORTER], "data/unicode"),
    ("languages and territories", [IMPORTER, "cldr", "-o"], [IMPORTER, CLDR, GLIBC], "data"),
    ("sorts", [IMPORTER, "sorts", "-o"], [IMPORTER, CLDR], "data"),
]


def compare(name, made, folder):
    """Compares each file below `made` with the one in the project's folder; gives their number."""
    paths = sorted(path for path in made.rglob("*") if path.is_file())
    for path in paths:
        target = ROOT / folder / path.relative_to(made)
        if not target.exists():
            rule.fail(target, 1, f"the generator of {name} makes this file, and it is not there")
        elif not filecmp.cmp(path, target, shallow=False):
            rule.fail(target, 1, f"is not what the generator of {name} makes")
    return len(paths)


rule = Rule()
count = 0
left_out = []
for name, command, needs, folder in GENERATORS:
    missing = [path for path in needs if not path.exists()]
    if missing:
        left_out.append(name)
        print(f"not checked: {name}, as {missing[0]} is not there")
        continue
    with tempfile.TemporaryDirectory() as made:
        done = subprocess.run([*command, made], capture_output=True, text=True, check=False)
        if done.returncode:
            rule.fail(command[0], 1, f"ends with {done.returncode}: {done.stderr.strip()}")
        written = compare(name, Path(made), folder)
        if written == 0:
            rule.fail(command[0], 1, f"the generator of {name} makes no file")
        count += written
if left_out and "--strict" in sys.argv[1:]:
    rule.fail(BUILD, 0, "not checked: " + ", ".join(left_out))
rule.finish(f"{count} generated files" + (f", not those of {', '.join(left_out)}" if left_out else ""))

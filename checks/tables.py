#!/usr/bin/env -S python3 -B
"""The generated tables of src/ are what the generator makes of the sources in data/unicode."""

import subprocess
import sys
import tempfile
from pathlib import Path

from common import BUILD, ROOT, Rule, lines

GENERATED = ("chars/unitypes.cpp", "mapping/unitabs.cpp")


def first_difference(here, there):
    """The number of the first line that differs, None if there is none."""
    ours, theirs = lines(here), lines(there)
    for number, (one, other) in enumerate(zip(ours, theirs), 1):
        if one != other:
            return number
    return None if len(ours) == len(theirs) else min(len(ours), len(theirs)) + 1


rule = Rule()
rule.need(BUILD / "CMakeCache.txt")
# An old generator would tell nothing.
build = subprocess.run(["cmake", "--build", BUILD, "--target", "vlx-gen"], capture_output=True,
                       text=True)
if build.returncode != 0:
    sys.exit(f"{build.stdout}{build.stderr}vlx-gen cannot be built")
generator = rule.need(BUILD / "bin" / "vlx-gen")
with tempfile.TemporaryDirectory() as made:
    for name in GENERATED:
        (Path(made) / name).parent.mkdir(parents=True, exist_ok=True)
    subprocess.run([generator, ROOT / "data" / "unicode", made], check=True)
    for name in GENERATED:
        number = first_difference(ROOT / "src" / name, Path(made) / name)
        if number is not None:
            rule.fail(ROOT / "src" / name, number, "is not what the generator makes; run it again")
rule.finish(f"{len(GENERATED)} generated tables")

#!/usr/bin/env -S python3 -B
"""Every header compiles by itself: the public ones as C11 and as C++20, those of src/ as C++20."""

import os
import re
import subprocess
from concurrent.futures import ThreadPoolExecutor

from common import ROOT, Rule, files

WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only"]
C = [os.environ.get("CC", "gcc"), "-std=c11", *WARNINGS, "-x", "c"]
CXX = [os.environ.get("CXX", "g++"), "-std=c++20", *WARNINGS, "-x", "c++"]
LIBRARY = ["-fno-exceptions", "-fno-rtti", f"-I{ROOT / 'src'}", f"-I{ROOT / 'include'}"]


def compiles(task):
    """The compiler's messages about a file that does nothing but include a header."""
    path, command = task
    # The declaration is there because C wants a file to have one.
    done = subprocess.run([*command, "-"], input=f'#include "{path}"\nextern int checked;\n',
                          capture_output=True, text=True, check=False)
    return path, command, done.stderr if done.returncode else ""


def tasks():
    for path in files("include", suffixes=(".h",)):
        yield path, C
        yield path, CXX
    for path in files("src", suffixes=(".hpp",)):
        # A host's own headers may need its system; that of another one is not here.
        if "windows" not in path.parts:
            yield path, [*CXX, *LIBRARY]


rule = Rule()
with ThreadPoolExecutor(os.cpu_count()) as pool:
    results = list(pool.map(compiles, tasks()))
for path, command, messages in results:
    if messages:
        line = re.search(rf"^{re.escape(str(path))}:(\d+)", messages, re.M)
        rule.fail(path, line.group(1) if line else 1, f"does not compile alone as {command[1][5:]}")
        print(messages)
if not any(path.parent == ROOT / "include" for path, _, _ in results):
    rule.fail(ROOT / "include", 0, "no public header")
rule.finish(f"{len(results)} compilations of headers")

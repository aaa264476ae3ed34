#!/usr/bin/env -S python3 -B
"""What the built library needs: the C and C++ run time, the base services, and nothing else.

It uses no exceptions, no run-time types and no memory of its own choice: memory comes from the
allocator slots or the host.
"""

import re
import subprocess

from common import BUILD, Rule

NEEDED = re.compile(r"lib(zbq|c|m|stdc\+\+|gcc_s|pthread)\.so\.\d+|ld-linux[\w.-]+\.so\.\d+")
FORBIDDEN = {
    r"__cxa_(?!finalize|atexit)\w+|_Unwind_\w+|__gxx_personality\w*": "exceptions",
    r"_ZT[ISV]\w+|__dynamic_cast": "run-time types",
    r"_Zn[wa]\w+|_Zd[la]\w+": "operator new and delete",
}
SERVICES = re.compile(r"(SYS1|TRC1)_\w+")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


rule = Rule()
library = rule.need(BUILD / "lib" / "libvlx.so")
needed = re.findall(r"\(NEEDED\)[^\[]*\[([^\]]+)\]", output("readelf", "-d", library))
if not any(name.startswith("libzbq.so") for name in needed):
    rule.fail(library, 0, "does not need the base services")
for name in needed:
    if not NEEDED.fullmatch(name):
        rule.fail(library, 0, f"needs {name}")

symbols = [line.split()[-1].partition("@")[0] for line in output("nm", library).splitlines()]
for symbol in sorted(set(symbols)):
    for pattern, what in FORBIDDEN.items():
        if re.fullmatch(pattern, symbol):
            rule.fail(library, 0, f"{symbol}: {what}")

services = rule.need(BUILD / "lib" / "libzbq.so")
for line in output("nm", "-D", "--defined-only", services).splitlines():
    name = line.split()[-1].partition("@")[0]
    if not SERVICES.fullmatch(name) and " A " not in line:
        rule.fail(services, 0, f"{name} is visible and no base service")
rule.finish(f"{library.name}: {len(needed)} needed libraries, {len(symbols)} symbols")

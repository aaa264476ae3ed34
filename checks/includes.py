#!/usr/bin/env -S python3 -B
"""What src/ includes, and where it looks at the platform.

The includes have no cycle. A file includes headers of src/, of include/ and of the C++ standard
library, but none of its streams and of its containers that own memory. Headers of an operating
system stand in the hosts alone, and so do platform conditions, but for the export macro of the
public header.
"""

import re

from common import ROOT, Rule, files, without_comments

# The standard headers that the library may use: none of streams or of containers that own memory.
STANDARD = set("""
algorithm array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
cinttypes climits clocale cmath compare complex concepts condition_variable coroutine csetjmp csignal
cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype filesystem format
functional future initializer_list iterator latch limits locale memory memory_resource mutex new
numbers numeric optional random ranges ratio scoped_allocator semaphore shared_mutex source_location
span stop_token string_view system_error thread tuple type_traits typeindex typeinfo utility variant
version stdint.h
""".split())
# The two files that are made for one kind of processor, and the headers of its instructions.
KERNELS = {ROOT / "src" / "chars" / "runs.hpp", ROOT / "src" / "chars" / "byteset.cpp"}
INSTRUCTIONS = {"cpuid.h", "emmintrin.h", "tmmintrin.h"}
HOSTS = [ROOT / "src" / "host" / name for name in ("posix", "windows", "zbq")]
HOST = ROOT / "src" / "host"
MAY_ASK_PLATFORM = {ROOT / "include" / "tessera.h"}

INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|<([^>]+)>)', re.M)
PLATFORM = re.compile(r"^\s*#\s*(?:el)?if.*\b(?:_WIN32|_WIN64|WIN32|__CYGWIN__|__MINGW\w*|_MSC_VER|"
                      r"__linux\w*|__unix\w*|__APPLE__|__ANDROID__|__FreeBSD__|_AIX|__MVS__)\b", re.M)


def line_of(text, match):
    return text.count("\n", 0, match.start(1) if match.lastindex else match.end()) + 1


def resolve(path, name):
    """The header of the project that a quoted include means, or None."""
    for folder in (path.parent, ROOT / "src", ROOT / "include"):
        if (folder / name).is_file():
            return (folder / name).resolve()
    return None


def read(path):
    """Checks a file and gives the headers of the project that it includes, with their lines."""
    text = without_comments(path.read_text(encoding="utf-8"))
    included = {}
    in_host = any(path.is_relative_to(folder) for folder in HOSTS)
    for match in INCLUDE.finditer(text):
        own, system = match.groups()
        if own and (header := resolve(path, own)):
            included[header] = line_of(text, match)
        elif own:
            rule.fail(path, line_of(text, match), f'"{own}" is no header of src/ or include/')
        elif system in INSTRUCTIONS and path in KERNELS:
            continue
        elif system not in STANDARD and not in_host:
            rule.fail(path, text.count("\n", 0, match.end()) + 1,
                      f"<{system}> is no standard header that the library uses outside a host")
    if not path.is_relative_to(HOST) and path not in MAY_ASK_PLATFORM:
        for match in PLATFORM.finditer(text):
            rule.fail(path, text.count("\n", 0, match.end()) + 1, "a platform condition outside a host")
    return included


def walk(path, road):
    """Follows the includes of a file and tells of each cycle once."""
    if path in road:
        cycle = [*road[road.index(path):], path]
        rule.fail(road[-1], graph[road[-1]][path],
                  "a cycle of includes: " + " > ".join(header.name for header in cycle))
    elif path not in done:
        for header in graph[path]:
            walk(header, [*road, path])
        done.add(path)


rule = Rule()
sources = files("include", "src", suffixes=(".h", ".cpp", ".hpp"))
graph = {path: read(path) for path in sources}
done = set()
for source in sources:
    walk(source, [])
rule.finish(f"{sum(map(len, graph.values()))} includes of {len(sources)} files")

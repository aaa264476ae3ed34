#!/usr/bin/env python3
"""Measures processes from their start to their first answer, and the memory that they take.

    bench/process.py [--runs N] [BUILD]

BUILD is the build directory with the programs and the locale data, build/release by default. The
programs take turns. `empty` has its answer, and so has `loaded`, which is linked to the library;
`facade` makes the user's locale by the first call of nls1.h and writes an amount by its customs;
`glibc` does the same with newlocale() and strfmon_l(), with a locale that localedef compiles into a
directory of the run.

Printed are medians: the time by the clock until the answer is read, the processor time of the whole
process, and the largest of the memory that it had resident.
"""

import argparse
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

WHO = ("empty", "loaded", "facade", "glibc")


def run(program, arguments, environment):
    """Starts a process; gives its answer, seconds to it, and seconds of the processor."""
    reader, writer = os.pipe()
    actions = [(os.POSIX_SPAWN_DUP2, writer, 1), (os.POSIX_SPAWN_CLOSE, reader)]
    begin = time.perf_counter()
    child = os.posix_spawn(program, [program, *arguments], environment, file_actions=actions)
    os.close(writer)
    answer = os.read(reader, 4096)
    answered = time.perf_counter() - begin
    while more := os.read(reader, 4096):
        answer += more
    os.close(reader)
    _, status, usage = os.wait4(child, 0)
    if status != 0 or not answer:
        sys.exit(f"{program}: failed")
    return answer, answered, usage.ru_utime + usage.ru_stime


def compile_locale(folder):
    """Makes de_DE in CP1252 for the C library; false if it cannot be made here."""
    command = ["localedef", "-c", "-i", "de_DE", "-f", "CP1252", f"{folder}/de_DE.CP1252"]
    try:
        subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    except FileNotFoundError:
        return False
    return os.path.isdir(command[-1])


def resident(answer):
    """The kibibytes that a program tells of itself."""
    lines = answer.decode("cp1252").splitlines()
    return max(int(line.split()[1]) for line in lines if line.endswith("kB"))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--runs", type=int, default=300)
    parser.add_argument("build", nargs="?", type=pathlib.Path, default=pathlib.Path("build/release"))
    options = parser.parse_args()
    build = options.build.resolve()
    with tempfile.TemporaryDirectory() as folder:
        environment = {
            "NLS1_LOCALEDIR": str(build / "locale"),
            "TS_LANG": "German_Germany.MS1252",
            "LC_ALL": "de_DE.CP1252",
            "LOCPATH": folder,
        }
        programs = {who: str(build / "bin" / f"process_{who}") for who in WHO}
        if not compile_locale(folder):
            print("skipped: glibc: localedef cannot make the locale here", file=sys.stderr)
            del programs["glibc"]
        clock = {who: [] for who in programs}
        processor = {who: [] for who in programs}
        memory = {}
        for _ in range(options.runs):
            for who, program in programs.items():
                _, answered, used = run(program, [], environment)
                clock[who].append(answered)
                processor[who].append(used)
        answers = {}
        for who, program in programs.items():
            told = [run(program, ["memory"], environment)[0] for _ in range(11)]
            answers[who] = told[0].splitlines()[0].decode("cp1252")
            memory[who] = statistics.median(resident(answer) for answer in told)
    print(f"{'process':<10} {'answer':<14} {'clock':>9} {'processor':>10} {'resident':>10}")
    for who in programs:
        print(
            f"{who:<10} {answers[who]:<14} {statistics.median(clock[who]) * 1e6:>6.0f} us "
            f"{statistics.median(processor[who]) * 1e6:>7.0f} us {memory[who]:>6.0f} KiB"
        )


if __name__ == "__main__":
    main()

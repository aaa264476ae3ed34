"""What the rule scripts share: where files are, and how a rule tells what it found."""

import os
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = Path(os.environ.get("VLX_BUILD", ROOT / "build" / "dev")).resolve()

CODE = (".c", ".h", ".cpp", ".hpp")
FOLDERS = ("include", "src", "tools", "tests", "bench", "fuzz", "examples", "data", "docs", "checks",
           "script", "cmake", "packaging", ".ci")


def files(*folders, suffixes=None):
    """The files below folders of the project, in order; with suffixes only files with one of them."""
    found = []
    for folder in folders:
        found += [path for path in (ROOT / folder).rglob("*")
                  if path.is_file() and "__pycache__" not in path.parts
                  and (suffixes is None or path.suffix in suffixes)]
    return sorted(found)


def lines(path):
    return path.read_text(encoding="utf-8").splitlines()


def without_comments(text):
    """The text of a C or C++ file with its comments blanked; lines keep their numbers."""
    def blank(match):
        word = match.group(0)
        return word if word[0] in "\"'" else re.sub(r"[^\n]", " ", word)
    return re.sub(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', blank, text,
                  flags=re.S)


def exported():
    """The functions of exports.txt with their lines."""
    path = ROOT / "src" / "exports.txt"
    return {line: number for number, line in enumerate(lines(path), 1)
            if line and not line.startswith("#")}


class Rule:
    """Collects what breaks a rule and ends the script."""

    def __init__(self):
        self.broken = 0

    def fail(self, path, line, message):
        self.broken += 1
        path = Path(path)
        if path.is_absolute() and path.is_relative_to(ROOT):
            path = path.relative_to(ROOT)
        print(f"{path}:{line}: {message}")

    def need(self, path):
        """Ends the script if something that has to be built is not there."""
        if not path.exists():
            sys.exit(f"{path}: not built; build it, or name another build directory in VLX_BUILD")
        return path

    def finish(self, checked):
        verdict = f"{self.broken} broken" if self.broken else "good"
        print(f"checked {checked}: {verdict}")
        sys.exit(1 if self.broken else 0)

#!/usr/bin/env -S python3 -B
"""Words that no file of the project has: paths of a machine it was written on, numbers of chapters
that a reader does not have, and things left to do."""

import re

from common import FOLDERS, ROOT, Rule, files

# Each pattern is put together so that this file does not hold what it looks for.
WORDS = {
    r"/(?:" + "|".join(("wo" + "rk", "ho" + "me", "ro" + "ot", "Us" + "ers")) + r")/\w": "a machine's path",
    r"(?i)\bpa" + r"rts? \d+(?:\.\d+)?\b": "a chapter that the reader does not have",
    r"(?i)\bthe spec" + r"(?:ification)?\b": "a document that the reader does not have",
    r"\b(?:TO" + r"DO|FIX" + r"ME|X" + r"XX|HA" + r"CK)\b": "something left to do",
}


def text_of(path):
    """The text of a file; None if it is no text in UTF-8, such as an example in a code page."""
    try:
        return path.read_text(encoding="utf-8")
    except UnicodeDecodeError:
        return None


rule = Rule()
found = files(*FOLDERS) + sorted(path for path in ROOT.iterdir() if path.is_file())
count = 0
for path in found:
    text = text_of(path)
    if text is None:
        continue
    count += 1
    for pattern, what in WORDS.items():
        for match in re.finditer(pattern, text):
            rule.fail(path, text.count("\n", 0, match.start()) + 1, f'"{match.group(0)}": {what}')
rule.finish(f"{count} text files of {len(found)}")

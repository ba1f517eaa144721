# SPDX-License-Identifier: MIT
"""words.py SOURCE_DIR

Whether pages, headers, messages and comments use the words that a reader knows:
no word of the table below, in any tracked file.
"""
import pathlib
import re
import subprocess
import sys

# What must not be written, and what is written for it.
WORDS = {
    r"behind": "after, or at",
    r"stands?(?!\s+(?://\s*)?for\b)|stood": "is, comes, follows",
    r"laws?": "rule",
    r"take[ns]? part|taking part|took part": "is used",
    r"whoever": "who, or what",
    r"anew": "again",
    r"second doors?": "view",
    r"the world|world's|'s world|its world": "what happens to the chip from outside",
    r"time passes, which": "the clock advances",
}
# Where a word means what it says.
FINE = [r"host\s+behind a rule"]
# What is not prose, and the list of the words.
LEFT_OUT = ["abi", "fuzz/corpus", "tests/checks/words.py", "LICENSE", "*.svg", "*.json"]


def files(source):
    listed = subprocess.run(
        ["git", "ls-files", "-z", "--", ".", *(f":!{each}" for each in LEFT_OUT)],
        cwd=source, capture_output=True, text=True, check=True).stdout
    return [pathlib.Path(name) for name in listed.split("\0") if name]


def faults(path, text):
    text = re.sub("|".join(FINE), lambda fine: "." * len(fine[0]), text)
    for pattern, better in WORDS.items():
        for match in re.finditer(rf"\b(?:{pattern})\b", text, re.IGNORECASE):
            line = text.count("\n", 0, match.start()) + 1
            yield f'{path}:{line}: "{match[0]}", better: {better}'


def main():
    source = pathlib.Path(sys.argv[1])
    found, read = [], 0
    for path in files(source):
        if not (source / path).is_file():
            continue
        read += 1
        found += faults(path, (source / path).read_text(errors="replace"))
    print(*found, sep="\n", end="\n" if found else "")
    print(f"words: {read} files, {len(found)} words that a reader stumbles over")
    return 1 if found or read < 100 else 0


sys.exit(main())

#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that no source file has more than 500 lines and no function more than 60.

Relies on the project's formatting: a function's braces end the line that opens it and stand alone,
at the same indentation, on the line that closes it.

Usage: check_sizes.py ROOT. Prints each excess as FILE:LINE: TEXT and exits 1 when there is one.
"""

import re
import subprocess
import sys
from pathlib import Path

MAX_FILE = 500
MAX_FUNCTION = 60

NOT_A_FUNCTION = re.compile(
    r"^\s*(inline\s+)?(namespace|class|struct|union|enum|extern)\b|=\s*\{$|^\s*\{$|\breturn\b"
    # A lambda belongs to the function round it.
    r"|(?<!operator)\[[&=\w\s,*]*\]\s*[({]")


def head_of(lines, start):
    """The first line of a signature that may span several."""
    while start > 0 and lines[start - 1].strip() and not re.search(r"[;{}:]\s*$|^\s*(//|#|template)",
                                                                   lines[start - 1]):
        start -= 1
    return start


def function_blocks(lines):
    """Yields (first line of the signature, last line) of each block that looks like a function."""
    for opening, line in enumerate(lines):
        if not line.endswith(" {"):
            continue
        head = head_of(lines, opening)
        signature = "\n".join(lines[head:opening + 1])
        if "(" not in signature or NOT_A_FUNCTION.search(signature):
            continue
        indentation = len(lines[head]) - len(lines[head].lstrip())
        end = next((i for i in range(opening + 1, len(lines))
                    if re.match(rf"^ {{{indentation}}}\}}", lines[i])), None)
        if end is not None:
            yield head, end


def excesses(path):
    lines = path.read_text(encoding="utf-8").splitlines()
    if len(lines) > MAX_FILE:
        yield 1, f"{len(lines)} lines, at most {MAX_FILE}"
    for head, end in function_blocks(lines):
        length = end - head + 1
        if length > MAX_FUNCTION:
            yield head + 1, f"a block of {length} lines, at most {MAX_FUNCTION}"


def tracked(root):
    listed = subprocess.run(["git", "-C", str(root), "ls-files", "*.h", "*.cpp", "*.py"],
                            capture_output=True, text=True, check=False)
    if listed.returncode == 0 and listed.stdout:
        return [root / name for name in listed.stdout.splitlines()]
    return [p for p in sorted(root.rglob("*")) if p.suffix in {".h", ".cpp", ".py"}]


def main():
    root = Path(sys.argv[1])
    found = 0
    for path in tracked(root):
        if not path.is_file():
            continue
        for line, text in excesses(path):
            print(f"{path.relative_to(root)}:{line}: {text}")
            found += 1
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Compares what the shared library exports with the checked-in list.

Usage: compare_exports.py LIBRARY LIST [--update]
"""

import subprocess
import sys
from pathlib import Path


def exported(library):
    listed = subprocess.run(["nm", "-D", "--defined-only", "--demangle", library],
                            capture_output=True, text=True, check=True).stdout
    # Constructors and destructors stand there once per kind, under one name.
    return sorted({line.split(" ", 2)[2] for line in listed.splitlines()})


def main():
    library, list_file = sys.argv[1], Path(sys.argv[2])
    symbols = exported(library)
    if "--update" in sys.argv:
        list_file.write_text("".join(f"{symbol}\n" for symbol in symbols), encoding="utf-8")
        return 0
    expected = list_file.read_text(encoding="utf-8").splitlines()
    for symbol in sorted(set(symbols) - set(expected)):
        print(f"exported, but not listed: {symbol}")
    for symbol in sorted(set(expected) - set(symbols)):
        print(f"listed, but not exported: {symbol}")
    return 0 if symbols == expected else 1


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares what the shared library exports with the checked-in list.

Usage: compare_exports.py LIBRARY LIST [--update]
"""

import subprocess
import sys
from pathlib import Path


# A DLL has its exported names in a table of its own, each as "[ORDINAL] NAME" behind this line.
DLL_TABLE = "[Ordinal/Name Pointer] Table"


def exported_by_dll(library):
    listed = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", library],
                            capture_output=True, text=True, check=True).stdout
    table = listed.split(DLL_TABLE, 1)[1].split("\n\n", 1)[0]
    names = [line.split("]", 1)[1].split()[-1] for line in table.splitlines() if "]" in line]
    return sorted(set(subprocess.run(["c++filt"], input="\n".join(names), capture_output=True,
                                     text=True, check=True).stdout.splitlines()))


def exported(library):
    if library.endswith(".dll"):
        return exported_by_dll(library)
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

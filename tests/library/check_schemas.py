#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that the schema of the context file takes the sound sample and refuses broken ones.

Usage: check_schemas.py ROOT. Ends with 77 where xmllint is not installed.
"""

import shutil
import subprocess
import sys
from pathlib import Path

SOUND = ["examples/site.xml"]
# Faults that need no more than the element at hand; the others are beyond a schema.
BROKEN = ["unknown-type", "missing-parameter", "wrong-root", "two-ctxdata", "no-context",
          "database-without-connector", "default-with-parameter", "forbidden-character",
          "friend-of-a-friend", "friends-without-owner", "option-without-name", "not-well-formed"]


def is_accepted(root, kind, schema, document):
    run = subprocess.run(["xmllint", "--noout", "--nonet", kind, str(root / schema), str(root / document)],
                         capture_output=True, text=True, check=False)
    # 3 and 4: the document does not match; 1: it is no XML. Anything else is a fault of the schema.
    if run.returncode not in (0, 1, 3, 4):
        raise RuntimeError(run.stderr)
    return run.returncode == 0


def main():
    if shutil.which("xmllint") is None:
        return 77
    root = Path(sys.argv[1])
    faults = 0
    for kind, schema in (("--relaxng", "resources/schema/dyadctx-context.rng"),
                         ("--schema", "resources/schema/dyadctx-context.xsd")):
        for document in SOUND:
            if not is_accepted(root, kind, schema, document):
                print(f"{schema} refuses {document}")
                faults += 1
        # XML Schema cannot make one attribute depend on another.
        broken = BROKEN if kind == "--relaxng" else ["wrong-root", "two-ctxdata", "unknown-type"]
        for name in broken:
            if is_accepted(root, kind, schema, f"examples/broken/{name}.xml"):
                print(f"{schema} accepts {name}.xml")
                faults += 1
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())

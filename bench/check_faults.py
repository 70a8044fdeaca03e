#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares `dyadctx check` on a file with many faults with CreateCollector on the same file before
the faults were planted.

Builds the release preset, generates a file of mixed contexts, plants the faults at even distances, and
runs both in turn. Times are processor times, the shortest of all rounds. The check is timed as a whole
process, which also runs CreateCollector; the collector is timed within one.

Exits 1 when the goal is missed, 2 when something could not be measured.
"""

import argparse
import os
import re
import resource
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "release"
TOOL = BUILD / "tools" / "dyadctx" / "dyadctx"
TARGETS = ["dyadctx_tool", "dyadctx_generate_contexts", "dyadctx_measure"]
GOAL = 3.0
ENVIRONMENT = {**os.environ, "VELDbContextEnvironment": "1"}

# One kind of fault after the other: what is looked for in a line, and what takes its place.
FAULTS = [
    (re.compile(r'(<Context Name="[^"]*)"'), r'\1!"'),
    (re.compile(r' Parameter="[^"]*"'), ' Parameter=""'),
    (re.compile(r' ParameterType="[^"]*"'), ' ParameterType="Pfad"'),
    (re.compile(r' Parameter="'), ' Paramter="'),
    (re.compile(r'(<CtxFriends>\s*<Context Name=")[^"]*"'), r'\1Nobody"'),
]


def plant(text, count, kinds):
    """Plants faults in declared contexts and gives the text and how many."""
    starts = [match.start() for match in re.finditer(r'<Context Name="[^"]*" Parameter=', text)]
    pieces, planted, last = [], 0, 0
    step = max(1, len(starts) // count)
    for i in range(step // 2, len(starts), step):
        begin = starts[i]
        end = starts[i + 1] if i + 1 < len(starts) else len(text)
        for number in range(len(kinds)):
            pattern, replacement = kinds[(planted + number) % len(kinds)]
            changed, done = pattern.subn(replacement, text[begin:end], count=1)
            if done:
                pieces += [text[last:begin], changed]
                last = end
                planted += 1
                break
    return "".join(pieces + [text[last:]]), planted


def processor_time(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    run = subprocess.run(command, stdout=subprocess.PIPE, env=ENVIRONMENT, check=False)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    if run.returncode not in (0, 1):
        sys.exit(2)
    return (after.ru_utime - before.ru_utime) + (after.ru_stime - before.ru_stime), run.stdout


def create_time(file):
    run = subprocess.run([BUILD / "bench" / "dyadctx_measure", "create", file, "3"],
                         stdout=subprocess.PIPE, text=True, env=ENVIRONMENT, check=True)
    return float(run.stdout.splitlines()[0].split()[2])


def measure(folder, name, text, kinds, options):
    valid = folder / "valid.xml"
    faulty = folder / f"{name}.xml"
    changed, planted = plant(text, options.faults, kinds)
    faulty.write_text(changed, encoding="utf-8")
    checks, creations = [], []
    answer = b""
    for _ in range(options.rounds):
        creations.append(create_time(valid))
        seconds, answer = processor_time([TOOL, "check", faulty])
        checks.append(seconds)
    ratio = min(checks) / min(creations)
    summary = answer.decode().strip().splitlines()[-1]
    print(f"{name:10} {planted:6} faults  create {min(creations):.3f} s  check {min(checks):.3f} s  "
          f"ratio {ratio:.2f}  ({summary})")
    return ratio


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--contexts", type=int, default=100_000)
    parser.add_argument("--faults", type=int, default=1_000)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--no-build", action="store_true")
    options = parser.parse_args()
    if not options.no_build:
        subprocess.run(["cmake", "--preset", "release", "-D", "DYADCTX_BUILD_TOOL=ON"], cwd=ROOT,
                       check=True)
        subprocess.run(["cmake", "--build", "--preset", "release", "--target", *TARGETS], cwd=ROOT,
                       check=True)
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        subprocess.run([BUILD / "bench" / "dyadctx_generate_contexts", "mixed",
                        str(options.contexts), folder / "valid.xml"], check=True)
        text = (folder / "valid.xml").read_text(encoding="utf-8")
        # Faults of reading end CreateCollector at once, faults of checking after most of its work.
        ratios = [measure(folder, "all", text, FAULTS, options),
                  measure(folder, "checking", text, FAULTS[:3], options),
                  measure(folder, "linking", text, FAULTS[4:], options)]
    worst = max(ratios)
    print(f"worst ratio {worst:.2f}, goal below {GOAL}: {'met' if worst < GOAL else 'missed'}")
    return 0 if worst < GOAL else 1


if __name__ == "__main__":
    sys.exit(main())

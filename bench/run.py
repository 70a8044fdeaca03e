#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Measures the library beside its peers and prints one table.

Builds the release preset, generates the files in a temporary folder, and runs everything in one go.
Operations that are compared run in turn in one process, and the processes run in turn in rounds, so
that another load on the machine meets all of them. Times are processor times, and each figure uses the
shortest of all rounds, because load only ever adds time; for the same reason a growth that misses its
goal is measured again before it counts.

Exits 1 when a goal is missed, 2 when something could not be measured.
"""

import argparse
import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
import report  # noqa: E402

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "release" / "bench"
TARGETS = ["dyadctx_generate_contexts", "dyadctx_measure", "dyadctx_measure_stages"]

PASSES = ["expat", "create", "libxml2", "pugixml", "handwritten", "stream", "destroy",
          "handwritten-destroy"]
LOOKUPS = ["lookup", "miss", "lookup-path", "miss-path", "lookup-database", "miss-database",
           "lookup-file", "miss-file", "map", "map-miss"]
MEMORY = ["create", "expat", "libxml2", "pugixml", "handwritten"]

SHAPES = ["mixed", "star", "fan-in", "fan-out", "chain", "associated", "scenarios", "profiles",
          "sites", "grouped-sites", "databases", "connectors"]
REFUSED = ["namesakes", "late-namesake", "unknown-friends", "cycles"]
MULTISITE = {"sites", "grouped-sites"}
# Operations of one group run in one process; a group that takes too long spoils no other.
GROUPS = [["create", "destroy"], ["stream"], ["delete", "check-context"]]
STAGES = [["tree", "read", "link", "check", "views"]]
EXTRA_GROUPS = {
    "mixed": [["expat"], ["add", "add-lookup"], ["lookup-first"], LOOKUPS, ["channels", "profiles", "options"],
              ["narrow", "by-provider"]],
    "scenarios": [["channels", "profiles", "options"]],
    "profiles": [["channels", "profiles", "options"]],
    "databases": [["narrow", "by-provider"]],
    "connectors": [["narrow", "by-provider"]],
}
# Settings of the library that must not reach into a measurement.
FOREIGN = ("VEL", "TE_MULTISITE", "ExchangeChannel")


class Plan:
    """How much is measured."""

    def __init__(self, quick):
        self.usual_size = 40
        self.sizes = [10_000, 100_000] if quick else [10_000, 100_000, 1_000_000]
        self.growth_sizes = [10_000, 20_000, 40_000] if quick else [50_000, 100_000, 200_000,
                                                                    400_000]
        self.rounds = 2 if quick else 3
        self.growth_rounds = 1 if quick else 2
        self.growth_attempts = 1 if quick else 3
        self.growth_repetitions = 3
        # What is not linear ends here, and is reported as unmeasured.
        self.seconds_per_process = 60 if quick else 300

    def repetitions(self, size):
        if size == self.usual_size:
            return 1000
        return 10 if size <= 10_000 else 5 if size <= 100_000 else 2


class Bench:
    """The built programs, working in one folder."""

    def __init__(self, folder):
        self.folder = Path(folder)
        listed = self.call([BUILD / "dyadctx_measure", "--list"], os.environ)
        self.known = {line.split()[0] for line in listed.splitlines()}

    @staticmethod
    def call(command, environment, seconds=None):
        done = subprocess.run([str(part) for part in command], env=environment, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              timeout=seconds, check=False)
        if done.returncode != 0:
            raise RuntimeError(done.stderr.strip() or f"{command[0]} failed")
        return done.stdout

    def generate(self, shape, size):
        path = self.folder / f"{shape}-{size}.xml"
        if not path.exists():
            self.call([BUILD / "dyadctx_generate_contexts", shape, size, path], os.environ)
        return path

    def measure(self, operations, shape, size, repetitions, stages=False, seconds=None):
        """Operation -> {"seconds", "median", "wall", "count"}; "peak-memory" -> (peak, length)."""
        names = [name for name in operations if stages or name in self.known]
        environment = {name: value for name, value in os.environ.items()
                       if not name.startswith(FOREIGN)}
        if shape in MULTISITE:
            environment["TE_MULTISITE_DBCONTEXT"] = "1"
        program = "dyadctx_measure_stages" if stages else "dyadctx_measure"
        answer = self.call([BUILD / program, ",".join(names), self.generate(shape, size),
                            repetitions, self.folder / "target.xml"], environment, seconds)
        return dict(read_line(line) for line in answer.splitlines())


def read_line(line):
    name, *numbers = line.split()
    if name == "peak-memory":
        return name, (int(numbers[0]), int(numbers[1]))
    count = int(numbers[5])
    calls = max(count, 1) if name in report.PER_CALL else 1
    processor, median, wall, _ = (float(number) / calls for number in numbers[1:5])
    return name, {"seconds": processor, "median": median, "wall": wall, "count": count}


def merge(best, measured):
    """Keeps the shortest of each kind of time."""
    for name, result in measured.items():
        if name == "peak-memory":
            continue
        known = best.setdefault(name, dict(result))
        for field in ("seconds", "median", "wall"):
            known[field] = min(known[field], result[field])


def note(text):
    print(text, file=sys.stderr, flush=True)


def build():
    subprocess.run(["cmake", "--preset", "release"], cwd=ROOT, check=True, stdout=sys.stderr)
    subprocess.run(["cmake", "--build", "--preset", "release", "--target", *TARGETS], cwd=ROOT,
                   check=True, stdout=sys.stderr)


def measure_ratios(bench, plan):
    """Size -> operation -> result, on mixed contexts."""
    results = {size: {} for size in [plan.usual_size, *plan.sizes]}
    for round_number in range(plan.rounds):
        for size, result in results.items():
            note(f"ratios, round {round_number + 1}: {size} contexts")
            # Looking up a few names is over before the clock has moved on.
            for operations in (PASSES, LOOKUPS) if size in plan.sizes else (PASSES,):
                merge(result, bench.measure(operations, "mixed", size, plan.repetitions(size)))
    for size, result in results.items():
        merge(result, bench.measure(["tree"], "mixed", size, 1, stages=True))
        peer = result.get("handwritten", result["create"])
        if peer["count"] != result["create"]["count"]:
            raise RuntimeError(f"at {size} the loaders read different numbers of contexts")
    return results


def measure_memory(bench, plan):
    """Operation -> (peak, file length, seconds), each alone and once in a fresh process."""
    size = plan.sizes[-1]
    results = {}
    for name in MEMORY:
        if name not in bench.known:
            continue
        note(f"memory: {name} at {size} contexts")
        measured = bench.measure([name], "mixed", size, 1)
        results[name] = (*measured["peak-memory"], measured[name]["seconds"])
    return size, results


def groups_of(shape):
    if shape in REFUSED:
        return [(["refuse"], False)]
    groups = [(group, False) for group in GROUPS + EXTRA_GROUPS.get(shape, [])]
    return groups + [(group, True) for group in STAGES]


class Growth:
    """The times of one group of operations on one shape, at sizes that double."""

    def __init__(self, bench, plan, shape, group, stages):
        self.bench, self.plan = bench, plan
        self.shape, self.group, self.stages = shape, group, stages
        self.best = {size: {} for size in plan.growth_sizes}
        self.failure = ""

    def measure(self):
        for _ in range(self.plan.growth_rounds):
            for size in self.plan.growth_sizes:
                try:
                    merge(self.best[size],
                          self.bench.measure(self.group, self.shape, size,
                                             self.plan.growth_repetitions, self.stages,
                                             self.plan.seconds_per_process))
                except subprocess.TimeoutExpired:
                    self.failure = f"more than {self.plan.seconds_per_process} s"
                except RuntimeError as error:
                    self.failure = str(error).splitlines()[0]
                if self.failure:
                    return

    def seconds(self, name):
        results = [self.best[size].get(name) for size in self.plan.growth_sizes]
        return [result and result["seconds"] for result in results]

    def is_missed(self):
        return any(report.is_growth_met(name, self.seconds(name)) is False for name in self.group)

    def rows(self):
        return [(self.shape, name, self.seconds(name), self.failure) for name in self.group]


def measure_growth(bench, plan, shapes):
    """A list of (shape, operation, seconds at each size, failure)."""
    rows = []
    for shape in shapes:
        for group, stages in groups_of(shape):
            growth = Growth(bench, plan, shape, group, stages)
            for attempt in range(plan.growth_attempts):
                note(f"growth: {shape}: {', '.join(group)}{', again' if attempt else ''}")
                growth.measure()
                if growth.failure or not growth.is_missed():
                    break
            rows += growth.rows()
        for size in plan.growth_sizes:
            (bench.folder / f"{shape}-{size}.xml").unlink(missing_ok=True)
    return rows


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--quick", action="store_true", help="small files and few rounds")
    parser.add_argument("--part", action="append", choices=["ratios", "memory", "growth"],
                        help="only this part; may be repeated")
    parser.add_argument("--shape", action="append", choices=SHAPES + REFUSED,
                        help="growth of this shape only; may be repeated")
    parser.add_argument("--folder", help="where the temporary folder goes")
    parser.add_argument("--json", help="also write every number to this file")
    parser.add_argument("--no-build", action="store_true", help="use what is built already")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    parts = arguments.part or ["ratios", "memory", "growth"]
    plan = Plan(arguments.quick)
    if not arguments.no_build:
        build()
    numbers = {}
    note(f"load of the machine before: {os.getloadavg()[0]:.1f}")
    with tempfile.TemporaryDirectory(prefix="dyadctx-bench-", dir=arguments.folder) as folder:
        bench = Bench(folder)
        if "ratios" in parts:
            numbers["ratios"] = measure_ratios(bench, plan)
        if "memory" in parts:
            numbers["memory"] = measure_memory(bench, plan)
        if "growth" in parts:
            rows = measure_growth(bench, plan, arguments.shape or SHAPES + REFUSED)
            numbers["growth"] = {"sizes": plan.growth_sizes, "rows": rows}
    if arguments.json:
        Path(arguments.json).write_text(json.dumps(numbers, indent=1) + "\n", encoding="utf-8")
    return report.print_table(numbers)


if __name__ == "__main__":
    try:
        sys.exit(main())
    except (RuntimeError, subprocess.SubprocessError, OSError) as error:
        sys.exit(f"run.py: {error}" if not isinstance(error, subprocess.CalledProcessError)
                 else "run.py: the build failed")

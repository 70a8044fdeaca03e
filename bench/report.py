# SPDX-License-Identifier: MIT
"""The table that run.py prints: ratios, memory and growth, each with its goal."""

LARGE = (10_000, 100_000, 1_000_000)
# Operation -> count of contexts -> at most this times one pass of Expat.
EXPAT_GOALS = {"create": {40: 1.2, 10_000: 1.0, 100_000: 1.0, 1_000_000: 1.25},
               "stream": dict.fromkeys(LARGE, 1.0), "destroy": dict.fromkeys(LARGE, 0.3)}
# At most this times the loader written by hand.
HANDWRITTEN_GOALS = {10_000: 1.4, 100_000: 1.0, 1_000_000: 1.0}
LOOKUP_GOALS = dict.fromkeys(LARGE, 3.0)
MEMORY_GOAL = 3.0
GROWTH_GOAL = 2.3
# A growth of what takes less than this is that of the clock.
SHORTEST_GROWTH_SECONDS = 100e-6

# The time of these is that of one look-up: how many a run does depends on how fast they are.
PER_CALL = {"map", "map-miss"} | {f"{operation}{view}" for operation in ("lookup", "miss")
                                  for view in ("", "-path", "-database", "-file")}
COLUMNS = 8
VALUES = 5


class Table:
    """Rows of equal length, some of them headings; remembers whether every goal is met."""

    def __init__(self):
        self.rows = []
        self.missed = 0
        self.unmeasured = 0

    def heading(self, *cells):
        self.rows.append(("heading", pad(cells)))

    def row(self, name, cells, goal="", verdict=""):
        self.rows.append(("row", pad([name, *fill(cells), goal, verdict])))
        self.missed += verdict == "missed"

    def text(self):
        widths = [max(len(row[i]) for _, row in self.rows) for i in range(COLUMNS)]
        lines = []
        for kind, row in self.rows:
            if kind == "heading" and lines:
                lines.append("")
            cells = [row[0].ljust(widths[0])]
            cells += [cell.rjust(width) for cell, width in zip(row[1:], widths[1:])]
            lines.append("  ".join(cells).rstrip())
            if kind == "heading":
                lines.append("-" * (sum(widths) + 2 * (len(widths) - 1)))
        return "\n".join(lines)


def pad(cells):
    return list(cells) + [""] * (COLUMNS - len(cells))


def fill(cells):
    return list(cells) + [""] * (VALUES - len(cells))


def verdict_of(values, goals):
    return "met" if all(value <= goal for value, goal in zip(values, goals)) else "missed"


def goal_text(goals):
    """One number where they are all alike, else one for each size."""
    shown = ["-" if goal == float("inf") else f"{goal:g}" for goal in goals]
    return "<= " + " ".join(shown if len(set(shown) - {"-"}) > 1 else sorted(set(shown) - {"-"}))


def ratio_row(table, results, name, base, goals=None, label=None, field="seconds"):
    """One line: operation by operation, at each size; `goals` leaves out sizes without a goal."""
    if any(key not in result for result in results.values() for key in (name, base)):
        return
    values = [result[name][field] / result[base][field] for result in results.values()]
    wanted = [(goals or {}).get(size, float("inf")) for size in results]
    table.row(label or name, [f"{value:.2f}" for value in values],
              goal_text(wanted) if goals else "", verdict_of(values, wanted) if goals else "")


def scanner_row(table, results):
    """Whether the scanner of plain documents has read each file, and not the parser."""
    counts = [result["tree"]["count"] for result in results.values() if "tree" in result]
    table.row("read by the scanner", ["yes" if count else "no" for count in counts], "yes",
              "met" if all(counts) else "missed")


def add_ratios(table, results):
    sizes = [f"{size:,}" for size in results]
    table.heading("times one pass of Expat, mixed contexts", *fill(sizes), "goal")
    for name in ("create", "libxml2", "pugixml", "handwritten", "stream", "destroy",
                 "handwritten-destroy"):
        ratio_row(table, results, name, "expat", EXPAT_GOALS.get(name))
    ratio_row(table, results, "create", "libxml2", None, "create / libxml2")
    ratio_row(table, results, "create", "handwritten", HANDWRITTEN_GOALS, "create / handwritten")
    ratio_row(table, results, "create", "expat", None, "create, by medians", "median")
    for name in ("create", "stream", "destroy"):
        ratio_row(table, results, name, "expat", None, f"{name}, by the wall clock", "wall")
    table.row("expat, ms", [f"{result['expat']['seconds'] * 1e3:.3g}"
                            for result in results.values()])
    scanner_row(table, results)

    large = {size: result for size, result in results.items() if "lookup" in result}
    table.heading("times one look-up in std::unordered_map", *fill([f"{size:,}" for size in large]),
                  "goal")
    for name, base in (("lookup", "map"), ("miss", "map-miss")):
        ratio_row(table, large, name, base, LOOKUP_GOALS)
        for view in ("path", "database", "file"):
            ratio_row(table, large, f"{name}-{view}", base)
    table.row("map, ns", [f"{result['map']['seconds'] * 1e9:.0f}" for result in large.values()])


def add_memory(table, size, results):
    table.heading(f"alone in a process, {size:,} contexts",
                  *fill(["x file", "MiB", "seconds"]), "goal")
    for name, (peak, length, seconds) in results.items():
        multiple = peak / length
        goal = MEMORY_GOAL if name == "create" else None
        table.row(name, [f"{multiple:.2f}", f"{peak / 2**20:.0f}", f"{seconds:.3f}"],
                  f"<= {goal:.1f}" if goal else "", verdict_of([multiple], [goal]) if goal else "")


def growth_cells(seconds):
    """The factor of each doubling; None where a time is missing."""
    return [later / earlier if earlier and later else None
            for earlier, later in zip(seconds, seconds[1:])]


def is_growth_met(name, seconds):
    """None while a time is missing."""
    factors = growth_cells(seconds)
    if None in factors:
        return None
    shortest = 0 if name in PER_CALL else SHORTEST_GROWTH_SECONDS
    return all(factor <= GROWTH_GOAL for factor, later in zip(factors, seconds[1:])
               if later >= shortest)


def add_growth(table, sizes, rows):
    steps = [f"to {size:,}" for size in sizes[1:]] + ["mean", "last, ms"]
    table.heading("growth per doubling", *steps_to_values(steps), "goal")
    for shape, name, seconds, failure in rows:
        met = is_growth_met(name, seconds)
        cells = ["-" if factor is None else f"{factor:.2f}" for factor in growth_cells(seconds)]
        if met is not None:
            cells += [f"{(seconds[-1] / seconds[0]) ** (1 / len(cells)):.2f}",
                      f"{seconds[-1] * 1e3:.3g}"]
        unit = " per call" if name in PER_CALL else ""
        verdict = "unmeasured" if met is None else "met" if met else "missed"
        table.row(f"{shape}: {name}{unit}", steps_to_values(cells), f"<= {GROWTH_GOAL}", verdict)
        if failure:
            table.row(f"    {failure}"[:60], [])
        table.unmeasured += met is None


def steps_to_values(cells):
    """Puts the blanks of a short run before the last two cells."""
    return [""] * (VALUES - len(cells)) + cells


def print_table(numbers):
    table = Table()
    if "ratios" in numbers:
        add_ratios(table, numbers["ratios"])
    if "memory" in numbers:
        add_memory(table, *numbers["memory"])
    if "growth" in numbers:
        add_growth(table, numbers["growth"]["sizes"], numbers["growth"]["rows"])
    print(table.text())
    if table.unmeasured:
        return 2
    return 1 if table.missed else 0

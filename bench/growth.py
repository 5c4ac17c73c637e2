#!/usr/bin/env python3
"""Runs the command on growing trees and settings files, prints how its processor time grows, and writes the table in
docs/performance.md.

    growth.py BUILD_FOLDER [PROJECT]

Without PROJECT the table is only printed.
"""

import json
import math
import os
import pathlib
import resource
import subprocess
import sys
import tempfile

BEGIN, END = "<!-- growth: begin -->\n", "<!-- growth: end -->\n"
GOAL = 1.2
TREES = (1, 10, 100)
EXPORTED_TREES = (1, 10, 64)  # a larger one has more values than the command reads
ENTRIES = tuple(1000 * 2**power for power in range(7))
COPIES = 80  # trees in one, which have more settings than the longest file
ROUNDS = 1
LIMIT = 120  # seconds for one command


class Growth:
    """Times commands in a folder and collects the rows of the table."""

    def __init__(self, build, folder):
        self.command = build / "bin/vxsettings"
        self.bundle = build / "lib/libvx_bench_grown.so"
        self.folder = folder
        self.rows = []

    def run(self, copies, arguments, output=subprocess.DEVNULL):
        """Runs the command once; returns its processor time in seconds."""
        environment = {**os.environ, "VX_BENCH_COPIES": str(copies), "LC_ALL": "C.UTF-8"}
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        done = subprocess.run([self.command, "--bundle", self.bundle, *map(str, arguments)], stdout=output,
                              stderr=subprocess.PIPE, env=environment, cwd=self.folder, timeout=LIMIT, check=False)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        if done.returncode not in (0, 1) or (done.returncode == 1 and done.stderr):
            sys.exit(f"vxsettings {' '.join(map(str, arguments))} failed: {done.stderr.decode()}")
        return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime

    def export(self, copies, form):
        """Returns the tree in a format of the command export."""
        file = self.folder / f"{form}{copies}.json"
        if not file.exists():
            self.run(copies, ["export", "--format", form, "-o", file])
        return file

    def measure(self, name, sizes, arguments, copies=None, before=None):
        """Adds a row: arguments(size) is run in trees of that size, or in `copies` trees."""
        times = []
        for size in sizes:
            rounds = []
            for _ in range(ROUNDS):
                if before:
                    before(size)
                rounds.append(self.run(copies or size, arguments(size)))
            times.append(min(rounds))
        self.rows.append((name, times, exponent(sizes, times)))
        print(f"{name}: {times} {self.rows[-1][2]:.2f}", file=sys.stderr)


def exponent(sizes, times):
    """Returns the slope of log time over log size in the upper half, by least squares."""
    points = [(math.log(size), math.log(max(time, 1e-3))) for size, time in zip(sizes, times)][len(sizes) // 2:]
    x_mean, y_mean = (sum(values) / len(points) for values in zip(*points))
    return sum((x - x_mean) * (y - y_mean) for x, y in points) / sum((x - x_mean)**2 for x, y in points)


def write_settings(file, members, line_break="\n"):
    """Writes a settings file of an old release with these pairs of path and JSON."""
    separator = "," + line_break
    settings = separator.join(f'"{path}": {value}' for path, value in members)
    file.write_text(f'{{"release": "R2020a",{line_break}"settings": {{{line_break}{settings}{line_break}}}}}\n')
    return file


def trees(growth):
    """Measures the commands on growing trees."""
    path = "verdix.copy0.commandwindow.NumericFormat"
    other = growth.folder / "other.json"
    other.write_text('{"root": "verdix", "nodes": [], "releaseChanges": []}')
    commands = {"get": ["get", path], "describe": ["describe", path], "list": ["list", "--hidden"],
                "tree": ["tree", "--hidden"], "search": ["search", "keyword"],
                "search, no match": ["search", "commandwindw.NumericFormt"],
                "lint": ["lint"], "export json": ["export", "--format", "json"],
                "export html": ["export", "--format", "html"],
                "export json-schema": ["export", "--format", "json-schema"]}
    for name, arguments in commands.items():
        growth.measure(name, TREES, lambda size, arguments=arguments: arguments)
    for size in EXPORTED_TREES:
        growth.export(size, "baseline")
    note = f" (× {EXPORTED_TREES[-1]} at most)"
    growth.measure("diff" + note, EXPORTED_TREES, lambda size: ["diff", *[growth.export(size, "baseline")] * 2])
    growth.measure("diff, to another tree" + note, EXPORTED_TREES,
                   lambda size: ["diff", growth.export(size, "baseline"), other])
    growth.measure("history" + note, EXPORTED_TREES,
                   lambda size: ["history", "--baseline", growth.export(size, "baseline")])


def settings(growth):
    """Measures the commands on growing settings files without errors."""
    schema = json.loads(growth.export(COPIES, "json-schema").read_text())
    known = [(path, setting["default"]) for path, setting in schema["properties"]["settings"]["properties"].items()
             if "default" in setting and not setting.get("readOnly")]
    changed = [(path, json.dumps(not value if isinstance(value, bool) else value)) for path, value in known]
    file = growth.folder / "settings.json"
    personal = ["--personal", file]

    def write(size):
        write_settings(file, changed[:size])

    path = changed[0][0]
    commands = {"check": ["check", file], "get": [*personal, "get", path],
                "list --modified": [*personal, "list", "--modified"], "set": [*personal, "set", path, "true"],
                "reset GROUP": [*personal, "reset", "verdix"], "reset --all": [*personal, "reset", "--all"],
                "migrate --write": ["migrate", file, "--write"], "export html": [*personal, "export", "--format", "html"]}
    for name, arguments in commands.items():
        growth.measure(name, ENTRIES, lambda size, arguments=arguments: arguments, COPIES, write)
    return file, [path for path, value in changed]


def errors(growth, file, known):
    """Measures the commands on growing settings files in which every entry is an error, or is moved or removed."""
    kinds = {"unknown": lambda number: (f"verdix.copy0.commandwindow.NumericFormt{number}", "1"),
             "invalid": lambda number: (known[number], '{"a": 1}'),
             "duplicate": lambda number: (known[0], "1"),
             "removed": lambda number: (f"verdix.copy{number % COPIES}.keyboard.suggestions.s{number}", "1")}
    for kind, entry in kinds.items():
        def write(size, entry=entry):
            write_settings(file, map(entry, range(size)))

        growth.measure(f"check, {kind}", ENTRIES, lambda size: ["check", file], COPIES, write)
        growth.measure(f"check --json, {kind}", ENTRIES, lambda size: ["--json", "check", file], COPIES, write)
        if kind == "duplicate":
            continue  # migrate refuses them
        growth.measure(f"migrate, {kind}", ENTRIES, lambda size: ["migrate", file], COPIES, write)
    growth.measure("check --all, invalid, one line", ENTRIES, lambda size: ["check", "--all", file], COPIES,
                   lambda size: write_settings(file, map(kinds["invalid"], range(size)), ""))
    growth.measure("list --modified, invalid", ENTRIES, lambda size: ["--personal", file, "list", "--modified"],
                   COPIES, lambda size: write_settings(file, map(kinds["invalid"], range(size))))


def table(title, sizes, rows):
    """Returns rows as a Markdown table."""
    lines = [f"| {title} | " + " | ".join(sizes) + " | exponent | met |", "|---" * (len(sizes) + 3) + "|"]
    for name, times, slope in rows:
        lines.append(f"| {name} | " + " | ".join(f"{1000 * time:.0f} ms" for time in times)
                     + f" | {slope:.2f} | {'yes' if slope <= GOAL else '**no**'} |")
    return "\n".join(lines) + "\n"


def main():
    """Measures, prints the tables, and writes them in the project's document."""
    build = pathlib.Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory() as folder:
        growth = Growth(build, pathlib.Path(folder))
        trees(growth)
        tree_rows = growth.rows
        growth.rows = []
        errors(growth, *settings(growth))
    entries = [f"{size // 1000} k" for size in ENTRIES]
    text = (table("tree", [f"× {size}" for size in TREES], tree_rows) + "\n"
            + table("entries of a settings file", entries, growth.rows))
    print(text)
    if len(sys.argv) > 2:
        page = pathlib.Path(sys.argv[2]) / "docs/performance.md"
        before, rest = page.read_text().split(BEGIN)
        page.write_text(before + BEGIN + text + END + rest.split(END)[1])


if __name__ == "__main__":
    main()

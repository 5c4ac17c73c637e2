#!/usr/bin/env python3
"""Collects the results of a benchmark run in bench/results.json and writes the table and the picture in
docs/performance.md.

    report.py BUILD_FOLDER PROJECT
"""

import json
import os
import pathlib
import re
import statistics
import subprocess
import sys

PEERS = ("GSettings", "QSettings", "Boost.JSON", "nlohmann JSON", "Boost.PropertyTree")
STEPS = ("process", "linking", "framework", "bundle", "tree", "files", "command line")
BEGIN, END = "<!-- measured: begin -->\n", "<!-- measured: end -->\n"


def medians(file):
    """Returns the median processor times by name, in microseconds."""
    unit = {"ns": 1e-3, "us": 1, "ms": 1e3}
    runs = [run for run in json.loads(file.read_text())["benchmarks"] if run["aggregate_name"] == "median"]
    failed = [run["name"] for run in runs if run.get("error_occurred")]
    if failed:
        sys.exit(f"benchmarks failed: {', '.join(failed)}")
    return {run["run_name"]: run["cpu_time"] * unit[run["time_unit"]] for run in runs}


def first_tree(file):
    """Returns medians over processes: times of the first and later trees in microseconds, page faults of the first."""
    runs = [map(float, line.split()) for line in file.read_text().splitlines()]
    first, warm, faults = map(statistics.median, zip(*runs))
    return {"first": first, "warm": warm, "pageFaults": faults}


def machine(build):
    """Returns processor, cores and compiler of this machine."""
    model = re.search(r"^model name\s*: (.*)$", pathlib.Path("/proc/cpuinfo").read_text(), re.M)
    compiler = re.search(r"^CMAKE_CXX_COMPILER:[^=]*=(.*)$", (build / "CMakeCache.txt").read_text(), re.M)[1]
    version = subprocess.run([compiler, "--version"], capture_output=True, text=True, check=True).stdout
    return {"processor": model[1] if model else os.uname().machine, "cores": os.cpu_count(),
            "compiler": version.splitlines()[0]}


def gather(build, previous):
    """Returns the results of this run. The build time is only measured on request, else the previous one is kept."""
    results = build / "results"
    seconds = results / "build_seconds"
    return {
        "machine": machine(build),
        "microseconds": medians(results / "tree.json"),
        "memory": json.loads((results / "memory.json").read_text()),
        "firstTree": first_tree(results / "first_tree.txt"),
        "start": json.loads((results / "start.json").read_text()),
        "change": json.loads((results / "change.json").read_text()),
        "moduleBytes": (results / "module.so").stat().st_size,
        "buildSeconds": int(seconds.read_text()) if seconds.exists() else previous.get("buildSeconds"),
    }


def row(what, measured, against, value, goal, at_most=True, unit=""):
    """Returns a row of the table; value is compared with goal."""
    met = value <= goal if at_most else value >= goal
    digits = 0 if value >= 20 else 2
    return (f"| {what} | {measured} | {against} | {value:.{digits}f}{unit} | {'≤' if at_most else '≥'} {goal}{unit} "
            f"| {'yes' if met else '**no**'} |")


def table(results):
    """Returns the tables of results as Markdown."""
    micro, memory, start = results["microseconds"], results["memory"], results["start"]
    fastest = min((peer for peer in PEERS if peer != "Boost.JSON"), key=lambda peer: micro[f"peer/{peer}"])
    first = results["firstTree"]
    one = micro["tree/copies/1"]

    def us(value):
        return f"{value:.0f} µs" if value >= 10 else f"{value * 1000:.0f} ns"

    rows = [
        row("tree built", us(micro["tree/built"]), f"limit, {us(micro['tree/limit'])}",
            micro["tree/built"] / micro["tree/limit"], 1.3),
        row("first tree of a process", us(first["first"]), f"later tree, {us(first['warm'])}",
            first["first"] / first["warm"], 1.6),
        row("allocations per setting in the module", f"{memory['module']['allocations']:.2f}",
            f"settings core, {memory['core']['allocations']:.2f}", memory["module"]["allocations"], 4),
        row("tree built", us(micro["tree/built"]), f"{fastest} loads, {us(micro[f'peer/{fastest}'])}",
            micro["tree/built"] / micro[f"peer/{fastest}"], 1),
        row("look-up by path, times as fast", us(micro["tree/find"]), f"GSettings, {us(micro['find/GSettings'])}",
            micro["find/GSettings"] / micro["tree/find"], 20, at_most=False),
    ]
    for copies in (10, 100):
        rows.append(row(f"time of each of {copies} trees in one", us(micro[f"tree/copies/{copies}"] / copies),
                        f"of one, {us(one)}", micro[f"tree/copies/{copies}"] / copies / one, 1.3))
    for copies in ("10", "100"):
        rows.append(row(f"memory per setting, tree × {copies}", f"{memory['kept'][copies]} bytes",
                        f"tree × 1, {memory['kept']['1']} bytes", memory["kept"][copies] / memory["kept"]["1"], 1.3))
    for files, name in (("no settings file", ""), ("settings file", ", file")):
        mine, theirs = start[f"vxsettings get{name}"], start[f"gsettings get{name}"]
        rows.append(row(f"`vxsettings get`, whole process, {files}", us(mine), f"`gsettings get`, {us(theirs)}",
                        mine / theirs, 1))
    change = results["change"]
    rows.append(row("change of a settings file, until its observer is called", us(change["median"]),
                    f"99th percentile, {us(change['percentile99'])}", change["median"] / 1000, 10, unit=" ms"))
    rows.append(row("module, stripped", f"{results['moduleBytes']} bytes", "", results["moduleBytes"] / 1024, 256,
                    unit=" KiB"))
    if results["buildSeconds"]:
        rows.append(row("build from nothing with tests, two cores", f"{results['buildSeconds']} s", "",
                        results["buildSeconds"] / 60, 4, unit=" min"))
    head = ["| what | measured | against | ratio or size | goal | met |", "|---|---|---|---|---|---|"]
    peers = ["", "| loading the plain values with | time | times the tree's |", "|---|---|---|"]
    for peer in sorted(PEERS, key=lambda peer: micro[f"peer/{peer}"]):
        time = micro[f"peer/{peer}"]
        peers.append(f"| {peer} | {us(time)} | {time / micro['tree/built']:.1f} |")
    several = ["", "| paths | one `vxsettings get` | as many `gsettings get` |", "|---|---|---|"]
    for paths, name in ((1, ""), (10, " 10"), (100, " 100")):
        several.append(f"| {paths} | {us(start[f'vxsettings get{name}'])} | {us(paths * start['gsettings get'])} |")
    where = results["machine"]
    introduction = [f"Measured on {where['processor']}, {where['cores']} cores, with {where['compiler']}.", ""]
    module, core = memory["module"], memory["core"]
    bytes_note = ["", f"Of the bytes allocated per setting, {module['bytes']} are the module's and {core['bytes']} the "
                      "settings core's."]
    return "\n".join(introduction + head + rows + several + bytes_note + peers) + "\n"


def step_costs(start):
    """Returns the cost of each step in microseconds; the rest of `vxsettings get` is the step "command line"."""
    costs, before = [], 0
    for name, total in [(step, start[step]) for step in STEPS[:-1]] + [(STEPS[-1], start["vxsettings get"])]:
        costs.append((name, max(0, total - before)))
        before = max(before, total)
    return costs


def picture(start):
    """Returns an SVG bar chart of the steps of one `vxsettings get`, with `gsettings get` for comparison."""
    costs = step_costs(start)
    scale = 520 / max(start["vxsettings get"], start["gsettings get"])
    rows, x = [], 0.0

    def bar(y, left, width, shade, label, value):
        return (f'<text x="100" y="{y + 13}" text-anchor="end">{label}</text>'
                f'<rect x="{110 + left:.1f}" y="{y}" width="{max(width, 1):.1f}" height="17" fill="{shade}"/>'
                f'<text x="{116 + left + width:.1f}" y="{y + 13}">{value:.0f} µs</text>')

    for index, (name, cost) in enumerate(costs):
        rows.append(bar(10 + 24 * index, x, cost * scale, "#3b6ea5", name, cost))
        x += cost * scale
    y = 16 + 24 * len(costs)
    rows.append(bar(y, 0, start["vxsettings get"] * scale, "#1d3c5e", "vxsettings", start["vxsettings get"]))
    rows.append(bar(y + 24, 0, start["gsettings get"] * scale, "#8a8a8a", "gsettings", start["gsettings get"]))
    height = y + 54
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 720 {height}" font-family="sans-serif" '
            f'font-size="13">\n<rect width="720" height="{height}" fill="white"/>\n' + "\n".join(rows) + "\n</svg>\n")


def main():
    """Reads the results in the build folder and updates those in the project."""
    build, project = map(pathlib.Path, sys.argv[1:])
    record = project / "bench/results.json"
    previous = json.loads(record.read_text()) if record.exists() else {}
    results = gather(build, previous)
    record.write_text(json.dumps(results, indent=2) + "\n")
    page = project / "docs/performance.md"
    before, rest = page.read_text().split(BEGIN)
    after = rest.split(END)[1]
    page.write_text(before + BEGIN + table(results) + END + after)
    (project / "docs/start.svg").write_text(picture(results["start"]))
    print(table(results))


if __name__ == "__main__":
    main()

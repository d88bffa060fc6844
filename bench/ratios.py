#!/usr/bin/env python3
"""Runs the benchmarks of functions and compares them with their alternatives.

Absolute times depend on the machine and its load. The ratio of a benchmark to its alternative,
measured in the same run, hardly does. Each limit is the maximum of this ratio. The repetitions of all
benchmarks are interleaved; the result is the median of the ratios of the repetitions.

    ratios.py FOLDER-OF-BENCHMARK-PROGRAMS [REPETITIONS]

Exits with status 1 if a limit is exceeded or a benchmark is missing.
"""

import json
import math
import pathlib
import statistics
import subprocess
import sys

# program: (kind of time, [(name, alternative, limit)])
LIMITS = {
    "document_bench": ("cpu_time", [
        ("decodeDocument", "parseWithSimdjson", 3.0),
        ("decodeDocument", "parseWithNlohmann", 0.1),
        ("encodeDocument", "dumpWithNlohmann", 0.2),
        ("mergeFolders", "copyFolders", 10.0),
    ]),
    # Time must grow linearly with the items. Both documents exceed the processor's smaller caches.
    "menu_bench": ("cpu_time", [("menuModelOf20000Items", "menuModelOf10000Items", 2.6)]),
    "process_bench": ("real_time", [
        ("command", "bareCommand", 1.25),
        ("thousandBackgroundCommands", "bareThousandCommands", 1.5),
    ]),
}

# Absolute limits of the median, in the unit of the benchmark, for what a user would notice.
CEILINGS = {"menuModelOf10000Items": 5000.0}


def measure(program, time_kind, names, repetitions):
    """The times of each benchmark, by name, in order of repetition."""
    report = subprocess.run(
        [
            program,
            f"--benchmark_filter=^({'|'.join(sorted(names))})(/|$)",
            f"--benchmark_repetitions={repetitions}",
            "--benchmark_enable_random_interleaving=true",
            "--benchmark_min_time=0.2",
            "--benchmark_format=json",
        ],
        check=True,
        stdout=subprocess.PIPE,
    ).stdout
    times = {}
    for run in json.loads(report)["benchmarks"]:
        if run["run_type"] == "iteration":
            name = run["name"].split("/")[0]
            repetition = (run["repetition_index"], run[time_kind], run["time_unit"])
            times.setdefault(name, []).append(repetition)
    return {name: sorted(repetitions) for name, repetitions in times.items()}


def compare(times, rows):
    """Prints the ratio of each row; true if none exceeds its limit."""
    kept = True
    for name, alternative, limit in rows:
        if name not in times or alternative not in times:
            print(f"{name} / {alternative}: not measured")
            kept = False
            continue
        ratio = statistics.median(
            mine / other for (_, mine, _), (_, other, _) in zip(times[name], times[alternative])
        )
        verdict = "ok" if ratio <= limit else "TOO SLOW"
        print(f"{name} / {alternative}: {ratio:.3f} (limit {limit}) {verdict}")
        kept = kept and ratio <= limit
    return kept


def main():
    folder = pathlib.Path(sys.argv[1])
    repetitions = int(sys.argv[2]) if len(sys.argv) > 2 else 9
    kept = True
    for program, (time_kind, rows) in LIMITS.items():
        names = {name for row in rows for name in row[:2]}
        times = measure(folder / program, time_kind, names, repetitions)
        for name in sorted(times):
            median = statistics.median(time for _, time, _ in times[name])
            slow = median > CEILINGS.get(name, math.inf)
            print(f"{name:24} {median:14.1f} {times[name][0][2]}{' TOO SLOW' if slow else ''}")
            kept = kept and not slow
        kept = compare(times, rows) and kept
        print()
    return 0 if kept else 1


if __name__ == "__main__":
    sys.exit(main())

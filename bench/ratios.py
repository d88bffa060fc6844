#!/usr/bin/env python3
"""Runs the benchmarks and compares them with their alternatives.

Absolute times differ from machine to machine and from hour to hour; how often a benchmark's time
goes into that of its alternative, measured in the same run, hardly does. Each limit is the most
that benchmark / alternative may be. The repetitions of all benchmarks are interleaved, and the
median of the repetitions' ratios counts.

    ratios.py BENCHMARK-PROGRAM [REPETITIONS]

Exits with 1 when a limit is exceeded or a benchmark is missing.
"""

import json
import statistics
import subprocess
import sys

# name, alternative, limit
LIMITS = [
    ("decodeDocument", "parseWithSimdjson", 3.0),
    ("decodeDocument", "parseWithNlohmann", 0.2),
    ("encodeDocument", "dumpWithNlohmann", 0.2),
]


def measure(program, names, repetitions):
    """The processor times of each benchmark, by name, in order of repetition."""
    report = subprocess.run(
        [
            program,
            f"--benchmark_filter=^({'|'.join(sorted(names))})$",
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
            repetition = (run["repetition_index"], run["cpu_time"], run["time_unit"])
            times.setdefault(run["name"], []).append(repetition)
    return {name: sorted(repetitions) for name, repetitions in times.items()}


def main():
    program = sys.argv[1]
    repetitions = int(sys.argv[2]) if len(sys.argv) > 2 else 9
    names = {name for row in LIMITS for name in row[:2]}
    times = measure(program, names, repetitions)

    for name in sorted(times):
        median = statistics.median(time for _, time, _ in times[name])
        print(f"{name:24} {median:12.1f} {times[name][0][2]}")
    print()

    failed = False
    for name, alternative, limit in LIMITS:
        if name not in times or alternative not in times:
            print(f"{name} / {alternative}: not measured")
            failed = True
            continue
        ratio = statistics.median(
            mine / other for (_, mine, _), (_, other, _) in zip(times[name], times[alternative])
        )
        verdict = "ok" if ratio <= limit else "TOO SLOW"
        print(f"{name} / {alternative}: {ratio:.3f} (limit {limit}) {verdict}")
        failed = failed or ratio > limit
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())

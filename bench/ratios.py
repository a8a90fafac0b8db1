#!/usr/bin/env python3
"""Reads qz_bench's JSON output (--benchmark_format=json) on stdin and prints, for each measured
operation (the board's Highlight and Isolate, the board compare's merge), the ratio to its floor at
each size and the growth of the per-item cost from the smallest size to the largest."""
import json
import sys

# With --benchmark_repetitions the medians are taken, otherwise the single runs.
benchmarks = json.load(sys.stdin)["benchmarks"]
medians = [b for b in benchmarks if b.get("aggregate_name") == "median"]
runs = {}
for b in medians or [b for b in benchmarks if b.get("run_type", "iteration") == "iteration"]:
    name, size = b["run_name"].split("/")[:2]
    runs.setdefault(name, {})[int(size)] = b["real_time"]

# Each floor with the operations measured against it.
FLOORS = {
    "BM_BoardFloor": ("BM_BoardHighlight", "BM_BoardIsolate"),
    "BM_CompareMergeFloor": ("BM_CompareMerge",),
}

for floor_name, names in FLOORS.items():
    floor = runs.get(floor_name, {})
    if len(floor) > 1:
        lo, hi = min(floor), max(floor)
        print(f"{floor_name} per-item cost at {hi} / at {lo}: {(floor[hi] / hi) / (floor[lo] / lo):.2f}")
    for name in names:
        times = runs.get(name, {})
        sizes = sorted(set(times) & set(floor))
        if not sizes:
            continue
        for n in sizes:
            print(f"{name} n={n}: {times[n]:.3f} ms, floor {floor[n]:.3f} ms, ratio {times[n] / floor[n]:.2f}")
        lo, hi = sizes[0], sizes[-1]
        growth = (times[hi] / hi) / (times[lo] / lo)
        print(f"{name} per-item cost at {hi} / at {lo}: {growth:.2f}")

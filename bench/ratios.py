#!/usr/bin/env python3
"""Reads qz_bench's JSON output (--benchmark_format=json) on stdin and prints, for each measured
operation (the board's Highlight and Isolate, the board compare's merge), the ratio to its floor at
each size and the growth of the per-item cost from the smallest size to the largest; and the
kernel's lock and message against their plain equivalents."""
import json
import sys

# With --benchmark_repetitions the medians are taken, otherwise the single runs.
benchmarks = json.load(sys.stdin)["benchmarks"]
medians = [b for b in benchmarks if b.get("aggregate_name") == "median"]
runs = {}
single = {}
for b in medians or [b for b in benchmarks if b.get("run_type", "iteration") == "iteration"]:
    if b.get("error_occurred"):
        continue
    parts = b["run_name"].split("/")
    if len(parts) == 1:
        single[parts[0]] = b["real_time"]
    else:
        runs.setdefault(parts[0], {})[int(parts[1])] = b["real_time"]

# Operations measured against a plain equivalent in the same run.
PAIRS = (
    ("BM_ReadWriteLockWrite", "BM_SharedMutexWrite"),
    ("BM_OneThread_EventPostAndDeliver", "BM_OneThread_MutexDequePushPop"),
    ("BM_Threads_EventPostAndDeliver", "BM_Threads_MutexDequePushPop"),
)
for name, floor in PAIRS:
    if name in single and floor in single:
        print(f"{name}: {single[name]:.1f} ns, {floor} {single[floor]:.1f} ns, "
              f"ratio {single[name] / single[floor]:.2f}")

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

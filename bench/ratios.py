#!/usr/bin/env python3
"""Ratios of one zeda_bench run, for the README's benchmark table.

Reads the JSON a run writes with --benchmark_out=<file> --benchmark_out_format=json
and prints, per benchmark measured at the three sizes, the cost per disk of
100,000 disks in one NAS over that of 1,000 disks in NAS devices of 500
(CPU time, from items_per_second), and the counters of the ratio benchmarks.
A run with --benchmark_repetitions=N gives each figure as the median of its
repetitions, which a noisy machine needs.

Usage: bench/ratios.py run.json
"""
import json
import re
import sys

SMALL = "disks:1000/perNas:500"
LARGE = "disks:100000/perNas:100000"


def main(path):
    with open(path) as f:
        benchmarks = json.load(f)["benchmarks"]
    medians = [b for b in benchmarks
               if b.get("run_type") == "aggregate" and b.get("aggregate_name") == "median"]
    if medians:
        runs = [dict(b, name=b["run_name"]) for b in medians]
    else:
        runs = [b for b in benchmarks if b.get("run_type", "iteration") == "iteration"]
    per_disk = {}  # (family, extra arguments) -> {size: items per second}
    for b in runs:
        name = b["name"]
        for size in (SMALL, LARGE):
            if size in name and "items_per_second" in b:
                family, rest = name.split("/" + size, 1)
                extra = re.sub(r"/min_time:[0-9.]+", "", rest)
                per_disk.setdefault((family, extra), {})[size] = b["items_per_second"]
    print("| Benchmark | cost per disk, 100,000 in one NAS / 1,000 in NAS devices of 500 |")
    print("|---|---|")
    for (family, extra), sizes in sorted(per_disk.items()):
        if SMALL in sizes and LARGE in sizes:
            print(f"| `{family}{extra}` | {sizes[SMALL] / sizes[LARGE]:.2f} |")
    print()
    for b in sorted(runs, key=lambda b: b["name"]):
        counters = {k: v for k, v in b.items()
                    if k.endswith("_to_raw") or k in ("ratio", "unchanged_ns", "reparse_ns")
                    or k.endswith("_per_disk")}
        if counters:
            shown = ", ".join(f"{k}={v:.4g}" for k, v in counters.items())
            print(f"{b['name']}: {shown}")
        elif "Inventory" in b["name"] and "items_per_second" in b:
            print(f"{b['name']}: {1e9 / b['items_per_second']:.4g} ns CPU per disk")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])

#!/usr/bin/env python3
"""Ratios of one zeda_bench run, for the README's benchmark table.

Reads the JSON a run writes with --benchmark_out=<file> --benchmark_out_format=json
and prints, per benchmark measured at the three sizes, the cost per disk of
100,000 disks in one NAS over that of 1,000 disks in NAS devices of 500
(CPU time, from items_per_second), the counters of the ratio benchmarks, and
for the BM_Served benchmarks the cost of a request in configuration mode over
that in file mode (CPU time per iteration; wall-clock time in brackets; for
the alternating BM_Served...Paired benchmarks the median ratio of their
pairs), and of a getInstance at 1,000,000 disks over one at 1,000 in each
mode.
A run with --benchmark_repetitions=N gives each figure as the median of its
repetitions, which a noisy machine needs.

Usage: bench/ratios.py run.json
"""
import json
import re
import sys

SMALL = "disks:1000/perNas:500"
MILLION = "disks:1000000/perNas:1000000"
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
    served_ratios(runs)


def nanoseconds(b, key):
    """A time of a benchmark in nanoseconds, whatever unit it was printed in."""
    scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[b.get("time_unit", "ns")]
    return b[key] * scale


def readable(ns):
    """A CPU time in the unit that keeps it between 1 and 1000."""
    for unit, scale in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if ns >= scale:
            return f"{ns / scale:.4g} {unit}"
    return f"{ns:.4g} ns"


def served_ratios(runs):
    """Configuration mode over file mode, for every BM_Served pair of one run."""
    by_name = {re.sub(r"/min_time:[0-9.]+", "", b["name"]): b for b in runs}
    pairs = []
    for name, config in sorted(by_name.items()):
        if name.startswith("BM_Served") and "/config/" in name:
            file = by_name.get(name.replace("/config/", "/file/", 1))
            if file is not None:
                pairs.append((name.replace("/config/", "/", 1), file, config))
    paired = [(name, b) for name, b in sorted(by_name.items())
              if name.startswith("BM_Served") and "config_to_file" in b]
    if paired:
        print()
        print("| Alternating benchmark | file mode, CPU per request | configuration mode "
              "| configuration / file, median of the pairs |")
        print("|---|---|---|---|")
        for name, b in paired:
            name = re.sub(r"/iterations:[0-9]+", "", name)
            print(f"| `{name}` | {readable(b['file_us'] * 1e3)} | {readable(b['config_us'] * 1e3)} "
                  f"| {b['config_to_file']:.3f} |")
    if not pairs:
        return
    print()
    print("| Benchmark | file mode, CPU | configuration mode, CPU | configuration / file, CPU (wall clock) |")
    print("|---|---|---|---|")
    for name, file, config in pairs:
        cpu = config["cpu_time"] / file["cpu_time"]
        real = config["real_time"] / file["real_time"]
        print(f"| `{name}` | {readable(nanoseconds(file, 'cpu_time'))} "
              f"| {readable(nanoseconds(config, 'cpu_time'))} | {cpu:.3f} ({real:.3f}) |")
    print()
    for mode in ("file", "config"):
        small = by_name.get(f"BM_ServedGetExtent/{mode}/{SMALL}")
        large = by_name.get(f"BM_ServedGetExtent/{mode}/{MILLION}")
        if small is not None and large is not None:
            cpu = nanoseconds(large, "cpu_time") / nanoseconds(small, "cpu_time")
            real = nanoseconds(large, "real_time") / nanoseconds(small, "real_time")
            print(f"getInstance of one extent, {mode} mode, 1,000,000 disks / 1,000 disks: "
                  f"{cpu:.3f} ({real:.3f})")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])

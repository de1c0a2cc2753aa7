#!/bin/sh
# Instructions of one getInstance of one extent, counted by callgrind from the
# benchmark's timed call down (TimedGetInstance of served_mode_bench.cpp; the
# module, the library and the in-process object manager included), per
# request, for each size and mode of BM_ServedGetExtent, over a fixed number
# of requests (ZEDA_BENCH_REQUESTS, default 200). Each is its own callgrind
# run: a run writes the served inventory first, which for 1,000,000 disks
# takes minutes under callgrind.
#
# Usage: bench/callgrind_served_get_extent.sh [path of zeda_bench] [modes] [sizes]
#   modes: "file config" by default; sizes: "1000/perNas:500 1000000/perNas:1000000"
set -eu
bench=${1:-build/bin/zeda_bench}
modes=${2:-file config}
sizes=${3:-1000/perNas:500 1000000/perNas:1000000}
requests=${ZEDA_BENCH_REQUESTS:-200}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for size in $sizes; do
  for mode in $modes; do
    name="BM_ServedGetExtent/$mode/disks:$size"
    ZEDA_BENCH_REQUESTS=$requests valgrind --tool=callgrind --callgrind-out-file="$work/out" \
      --toggle-collect='*TimedGetInstance*' \
      "$bench" --benchmark_filter="^$name/" >"$work/log" 2>&1
    total=$(sed -n 's/.*Collected : *\([0-9]*\).*/\1/p' "$work/log")
    if [ -z "$total" ] || [ "$total" -eq 0 ]; then
      echo "callgrind counted no request of $name; log in $work/log" >&2
      trap - EXIT
      exit 1
    fi
    awk -v n="$name" -v t="$total" -v i="$requests" 'BEGIN {
      printf "%s: %d requests, %.0f instructions per request\n", n, i, t / i
    }'
  done
done

#!/bin/sh
# Instructions of the module's disk drive enumeration against those of the raw
# C provider (raw_drive_provider.c), counted by callgrind from each provider's
# entry point down, the object manager's broker functions included, while
# BM_DiskDriveModuleToRaw runs both on the same 10,000 disks the same number
# of times. Collection is on only inside the two entry points, so the raw
# provider's count is the total minus the module's.
#
# Usage: bench/callgrind_module_to_raw.sh [path of zeda_bench]
set -eu
bench=${1:-build/bin/zeda_bench}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

valgrind --tool=callgrind --callgrind-out-file="$work/out" \
  --toggle-collect='CmpiInstanceMI::driveEnumInstances*' \
  --toggle-collect=rawDriveEnumInstances \
  "$bench" --benchmark_filter='^BM_DiskDriveModuleToRaw' >"$work/log" 2>&1

total=$(sed -n 's/.*Collected : *\([0-9]*\).*/\1/p' "$work/log")
module=$(callgrind_annotate --inclusive=yes --auto=no "$work/out" 2>/dev/null |
  awk '/CmpiInstanceMI::driveEnumInstances\(/ { gsub(",", "", $1); if ($1 + 0 > max) max = $1 + 0 }
       END { print max + 0 }')
if [ -z "$total" ] || [ "$module" -eq 0 ]; then
  echo "callgrind found no enumeration; log in $work/log" >&2
  trap - EXIT
  exit 1
fi
raw=$((total - module))
awk -v m="$module" -v r="$raw" 'BEGIN {
  printf "module instructions: %d\nraw provider instructions: %d\nmodule/raw: %.3f\n", m, r, m / r
}'

#!/bin/bash
# Boost.Beast (redfish_static_server) against cpp-httplib (httplib_static_server)
# on the same static answer over HTTPS on loopback (docs/REDFISH.md, "Why
# Boost.Beast"):
#
#   redfish/bench/compare_http_libraries.sh BUILD_DIR [PAIRS]
#
# BUILD_DIR holds both servers (configured with -DZEDA_BUILD_BENCH=ON and
# libcpp-httplib-dev installed). Throughput: wrk -t2 -c8 -d8s --latency on a
# 625-byte and a 670 KB body, the two servers taking turns (Beast, httplib,
# Beast, ... PAIRS pairs, default 3; httplib also with TCP_NODELAY left off,
# the library's default), each server's peak RSS (VmHWM) after its runs of a
# body. Then slow_clients.py on each, in turn, with 0 (the baseline), 8, 32
# and 64 silent or slow TLS connections held open. Load averages are printed as
# the runs go, since the machine is shared.
set -euo pipefail

BUILD="$(cd "${1:?usage: compare_http_libraries.sh BUILD_DIR [PAIRS]}" && pwd)"
PAIRS="${2:-3}"
HERE="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
BEAST="$BUILD/bin/redfish_static_server"
HTTPLIB="$BUILD/bin/httplib_static_server"
for program in "$BEAST" "$HTTPLIB"; do
  [ -x "$program" ] || { echo "missing $program" >&2; exit 1; }
done
for program in wrk curl; do
  command -v "$program" >/dev/null || { echo "missing $program" >&2; exit 1; }
done

WORK="$(mktemp -d)"
PIDS=()
cleanup() {
  local pid
  for pid in "${PIDS[@]}"; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$WORK"
}
trap cleanup EXIT

# A Drive-sized body (625 bytes) and a Storage with 10,000 Drive links.
python3 - "$WORK" <<'EOF'
import json, sys
drive = {"@odata.id": "/redfish/v1/Systems/nas1/Storage/1/Drives/disk00001",
         "@odata.type": "#Drive.v1_18_0.Drive", "Id": "disk00001", "Name": "disk00001"}
text = json.dumps(drive)
drive["Description"] = "x" * (625 - len(text) - len(', "Description": ""'))
open(sys.argv[1] + "/small.json", "w").write(json.dumps(drive))
links = [{"@odata.id": "/redfish/v1/Systems/nas1/Storage/1/Drives/disk%05d" % i}
         for i in range(10000)]
storage = {"@odata.id": "/redfish/v1/Systems/nas1/Storage/1",
           "@odata.type": "#Storage.v1_15_0.Storage", "Id": "1", "Drives": links}
open(sys.argv[1] + "/large.json", "w").write(json.dumps(storage))
EOF

BEAST_PORT=18461
HTTPLIB_PORT=18462
NAGLE_PORT=18463

load() { echo "  load: $(cut -d' ' -f1-3 /proc/loadavg)"; }

# start NAME PROGRAM PORT BODY [OPTIONS...]: starts a server, waits until it answers.
start() {
  local name="$1" program="$2" port="$3" body="$4" i
  shift 4
  "$program" --port "$port" --file "$body" --program-data "$WORK/pd" "$@" 2>"$WORK/$name.log" &
  PIDS+=($!)
  eval "${name}_PID=$!"
  for i in $(seq 100); do
    curl -sk -o /dev/null "https://127.0.0.1:$port/redfish/v1" && return 0
    sleep 0.1
  done
  echo "$name did not start" >&2
  cat "$WORK/$name.log" >&2
  exit 1
}

stop() {
  local pid="$1"
  kill "$pid"
  wait "$pid" 2>/dev/null || true
}

peak() { awk '/VmHWM/ {printf "%.1f MB", $2 / 1024}' "/proc/$1/status"; }

# One wrk run: requests/s, p50, p99.
measure() {
  wrk -t2 -c8 -d8s --latency "https://127.0.0.1:$1/redfish/v1" |
    awk '/^ +50%/ {p50 = $2} /^ +99%/ {p99 = $2} /^Requests\/sec/ {rps = $2}
         /Non-2xx|Socket errors/ {errors = errors " " $0}
         END {printf "%10s req/s  p50 %9s  p99 %9s%s\n", rps, p50, p99, errors}'
}

echo "== throughput (wrk -t2 -c8 -d8s --latency, $PAIRS pairs)"
for size in small large; do
  echo "-- body $size.json ($(stat -c %s "$WORK/$size.json") bytes)"
  load
  start beast "$BEAST" "$BEAST_PORT" "$WORK/$size.json"
  start httplib "$HTTPLIB" "$HTTPLIB_PORT" "$WORK/$size.json"
  start nagle "$HTTPLIB" "$NAGLE_PORT" "$WORK/$size.json" --tcp-nodelay off
  for pair in $(seq "$PAIRS"); do
    echo "  beast                 $(measure "$BEAST_PORT")"
    echo "  httplib               $(measure "$HTTPLIB_PORT")"
    echo "  httplib (Nagle left)  $(measure "$NAGLE_PORT")"
  done
  load
  echo "  peak RSS: beast $(peak "$beast_PID"), httplib $(peak "$httplib_PID")," \
    "httplib (Nagle left) $(peak "$nagle_PID")"
  echo "  threads: beast $(ls "/proc/$beast_PID/task" | wc -l), httplib $(ls "/proc/$httplib_PID/task" | wc -l)"
  stop "$beast_PID"
  stop "$httplib_PID"
  stop "$nagle_PID"
done

echo "== a fresh curl GET (10 in a row, 5 s each at most) beside hostile TLS connections"
for count in 0 8 32 64; do
  modes="silent slow"
  [ "$count" -eq 0 ] && modes=silent  # the baseline: nothing held open
  for mode in $modes; do
    load
    for name in beast httplib; do
      if [ "$name" = beast ]; then program="$BEAST" port="$BEAST_PORT"; else program="$HTTPLIB" port="$HTTPLIB_PORT"; fi
      start "$name" "$program" "$port" "$WORK/small.json"
      printf '  %-7s %s\n' "$name" \
        "$(python3 "$HERE/slow_clients.py" --port "$port" --connections "$count" --mode "$mode")"
      stop "$(eval echo "\$${name}_PID")"
    done
  done
done
load

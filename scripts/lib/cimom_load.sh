# shellcheck shell=bash
# The load and memory-check stages of the object manager tests (sourced after
# scripts/lib/common.sh and scripts/lib/cimoms.sh; cimom_build_all must have
# run, so that CIMOM_SFCB, CIMOM_PEGASUS, CIMOM_SCHEMA and CIMOM_PYWBEM are
# set).
#
#   cimom_load_run OM RUN_DIR INSTALL_DIR [SECONDS]
#       OM sfcb or pegasus; INSTALL_DIR a prefix the module was installed
#       into (cimom_install_module BUILD INSTALL_DIR). Deploys the module
#       into a fresh state of the object manager below RUN_DIR/load-OM, with
#       a generated inventory (ZEDA_LOAD_NAS NAS devices of
#       ZEDA_LOAD_DISKS disks, default 2 x 150, in RAID groups), and runs
#       scripts/lib/cimom_load.py: ZEDA_LOAD_CLIENTS pywbem clients (default
#       8) for SECONDS (default ZEDA_LOAD_SECONDS, else 60) while the
#       inventory file is replaced twice a second by two versions that
#       differ (scripts/lib/cimom_load_inventory.py). The provider keeps each
#       replaced inventory for PELKA_SNAPSHOT_GRACE_SECONDS (300 by default),
#       so its memory grows during the run; ZEDA_LOAD_GRACE_SECONDS sets that
#       grace period in the object manager's environment.
#
#   cimom_memcheck_run OM RUN_DIR INSTALL_DIR
#       The same kinds of requests, each once, on examples/inventory.json,
#       with the provider process under valgrind memcheck: sfcb runs whole
#       under valgrind (it forks its provider processes without exec);
#       OpenPegasus runs natively and only its provider agent cimprovagt
#       starts under valgrind (a wrapper in the state's own bin directory).
#       scripts/lib/cimom_valgrind.py then reads the log of each process that
#       had the module mapped.
#
# Each prints the stage's one-line summary (and what went wrong before it)
# and returns non-zero on failure. The object manager is stopped whatever
# happens. Both run in a subshell of their own: nothing they set stays.

CIMOM_LOAD_LIB="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# Debian's Python: pywbem needs its python3-ply, python3-yaml ... packages.
CIMOM_LOAD_PYTHON=/usr/bin/python3

cimom_load_check_args() {
  local om="$1" run="$2" prefix="$3"
  cimom_check_name "$om"
  [ -n "$run" ] || zeda_die "no run directory given"
  [ -n "${CIMOM_PYWBEM:-}" ] && [ -n "${CIMOM_SFCB:-}" ] && [ -n "${CIMOM_PEGASUS:-}" ] \
    || zeda_die "run cimom_build_all before the load and memory-check stages"
  cimom_use_install "$prefix"
}

# cimom_load_provider_pids OM STATE: cimom_provider_pids, and for OpenPegasus
# also its provider agents, which leave the server's session (cimprovagt
# starts a session of its own, its parent is 1): the processes whose
# environment holds PEGASUS_HOME=STATE/home and that have the module mapped.
cimom_load_provider_pids() {
  local om="$1" state="$2" p
  {
    cimom_provider_pids "$om" "$state"
    if [ "$om" = pegasus ]; then
      for p in $(cimom_load_agent_pids "$state"); do
        grep -qs 'libZEDA_DiskDriveLite\.so' "/proc/$p/maps" && echo "$p"
      done
    fi
  } | sort -un
}

# cimom_load_agent_pids STATE: OpenPegasus provider agents of that state.
cimom_load_agent_pids() {
  local home="$1/home" p
  for p in /proc/[0-9]*; do
    grep -qszxF "PEGASUS_HOME=$home" "$p/environ" || continue
    grep -qszF cimprovagt "$p/cmdline" && echo "${p#/proc/}"
  done
  return 0
}

# cimom_load_stop OM STATE: cimom_stop, then, for OpenPegasus, waits up to
# 120 s for the provider agents of that state to end (under valgrind they
# take a while) and kills those left.
cimom_load_stop() {
  local om="$1" state="$2" i left
  cimom_stop "$om" "$state"
  [ "$om" = pegasus ] || return 0
  for i in $(seq 1 240); do
    left=$(cimom_load_agent_pids "$state")
    [ -n "$left" ] || return 0
    sleep 0.5
  done
  kill -KILL $left 2>/dev/null || true
}

# cimom_load_stop_checked OM STATE: cimom_load_stop, run so that a failure
# inside it (it runs without errexit here) is reported and leaves the stage's
# own result alone.
cimom_load_stop_checked() {
  cimom_load_stop "$1" "$2" || echo "warning: stopping $1 of $2 returned $?" >&2
}

# The command cimom_load.py runs to list the provider processes.
cimom_load_pids_cmd() {
  printf 'source %q && source %q && source %q && cimom_load_provider_pids %q %q' \
    "$ZEDA_ROOT/scripts/lib/common.sh" "$ZEDA_ROOT/scripts/lib/cimoms.sh" \
    "$CIMOM_LOAD_LIB/cimom_load.sh" "$1" "$2"
}

# Every cimserver of our build shares one local socket and start files
# (/var/tmp/cimxmlzeda.socket): waits, up to ZEDA_PEGASUS_WAIT_SECONDS
# (default 1800), until no cimserver of CIMOM_PEGASUS runs (another test run's).
cimom_load_pegasus_running() {
  local p
  for p in /proc/[0-9]*; do
    [ "$(readlink "$p/exe" 2>/dev/null)" = "$CIMOM_PEGASUS/bin/cimserver" ] && return 0
  done
  return 1
}

cimom_load_wait_pegasus_free() {
  local limit="${ZEDA_PEGASUS_WAIT_SECONDS:-1800}" start=$SECONDS
  cimom_load_pegasus_running || return 0
  cimom_log "another cimserver of $CIMOM_PEGASUS runs; waiting up to $limit s"
  while cimom_load_pegasus_running; do
    [ $((SECONDS - start)) -lt "$limit" ] || zeda_die "another cimserver of $CIMOM_PEGASUS still runs after $limit s"
    sleep 5
  done
}

# cimom_load_deploy OM STATE ENVFILE: prepares the state and registers the
# module; OpenPegasus, which cimom_prepare leaves running without our
# environment, is stopped, so that the caller starts it with ENVFILE.
cimom_load_deploy() {
  local om="$1" state="$2"
  [ "$om" = pegasus ] && cimom_load_wait_pegasus_free
  cimom_prepare "$om" "$state"
  [ "$om" = pegasus ] && cimom_stop pegasus "$state"
  return 0
}

cimom_load_run() (
  set -euo pipefail
  local om="$1" run="$2" prefix="$3" seconds="${4:-${ZEDA_LOAD_SECONDS:-60}}"
  cimom_load_check_args "$om" "$run" "$prefix"
  [[ "$seconds" =~ ^[0-9]+([.][0-9]+)?$ ]] && [ "$seconds" != 0 ] \
    || zeda_die "load seconds must be a positive number, not '$seconds'"
  local nas="${ZEDA_LOAD_NAS:-2}" disks="${ZEDA_LOAD_DISKS:-150}" clients="${ZEDA_LOAD_CLIENTS:-8}"
  mkdir -p "$run"
  run=$(cd "$run" && pwd)
  local state="$run/load-$om" data="$run/load-$om-data"
  rm -rf "$data"
  mkdir -p "$data/om" "$data/zeda"
  "$CIMOM_LOAD_PYTHON" "$ZEDA_ROOT/scripts/lib/make_inventory.py" "$nas" "$disks" "$data/inventory-a.json"
  "$CIMOM_LOAD_PYTHON" "$CIMOM_LOAD_LIB/cimom_load_inventory.py" "$data/inventory-a.json" "$data/inventory-b.json" >/dev/null
  cp "$data/inventory-a.json" "$data/inventory.json"
  printf 'PELKA_INVENTORY=%s\nPELKA_PROGRAM_DATA=%s\n' "$data/inventory.json" "$data/om" >"$data/env"
  if [ -n "${ZEDA_LOAD_GRACE_SECONDS:-}" ]; then
    [[ "$ZEDA_LOAD_GRACE_SECONDS" =~ ^[0-9]+$ ]] \
      || zeda_die "ZEDA_LOAD_GRACE_SECONDS must be a whole number of seconds, not '$ZEDA_LOAD_GRACE_SECONDS'"
    echo "PELKA_SNAPSHOT_GRACE_SECONDS=$ZEDA_LOAD_GRACE_SECONDS" >>"$data/env"
  fi
  trap 'cimom_load_stop_checked "$om" "$state"' EXIT
  cimom_load_deploy "$om" "$state"
  cimom_start "$om" "$state" "$data/env"
  "$CIMOM_LOAD_PYTHON" "$CIMOM_LOAD_LIB/cimom_load.py" --cimom "$om" --url "$(cimom_url "$om")" \
    --pywbem "$CIMOM_PYWBEM" --zeda-cim "$CIMOM_ZEDA_CIM" --zeda-data "$data/zeda" \
    --inventory-a "$data/inventory-a.json" --inventory-b "$data/inventory-b.json" \
    --live "$data/inventory.json" --pids-cmd "$(cimom_load_pids_cmd "$om" "$state")" \
    --seconds "$seconds" --clients "$clients" --label "$om ($nas x $disks disks)"
)

# --- memory check

# The valgrind options of both object managers: memcheck, every error with
# its whole stack and whole source paths, one log per process.
cimom_memcheck_valgrind_args() {
  local logdir="$1"
  echo "--tool=memcheck --trace-children=yes --child-silent-after-fork=no --num-callers=40" \
       "--error-limit=no --leak-check=no --track-origins=yes --read-inline-info=yes" \
       "--fullpath-after= --log-file=$logdir/vg.%p.log"
}

cimom_memcheck_install_valgrind() {
  command -v valgrind >/dev/null && return 0
  local saved=("${ZEDA_PACKAGES[@]}")
  ZEDA_PACKAGES=(valgrind)
  zeda_install_missing
  ZEDA_PACKAGES=("${saved[@]}")
}

# cimom_memcheck_start_sfcb STATE ENVFILE LOGDIR: sfcbd under valgrind, the way
# cimom_start starts it otherwise (own session, our environment only); waits
# up to ZEDA_MEMCHECK_START_SECONDS (default 300) until it answers.
cimom_memcheck_start_sfcb() {
  local state="$1" envfile="$2" logdir="$3" line pid i
  local env=(PATH=/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin "HOME=${HOME:-/root}")
  while IFS= read -r line || [ -n "$line" ]; do
    case "$line" in ''|'#'*) continue ;; esac
    env+=("$line")
  done <"$envfile"
  cimom_port_free "$ZEDA_SFCB_PORT" || zeda_die "port $ZEDA_SFCB_PORT is in use (ZEDA_SFCB_PORT chooses another)"
  # shellcheck disable=SC2046
  setsid env -i "${env[@]}" valgrind $(cimom_memcheck_valgrind_args "$logdir") \
    "$CIMOM_SFCB/sbin/sfcbd" -c "$state/sfcb.cfg" >>"$state/sfcbd.log" 2>&1 </dev/null &
  pid=$!
  echo "$pid" >"$state/pid"
  for i in $(seq 1 $((2 * ${ZEDA_MEMCHECK_START_SECONDS:-300}))); do
    kill -0 "$pid" 2>/dev/null || { tail -n 20 "$state/sfcbd.log" >&2; zeda_die "sfcbd under valgrind ended while starting"; }
    wbemcli ecn "$(cimom_url sfcb)/root/cimv2" >/dev/null 2>&1 && return 0
    sleep 0.5
  done
  zeda_die "sfcbd under valgrind did not answer within ${ZEDA_MEMCHECK_START_SECONDS:-300} s"
}

# cimom_memcheck_wrap_pegasus STATE LOGDIR: the state's bin directory becomes
# a directory of links to the build's programs, except cimprovagt, which
# becomes a script starting the real one under valgrind.
cimom_memcheck_wrap_pegasus() {
  local state="$1" logdir="$2" f
  rm -f "$state/home/bin"
  mkdir -p "$state/home/bin"
  for f in "$CIMOM_PEGASUS"/bin/*; do
    ln -s "$f" "$state/home/bin/$(basename "$f")"
  done
  [ -x "$CIMOM_PEGASUS/bin/cimprovagt" ] || zeda_die "no cimprovagt in $CIMOM_PEGASUS/bin"
  rm -f "$state/home/bin/cimprovagt"
  {
    echo '#!/bin/sh'
    echo "# The OpenPegasus provider agent under valgrind memcheck (cimom_memcheck_run)."
    echo "exec valgrind $(cimom_memcheck_valgrind_args "$logdir") $CIMOM_PEGASUS/bin/cimprovagt \"\$@\""
  } >"$state/home/bin/cimprovagt"
  chmod 755 "$state/home/bin/cimprovagt"
}

cimom_memcheck_run() (
  set -euo pipefail
  local om="$1" run="$2" prefix="$3"
  cimom_load_check_args "$om" "$run" "$prefix"
  cimom_memcheck_install_valgrind
  mkdir -p "$run"
  run=$(cd "$run" && pwd)
  local state="$run/memcheck-$om" data="$run/memcheck-$om-data" start=$SECONDS
  rm -rf "$data"
  mkdir -p "$data/om" "$data/zeda" "$data/vg"
  cp "$ZEDA_ROOT/examples/inventory.json" "$data/inventory.json"
  printf 'PELKA_INVENTORY=%s\nPELKA_PROGRAM_DATA=%s\n' "$data/inventory.json" "$data/om" >"$data/env"
  trap 'cimom_load_stop_checked "$om" "$state"' EXIT
  cimom_load_deploy "$om" "$state"
  if [ "$om" = sfcb ]; then
    cimom_memcheck_start_sfcb "$state" "$data/env" "$data/vg"
  else
    cimom_memcheck_wrap_pegasus "$state" "$data/vg"
    cimom_start pegasus "$state" "$data/env"
  fi
  # Requests wait for valgrind: generous timeouts.
  local pids_file="$data/provider-pids" status=0
  "$CIMOM_LOAD_PYTHON" "$CIMOM_LOAD_LIB/cimom_load.py" --cimom "$om" --url "$(cimom_url "$om")" \
    --pywbem "$CIMOM_PYWBEM" --zeda-cim "$CIMOM_ZEDA_CIM" --zeda-data "$data/zeda" \
    --inventory-a "$data/inventory.json" --inventory-b "$data/inventory.json" \
    --live "$data/inventory.json" --pids-cmd "$(cimom_load_pids_cmd "$om" "$state")" \
    --once --per-end "${ZEDA_MEMCHECK_PER_END:-2}" --timeout 600 --label "$om under valgrind" \
    || status=$?
  cimom_load_provider_pids "$om" "$state" >"$pids_file"
  # Where the module lies in each provider process, to tell its frames.
  local p
  for p in $(cat "$pids_file"); do
    cp "/proc/$p/maps" "$data/maps.$p" 2>/dev/null || true
  done
  # valgrind writes each process's last errors when it ends.
  cimom_load_stop_checked "$om" "$state"
  trap - EXIT
  "$CIMOM_LOAD_PYTHON" "$CIMOM_LOAD_LIB/cimom_valgrind.py" --cimom "$om" --pids "$pids_file" \
    --maps-dir "$data" --source-root "$ZEDA_ROOT" \
    --seconds $((SECONDS - start)) "$data/vg" || status=1
  return "$status"
)

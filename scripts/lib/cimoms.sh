# Real CIM object managers for the tests (sourced; needs common.sh first):
# builds sfcb 1.3.11 and OpenPegasus 2.14.4 from their source archives into a
# cache outside the clone, deploys the module into them the way
# docs/DEPLOY.md says (install rules, zeda-register), starts one on
# 127.0.0.1 with an environment of our choosing, finds its provider
# processes and stops it again.
#
# Archives: the directory ZEDA_CIMOM_SOURCES (sblim-sfcb-1.3.11.tar.xz,
# openpegasus-2.14.4.tar.xz, dmtf-cim-schema-2.41.tar.xz,
# pywbem-client.tar.xz). Cache: ZEDA_CIMOM_CACHE, else
# $XDG_CACHE_HOME/zeda-cimoms, else ~/.cache/zeda-cimoms; one directory per
# archive, <name>-<first 16 hex digits of its sha256>, complete only once its
# stamp file is written (anything else found there is built afresh).
# Ports: ZEDA_SFCB_PORT (default 15985), ZEDA_PEGASUS_PORT (default 15986).
#
# Typical use (see scripts/test-cimoms):
#   cimom_build_all                         # builds what the cache lacks
#   cimom_install_module build RUN/inst     # cmake --install
#   cimom_prepare sfcb RUN/sfcb RUN/inst    # per-run state, registration
#   cimom_start sfcb RUN/sfcb ENVFILE       # ENVFILE: NAME=VALUE lines
#   cimom_provider_pids sfcb RUN/sfcb       # processes with the module mapped
#   cimom_stop sfcb RUN/sfcb
#
# OpenPegasus is built with PEGASUS_FLAVOR=zeda: its local socket and start
# files become /var/tmp/cimxmlzeda.socket and /var/tmp/cimserverzeda_start.*,
# so it never meets another cimserver of the machine; one of ours runs at a
# time.

CIMOM_SFCB_ARCHIVE=sblim-sfcb-1.3.11.tar.xz
CIMOM_PEGASUS_ARCHIVE=openpegasus-2.14.4.tar.xz
CIMOM_SCHEMA_ARCHIVE=dmtf-cim-schema-2.41.tar.xz
CIMOM_PYWBEM_ARCHIVE=pywbem-client.tar.xz
# Bumped whenever a recipe below changes what it builds: a stamp of another
# recipe makes the entry stale.
CIMOM_RECIPE=3

# Debian packages the builds and the two clients need.
CIMOM_PACKAGES=(autoconf automake libtool flex bison libcurl4-openssl-dev zlib1g-dev pkg-config
  gcc g++ make xz-utils sblim-wbemcli iproute2
  python3 python3-ply python3-yaml python3-requests python3-urllib3 python3-six valgrind)

ZEDA_SFCB_PORT="${ZEDA_SFCB_PORT:-15985}"
ZEDA_PEGASUS_PORT="${ZEDA_PEGASUS_PORT:-15986}"

cimom_log() { echo "== $(date +%T) $*"; }

# The directory holding the archives (ZEDA_CIMOM_SOURCES), checked.
cimom_sources() {
  local dir="${ZEDA_CIMOM_SOURCES:-}" f
  [ -n "$dir" ] || zeda_die "ZEDA_CIMOM_SOURCES is not set (the directory of the object managers' source archives)"
  [ -d "$dir" ] || zeda_die "ZEDA_CIMOM_SOURCES=$dir is not a directory"
  for f in "$CIMOM_SFCB_ARCHIVE" "$CIMOM_PEGASUS_ARCHIVE" "$CIMOM_SCHEMA_ARCHIVE" "$CIMOM_PYWBEM_ARCHIVE"; do
    [ -f "$dir/$f" ] || zeda_die "source archive missing: $dir/$f"
  done
  (cd "$dir" && pwd)
}

cimom_cache_root() { echo "${ZEDA_CIMOM_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/zeda-cimoms}"; }

# cimom_entry NAME ARCHIVE: the cache directory of that archive's build.
cimom_entry() {
  local sum
  sum=$(sha256sum "$2" | cut -c1-16) || zeda_die "cannot read $2"
  echo "$(cimom_cache_root)/$1-$sum"
}

cimom_install_packages() {
  local saved=("${ZEDA_PACKAGES[@]}")
  ZEDA_PACKAGES=("${CIMOM_PACKAGES[@]}")
  zeda_install_missing
  ZEDA_PACKAGES=("${saved[@]}")
}

# cimom_cached NAME ARCHIVE BUILDER: runs "BUILDER ENTRY ARCHIVE" unless the
# entry carries the stamp of this recipe; sets CIMOM_ENTRY to the entry. The
# entry is locked while it is built, so two runs never build it at once.
cimom_cached() {
  local name="$1" archive="$2" builder="$3" entry rc
  entry=$(cimom_entry "$name" "$archive")
  mkdir -p "$(dirname "$entry")"
  # Plain statements with set +e around them: errexit stays in force inside
  # the builder (it would not be on the left of || or inside an if).
  set +e
  (
    set -e
    flock 9
    if [ "$(cat "$entry/.zeda-complete" 2>/dev/null)" != "recipe $CIMOM_RECIPE" ]; then
      start=$SECONDS
      cimom_log "building $name into $entry (log: $entry.log)"
      rm -rf "$entry"
      mkdir -p "$entry"
      set +e
      (set -e; "$builder" "$entry" "$archive") >"$entry.log" 2>&1
      rc=$?
      set -e
      if [ "$rc" -ne 0 ]; then
        tail -n 40 "$entry.log" >&2
        zeda_die "building $name failed (whole log: $entry.log)"
      fi
      echo "recipe $CIMOM_RECIPE" >"$entry/.zeda-complete"
      cimom_log "built $name in $((SECONDS - start)) s"
    fi
  ) 9>"$entry.lock"
  rc=$?
  set -e
  [ "$rc" -eq 0 ] || exit 1
  CIMOM_ENTRY="$entry"
}

# bison 3 no longer reads YYPARSE_PARAM/YYLEX_PARAM: sfcb's two grammars
# declare their parser argument the bison 3 way, and their error functions
# (called with that argument first now) drop it again.
cimom_sfcb_grammars() {
  local src="$1" grammar
  for grammar in queryParser.y cimXmlOps.y; do
    grep -q '^%parse-param' "$src/$grammar" && continue
    sed -i -e '0,/^%}$/s//%}\n%parse-param {void *parm}\n%lex-param {void *parm}/' "$src/$grammar"
  done
  sed -i 's/^#define sfcQueryerror sfcQueryError$/#define sfcQueryerror(p, m) sfcQueryError(m)/' \
    "$src/queryParser.y"
  grep -q 'sfcXmlerror(m)' "$src/cimXmlOps.y" ||
    sed -i 's/^extern int yyerror(char\*);$/extern int sfcXmlerror(char *);\n#undef yyerror\n#define yyerror(p, m) sfcXmlerror(m)/' \
      "$src/cimXmlOps.y"
  grep -q '^%parse-param' "$src/queryParser.y" && grep -q 'sfcXmlerror(m)' "$src/cimXmlOps.y" \
    && grep -q 'sfcQueryerror(p, m)' "$src/queryParser.y"
}

cimom_build_sfcb_into() {
  local entry="$1" archive="$2" src="$1/src"
  set -x
  mkdir -p "$src"
  tar -xf "$archive" -C "$src" --strip-components=1
  cimom_sfcb_grammars "$src"
  cd "$src"
  # autoconfiscate.sh ends by running mofc/autoconfiscate.sh, which this
  # mofc lacks: its own autoreconf instead.
  sh autoconfiscate.sh || true
  (cd mofc && autoreconf -fi)
  # -fcommon: globals defined in headers (gcc 10 made -fno-common the
  # default); sys/resource.h: providerMgr.c calls getrusage without it.
  local cflags="-O2 -g -fcommon -Wno-error -include sys/resource.h"
  # sfcbinst2mof leaves libsfcBrokerCore to the libraries it links.
  local ldflags="-L$src/.libs -Wl,--copy-dt-needed-entries"
  ./configure --prefix="$entry/prefix" --disable-indications --disable-ipv6 CFLAGS="$cflags"
  # The core libraries first: the tools link against them.
  make -j"$ZEDA_JOBS" CFLAGS="$cflags" libsfcBrokerCore.la
  make -j"$ZEDA_JOBS" CFLAGS="$cflags" LDFLAGS="$ldflags" libsfcFileRepository.la
  make -j"$ZEDA_JOBS" CFLAGS="$cflags" LDFLAGS="$ldflags"
  make CFLAGS="$cflags" LDFLAGS="$ldflags" install
  test -x "$entry/prefix/sbin/sfcbd" && test -x "$entry/prefix/bin/sfcbrepos"
  rm -rf "$src"
}

# The make variables of our OpenPegasus build (see its
# doc/BuildAndReleaseOptions.html): CMPI provider manager on; SSL, PAM, SLP,
# WS-Management, CQL, IPv6 and the test programs off.
cimom_pegasus_env() {
  local entry="$1"
  export PEGASUS_ROOT="$entry/src/pegasus" PEGASUS_HOME="$entry/home"
  export PEGASUS_PLATFORM=LINUX_X86_64_GNU PEGASUS_FLAVOR=zeda
  export PEGASUS_ENABLE_CMPI_PROVIDER_MANAGER=true PEGASUS_SKIP_MOST_TEST_DIRS=true
  export PEGASUS_DISABLE_PERFINST=true PEGASUS_ENABLE_SLP=false PEGASUS_ENABLE_PROTOCOL_WSMAN=false
  export PEGASUS_ENABLE_IPV6=false PEGASUS_ENABLE_CQL=false PEGASUS_ENABLE_AUDIT_LOGGER=false
  export PEGASUS_CIM_SCHEMA=CIM241
  # make repository runs the freshly built cimmofl.
  export PATH="$PEGASUS_HOME/bin:$PATH"
  unset LD_LIBRARY_PATH PEGASUS_HAS_SSL PEGASUS_PAM_AUTHENTICATION PEGASUS_DEBUG || true
}

cimom_build_pegasus_into() {
  local entry="$1" archive="$2"
  set -x
  mkdir -p "$entry/src" "$entry/home"
  tar -xf "$archive" -C "$entry/src" --strip-components=1
  cimom_pegasus_env "$entry"
  # Logs into files below PEGASUS_HOME/logs instead of syslog (a test
  # machine may have no syslog daemon, and the test reads the log).
  sed -i '/^DEFINES += -DPEGASUS_USE_SYSLOGS$/d' "$PEGASUS_ROOT/mak/config-linux.mak"
  ! grep -q PEGASUS_USE_SYSLOGS "$PEGASUS_ROOT/mak/config-linux.mak"
  (cd "$PEGASUS_ROOT" && make -j"$ZEDA_JOBS")
  (cd "$PEGASUS_ROOT" && make repository)
  test -x "$PEGASUS_HOME/bin/cimserver" && test -f "$PEGASUS_HOME/lib/libCMPIProviderManager.so"
  test -d "$PEGASUS_HOME/repository/root#cimv2"
  # The sources are no longer needed; the build objects neither.
  rm -rf "$entry/src" "$PEGASUS_HOME/obj"
}

# The DMTF schema laid out as sfcbrepos -c wants it: CIM_Schema.mof at the top.
cimom_unpack_schema_into() {
  set -x
  mkdir -p "$1/CIM"
  tar -xf "$2" -C "$1/CIM" --strip-components=1
  test -f "$1/CIM/cim_schema_2.41.0.mof"
  printf '#pragma include ("cim_schema_2.41.0.mof")\n' >"$1/CIM/CIM_Schema.mof"
}

cimom_unpack_pywbem_into() {
  set -x
  tar -xf "$2" -C "$1" --strip-components=1
  test -f "$1/lib/pywbem/__init__.py"
}

# Builds or finds everything; sets CIMOM_SFCB (prefix), CIMOM_PEGASUS
# (PEGASUS_HOME of the build), CIMOM_SCHEMA (for sfcbrepos -c) and
# CIMOM_PYWBEM (its PYTHONPATH). CIMOM_BUILD_TIMES says what took how long.
cimom_build_all() {
  local sources start
  sources=$(cimom_sources) || exit 1
  cimom_install_packages
  cimom_cached cim-schema "$sources/$CIMOM_SCHEMA_ARCHIVE" cimom_unpack_schema_into
  CIMOM_SCHEMA="$CIMOM_ENTRY/CIM"
  cimom_cached pywbem "$sources/$CIMOM_PYWBEM_ARCHIVE" cimom_unpack_pywbem_into
  CIMOM_PYWBEM="$CIMOM_ENTRY/lib"
  start=$SECONDS
  cimom_cached sfcb "$sources/$CIMOM_SFCB_ARCHIVE" cimom_build_sfcb_into
  CIMOM_SFCB="$CIMOM_ENTRY/prefix"
  CIMOM_BUILD_TIMES="sfcb $((SECONDS - start)) s"
  start=$SECONDS
  cimom_cached pegasus "$sources/$CIMOM_PEGASUS_ARCHIVE" cimom_build_pegasus_into
  CIMOM_PEGASUS="$CIMOM_ENTRY/home"
  CIMOM_BUILD_TIMES+=", OpenPegasus $((SECONDS - start)) s"
}

# cimom_install_module BUILD_DIR PREFIX: the install rules, as a package
# would lay the files out; then cimom_use_install PREFIX.
cimom_install_module() {
  local build="$1" prefix="$2"
  [ -f "$build/CMakeCache.txt" ] || zeda_die "$build is not a build directory"
  cmake --install "$build" --prefix "$prefix" >/dev/null
  cimom_use_install "$prefix"
}

# cimom_use_install PREFIX: the module installed below PREFIX; sets
# CIMOM_MODULE_DIR (the installed provider directory), CIMOM_ZEDA_CIM and
# CIMOM_ZEDA_REGISTER (the installed tools).
cimom_use_install() {
  local prefix="$1" found
  [ -d "$prefix" ] || zeda_die "install directory $prefix does not exist (cimom_install_module BUILD $prefix first)"
  prefix=$(cd "$prefix" && pwd)
  found=$(find "$prefix" -name libZEDA_DiskDriveLite.so -printf '%h\n' | head -n 1)
  [ -n "$found" ] || zeda_die "no libZEDA_DiskDriveLite.so installed below $prefix"
  [ -f "$found/libPelkaUtility.so" ] || zeda_die "libPelkaUtility.so is not next to the module in $found"
  CIMOM_MODULE_DIR="$found"
  CIMOM_ZEDA_CIM="$prefix/bin/zeda-cim"
  CIMOM_ZEDA_REGISTER="$prefix/bin/zeda-register"
  [ -x "$CIMOM_ZEDA_CIM" ] && [ -x "$CIMOM_ZEDA_REGISTER" ] \
    || zeda_die "no bin/zeda-cim and bin/zeda-register installed below $prefix"
}

cimom_check_name() {
  case "$1" in sfcb|pegasus) ;; *) zeda_die "unknown object manager '$1' (sfcb or pegasus)" ;; esac
}

cimom_port() { if [ "$1" = sfcb ]; then echo "$ZEDA_SFCB_PORT"; else echo "$ZEDA_PEGASUS_PORT"; fi; }

cimom_url() { echo "http://127.0.0.1:$(cimom_port "$1")"; }

# cimom_log_files NAME STATE: the files the object manager logs into.
cimom_log_files() {
  if [ "$1" = sfcb ]; then
    echo "$2/sfcbd.log"
  else
    # Its log files (the trace files hold every error status a provider
    # answered, which is no failure).
    echo "$2/cimserver.log"
    echo "$2/home/logs/PegasusError.log"
    echo "$2/home/logs/PegasusStandard.log"
  fi
}

cimom_port_free() {
  ! ss -Hltn "sport = :$1" 2>/dev/null | grep -q .
}

# cimom_prepare NAME STATE: the per-run state of an object manager below
# STATE (its configuration; for OpenPegasus a home of its own with a copy of
# the repository) and the module registered in it with the installed
# zeda-register (cimom_install_module first). OpenPegasus is left running:
# its registration needs the server. Needs cimom_build_all first.
cimom_prepare() {
  local name="$1" state="$2"
  cimom_check_name "$name"
  [ -n "${CIMOM_MODULE_DIR:-}" ] || zeda_die "cimom_prepare: run cimom_install_module first"
  rm -rf "$state"
  mkdir -p "$state"
  state=$(cd "$state" && pwd)
  if [ "$name" = sfcb ]; then
    [ -n "${CIMOM_SFCB:-}" ] || zeda_die "cimom_prepare: run cimom_build_all first"
    # Loopback, plain HTTP, no authentication, sockets of this run; the
    # module's directory named in providerDirs (docs/DEPLOY.md, step 3);
    # messages up to 6 kB per disk of the largest NAS (step 4); providers
    # are not unloaded while idle, so a provider process that goes away is
    # one that ended.
    cat >"$state/sfcb.cfg" <<EOF
enableHttp: true
httpPort: $ZEDA_SFCB_PORT
httpLocalOnly: true
httpProcs: 8
enableHttps: false
doBasicAuth: false
enableUds: false
useChunking: true
keepaliveTimeout: 15
keepaliveMaxRequest: 1000000
provProcs: 32
maxMsgLen: 80000000
providerTimeoutInterval: 86400
registrationDir: $CIMOM_SFCB/var/lib/sfcb/registration
providerDirs: $CIMOM_SFCB/lib/sfcb $CIMOM_SFCB/lib $CIMOM_MODULE_DIR
enableInterOp: true
httpSocketPath: $state/sfcbHttpSocket
localSocketPath: $state/sfcbLocalSocket
traceFile: stderr
EOF
    "$CIMOM_ZEDA_REGISTER" --cimom sfcb --tools "$CIMOM_SFCB/bin" --cim-schema "$CIMOM_SCHEMA" \
      >"$state/register.log" 2>&1 || { cat "$state/register.log" >&2; zeda_die "zeda-register --cimom sfcb failed"; }
  else
    [ -n "${CIMOM_PEGASUS:-}" ] || zeda_die "cimom_prepare: run cimom_build_all first"
    mkdir -p "$state/home/logs" "$state/home/trace"
    ln -s "$CIMOM_PEGASUS/bin" "$state/home/bin"
    ln -s "$CIMOM_PEGASUS/lib" "$state/home/lib"
    cp -a "$CIMOM_PEGASUS/repository" "$state/home/repository"
    cimom_start pegasus "$state" /dev/null
    PEGASUS_HOME="$state/home" "$CIMOM_ZEDA_REGISTER" --cimom pegasus --tools "$CIMOM_PEGASUS/bin" \
      >"$state/register.log" 2>&1 || { cat "$state/register.log" >&2; zeda_die "zeda-register --cimom pegasus failed"; }
  fi
}

# cimom_start NAME STATE ENVFILE: starts the object manager in a session of
# its own, with nothing of our environment but PATH and HOME and the
# NAME=VALUE lines of ENVFILE (its provider processes inherit them), and
# waits until it answers. Its pid goes to STATE/pid.
cimom_start() {
  local name="$1" state="$2" envfile="$3" port pid line
  cimom_check_name "$name"
  [ -d "$state" ] || zeda_die "cimom_start: no state directory $state (cimom_prepare first)"
  [ -r "$envfile" ] || zeda_die "cimom_start: cannot read environment file $envfile"
  if [ -f "$state/pid" ] && kill -0 "$(cat "$state/pid")" 2>/dev/null; then
    zeda_die "cimom_start: $name of $state already runs (pid $(cat "$state/pid"))"
  fi
  port=$(cimom_port "$name")
  cimom_port_free "$port" || zeda_die "port $port is in use (ZEDA_SFCB_PORT / ZEDA_PEGASUS_PORT choose others)"
  local env=(PATH=/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin "HOME=${HOME:-/root}")
  while IFS= read -r line || [ -n "$line" ]; do
    case "$line" in ''|'#'*) continue ;; esac
    [[ "$line" =~ ^[A-Za-z_][A-Za-z0-9_]*= ]] || zeda_die "$envfile: not a NAME=VALUE line: $line"
    env+=("$line")
  done <"$envfile"
  if [ "$name" = sfcb ]; then
    setsid env -i "${env[@]}" "$CIMOM_SFCB/sbin/sfcbd" -c "$state/sfcb.cfg" \
      >>"$state/sfcbd.log" 2>&1 </dev/null &
    pid=$!
  else
    # One cimserver of this build at a time on the machine (its start file
    # and local socket are fixed at build time): wait for the lock.
    exec {CIMOM_PEGASUS_LOCK}>"$(cimom_cache_root)/pegasus-running.lock"
    if ! flock -n "$CIMOM_PEGASUS_LOCK"; then
      cimom_log "waiting for another run's OpenPegasus to stop (one at a time, up to 20 minutes)"
      flock -w 1200 "$CIMOM_PEGASUS_LOCK" || zeda_die "another run kept OpenPegasus for 20 minutes"
    fi
    # daemon=false keeps cimserver in the foreground, so its pid is ours;
    # providers run out of process (cimprovagt) and inherit the environment.
    # The trace file takes severe errors only.
    (cd "$state/home" && exec setsid env -i "${env[@]}" PEGASUS_HOME="$state/home" \
      "$state/home/bin/cimserver" daemon=false enableHttpConnection=true \
      enableHttpsConnection=false httpPort="$port" listenAddress=127.0.0.1 \
      enableAuthentication=false providerDir="$CIMOM_PEGASUS/lib:$CIMOM_MODULE_DIR" \
      logdir="$state/home/logs" logLevel=WARNING traceLevel=1 traceComponents=ALL \
      traceFacility=File traceFilePath="$state/home/trace/cimserver.trc" \
      >>"$state/cimserver.log" 2>&1 </dev/null {CIMOM_PEGASUS_LOCK}>&-) &
    pid=$!
  fi
  echo "$pid" >"$state/pid"
  local i
  for i in $(seq 1 120); do
    if ! kill -0 "$pid" 2>/dev/null; then
      cimom_log_files "$name" "$state" | xargs -r tail -n 20 >&2
      zeda_die "$name ended while starting (logs: $(cimom_log_files "$name" "$state" | tr '\n' ' '))"
    fi
    if wbemcli ecn "$(cimom_url "$name")/root/cimv2" >/dev/null 2>&1; then
      return 0
    fi
    sleep 0.5
  done
  cimom_stop "$name" "$state"
  zeda_die "$name did not answer on port $port within 60 s"
}

# cimom_session_pids STATE: every live process we started for the object
# manager: its session and its descendants, and OpenPegasus' provider agents,
# which leave both (a session of their own, reparented to init) and are known
# by the PEGASUS_HOME of this state in their environment.
cimom_session_pids() {
  local sid
  [ -f "$1/pid" ] || return 0
  sid=$(cat "$1/pid")
  {
    ps -e -o pid=,ppid=,sid= | awk -v sid="$sid" '
      { pid[NR] = $1; ppid[NR] = $2; if ($3 == sid || $1 == sid) ours[$1] = 1 }
      END {
        do {
          added = 0
          for (i = 1; i <= NR; i++)
            if (!(pid[i] in ours) && (ppid[i] in ours)) { ours[pid[i]] = 1; added = 1 }
        } while (added)
        for (p in ours) print p
      }'
    if [ -d "$1/home" ]; then
      { grep -lsxzF "PEGASUS_HOME=$1/home" /proc/[0-9]*/environ || true; } | cut -d/ -f3
    fi
  } | sort -un
}

# cimom_provider_pids NAME STATE: the processes of our object manager that
# have the module mapped, one pid a line.
cimom_provider_pids() {
  local p
  for p in $(cimom_session_pids "$2"); do
    grep -qs 'libZEDA_DiskDriveLite\.so' "/proc/$p/maps" && echo "$p"
  done
  return 0
}

# cimom_stop NAME STATE: ends the object manager we started and everything in
# its session (TERM, then KILL after 20 s); never touches another one.
cimom_stop() {
  local state="$2" pid i
  [ -f "$state/pid" ] || return 0
  pid=$(cat "$state/pid")
  kill -TERM "$pid" 2>/dev/null || true
  for i in $(seq 1 40); do
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.5
  done
  # What is left of the session (provider processes, a hung server).
  local left
  left=$(cimom_session_pids "$state")
  [ -z "$left" ] || kill -KILL $left 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
  rm -f "$state/pid"
  if [ "$1" = pegasus ] && [ -n "${CIMOM_PEGASUS_LOCK:-}" ]; then
    exec {CIMOM_PEGASUS_LOCK}>&-
    CIMOM_PEGASUS_LOCK=""
  fi
}

#!/usr/bin/env bash
# cmake --install lays out the Redfish service: zeda-redfishd and
# zeda-redfish-user in sbin, their man pages in man8, the systemd unit naming
# the installed daemon and configuration. The installed tree, moved elsewhere,
# still runs: the installed tool adds an account, the installed daemon loads
# the installed libPelkaUtility.so from the provider directory and answers
# GET /redfish/v1 (open) and /redfish/v1/Systems (with the account) over HTTPS.
# usage: redfish_install_test.sh BUILD_DIR SOURCE_DIR
set -u
build=$1 src=$2
w=$(mktemp -d)
daemon=""
cleanup() { [ -n "$daemon" ] && kill "$daemon" 2>/dev/null; rm -rf "$w"; }
trap cleanup EXIT
fail=0
bad() { echo "FAILED: $*"; fail=1; }

cmake --install "$build" --prefix "$w/p" >"$w/install.log" 2>&1 || { cat "$w/install.log"; bad "cmake --install"; exit 1; }
unit="$w/p/lib/systemd/system/zeda-redfishd.service"
[ -f "$unit" ] || bad "no lib/systemd/system/zeda-redfishd.service"
grep -qxF "ExecStart=$w/p/sbin/zeda-redfishd --config $w/p/etc/pelka/pelka.json" "$unit" 2>/dev/null \
  || bad "the unit does not start the installed daemon on the installed configuration: $(grep ExecStart= "$unit")"
mv "$w/p" "$w/moved"; p=$w/moved
for f in sbin/zeda-redfishd sbin/zeda-redfish-user; do [ -x "$p/$f" ] || bad "no executable $f"; done
for f in zeda-redfishd.8 zeda-redfish-user.8; do [ -f "$p/share/man/man8/$f" ] || bad "no man page $f"; done
pdir=$(dirname "$(find "$p" -name libPelkaUtility.so | head -1)")

printf 'install-pass\n' | "$p/sbin/zeda-redfish-user" --accounts "$w/accounts" add admin \
  || bad "installed zeda-redfish-user could not add an account"
port=$(python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
cat >"$w/pelka.json" <<JSON
{"programData": "$w/data", "sources": [{"type": "file", "path": "$src/examples/inventory.json"}],
 "redfish": {"listen": "127.0.0.1:$port", "accounts": "$w/accounts"}}
JSON
"$p/sbin/zeda-redfishd" --config "$w/pelka.json" 2>"$w/daemon.log" &
daemon=$!
for _ in $(seq 100); do
  grep -q "Serving https://" "$w/daemon.log" && break
  kill -0 "$daemon" 2>/dev/null || break
  sleep 0.1
done
url="https://127.0.0.1:$port"
curl -sk --max-time 10 "$url/redfish/v1" >"$w/root.json" || bad "no answer to GET /redfish/v1: $(tail -2 "$w/daemon.log")"
python3 -c 'import json,sys; r=json.load(open(sys.argv[1])); assert r["@odata.id"] == "/redfish/v1", r' "$w/root.json" \
  || bad "GET /redfish/v1 is not the service root"
curl -sk --max-time 10 -u admin:install-pass "$url/redfish/v1/Systems" >"$w/systems.json" || bad "no answer to GET /redfish/v1/Systems"
python3 - "$w/systems.json" "$src/examples/inventory.json" <<'PY' || bad "GET /redfish/v1/Systems does not list the sample's NAS devices"
import json, sys
systems = json.load(open(sys.argv[1]))
nas = json.load(open(sys.argv[2]))["nas"]
assert systems["Members@odata.count"] == len(nas) > 0, systems
PY
grep -q " $pdir/libPelkaUtility.so\$" "/proc/$daemon/maps" || bad "installed daemon did not load $pdir/libPelkaUtility.so"
kill -TERM "$daemon"; status=0; wait "$daemon" || status=$?; daemon=""
[ $status -eq 0 ] || bad "installed daemon ended with status $status after SIGTERM"

[ $fail -eq 0 ] && echo "installed Redfish service: layout, unit, relocated daemon answers over HTTPS"
exit $fail

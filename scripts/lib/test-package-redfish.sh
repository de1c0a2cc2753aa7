# Sourced by scripts/test-package after the package is unpacked into $root
# ($deb the package, $w a scratch folder, $pdir the provider directory, bad()
# to report): the Redfish service's part of the package. The daemon, its
# account tool, the systemd unit and the man pages are shipped; the unit runs
# the daemon unprivileged and stays down until an account exists; the
# maintainer scripts make the user and enable nothing; the unpacked daemon,
# with the shipped configuration pointed at the recorded machine, loads the
# unpacked libPelkaUtility.so and answers over HTTPS.

unit="$root/lib/systemd/system/zeda-redfishd.service"
for f in "$root/usr/sbin/zeda-redfishd" "$root/usr/sbin/zeda-redfish-user" "$unit" \
         "$root/usr/share/man/man8/zeda-redfishd.8.gz" "$root/usr/share/man/man8/zeda-redfish-user.8.gz"; do
  [ -e "$f" ] || bad "package lacks ${f#"$root"}"
done
dpkg-deb -f "$deb" Depends | grep -qw adduser || bad "Depends does not name adduser (postinst makes the service's user)"
dpkg-deb -f "$deb" Depends | grep -q libssl || bad "Depends does not name the OpenSSL library the daemon needs"
dpkg-deb -I "$deb" postinst 2>/dev/null | grep -q 'adduser --system --group' || bad "postinst does not make the system user"
dpkg-deb -I "$deb" postinst 2>/dev/null | grep -q -- '--make-certificate' || bad "postinst does not make the self-signed certificate"
dpkg-deb -I "$deb" postinst 2>/dev/null | grep -Eq 'systemctl +(enable|start|restart)|deb-systemd' \
  && bad "postinst enables or starts the service"
dpkg-deb -I "$deb" prerm 2>/dev/null | grep -q 'deb-systemd-invoke stop zeda-redfishd' || bad "prerm does not stop the service"
dpkg-deb -c "$deb" | grep -q '\.wants/' && bad "the package ships an enabled unit"

# The unit: the installed daemon on the installed configuration, as the
# service's user, sandboxed, waiting for the accounts file the shipped
# configuration names.
if [ -f "$unit" ]; then
  accounts=$(python3 -c 'import json,sys; print(json.load(open(sys.argv[1]))["redfish"]["accounts"])' \
    "$root/etc/pelka/pelka.json" 2>/dev/null) || bad "the shipped configuration names no redfish.accounts"
  for line in "ExecStart=/usr/sbin/zeda-redfishd --config /etc/pelka/pelka.json" "User=zeda-redfish" \
              "ConditionPathExists=$accounts" "NoNewPrivileges=yes" "CapabilityBoundingSet=" \
              "ProtectSystem=strict" "ReadWritePaths=/var/lib/pelka" "PrivateDevices=yes" \
              "SystemCallFilter=@system-service" "RestrictAddressFamilies=AF_INET AF_INET6 AF_UNIX"; do
    grep -qxF "$line" "$unit" || bad "the unit lacks '$line'"
  done
  if command -v systemd-analyze >/dev/null; then
    # The unit as shipped but for where the daemon is (this machine has
    # none installed); manual pages are not looked up.
    sed "s|^ExecStart=/usr/sbin/|ExecStart=$root/usr/sbin/|" "$unit" >"$w/zeda-redfishd.service"
    systemd-analyze verify --man=no "$w/zeda-redfishd.service" >"$w/unit-verify.log" 2>&1 \
      || { cat "$w/unit-verify.log" >&2; bad "systemd-analyze verify refuses the unit"; }
    # A line it cannot parse is only a warning to systemd, and a mistake here.
    ! grep "zeda-redfishd.service:[0-9]" "$w/unit-verify.log" >&2 || bad "systemd-analyze verify warns about the unit"
  else
    echo "systemd-analyze not installed: unit not verified"
  fi
fi

# The unpacked daemon finds the unpacked libPelkaUtility.so through its run path.
runpath=$(readelf -d "$root/usr/sbin/zeda-redfishd" 2>/dev/null | sed -n 's/.*R\(UN\)\{0,1\}PATH.*\[\(.*\)\]/\2/p')
[ "$runpath" = "\$ORIGIN/../lib/$multiarch/cmpi" ] || bad "zeda-redfishd run path is '$runpath'"

# The shipped configuration over the recorded machine, on a free loopback
# port, with an account made by the unpacked tool: the unpacked daemon
# answers the open service root and, with the account, the systems.
rf="$w/redfish"
mkdir -p "$rf"
printf 'secret-pass\n' | "$root/usr/sbin/zeda-redfish-user" --accounts "$rf/accounts" add admin \
  || bad "unpacked zeda-redfish-user could not add an account"
port=$(python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
python3 - "$root/etc/pelka/pelka.json" "$fixture" "$rf/data" "$port" "$rf/accounts" >"$rf/pelka.json" <<'PY'
import json, sys
c = json.load(open(sys.argv[1]))
c["sources"][0].update(root=sys.argv[2] + "/root", smartctl=sys.argv[2] + "/smartctl")
c["programData"] = sys.argv[3]
c["redfish"].update(listen="127.0.0.1:" + sys.argv[4], accounts=sys.argv[5])
print(json.dumps(c))
PY
[ -s "$rf/pelka.json" ] || bad "could not write the daemon's configuration"
# What the postinst runs: the pair is made once, then kept.
made=$("$root/usr/sbin/zeda-redfishd" --config "$rf/pelka.json" --make-certificate 2>&1) \
  || bad "zeda-redfishd --make-certificate failed: $made"
case "$made" in *"made the self-signed certificate $rf/data/redfish/server.crt"*) ;;
  *) bad "zeda-redfishd --make-certificate said: $made" ;; esac
sum=$(cat "$rf/data/redfish/server.crt" "$rf/data/redfish/server.key" 2>/dev/null | sha256sum)
kept=$("$root/usr/sbin/zeda-redfishd" --config "$rf/pelka.json" --make-certificate 2>&1) \
  || bad "a second zeda-redfishd --make-certificate failed: $kept"
case "$kept" in *"kept $rf/data/redfish/server.crt"*) ;; *) bad "a second --make-certificate said: $kept" ;; esac
[ "$(cat "$rf/data/redfish/server.crt" "$rf/data/redfish/server.key" 2>/dev/null | sha256sum)" = "$sum" ] \
  || bad "a second --make-certificate changed the pair"
"$root/usr/sbin/zeda-redfishd" --config "$rf/pelka.json" \
  2>"$rf/daemon.log" &
daemon=$!
for _ in $(seq 100); do
  grep -q "Serving https://" "$rf/daemon.log" 2>/dev/null && break
  kill -0 "$daemon" 2>/dev/null || break
  sleep 0.1
done
url="https://127.0.0.1:$port"
curl -sk --max-time 10 "$url/redfish/v1" >"$rf/root.json" || bad "the unpacked daemon did not answer GET /redfish/v1 over HTTPS"
python3 -c 'import json,sys; r=json.load(open(sys.argv[1])); assert r["@odata.id"] == "/redfish/v1" and r["Systems"], r' \
  "$rf/root.json" 2>/dev/null || bad "GET /redfish/v1 is not the service root: $(head -c 200 "$rf/root.json")"
curl -sk --max-time 10 -u admin:secret-pass "$url/redfish/v1/Systems" >"$rf/systems.json" || bad "GET /redfish/v1/Systems failed"
python3 -c 'import json,sys; r=json.load(open(sys.argv[1])); assert r["Members@odata.count"] == 1, r' \
  "$rf/systems.json" 2>/dev/null || bad "GET /redfish/v1/Systems with the account: $(head -c 200 "$rf/systems.json")"
code=$(curl -sk --max-time 10 -o /dev/null -w '%{http_code}' "$url/redfish/v1/Systems") || true
[ "$code" = 401 ] || bad "GET /redfish/v1/Systems without credentials answered $code, not 401"
grep -q " $pdir/libPelkaUtility.so\$" "/proc/$daemon/maps" 2>/dev/null \
  || bad "the unpacked daemon did not load $pdir/libPelkaUtility.so"
kill -TERM "$daemon" 2>/dev/null || true
status=0; wait "$daemon" || status=$?
[ $status -eq 0 ] || bad "the unpacked daemon ended with status $status after SIGTERM: $(tail -3 "$rf/daemon.log")"
[ -f "$rf/data/redfish/server.crt" ] && [ "$(stat -c %a "$rf/data/redfish/server.key" 2>/dev/null)" = 600 ] \
  || bad "the first start made no self-signed pair (mode 0600 key) under the program data"

# For scripts/test-package --install, once the package is installed: the
# postinst made the service's user and folder, and the installed daemon runs
# as that user the way the unit starts it (systemd itself may be absent), on
# the installed configuration but for a free loopback port: an account made
# as that user is readable by the service, its first start makes the
# self-signed pair in the folder, and it answers this machine's NAS over HTTPS.
redfish_installed_checks() {
  local home shell port url pid status=0
  IFS=: read -r _ _ _ _ _ home shell < <(getent passwd zeda-redfish) || true
  [ -n "$shell" ] || { bad "postinst made no user zeda-redfish"; return; }
  [ "$home" = /nonexistent ] && [ "$shell" = /usr/sbin/nologin ] \
    || bad "zeda-redfish has home $home and shell $shell"
  [ "$(stat -c '%U:%G %a' /var/lib/pelka/redfish 2>/dev/null)" = "zeda-redfish:zeda-redfish 750" ] \
    || bad "/var/lib/pelka/redfish is not zeda-redfish:zeda-redfish 0750"
  [ "$(stat -c '%U:%G %a' /lib/systemd/system/zeda-redfishd.service 2>/dev/null)" = "root:root 644" ] \
    || bad "the unit is not installed as /lib/systemd/system/zeda-redfishd.service"
  [ -z "$(find /etc/systemd/system -name 'zeda-redfishd*' 2>/dev/null)" ] || bad "the unit is enabled after installation"
  [ "$(stat -c '%U %a' /var/lib/pelka/redfish/server.key 2>/dev/null)" = "zeda-redfish 600" ] \
    || bad "the installation made no key of zeda-redfish's, mode 0600, in /var/lib/pelka/redfish"
  openssl x509 -noout -in /var/lib/pelka/redfish/server.crt 2>/dev/null \
    || bad "the installation made no certificate in /var/lib/pelka/redfish"
  printf 'installed-pass\n' | runuser -u zeda-redfish -- zeda-redfish-user \
    --accounts /var/lib/pelka/redfish/accounts add admin || bad "zeda-redfish-user as zeda-redfish failed"
  port=$(python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
  python3 - /etc/pelka/pelka.json "$port" >"$w/installed-pelka.json" <<'PY' || bad "the installed configuration has no redfish member"
import json, sys
c = json.load(open(sys.argv[1]))
c["redfish"]["listen"] = "127.0.0.1:" + sys.argv[2]
print(json.dumps(c))
PY
  chmod 644 "$w/installed-pelka.json"
  # setpriv replaces itself with the daemon, so $! is the daemon's pid.
  setpriv --reuid=zeda-redfish --regid=zeda-redfish --init-groups --no-new-privs \
    /usr/sbin/zeda-redfishd --config "$w/installed-pelka.json" 2>"$w/installed-daemon.log" &
  pid=$!
  for _ in $(seq 100); do
    grep -q "Serving https://" "$w/installed-daemon.log" 2>/dev/null && break
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.1
  done
  url="https://127.0.0.1:$port"
  curl -sk --max-time 10 -u admin:installed-pass "$url/redfish/v1/Systems" >"$w/installed-systems.json" || true
  echo "== installed zeda-redfishd as zeda-redfish, GET /redfish/v1/Systems:"
  cat "$w/installed-systems.json"; echo
  python3 -c 'import json,sys; assert json.load(open(sys.argv[1]))["Members@odata.count"] == 1' \
    "$w/installed-systems.json" 2>/dev/null \
    || bad "the installed daemon as zeda-redfish did not list this machine: $(tail -2 "$w/installed-daemon.log")"
  kill -TERM "$pid" 2>/dev/null || true
  wait "$pid" || status=$?
  [ $status -eq 0 ] || bad "the installed daemon ended with status $status after SIGTERM"
  [ "$(stat -c '%U %a' /var/lib/pelka/redfish/server.key 2>/dev/null)" = "zeda-redfish 600" ] \
    || bad "after the first start, the key in /var/lib/pelka/redfish is not zeda-redfish's, mode 0600"
}

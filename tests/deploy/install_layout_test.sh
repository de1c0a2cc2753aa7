#!/usr/bin/env bash
# cmake --install lays out the provider directory (module + libPelkaUtility,
# no separate binding), zeda-cim and zeda-register, the class MOF, both
# registrations, the configuration (this machine through the linux source,
# tried over the recorded machine of tests/fixtures/linux) and the man pages;
# the installed tree still works when moved elsewhere, its zeda-cim loads the
# installed module and answers exactly as the build tree's; zeda-register
# --dry-run prints the object managers' commands.
# usage: install_layout_test.sh BUILD_DIR SOURCE_DIR BUILD_ZEDA_CIM BUILD_MODULE
set -u
build=$1 src=$2 cim=$3 module=$4
w=$(mktemp -d); trap 'rm -rf "$w"' EXIT
fail=0
bad() { echo "FAILED: $*"; fail=1; }

cmake --install "$build" --prefix "$w/p" >"$w/install.log" 2>&1 || { cat "$w/install.log"; bad "cmake --install"; exit 1; }
mv "$w/p" "$w/moved"; p=$w/moved

mod=$(find "$p" -name libZEDA_DiskDriveLite.so)
[ "$(echo "$mod" | grep -c .)" -eq 1 ] || { bad "one installed module expected, found: $mod"; exit 1; }
pdir=$(dirname "$mod")
[ "$(basename "$pdir")" = cmpi ] || bad "provider directory $pdir is not .../cmpi"
[ -f "$pdir/libPelkaUtility.so" ] || bad "libPelkaUtility.so not next to the module"
[ -z "$(find "$p" -name 'libcmpiCppImpl*')" ] || bad "a separate binding library is installed"
for lib in "$mod" "$pdir/libPelkaUtility.so"; do
  readelf -d "$lib" | grep -q 'NEEDED.*cmpiCppImpl' && bad "$(basename "$lib") needs libcmpiCppImpl"
  runpath=$(readelf -d "$lib" | sed -n 's/.*R\(UN\)\{0,1\}PATH.*\[\(.*\)\]/\2/p')
  [ "$runpath" = '$ORIGIN' ] || bad "$(basename "$lib") run path is '$runpath', not \$ORIGIN"
done
for f in bin/zeda-cim bin/zeda-register; do [ -x "$p/$f" ] || bad "no executable $f"; done
d=$p/share/zeda-diskdrivelite
for f in ZEDA_DiskDriveLite.mof ZEDA_DiskDriveLite.reg ZEDA_DiskDriveLite-pegasus.mof inventory.json; do
  [ -f "$d/$f" ] || bad "no share/zeda-diskdrivelite/$f"
done
cmp -s "$d/ZEDA_DiskDriveLite.mof" "$src/schema/ZEDA_DiskDriveLite.mof" || bad "installed class MOF differs"
for f in zeda-cim.1 zeda-register.1; do [ -f "$p/share/man/man1/$f" ] || bad "no man page $f"; done
python3 -c 'import json,sys; c=json.load(open(sys.argv[1])); assert c["programData"] and c["sources"]' \
  "$p/etc/pelka/pelka.json" || bad "etc/pelka/pelka.json missing or not the configuration format"
# The shipped configuration serves the machine it is installed on (a linux
# source with the machine's own root, smartctl and name) and keeps logs a week.
python3 - "$p/etc/pelka/pelka.json" <<'EOF' || bad "etc/pelka/pelka.json does not serve this machine"
import json, sys
c = json.load(open(sys.argv[1]))
assert c["sources"] == [{"type": "linux"}], c
assert c.get("logs") == {"keepDays": 7}, c
EOF

# The installed zeda-cim, moved with its tree, loads the installed module and
# its companion, and answers byte for byte as the build tree does.
run() { "$@" --inventory "$src/examples/inventory.json" --program-data "$w/data" --format json ei ZEDA_DiskDrive; }
# The loader's report goes to files of its own: zeda-cim keeps stderr for its
# own one line.
LD_DEBUG=files LD_DEBUG_OUTPUT="$w/loader" run "$p/bin/zeda-cim" >"$w/installed.json" 2>/dev/null \
  || bad "installed zeda-cim failed"
cat "$w"/loader.* >"$w/loader.log" 2>/dev/null
run "$cim" --module "$module" >"$w/build.json" 2>/dev/null || bad "build zeda-cim failed"
grep -q "file=$mod " "$w/loader.log" || bad "installed zeda-cim did not load $mod"
grep -q "file=$pdir/libPelkaUtility.so " "$w/loader.log" || bad "installed module did not load its companion from $pdir"
[ -s "$w/installed.json" ] && cmp -s "$w/installed.json" "$w/build.json" || bad "installed answer differs from the build's"
python3 -c 'import json,sys; assert len(json.load(open(sys.argv[1]))["results"]) > 0' "$w/installed.json" \
  || bad "installed zeda-cim answered no disk"

# The shipped configuration with only the machine's place changed (the
# recorded machine of tests/fixtures/linux and its stand-in smartctl): the
# installed zeda-cim answers its nine disks, the NAS named after this host.
python3 - "$p/etc/pelka/pelka.json" "$src/tests/fixtures/linux" "$w/fixture-data" >"$w/fixture.json" <<'EOF'
import json, sys
c = json.load(open(sys.argv[1]))
c["sources"][0].update(root=sys.argv[2] + "/root", smartctl=sys.argv[2] + "/smartctl")
c["programData"] = sys.argv[3]
print(json.dumps(c))
EOF
"$p/bin/zeda-cim" --config "$w/fixture.json" --format json ei ZEDA_DiskDrive >"$w/fixture-answer.json" 2>/dev/null \
  || bad "installed zeda-cim over the shipped configuration failed"
python3 - "$w/fixture-answer.json" "ZEDA:$(hostname)" <<'EOF' || bad "shipped configuration: unexpected answer over the fixture machine"
import json, sys
drives = [{p["name"]: p["value"] for p in r["properties"]} for r in json.load(open(sys.argv[1]))["results"]]
assert len(drives) == 9 and {d["SystemName"] for d in drives} == {sys.argv[2]}, drives
EOF

# zeda-register --dry-run: the commands it would run, with the installed files.
expect() {  # expect <expected stdout> <zeda-register args...>
  local want=$1; shift
  local got; got=$("$p/bin/zeda-register" "$@" --dry-run | grep -v '^#')
  [ "$got" = "$want" ] || { bad "zeda-register $*"; diff <(echo "$want") <(echo "$got"); }
}
expect "sfcbstage -n root/cimv2 -r $d/ZEDA_DiskDriveLite.reg $d/ZEDA_DiskDriveLite.mof
sfcbrepos -f" --cimom sfcb
expect "/opt/sfcb/bin/sfcbstage -n root/cimv2 -r $d/ZEDA_DiskDriveLite.reg $d/ZEDA_DiskDriveLite.mof
/opt/sfcb/bin/sfcbrepos -f -c /opt/cim" --cimom sfcb --tools /opt/sfcb/bin --cim-schema /opt/cim
expect "sfcbunstage -n root/cimv2 -r ZEDA_DiskDriveLite.reg ZEDA_DiskDriveLite.mof
sfcbrepos -f" --cimom sfcb --unregister
expect "cimmof -n root/cimv2 $d/ZEDA_DiskDriveLite.mof
cimmof -n root/PG_InterOp $d/ZEDA_DiskDriveLite-pegasus.mof" --cimom pegasus
expect "cimprovider -r -m ZEDA_DiskDriveLite" --cimom pegasus --unregister
"$p/bin/zeda-register" --cimom sfcb --dry-run | grep -q "providerDirs in sfcb.cfg must list $pdir" \
  || bad "zeda-register does not name the provider directory for sfcb.cfg"
"$p/bin/zeda-register" --cimom openwbem --dry-run >/dev/null 2>&1; [ $? -eq 2 ] || bad "unknown object manager accepted"
noschema=$(mktemp -d)
msg=$("$p/bin/zeda-register" --cimom sfcb --tools /nonexistent --cim-schema "$noschema" 2>&1); rc=$?
rmdir "$noschema"
[ $rc -eq 2 ] && [ "$(echo "$msg" | wc -l)" -eq 1 ] && echo "$msg" | grep -q "holds no CIM_Schema.mof" \
  || bad "a schema directory without CIM_Schema.mof was not refused in one line (rc $rc: $msg)"

[ $fail -eq 0 ] && echo "install layout, relocated zeda-cim and zeda-register commands as expected"
exit $fail

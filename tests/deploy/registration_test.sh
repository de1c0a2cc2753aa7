#!/usr/bin/env bash
# The committed registrations are what zeda-registration derives from the
# module's list of served classes, that list names exactly the factories the
# module exports, and the class MOF declares every registered class.
# usage: registration_test.sh ZEDA_REGISTRATION SOURCE_DIR MODULE NM
set -u
gen=$1 src=$2 module=$3 nm=$4
fail=0
check() { if ! "$@"; then echo "FAILED: ${*: -1}"; fail=1; fi; }

same() {  # same <what> <committed file>
  if ! diff -u "$2" <("$gen" "$1"); then
    echo "FAILED: $2 differs from 'zeda-registration $1' (regenerate it with that command)"
    return 1
  fi
}
check same sfcb "$src/schema/ZEDA_DiskDriveLite.reg"
check same pegasus "$src/schema/ZEDA_DiskDriveLite-pegasus.mof"

listed=$("$gen" factories | sort)
exported=$("$nm" -D --defined-only "$module" | awk '{print $3}' | sort)
if [ "$listed" != "$exported" ]; then
  echo "FAILED: exported factories differ from the served classes"
  diff <(echo "$listed") <(echo "$exported")
  fail=1
fi
[ "$(echo "$listed" | wc -l)" -eq 17 ] || { echo "FAILED: expected 17 factories"; fail=1; }

# Every registered class (sfcb sections, Pegasus capabilities) is declared.
for cls in $(sed -n 's/^\[\(.*\)\]$/\1/p' "$src/schema/ZEDA_DiskDriveLite.reg"); do
  grep -q "^class $cls :" "$src/schema/ZEDA_DiskDriveLite.mof" \
    || { echo "FAILED: $cls registered but not declared in the class MOF"; fail=1; }
  grep -q "ClassName = \"$cls\";" "$src/schema/ZEDA_DiskDriveLite-pegasus.mof" \
    || { echo "FAILED: $cls has no Pegasus capabilities"; fail=1; }
done
[ "$(grep -c '^\[' "$src/schema/ZEDA_DiskDriveLite.reg")" -eq 11 ] \
  || { echo "FAILED: expected 11 registered classes"; fail=1; }

# Association classes are registered as such, and only those.
for cls in $(sed -n 's/^\[\(.*\)\]$/\1/p' "$src/schema/ZEDA_DiskDriveLite.reg"); do
  type=$(awk -v c="[$cls]" '$0 == c {f = 1; next} f && /type:/ {sub(/^ *type: */, ""); print; exit}' \
    "$src/schema/ZEDA_DiskDriveLite.reg")
  if "$nm" -D --defined-only "$module" | grep -q " ${cls}Provider_Create_AssociationMI$"; then
    [[ $type == *association* ]] || { echo "FAILED: $cls exports an association MI, registered as '$type'"; fail=1; }
  else
    [[ $type != *association* ]] || { echo "FAILED: $cls registered as association without the factory"; fail=1; }
  fi
done
[ $fail -eq 0 ] && echo "registrations match the served classes and the module's 17 factories"
exit $fail

#!/usr/bin/env bash
# The README's commands may run in any order on one checkout: scripts/run and
# scripts/test share build/, and CMake keeps cached options. Configures a
# scratch build directory the way each script does, in both orders, and
# checks that every script gets exactly the options it relies on.
#   setup_order_test.sh <repository root>
set -euo pipefail
root="${1:?repository root}"
source "$root/scripts/lib/common.sh"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
failures=0

# expect <build dir> <what> NAME=VALUE...
expect() {
  local dir="$1" what="$2" pair name want got; shift 2
  for pair in "$@"; do
    name="${pair%%=*}"; want="${pair#*=}"
    got="$(sed -n "s/^$name:BOOL=//p" "$dir/CMakeCache.txt")"
    if [ "$got" != "$want" ]; then
      echo "FAIL: $what: $name is '$got', expected '$want'"
      failures=$((failures + 1))
    fi
  done
}

plain="$scratch/build"
zeda_configure "$plain" RelWithDebInfo "${ZEDA_RUN_OPTIONS[@]}"
expect "$plain" "scripts/run" ZEDA_BUILD_TESTS=OFF ZEDA_BUILD_BENCH=OFF ZEDA_SANITIZE=OFF
zeda_configure "$plain" RelWithDebInfo "${ZEDA_PLAIN_TEST_OPTIONS[@]}"
expect "$plain" "scripts/test after scripts/run" ZEDA_BUILD_TESTS=ON ZEDA_BUILD_BENCH=ON ZEDA_SANITIZE=OFF
zeda_configure "$plain" RelWithDebInfo "${ZEDA_RUN_OPTIONS[@]}"
expect "$plain" "scripts/run after scripts/test" ZEDA_BUILD_TESTS=OFF ZEDA_BUILD_BENCH=OFF ZEDA_SANITIZE=OFF

asan="$scratch/build-asan"
zeda_configure "$asan" Debug -DZEDA_SANITIZE=OFF -DZEDA_BUILD_TESTS=OFF
zeda_configure "$asan" Debug "${ZEDA_SANITIZER_TEST_OPTIONS[@]}"
expect "$asan" "sanitizer build over a stale cache" ZEDA_BUILD_TESTS=ON ZEDA_SANITIZE=ON

# Every ctest call of the scripts refuses an empty suite. A call is ctest in
# command position (line start, after ; & | ( then do), not the word in a message.
calls="$(grep -hE '(^|[;&|(]|then|do)[[:space:]]*ctest[[:space:]]' $(find "$root/scripts" -type f) \
          | grep -v '^ *#' || true)"
if [ -z "$calls" ]; then
  echo "FAIL: no ctest call found in scripts/"
  failures=$((failures + 1))
elif grep -qv -- '--no-tests=error' <<<"$calls"; then
  echo "FAIL: a ctest call without --no-tests=error:"; grep -v -- '--no-tests=error' <<<"$calls"
  failures=$((failures + 1))
fi
if (cd "$plain" && ctest --no-tests=error -R '^no such test$' >/dev/null 2>&1); then
  echo "FAIL: ctest --no-tests=error accepted an empty selection"
  failures=$((failures + 1))
fi

[ "$failures" -eq 0 ] && echo "setup order: every script states its options"
exit $(( failures > 0 ))

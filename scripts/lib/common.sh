# Shared by scripts/run and scripts/test: repository root, package check and
# installation, and the CMake configure/build steps.

ZEDA_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
ZEDA_JOBS="${ZEDA_JOBS:-$(nproc)}"

# Debian 12 packages the build and the tests need.
ZEDA_PACKAGES=(g++ clang libclang-rt-14-dev lld cmake ninja-build make pkg-config binutils
  libgoogle-glog-dev libboost-dev nlohmann-json3-dev libsimdjson-dev
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  smartmontools dpkg-dev
  libssl-dev libcrypt-dev python3-sushy redfishtool curl)
# What the DMTF Redfish Service Validator's offline bundle needs besides
# python3 (scripts/test-redfish installs them when the bundle is there).
ZEDA_REDFISH_VALIDATOR_PACKAGES=(python3-requests python3-colorama python3-openpyxl
  python3-requests-toolbelt python3-requests-unixsocket python3-xlsxwriter python3-jsonpatch
  python3-json-pointer)

# Every build states every option it relies on: CMake keeps cached values, so
# a build directory configured by one script must not change what another
# script builds in it (scripts/run then scripts/test share build/).
ZEDA_GCC=(-DCMAKE_C_COMPILER=gcc -DCMAKE_CXX_COMPILER=g++)
ZEDA_RUN_OPTIONS=("${ZEDA_GCC[@]}" -DZEDA_SANITIZE=OFF -DZEDA_BUILD_TESTS=OFF -DZEDA_BUILD_BENCH=OFF)
ZEDA_PLAIN_TEST_OPTIONS=("${ZEDA_GCC[@]}" -DZEDA_SANITIZE=OFF -DZEDA_BUILD_TESTS=ON -DZEDA_BUILD_BENCH=ON)
# The sanitizer builds use clang, which compiles them much faster than g++;
# the one under AddressSanitizer also builds the libFuzzer harnesses, so
# scripts/test fuzzes with the objects it has just tested.
ZEDA_CLANG=(-DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++)
ZEDA_SANITIZER_TEST_OPTIONS=("${ZEDA_CLANG[@]}" -DZEDA_SANITIZE=ON -DZEDA_FUZZ=ON
  -DZEDA_TSAN=OFF -DZEDA_BUILD_TESTS=ON -DZEDA_BUILD_BENCH=OFF)
ZEDA_TSAN_OPTIONS=("${ZEDA_CLANG[@]}" -DZEDA_TSAN=ON -DZEDA_SANITIZE=OFF -DZEDA_FUZZ=OFF
  -DZEDA_BUILD_TESTS=ON -DZEDA_BUILD_BENCH=OFF)
ZEDA_FUZZ_OPTIONS=("${ZEDA_CLANG[@]}" -DZEDA_FUZZ=ON -DZEDA_SANITIZE=OFF -DZEDA_TSAN=OFF
  -DZEDA_BUILD_TESTS=OFF -DZEDA_BUILD_BENCH=OFF)
# The Debian package (scripts/package) installs below /usr.
ZEDA_PACKAGE_OPTIONS=("${ZEDA_GCC[@]}" -DZEDA_SANITIZE=OFF -DZEDA_BUILD_TESTS=OFF -DZEDA_BUILD_BENCH=OFF
  -DCMAKE_INSTALL_PREFIX=/usr)

zeda_die() { echo "error: $*" >&2; exit 1; }

# Installs whatever of ZEDA_PACKAGES is missing (nothing when all are there).
zeda_install_missing() {
  local missing=() pkg
  for pkg in "${ZEDA_PACKAGES[@]}"; do
    dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed" \
      || missing+=("$pkg")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "== installing: ${missing[*]}"
  local sudo=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || zeda_die "not root and no sudo: install ${missing[*]} by hand"
    sudo=(sudo)
  fi
  "${sudo[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq "${missing[@]}" >/dev/null
}

# zeda_configure <build dir> <build type> [cmake args...]
# Builds use Ninja, which keeps both cores busy across target boundaries.
# Compilers are passed as full paths; a build directory configured earlier
# with another generator or C++ compiler is configured afresh (CMake refuses
# to switch generators in place).
zeda_configure() {
  local dir="$1" type="$2"; shift 2
  local args=() arg cxx="" name
  for arg in "$@"; do
    if [[ "$arg" =~ ^-DCMAKE_(C|CXX)_COMPILER=(.*)$ ]]; then
      name="${BASH_REMATCH[2]}"
      arg="-DCMAKE_${BASH_REMATCH[1]}_COMPILER=$(command -v "$name")" \
        || zeda_die "compiler $name not found"
      [ "${BASH_REMATCH[1]}" = CXX ] && cxx="${arg#*=}"
    fi
    args+=("$arg")
  done
  local cache="$dir/CMakeCache.txt"
  if [ -f "$cache" ] && { ! grep -qx 'CMAKE_GENERATOR:INTERNAL=Ninja' "$cache" \
       || { [ -n "$cxx" ] && ! grep -qx "CMAKE_CXX_COMPILER:[A-Z]*=$cxx" "$cache"; }; }; then
    rm -rf "$cache" "$dir/CMakeFiles"
  fi
  cmake -G Ninja -S "$ZEDA_ROOT" -B "$dir" -DCMAKE_BUILD_TYPE="$type" "${args[@]}" >/dev/null
}

# zeda_build <build dir> <build type> [extra cmake args...] -- [targets...]
zeda_build() {
  local dir="$1" type="$2"; shift 2
  local cmake_args=() targets=()
  while [ $# -gt 0 ] && [ "$1" != "--" ]; do cmake_args+=("$1"); shift; done
  [ "${1:-}" = "--" ] && shift
  targets=("$@")
  zeda_configure "$dir" "$type" "${cmake_args[@]}"
  if [ ${#targets[@]} -gt 0 ]; then
    cmake --build "$dir" -j "$ZEDA_JOBS" --target "${targets[@]}"
  else
    cmake --build "$dir" -j "$ZEDA_JOBS"
  fi
}

# zeda_ctest <build dir> [extra ctest args...]: runs the suite of a build;
# a build that holds no test is an error, not an empty success.
zeda_ctest() {
  local dir="$1"; shift
  (cd "$dir" && ctest --output-on-failure --no-tests=error -j "$ZEDA_JOBS" "$@")
}

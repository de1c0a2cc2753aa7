# Shared by scripts/run and scripts/test: repository root, package check and
# installation, and the CMake configure/build steps.

ZEDA_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
ZEDA_JOBS="${ZEDA_JOBS:-$(nproc)}"

# Debian 12 packages the build and the tests need.
ZEDA_PACKAGES=(g++ cmake make pkg-config binutils
  libgoogle-glog-dev libboost-dev nlohmann-json3-dev
  libgtest-dev libgmock-dev googletest libbenchmark-dev)

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

# zeda_build <build dir> <build type> [extra cmake args...] -- [targets...]
zeda_build() {
  local dir="$1" type="$2"; shift 2
  local cmake_args=() targets=()
  while [ $# -gt 0 ] && [ "$1" != "--" ]; do cmake_args+=("$1"); shift; done
  [ "${1:-}" = "--" ] && shift
  targets=("$@")
  cmake -S "$ZEDA_ROOT" -B "$dir" -DCMAKE_BUILD_TYPE="$type" "${cmake_args[@]}" >/dev/null
  if [ ${#targets[@]} -gt 0 ]; then
    cmake --build "$dir" -j "$ZEDA_JOBS" --target "${targets[@]}"
  else
    cmake --build "$dir" -j "$ZEDA_JOBS"
  fi
}

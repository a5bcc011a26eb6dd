# Shared by ./run and ./test: the packages they need and how a tree is built. Sourced, never run.

say() { printf '==> %s\n' "$*"; }

# Everything comes from Debian 12. `dpkg-query` answers without the network, so a machine that has all of it
# stays offline.
packages_build="g++ cmake ninja-build git pkg-config qt6-base-dev qt6-base-dev-tools qt6-serialport-dev libxlsxwriter-dev zlib1g-dev fonts-dejavu-core"
packages_test="libgtest-dev poppler-utils unzip clang-format clang-tidy"
packages_bench="libbenchmark-dev libgsl-dev"

need_packages() {
  local missing=""
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $package"
  done
  [ -z "$missing" ] && return 0
  say "installing:$missing"
  local root=""
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { say "these packages are missing and there is no sudo:$missing"; exit 1; }
    root=sudo
  fi
  $root apt-get update -qq
  # shellcheck disable=SC2086
  $root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# build PRESET [cmake arguments...]; targets in $targets
build() {
  local preset=$1
  shift
  local launcher=()
  if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    export CCACHE_SLOPPINESS=pch_defines,time_macros
  fi
  say "configuring build/$preset"
  cmake --preset "$preset" "${launcher[@]}" "$@" >"build-$preset.log" 2>&1 || { cat "build-$preset.log"; rm -f "build-$preset.log"; return 1; }
  rm -f "build-$preset.log"
  say "building build/$preset"
  # shellcheck disable=SC2086
  cmake --build --preset "$preset" ${targets:+--target $targets}
}

first_files() {
  local beside=$1
  for file in packaging/KELVO.ini packaging/DEFAULT.CLI; do
    [ -e "$beside/$(basename "$file")" ] || cp "$file" "$beside/"
  done
}

# Shared by ./run and ./test: the packages they need and how a tree is built. Sourced, never run.

say() { printf '==> %s\n' "$*"; }

# Everything comes from Debian 12. `dpkg-query` answers without the network, so a machine that has all of it
# stays offline.
packages_build="g++ cmake ninja-build git pkg-config qt6-base-dev qt6-base-dev-tools qt6-serialport-dev zlib1g-dev libboost-math-dev nlohmann-json3-dev fonts-dejavu-core"
packages_tour="libgtest-dev poppler-utils"
packages_test="$packages_tour clang-format clang-tidy"
packages_package="build-essential dpkg-dev debhelper pkgconf cmark-gfm libgtest-dev lintian"
packages_bench="libbenchmark-dev libgsl-dev"

# What is not removed at the end of a step, whichever way it ends, goes here.
litter=""
trap 'rm -f $litter' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# duration SECONDS: "48 s", "3 min 20 s"
duration() {
  if [ "$1" -lt 60 ]; then printf '%d s' "$1"; else printf '%d min %d s' $(($1 / 60)) $(($1 % 60)); fi
}

# Everything is built below ./build, so the clone must be writable; told before anything is installed.
need_writable() {
  if ! mkdir -p build 2>/dev/null || [ ! -w build ]; then
    say "$PWD cannot be written by $(id -un), and everything is built in its folder build/."
    say "Take a clone of your own:  git clone $PWD ~/kelvo && cd ~/kelvo && ./run"
    exit 1
  fi
}

# Shows on one line of a terminal, or as the few stages elsewhere, what apt writes.
follow_apt() {
  local line stage="" now
  while IFS= read -r line; do
    case "$line" in
      Get:* | Hit:*) now=fetching ;;
      Unpacking*) now=unpacking ;;
      "Setting up"*) now="setting up" ;;
      *) continue ;;
    esac
    if [ -t 1 ]; then
      printf '\r\033[K    %.74s' "$line"
    elif [ "$now" != "$stage" ]; then
      printf '    %s\n' "$now"
    fi
    stage=$now
  done
  if [ -t 1 ]; then printf '\r\033[K'; fi
}

# no_network LOG: why apt has reached nothing at all, nothing when it has. `apt-get update` calls that a success.
no_network() {
  if grep -q '^\(Get\|Hit\):' "$1"; then return; fi
  grep -o -m 1 "Temporary failure resolving [^ ]*\|Could not resolve [^ ]*\|Could not connect to [^ ]*\|Unable to connect to [^ ]*\|Cannot initiate the connection to [^ ]*\|Connection \(timed out\|failed\)" "$1" || true
}

# run_apt ROOT ARGUMENTS...: apt-get with its progress shown; its whole output only when it fails for a reason of its own
run_apt() {
  local root=$1 log failed="" why
  shift
  log=$(mktemp)
  litter="$litter $log"
  $root env DEBIAN_FRONTEND=noninteractive LC_ALL=C apt-get -q "$@" </dev/null 2>&1 | tee "$log" | follow_apt || failed=yes
  why=$(no_network "$log")
  if [ -n "$why" ]; then
    say "apt has no network ($why); connect this machine and start again"
    exit 1
  fi
  if [ -n "$failed" ]; then
    tail -n 20 "$log"
    say "apt-get $1 failed; what it wrote last stands above"
    exit 1
  fi
}

# need_packages PACKAGE...: installs what is missing. Call it once with all that the whole run will need.
need_packages() {
  local missing="" package root="" began=$SECONDS
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $package"
  done
  [ -z "$missing" ] && return 0
  if [ "$(id -u)" -ne 0 ]; then
    # Nothing is asked: sudo either needs no password, or an administrator gets the one line.
    if ! { command -v sudo && sudo -n true; } >/dev/null 2>&1; then
      say "missing:$missing"
      say "you cannot install them without a password; this line does it, for you or your administrator:"
      printf '\n    sudo sh -c "apt-get update && apt-get install -y --no-install-recommends%s"\n\n' "$missing"
      exit 1
    fi
    root="sudo -n"
  fi
  say "installing with apt:$missing"
  say "apt-get update"
  run_apt "$root" update
  # Answers its own question with no, and tells what a yes would bring.
  # shellcheck disable=SC2086
  $root env LC_ALL=C apt-get install --assume-no --no-install-recommends $missing </dev/null 2>/dev/null |
    sed -n 's/^[0-9]* upgraded, \([0-9]*\) newly installed.*/==> apt-get install: \1 packages/p
      s/^Need to get \(.*\) of archives\./    to fetch: \1/p
      s/^After this operation, \(.*\) of additional disk space.*/    to hold on the disk: \1/p' || true
  # shellcheck disable=SC2086
  run_apt "$root" install -y --no-install-recommends $missing
  say "installed in $(duration $((SECONDS - began)))"
}

# build PRESET [cmake arguments...]; targets in $targets
build() {
  local preset=$1 began=$SECONDS log
  shift
  local launcher=()
  if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    export CCACHE_SLOPPINESS=pch_defines,time_macros
  fi
  log=build/configure-$preset.log
  litter="$litter $log"
  say "configuring build/$preset"
  cmake --preset "$preset" "${launcher[@]}" "$@" >"$log" 2>&1 || { cat "$log"; return 1; }
  say "building build/$preset"
  # shellcheck disable=SC2086
  cmake --build --preset "$preset" ${targets:+--target $targets}
  say "built in $(duration $((SECONDS - began))); build/ holds $(du -sh build | cut -f1), ./run --clean frees it"
}

# Builds the package from a copy of the tree, since Debian's tools write beside the folder that they build. What
# DEB_BUILD_OPTIONS says holds, "nocheck" to leave the tests out.
package() {
  local began=$SECONDS out=$PWD/build/package log=$PWD/build/package.log version
  version=$(dpkg-parsechangelog -S Version)
  rm -rf "$out"
  mkdir -p "$out/kelvo-$version"
  tar -c --exclude=./.git --exclude=./build --exclude=./kept-from-build . | tar -x -C "$out/kelvo-$version"
  if command -v ccache >/dev/null; then
    # The build has a home of its own; the cache stays where it was.
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_SLOPPINESS=pch_defines,time_macros
    CCACHE_DIR=$(ccache -k cache_dir)
    export CCACHE_DIR
  fi
  export DEB_BUILD_OPTIONS="parallel=$(nproc) ${DEB_BUILD_OPTIONS:-}"
  say "building the package of version $version; what the build writes goes to $log"
  if ! (cd "$out/kelvo-$version" && dpkg-buildpackage -us -uc) >"$log" 2>&1; then
    tail -n 40 "$log"
    say "the package is not built; all that was written stands in $log"
    return 1
  fi
  rm -rf "$out/kelvo-$version"
  say "built in $(duration $((SECONDS - began)))"
  say "lintian"
  lintian --allow-root --fail-on error,warning "$out"/*.changes
  for file in "$out"/kelvo_*.deb; do
    say "the package is $file ($(du -h "$file" | cut -f1)); install it with:  sudo apt install $file"
  done
}

# Puts the first files beside the program, and before them what ./run --clean has kept. A text that came with it and was
# not changed gives way to a newer one.
first_files() {
  local beside=$1 file name
  mkdir -p "$beside/.first"
  for file in kept-from-build/* kept-from-build/.[!.]*; do
    name=$(basename "$file")
    if { [ -e "$file" ] || [ -L "$file" ]; } && [ ! -e "$beside/$name" ]; then
      mv "$file" "$beside/"
      say "brought back: $beside/$name"
    fi
  done
  rmdir kept-from-build 2>/dev/null || true
  for file in packaging/KELVO.ini packaging/DEFAULT.CLI packaging/*.TXT; do
    name=$(basename "$file")
    case "$name" in
      *.TXT) cmp -s "$beside/$name" "$beside/.first/$name" && rm -f "$beside/$name" ;;
    esac
    if [ ! -e "$beside/$name" ]; then
      cp "$file" "$beside/$name"
      cp "$file" "$beside/.first/$name"
    fi
  done
}

# users_files FOLDER: what lies beside the built program and is neither built nor a first file that was left as it came
users_files() {
  local entry name
  for entry in "$1"/* "$1"/.[!.]*; do
    name=${entry##*/}
    if [ ! -e "$entry" ] && [ ! -L "$entry" ] || [ "$name" = .first ]; then continue; fi
    if [ -f "$entry" ]; then
      if [ "$(head -c 4 "$entry" | tr -d '\0')" = $'\x7fELF' ] || cmp -s "$entry" "$1/.first/$name"; then continue; fi
    fi
    printf '%s\n' "$entry"
  done
}

# Frees what builds and pictures take. Settings, notes and measurements beside the built program are the user's.
clean() {
  local entry running kept=kept-from-build kept_files=()
  [ -d build ] || { say "there is no build/ to remove"; return 0; }
  running=$(find /proc -maxdepth 2 -name exe -lname "$PWD/build/*" 2>/dev/null | head -n 1) || true
  if [ -n "$running" ]; then
    say "$(readlink "$running") is running: end it first; nothing has been removed"
    return 1
  fi
  say "build/ holds $(du -sh build | cut -f1)"
  mapfile -t kept_files < <(users_files build/release/bin)
  for entry in "${kept_files[@]}"; do
    if [ -e "$kept/${entry##*/}" ]; then
      say "$kept/${entry##*/} is there already: move $entry elsewhere first; nothing has been removed"
      return 1
    fi
  done
  for entry in "${kept_files[@]}"; do
    mkdir -p "$kept"
    mv "$entry" "$kept/"
    say "kept: $kept/${entry##*/}; the next ./run brings it back"
  done
  if ! rm -rf --one-file-system build 2>/dev/null; then
    # The bare system of packaging/try-in-chroot.sh is root's.
    say "not all of build/ is yours; the rest goes with:  sudo rm -rf --one-file-system $PWD/build"
    return 1
  fi
  say "build/ is removed"
}

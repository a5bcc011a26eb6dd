#!/usr/bin/env bash
# What a machine can say of the style: formatting of every file, and clang-tidy on the folders named.
#   scripts/lint.sh BUILD FOLDER...   BUILD holds compile_commands.json; all of src and simulator when none is named
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
build=$1
shift
[ $# -gt 0 ] || set -- src simulator

files() { find "$@" -name '*.cpp' -o -name '*.h' | sort; }

files src simulator tests bench | xargs clang-format --dry-run --Werror
# The compiler's own warning flags are GCC's; clang's are not asked for.
files "$@" | grep '\.cpp$' |
  xargs -P "$(nproc)" -n 4 clang-tidy -p "$build" --quiet --extra-arg=-Wno-everything 2> >(grep -v 'warnings generated\|^Use -\|Suppressed' >&2)

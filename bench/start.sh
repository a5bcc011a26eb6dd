#!/usr/bin/env bash
# Processor instructions from the start of kelvo to the first frame that it hands to the display, beside those of a
# window with one label: what the toolkit takes by itself. Counted by valgrind on the offscreen platform, each in an
# empty home, so the figures are the same from run to run. The release build must stand with its benchmarks
# (./run --bench); needs valgrind (apt install valgrind).
set -euo pipefail
bin=$(dirname "$(readlink -f "$0")")/../build/release/bin
command -v valgrind >/dev/null || { echo "valgrind is missing: apt install valgrind" >&2; exit 1; }
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT

# count PROGRAM: prints the instructions up to its first frame; the program is ended then
count() {
  local name=${1##*/} home=$folder/home counted program
  counted=$folder/$name
  rm -rf "$home"
  mkdir -m 700 "$home"
  # The first frame leaves by this function; the counts so far are written before it runs.
  env -i HOME="$home" XDG_RUNTIME_DIR="$home" PATH="$PATH" LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen \
    valgrind --tool=callgrind --dump-before='QBackingStore::flush*' --callgrind-out-file="$counted" "$1" \
    >"$folder/$name.log" 2>&1 &
  program=$!
  for _ in {1..1200}; do
    grep -qs '^totals' "$counted.1" && break
    kill -0 "$program" 2>/dev/null || break
    sleep 0.1
  done
  kill "$program" 2>/dev/null || true
  wait "$program" 2>/dev/null || true
  sed -n 's/^totals: //p' "$counted.1" || { cat "$folder/$name.log" >&2; return 1; }
}
label=$(count "$bin/kelvo_bench_label")
kelvo=$(count "$bin/kelvo")
awk -v kelvo="$kelvo" -v label="$label" 'BEGIN {
  printf "kelvo %.1f million instructions to its first frame, a window with one label %.1f: %.2f times\n",
    kelvo / 1e6, label / 1e6, kelvo / label }'

#!/usr/bin/env bash
# kelvo-batch beside awk over 100,000 potentials, and its start beside /bin/true: the least processor time and the least
# time of 25 runs, in ms. The release build must stand (./run --build).
set -euo pipefail
tool=$(dirname "$(readlink -f "$0")")/../build/release/bin/kelvo-batch
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
cd "$folder"

printf 'ppm,mV\n1,120.3\n10,62.1\n100,4.2\n1000,-54.4\n' | "$tool" fit - --ion F --out F.ISE >points
awk 'BEGIN { srand(1); for (i = 0; i < 100000; ++i) printf "%.2f\n", -54 + 174 * rand() }' >potentials

# The same columns: LogC, mol/L, ppm and the bounds of the 95 % interval of that line.
sum='{ x = ($1 + 128.688) / -58.2; h = .00701 * sqrt(1.25 + (x + 2.779) ^ 2 / 5) * 2; m = 10 ^ x
printf "%s,%.2f,%.2E,%.2f,%.3g,%.3g,\n", $1, x, m, m * 18998.4, 18998.4 * 10 ^ (x - h), 18998.4 * 10 ^ (x + h) }'

least() {
  local name=$1
  shift
  TIMEFORMAT='%R %U %S'
  for _ in {1..25}; do { time "$@" <potentials >/dev/null; } 2>&1; done |
    awk -v name="$name" '{ cpu = 1000 * ($2 + $3); all = 1000 * $1
      if (NR == 1 || cpu < c) c = cpu; if (NR == 1 || all < a) a = all }
      END { printf "%-24s processor %3d ms, time %3d ms\n", name, c, a }'
}
least "kelvo-batch measure" "$tool" measure F.ISE
least "awk" awk "$sum"
least "kelvo-batch --version" "$tool" --version
least "/bin/true" /bin/true

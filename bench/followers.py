#!/usr/bin/env python3
"""Which headers of src/logic how many units follow, and what touching one costs.

    followers.py BUILD [SHARE]

BUILD is a built tree (build/dev). One line a header, the most followed first: followers, share of all units, and the
seconds that building these units took when they were last built (their sum, so divide by the number of jobs). With
SHARE (for example 0.33) only headers above it are shown, and the exit status is 1 when there is one.
"""
import collections
import os
import subprocess
import sys


def followers(build):
    found, units, unit = collections.defaultdict(set), set(), None
    for line in subprocess.check_output(["ninja", "-C", build, "-t", "deps"], text=True).splitlines():
        if line and not line.startswith(" "):
            unit = line.split(":")[0]
            if not unit.endswith(".o") or "cmake_pch" in unit or "mocs_" in unit:
                unit = None
            else:
                units.add(unit)
        elif unit and "src/logic/" in line and line.endswith(".h"):
            found[line.split("src/logic/")[1]].add(unit)
    return found, units


def seconds(build):
    times = {}
    with open(os.path.join(build, ".ninja_log"), encoding="utf-8") as log:
        for line in log:
            parts = line.rstrip("\n").split("\t")
            if len(parts) == 5:
                times[parts[3]] = (int(parts[1]) - int(parts[0])) / 1000
    return times


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    limit = float(sys.argv[2]) if len(sys.argv) > 2 else 0
    found, units = followers(sys.argv[1])
    times = seconds(sys.argv[1])
    above = 0
    for header, unit_set in sorted(found.items(), key=lambda item: (-len(item[1]), item[0])):
        share = len(unit_set) / len(units)
        if share <= limit:
            break
        above += 1
        print(f"{header:45} {len(unit_set):4} {share:6.1%} {sum(times.get(unit, 0) for unit in unit_set):8.1f} s")
    print(f"{len(units)} units")
    return 1 if limit and above else 0


if __name__ == "__main__":
    sys.exit(main())

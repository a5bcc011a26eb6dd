#!/usr/bin/env bash
# Runs the tests that stand in build/dev a second time as an ordinary user: one made for it, in a clone of this tree that
# the user owns, with nothing of this environment. The tests find the clone by KELVO_SOURCE_DIR, so nothing is built
# again. Needs root, since it makes the user and takes it away; whoever is no root has just run them as a user.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. scripts/common.sh

if [ "$(id -u)" -ne 0 ]; then
  say "the tests have run as the ordinary user $(id -un)"
  exit 0
fi
user=kelvo-test-$$
home=$(mktemp -d)
leave() {
  userdel -f "$user" 2>/dev/null || true
  rm -rf --one-file-system "$home"
}
trap leave EXIT
chmod 755 "$home"
useradd --no-create-home --home-dir "$home" --shell /bin/bash --user-group "$user"
mkdir -p "$home/kelvo/build/dev/bin"
tar -c --exclude=./build --exclude=./kept-from-build . | tar -x -C "$home/kelvo"
cp build/dev/bin/kelvo_logic_tests build/dev/bin/kelvo_gui_tests "$home/kelvo/build/dev/bin/"
chown -R "$user:" "$home"

say "running the tests of build/dev again as the user $user in a clone of its own"
# Each half to a log of its own, so that they do not write into each other's lines.
as_user() {
  (cd "$home/kelvo" && runuser -u "$user" -- env -i HOME="$home" PATH=/usr/bin:/bin LC_ALL=C.UTF-8 TMPDIR=/tmp \
    QT_QPA_PLATFORM=offscreen KELVO_SOURCE_DIR="$home/kelvo" "build/dev/bin/$1" --gtest_brief=1) >"$home/$1.log" 2>&1
}
as_user kelvo_logic_tests &
logic=$!
failed=""
as_user kelvo_gui_tests || failed=" kelvo_gui_tests"
wait "$logic" || failed="$failed kelvo_logic_tests"
for name in $failed; do tail -n 60 "$home/$name.log"; done
if [ -n "$failed" ]; then
  say "as an ordinary user these fail:$failed"
  exit 1
fi
tail -q -n 1 "$home"/*.log
say "all of them pass as an ordinary user, too"

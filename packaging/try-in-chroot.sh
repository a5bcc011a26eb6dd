#!/usr/bin/env bash
# Tries the package as a user of a bare Debian 12 would: installed, started, used, upgraded, removed, purged.
#   sudo packaging/try-in-chroot.sh [PACKAGE.deb]    build/package/kelvo_*.deb when none is named
#   sudo packaging/try-in-chroot.sh --build          the source package beside it is built in a bare system first, by a
#                                                    user, from what its build dependencies bring, and that is tried
# A minimal system is fetched from Debian's mirror into $KELVO_CHROOT (build/chroot) once; each run works on a copy.
# Needs debootstrap, root and the network of apt. Prints a line for all that holds and ends at the first that does not.
set -euo pipefail
# Mounts and processes of its own: they end with this script, whichever way it ends.
if [ "${1:-}" != --within ] && [ "$(id -u)" -eq 0 ]; then
  exec unshare --mount --pid --fork --kill-child "$(readlink -f "$0")" --within "$@"
fi
if [ "${1:-}" = --within ]; then shift; fi
began=$SECONDS
build=
if [ "${1:-}" = --build ]; then
  build=yes
  shift
fi
deb=${1:+$(readlink -f "$1")}
cd "$(dirname "$(readlink -f "$0")")/.."
deb=${deb:-$(ls build/package/kelvo_*.deb)}
base=${KELVO_CHROOT:-$PWD/build/chroot}
mirror=${MIRROR:-http://deb.debian.org/debian}
root=$base.run

fail() { printf 'FAILED  %s\n' "$*" >&2; exit 1; }
ok() { printf 'OK      %s\n' "$*"; }
[ "$(id -u)" -eq 0 ] || fail "this needs root"
[ -f "$deb" ] || fail "no package $deb; ./run --package builds it"
command -v debootstrap >/dev/null || fail "debootstrap is missing: apt install debootstrap"

leave() {
  umount "$root/home/sealed" "$root/dev/pts" "$root/proc" 2>/dev/null || true
  rm -rf --one-file-system "$root"
}
trap leave EXIT
leave

if [ ! -e "$base/.whole" ]; then
  rm -rf "$base"
  echo "fetching a minimal Debian 12 into $base"
  debootstrap --variant=minbase bookworm "$base" "$mirror" >"$base.log" 2>&1 || fail "debootstrap: see $base.log"
  touch "$base/.whole"
fi
# bare: a copy of the minimal system, in which no service starts
bare() {
  cp -a "$base" "$root"
  mount -t proc proc "$root/proc"
  mount -t devpts -o newinstance,ptmxmode=666 devpts "$root/dev/pts"
  ln -sf pts/ptmx "$root/dev/ptmx"
  cp /etc/resolv.conf /etc/hosts "$root/etc/" 2>/dev/null || true
  printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
  chmod +x "$root/usr/sbin/policy-rc.d"
}
inside() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
# as USER COMMAND: in a shell of the user
as() {
  local user=$1
  shift
  inside su -s /bin/sh "$user" -c "$*"
}
apt() { inside apt-get -qq -y --no-install-recommends "$@" >"$base.log" 2>&1 || { tail -n 20 "$base.log" >&2; fail "apt-get $*"; }; }

if [ -n "$build" ]; then
  bare
  apt update
  apt install dpkg-dev
  inside useradd -m builder
  cp "${deb%_*.deb}".dsc "${deb%_*.deb}".tar.xz "$root/home/builder/"
  apt build-dep "/home/builder/$(basename "${deb%_*.deb}").dsc"
  ok "the build dependencies come by apt"
  as builder "cd && dpkg-source -x kelvo_*.dsc kelvo && cd kelvo &&
    DEB_BUILD_OPTIONS=parallel=$(nproc) dpkg-buildpackage -b -us -uc" >"$base.build.log" 2>&1 ||
    { tail -n 20 "$base.build.log" >&2; fail "dpkg-buildpackage: see $base.build.log"; }
  rm -rf "$base.built"
  mkdir "$base.built"
  cp "$root"/home/builder/kelvo_*.deb "$base.built/"
  deb=$(ls "$base.built"/kelvo_*.deb)
  ok "a user builds it, its tests included ($((SECONDS - began)) s since the start)"
  leave
fi

bare
apt update
apt install xvfb xauth xdotool xdg-utils libfile-mimeinfo-perl desktop-file-utils shared-mime-info procps bash-completion
# What is there before, to be compared with what is there after. Caches and records of apt and dpkg are theirs.
everything() {
  (cd "$root" && find . -xdev \( -path ./proc -o -path ./dev -o -path ./tmp -o -path ./var/cache -o -path ./var/lib/apt \
    -o -path ./var/lib/dpkg -o -path ./var/log -o -path ./home \) -prune -o -print | grep -v 'cache$\|\.cache' | sort)
}
for user in fresh sealed; do inside useradd -m "$user"; done
inside useradd -M -d /nonexistent homeless

# The libraries first, so that what is compared below is the package alone.
depends=$(dpkg-deb -f "$deb" Depends | tr ',' '\n' | sed 's/|.*//; s/(.*//; s/ //g')
# shellcheck disable=SC2086
apt install $depends
everything >"$base.before"

version=$(dpkg-deb -f "$deb" Version)
cp "$deb" "$root/tmp/kelvo.deb"
apt install /tmp/kelvo.deb
ok "kelvo $version is installed by apt"
inside ldconfig
if inside sh -c 'ldd /usr/bin/kelvo' | grep 'not found'; then fail "a library is missing"; fi
if readelf -d "$root/usr/bin/kelvo" | grep -i 'runpath\|rpath'; then fail "a run path remains"; fi
ok "every library is found, no run path remains"

# started USER WINDOW COMMAND: the window comes up within 20 s, SIGTERM ends the program. Xvfb is this function's own.
started() {
  local user=$1 window=$2
  shift 2
  cat >"$root/tmp/started.sh" <<SCRIPT
cd /tmp
# A session has a folder for it; without one Qt says which it takes.
XDG_RUNTIME_DIR=/tmp/session.$user; export XDG_RUNTIME_DIR
mkdir -p -m 700 \$XDG_RUNTIME_DIR
Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp 3>/tmp/display.$user 2>/dev/null &
server=\$!
for i in \$(seq 100); do [ -s /tmp/display.$user ] && break; sleep 0.1; done
DISPLAY=:\$(cat /tmp/display.$user); export DISPLAY
began=\$(date +%s%3N)
$* >/tmp/said.$user 2>&1 &
program=\$!
found=
for i in \$(seq 1000); do
  found=\$(xdotool search --onlyvisible --name '$window' 2>/dev/null | head -n 1)
  [ -n "\$found" ] && break
  sleep 0.02
done
took=\$((\$(date +%s%3N) - began))
[ -n "\$found" ] && echo "\$took"
for i in \$(seq 50); do
  kids=\$(pgrep -u \$(id -u) -x kelvo) || break
  kill \$kids 2>/dev/null
  sleep 0.1
done
kill \$program \$server 2>/dev/null
wait
[ -n "\$found" ]
SCRIPT
  as "$user" "sh /tmp/started.sh" || { cat "$root/tmp/said.$user" >&2; return 1; }
  rm -f "$root/tmp/display.$user"
}
took=$(started fresh '^Kelvo$' kelvo) || fail "the program does not start for a user with an empty home"
ok "starts for a user with an empty home ($took ms to the first window)"
for file in KELVO.ini DEFAULT.CLI ISEINTRO.TXT PHINTRO.TXT; do
  [ -s "$root/home/fresh/.local/share/kelvo/$file" ] || fail "no $file in the user's folder"
done
ok "first files and texts lie in the user's folder"

mount --bind "$root/home/sealed" "$root/home/sealed"
mount -o remount,bind,ro "$root/home/sealed"
took=$(started sealed '^Kelvo$' kelvo) || fail "the program does not start where the home cannot be written"
ok "starts where the home cannot be written ($took ms)"
umount "$root/home/sealed"
took=$(started homeless '^Kelvo$' env -u HOME kelvo) || fail "the program does not start without a home"
ok "starts without a home ($took ms)"
for user in fresh sealed homeless; do
  [ ! -s "$root/tmp/said.$user" ] || { cat "$root/tmp/said.$user"; fail "the start for $user is not silent"; }
done
ok "no line on the terminal in any of them"
as fresh "cd /tmp && XDG_RUNTIME_DIR=/tmp/session.fresh QT_QPA_PLATFORM=offscreen timeout 3 kelvo" && code=0 || code=$?
[ "$code" -eq 124 ] || [ "$code" -eq 0 ] || [ "$code" -eq 143 ] || fail "offscreen: exit code $code"
ok "starts without a display server (offscreen)"

echo show | as fresh "kelvo-simulator --until-eof" >"$root/tmp/simulator" 2>&1 && grep -q COM1 "$root/tmp/simulator" ||
  { cat "$root/tmp/simulator" >&2; fail "kelvo-simulator does not stand as COM1"; }
ok "kelvo-simulator stands as COM1 and ends with its input"

# Files by their names, in both cases, whatever stands at the head of some.
mime() { as fresh "xdg-mime query filetype '$1'"; }
while read -r name type; do
  case "$type" in
    table | addition-table) printf 'Operator Name:\tAnn\r\n' ;;
    ph-table) printf 'Electrode 1 :\r\n' ;;
    *) printf '1\r\n' ;;
  esac >"$root/home/fresh/$name"
  chown --reference="$root/home/fresh" "$root/home/fresh/$name"
  [ "$(mime "/home/fresh/$name")" = "application/x-kelvo-$type" ] || fail "$name is $(mime "/home/fresh/$name")"
  [ "$(as fresh "xdg-mime query default application/x-kelvo-$type")" = org.example.kelvo.desktop ] ||
    fail "nothing opens application/x-kelvo-$type"
  rm "$root/home/fresh/$name"
done <<'KINDS'
A.ISE ise-calibration
a.ise ise-calibration
B.CLI ph-calibration
C.TAB table
D.PHC ph-table
d.pht ph-table
E.SMT addition-table
E.SDT addition-table
F.SMP addition
F.STD addition
KINDS
ok "xdg-mime knows the program's files in capitals and small letters, and opens them with it"

# A calibration of three standards of fluoride, as the program writes it.
printf '1\r\n0\r\n10\r\n3\r\n-4\r\n-3\r\n-2\r\n-56.5\r\n-115.5\r\n-174.5\r\n1.9\r\n19\r\n190\r\n.0001\r\n.001\r\n.01\r\n"25"\r\n"25/11/2026 08:00"\r\n"Ann"\r\n""\r\n""\r\n""\r\n' \
  >"$root/home/fresh/FLUORIDE.ISE"
chown --reference="$root/home/fresh" "$root/home/fresh/FLUORIDE.ISE"
# tells TOOL OPTION TEXT
tells() { as fresh "$1 $2" >"$root/tmp/said" 2>&1 && grep -q "$3" "$root/tmp/said" || { cat "$root/tmp/said" >&2; fail "$1 $2"; }; }
for tool in kelvo kelvo-batch kelvo-simulator; do tells "$tool" --help "$tool"; done
for tool in kelvo kelvo-batch kelvo-simulator; do tells "$tool" --version "$version"; done
ok "--help and --version answer without a display"

while read -r file window; do
  if [ "$file" = BUFFERS.CLI ]; then cp packaging/DEFAULT.CLI "$root/home/fresh/$file"; fi
  if [ ! -e "$root/home/fresh/$file" ]; then cp "tests/logic/tables/golden/$file" "$root/home/fresh/"; fi
  chown --reference="$root/home/fresh" "$root/home/fresh/$file"
  took=$(started fresh "$window" xdg-open "/home/fresh/$file" </dev/null) || fail "xdg-open does not open $file in its screen"
  ok "xdg-open brings $file into its screen, \"$window\" ($took ms)"
done <<'OPENED'
FLUORIDE.ISE ^ISE Measurement:
SAMPLES.TAB ^Data Table
LIVE.PHT ^Data Table
RECORD.PHC ^pH Recording
ADDITION.SMT ^Data Table
METHOD.STD METHOD.STD$
METHOD.SMP METHOD.SMP$
BUFFERS.CLI ^Kelvo : pH Measurement$
OPENED

# -80 mV lies 35.5 mV above the middle standard, 59 mV a decade: LogC -3.60.
as fresh "cd && printf -- '-115.5\n-80\n' | kelvo-batch measure FLUORIDE.ISE | cut -d, -f2 | paste -sd ' '" >"$root/tmp/said"
[ "$(cat "$root/tmp/said")" = "LogC -3.00 -3.60" ] || fail "kelvo-batch in a pipe: $(cat "$root/tmp/said")"
ok "kelvo-batch measures in a pipe"
as fresh "kelvo-batch show /nowhere.ISE" >"$root/tmp/said" 2>&1 && code=0 || code=$?
[ "$code" -eq 3 ] || fail "kelvo-batch shows a file that is not there (exit code $code)"
as fresh "bash -c '. /usr/share/bash-completion/bash_completion; _completion_loader kelvo-batch; complete -p kelvo-batch'" \
  >/dev/null || fail "bash does not complete kelvo-batch"
ok "kelvo-batch tells by its exit code what it cannot read, and bash completes it"

# An upgrade: the same package under a later version, with one text changed in it, one by the user.
dpkg-deb -R "$deb" "$root/tmp/next"
sed -i "s/^Version:.*/Version: $version+next/" "$root/tmp/next/DEBIAN/control"
for text in ISEINTRO PHINTRO; do printf 'of the next version\r\n' >>"$root/tmp/next/usr/share/kelvo/$text.TXT"; done
(cd "$root/tmp/next" && find usr -type f -exec md5sum {} + >DEBIAN/md5sums)
dpkg-deb --root-owner-group -b "$root/tmp/next" "$root/tmp/next.deb" >/dev/null
mine=$root/home/fresh/.local/share/kelvo
printf 'my own words\r\n' >>"$mine/PHINTRO.TXT"
sed -i 's/^Operator=.*/Operator=Ann\r/' "$mine/KELVO.ini"
cp -a "$mine" "$root/tmp/mine"
apt install /tmp/next.deb
started fresh '^Kelvo$' kelvo >/dev/null || fail "the program does not start after an upgrade"
grep -q 'of the next version' "$mine/ISEINTRO.TXT" || fail "an unchanged text is not renewed"
cmp -s "$mine/PHINTRO.TXT" "$root/tmp/mine/PHINTRO.TXT" || fail "the upgrade has overwritten a changed text"
cmp -s "$mine/KELVO.ini" "$root/tmp/mine/KELVO.ini" || fail "the upgrade has overwritten the settings"
ok "an upgrade renews what the user left alone and keeps what the user changed"

(cd "$root/home" && find fresh -type f -exec md5sum {} + | sort) >"$base.mine"
apt remove kelvo
everything >"$base.after"
diff "$base.before" "$base.after" || fail "a removal leaves this behind, or has taken it along"
apt install /tmp/kelvo.deb
apt purge kelvo
everything >"$base.after"
diff "$base.before" "$base.after" || fail "a purge leaves this behind, or has taken it along"
(cd "$root/home" && md5sum --quiet -c "$base.mine") || fail "a file of the user is gone or changed"
[ -z "$(as fresh "xdg-mime query default application/x-kelvo-table")" ] || fail "its files are still opened by it"
ok "removed and purged: nothing is left but the user's own files, and these are untouched"
leave
if [ -e "$root" ] || grep -q " $root" /proc/self/mounts; then fail "$root is not gone"; fi
ok "the system it was tried in is gone, nothing stays mounted; all of it took $((SECONDS - began)) s"

#!/usr/bin/env bash
# The Debian package installed into a clean root with dpkg: its dependencies are met by
# the runtime libraries of this Debian 12 system (the root's package database is this
# system's, its files are only the package's), `r6183ctl new` and `check` work from the
# installed tree, `r6183 --version` prints the version, and lintian finds no error.
# Usage: install_check.sh BUILD_DIR VERSION
set -euo pipefail
build=$1
version=$2
export PATH="$PATH:/usr/sbin:/sbin"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }

cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work/pkg" >"$work/cpack.log" 2>&1 || { cat "$work/cpack.log"; fail "cpack"; }
deb="$work/pkg/r6183_${version}_amd64.deb"
[ -f "$deb" ] || fail "no $deb"
echo "package: $(stat -c %s "$deb") bytes"

root="$work/root"
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates"
cp /var/lib/dpkg/status "$root/var/lib/dpkg/status"
# no --force-depends: an unmet dependency stops the install
dpkg --root="$root" --log=/dev/null --force-not-root -i "$deb" >"$work/dpkg.log" 2>&1 || { cat "$work/dpkg.log"; fail "dpkg -i"; }
dpkg --root="$root" -s r6183 | grep -qx "Status: install ok installed" || fail "not installed"

for f in usr/bin/r6183 usr/bin/r6183ctl usr/bin/r6183-sim usr/share/r6183/DEFAULT \
         usr/share/applications/org.r6183.ProgrammingTool.desktop usr/share/metainfo/org.r6183.ProgrammingTool.metainfo.xml \
         usr/share/icons/hicolor/16x16/apps/r6183.png usr/share/icons/hicolor/48x48/apps/r6183.png \
         usr/share/icons/hicolor/256x256/apps/r6183.png usr/share/man/man1/r6183ctl.1.gz usr/share/man/man1/r6183-sim.1.gz \
         usr/share/bash-completion/completions/r6183ctl usr/share/doc/r6183/copyright; do
  [ -s "$root/$f" ] || fail "missing $f"
done
for b in r6183 r6183ctl r6183-sim; do
  if ldd "$root/usr/bin/$b" | grep -q "not found"; then ldd "$root/usr/bin/$b"; fail "$b lacks a library"; fi
done

# an operator's first use: the application directory is made in the home directory
export HOME="$work/home" XDG_DATA_HOME="$work/home/data"
mkdir -p "$HOME"
"$root/usr/bin/r6183ctl" new "$work/site.mdb" >"$work/new.txt" 2>&1 || { cat "$work/new.txt"; fail "r6183ctl new"; }
"$root/usr/bin/r6183ctl" check "$work/site.mdb" >"$work/check.txt" 2>&1 || { cat "$work/check.txt"; fail "r6183ctl check"; }
head -1 "$work/check.txt" | grep -qx valid || fail "check says $(head -1 "$work/check.txt")"
[ -f "$XDG_DATA_HOME/r6183/DEFAULT" ] || fail "the application directory was not seeded from the package"
[ "$("$root/usr/bin/r6183" --version)" = "r6183 $version" ] || fail "r6183 --version says $("$root/usr/bin/r6183" --version)"

lintian --no-tag-display-limit "$deb" >"$work/lintian.txt" 2>&1 || true
if grep -q "^E:" "$work/lintian.txt"; then cat "$work/lintian.txt"; fail "lintian found errors"; fi
grep -c "^W:" "$work/lintian.txt" | sed 's/^/lintian warnings: /' || true

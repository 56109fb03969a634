#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs the packages of build/packages on this machine, as apt does for a user, and uses what they bring: for a
# machine that is thrown away (.ci/bare-machine). Needs root, and scripts/repository to have been run on the folder.
set -euo pipefail
cd "$(dirname "$0")/../.."
tests=$PWD/tests/install
packages=$PWD/build/packages
version=$(sed -n 's/^  VERSION //p' CMakeLists.txt)
triplet=$(dpkg-architecture -qDEB_HOST_MULTIARCH 2>/dev/null || echo "$(uname -m)-linux-gnu")
before=$(mktemp -d /var/tmp/before.XXXXXX)
export DEBIAN_FRONTEND=noninteractive

fail() {
  echo "FAILED: $*" >&2
  exit 1
}
install() { apt-get install -y -qq --no-install-recommends "$@" >/var/tmp/apt.log || { cat /var/tmp/apt.log && fail "installing $*"; }; }
# expect TEXT COMMAND...: the text is in what the command prints
expect() {
  local text=$1 said
  shift
  said=$("$@" 2>&1) || fail "$*: $said"
  grep -qF -- "$text" <<<"$said" || fail "$* did not say '$text': $said"
  echo "ok: $*"
}
# consume COMPONENTS: programs are built with the dev packages that are installed, in C++ and in C11
consume() {
  cmake -DPACKAGED=ON -DTESTS="$tests" -DSTAGE=/var/tmp/consumers -DLIBDIR="lib/$triplet" -DVERSION="$version" -DCXX=c++ -DCC=cc \
    -P "$tests/consume.cmake" >/var/tmp/consume.log 2>&1 || { cat /var/tmp/consume.log && fail "a consumer of $1"; }
  echo "ok: consumers of $1, by CMake and pkg-config, in C++20 and C11"
}

# Packages as they were before, of a lower version: those that are there now, packed again.
pack_as_before() {
  local package
  for package; do
    package=$(echo "$packages/${package}_"*.deb)
    dpkg-deb -R "$package" "$before/unpacked"
    sed -i "s/^Version: .*/Version: $version-0/; s/ (= $version-[^)]*)/ (= $version-0)/g" "$before/unpacked/DEBIAN/control"
    dpkg-deb -Znone -b "$before/unpacked" "$before" >/dev/null
    rm -r "$before/unpacked"
  done
}

apt-get update -qq
pack_as_before libzrcore1 libzrcore-linux1 zrcore-data zrcore-tools
install "$before"/*.deb
expect "zrcore $version" zrcore --version
[ "$(dpkg-query -Wf '${Version}' zrcore-tools)" = "$version-0" ] || fail "the older package is not there"

echo "deb [trusted=yes] file:$packages ./" >/etc/apt/sources.list.d/zrcore.list
apt-get update -qq
apt-get upgrade -y -qq >/dev/null
for package in libzrcore1 libzrcore-linux1 zrcore-data zrcore-tools; do
  now=$(dpkg-query -Wf '${Version}' $package)
  dpkg --compare-versions "$now" gt "$version-0" || fail "$package stayed $now"
done
echo "ok: apt upgraded $version-0 to $now"

# The tool, without compilers or anything else that builds.
expect "zrcore $version" zrcore --version
[ "$(cd / && zrcore trip /usr/share/zrcore/samples/drive.csv --json 2>/dev/null | grep -c latitude)" = 656 ] || fail "the drive"
expect '"features"' zrcore place /usr/share/zrcore/samples/places/nominatim/house.json --geojson
[ -f /usr/share/doc/zrcore-tools/copyright ] || fail "no copyright"
echo "ok: a drive was replayed"

# What builds with each dev package.
install libzrcore-dev g++ cmake make pkg-config
consume libzrcore-dev
install libzrcore-linux-dev
consume libzrcore-linux-dev
install libzrcore-gtk-dev zrcore-demo zrcore-doc xvfb
consume libzrcore-gtk-dev
[ -f /usr/share/doc/zrcore-doc/README.md.gz ] || [ -f /usr/share/doc/zrcore-doc/README.md ] || fail "no documentation"

# The window.
export HOME=/var/tmp/home XDG_RUNTIME_DIR=/var/tmp/run GDK_BACKEND=x11 GSETTINGS_BACKEND=memory GTK_A11Y=none ADW_DISABLE_PORTAL=1
export DBUS_SESSION_BUS_ADDRESS=unix:path=/var/tmp/no-bus PULSE_SERVER=unix:/var/tmp/no-sound
mkdir -p "$HOME" && mkdir -p -m 700 "$XDG_RUNTIME_DIR"
exec {display}< <(exec Xvfb -displayfd 1 -screen 0 1280x900x24 -nolisten tcp 2>/dev/null)
read -r -t 20 number <&"$display" || fail "no display"
export DISPLAY=:$number
exec {window}< <(exec zrcore-demo --print-state 2>/var/tmp/window.log)
shown=$!
read -r -t 60 state <&"$window" || { cat /var/tmp/window.log && fail "no window"; }
[[ $state == *"source=drive.csv"* ]] || fail "the window shows $state"
kill "$shown"
echo "ok: the window: $state"

# Gone as if it had never been there.
apt-get purge -y -qq 'libzrcore*' 'zrcore-*' >/dev/null
left=$(find /usr /etc /var/lib -iname '*zrcore*' -not -path '/var/lib/apt/*' -not -path '/var/lib/dpkg/*' -not -path /etc/apt/sources.list.d/zrcore.list)
[ -z "$left" ] || fail "left behind: $left"
echo "ok: nothing is left behind"

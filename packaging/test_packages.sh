#!/usr/bin/env bash
# test_packages.sh FOLDER: installs the packages in FOLDER into a throw-away Debian, uses them as a
# newcomer would, removes them again, and looks that nothing stays behind.
set -euo pipefail
packages=$(realpath "$1")
here=$(dirname "$(realpath "$0")")
root=$(mktemp -d)
trap 'rm -rf --one-file-system "$root"' EXIT

say() { printf '\n-- %s\n' "$*"; }
# Without the flags of whoever runs this.
inside() { env -u LDFLAGS -u CXXFLAGS -u CMAKE_CXX_COMPILER_LAUNCHER chroot "$root" "$@"; }

say "setting up a bare Debian with the apt sources of this machine"
mmdebstrap --quiet --variant=apt --include=g++,cmake,make,pkg-config \
  "$(. /etc/os-release && echo "$VERSION_CODENAME")" "$root" \
  $(find /etc/apt/sources.list /etc/apt/sources.list.d -name '*.list' -o -name '*.sources' 2>/dev/null)
mkdir "$root/packages" "$root/consumer"
cp "$packages"/*.deb "$root/packages"
cp "$here"/../tests/install/consumer/* "$root/consumer"
inside apt-get update -qq

say "installing"
inside sh -ec 'DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends /packages/*.deb' >/dev/null
inside sh -ec 'dpkg-query -W "*zel*"'

say "using"
inside sh -ec 'printf "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n" > /tmp/a.obj
  zel info /tmp/a.obj && zel convert /tmp/a.obj /tmp/a.stl && zel view --help >/dev/null
  cmake -S /consumer -B /tmp/consumer >/dev/null && cmake --build /tmp/consumer >/dev/null
  /tmp/consumer/consumer
  c++ -std=c++20 /consumer/consumer.cpp $(pkg-config --cflags --libs zel) -o /tmp/by-pkg-config
  /tmp/by-pkg-config'
if ls "$packages"/python3-zel*.deb >/dev/null 2>&1; then
  inside python3 -c 'import zel; m = zel.read("/tmp/a.stl"); print(m); assert len(m.triangles) == 1'
fi

say "removing"
inside sh -ec 'apt-get purge -y -qq $(dpkg-query -W -f "\${Package} " "*zel*")' >/dev/null
left=$(inside find / -xdev -path /packages -prune -o -path /proc -prune -o -path /tmp -prune \
  -o \( -name '*zel*' -not -path '/consumer/*' -not -path '/var/*' -print \))
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }
say "installed, used and removed"

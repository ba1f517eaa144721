#!/bin/bash
# SPDX-License-Identifier: MIT
# package.sh SOURCE_DIR BUILD_DIR CC
# Makes the Debian packages of a build, in BUILD_DIR/packages, has lintian look
# at them, and installs them into a root that holds nothing but what they depend
# on: the files of those packages, as this machine has them. There the programs
# run, and so does an example that was built against the installed headers and
# libraries.
set -euo pipefail
source_dir=$1 build_dir=$2 cc=$3

# Packages belong to root; without root's rights, to one of a name space.
if [ "$(id -u)" -ne 0 ]; then
  exec unshare --map-root-user "${BASH_SOURCE[0]}" "$@"
fi
export PATH=$PATH:/usr/sbin:/sbin

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
root=$work/root
packages=$build_dir/packages

die() {
  echo "package: $*" >&2
  exit 1
}

# The packages that those named on standard input need, themselves included.
closure() {
  local names wanted
  names=$(sort -u)
  while :; do
    # shellcheck disable=SC2086
    wanted=$(dpkg-query -W -f '${Depends},${Pre-Depends}\n' $names | names_only | real_only)
    wanted=$(printf '%s\n' $names $wanted | sort -u)
    [ "$wanted" != "$names" ] || break
    names=$wanted
  done
  echo "$names"
}

# "libc6 (>= 2.34), a | b" as names, the first of alternatives.
names_only() { tr ',' '\n' | sed 's/[|(:].*//; s/ //g; /^$/d'; }

# Those that are packages: others provide the rest.
real_only() { xargs dpkg-query -W -f '${Package}\n' 2>/dev/null || true; }

# Packages of this machine in the new root, as if dpkg had put them there.
make_root() {
  local needed each database=$root/var/lib/dpkg
  mkdir -p "$root"/{tmp,usr/{bin,sbin,lib,lib64}} "$database"/{info,updates}
  for each in bin sbin lib lib64; do ln -s "usr/$each" "$root/$each"; done
  needed=$(for each in "$packages"/*.deb; do dpkg-deb -f "$each" Depends; done |
    names_only | grep -v -e swctl -e cffi-backend-api | closure)
  # shellcheck disable=SC2086
  dpkg-query -s $needed >"$database/status"
  for each in $needed; do
    cp $(ls /var/lib/dpkg/info/"$each"{,:*}.list 2>/dev/null) "$database/info"
  done
  # shellcheck disable=SC2086
  dpkg-query -L $needed | grep -E '^(/usr)?/lib|^/usr/bin/python3' | while read -r each; do
    if [ -f "$each" ]; then echo "${each#/}"; fi
  done | sort -u | tar -C / -cf - -T - | tar -C "$root" --no-same-owner -xf -
}

# What the scripts of a package need. Nothing is compiled there, so nothing is cleaned.
add_shell() {
  mkdir "$root/dev"
  : >"$root/dev/null"
  cp /bin/sh "$root/usr/bin/sh"
  printf '#!/bin/sh\n' >"$root/usr/bin/py3clean"
  chmod +x "$root/usr/bin/py3clean"
}

inside() { env -i PATH="$PATH" VCHIP_IMAGE=/tmp/chip.img chroot "$root" "$@"; }

"$source_dir/packaging/build.sh" "$build_dir" "$packages"
lintian --allow-root --fail-on error,warning "$packages"/*.deb ||
  die "lintian complains"

make_root
add_shell
dpkg --root="$root" --log=/dev/null -i "$packages"/*.deb >"$work/dpkg.log" 2>&1 || {
  cat "$work/dpkg.log" >&2
  die "the packages cannot be installed"
}

python3 "$source_dir/tests/checks/links.py" "$root/usr/share/doc"

inside vchipctl reset
inside vchipctl link up 3
said=$(inside swctl -j port show 3)
[[ $said == '[{"port":3,"link":"up","speed":1000,'* ]] || die "the installed swctl said: $said"
said=$(inside swctl version)
[[ $said == *" /lib/"*"/libswctl.so.1"* || $said == *" /usr/lib/"*"/libswctl.so.1"* ]] ||
  die "the installed swctl uses: $said"

said=$(inside python3 -B -c 'import swctl
with swctl.vchip.Board() as board:
    board.link_up(3)
    print(swctl.__version__, repr(swctl.port.link_status(3)))')
[ "$said" = "$(inside swctl -V | cut -d ' ' -f 2) <Link.UP: 1>" ] || die "the installed Python said: $said"

# The compiler and its headers are this machine's.
pkgconfig=$(dirname "$(find "$root" -name swctl.pc)")
flags=$(PKG_CONFIG_LIBDIR=$pkgconfig pkg-config --cflags --libs swctl swctl-vchip)
# shellcheck disable=SC2086
"$cc" -std=c99 -Wall -Wextra -Werror "$root/usr/share/doc/libswctl-dev/examples/linkwatch.c" \
  -o "$root/tmp/linkwatch" $flags
echo "vlan 10 untagged 1-4 tagged 26" >"$root/tmp/plan"
said=$(inside /tmp/linkwatch -1 /tmp/plan 2>&1)
[[ $said == *"the plan is set: 1 VLANs"*"interface 3 is up"* ]] || die "linkwatch said: $said"
said=$(inside swctl -j vlan show 10)
[ "$said" = '[{"vlan":10,"tagged":[26],"untagged":[1,2,3,4]}]' ] || die "the chip has: $said"

dpkg --root="$root" --log=/dev/null --purge python3-swctl swctl-tools libswctl-dev libswctl-{probe,vchip}1 \
  libswctl1 >/dev/null
left=$(find "$root" -name '*swctl*' ! -path "$root/tmp/*" ! -path "$root/var/lib/dpkg/*")
[ -z "$left" ] || die "removed, and still there: $left"
echo "package: installed into a clean root, run there, built against, removed"

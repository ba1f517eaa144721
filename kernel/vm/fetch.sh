#!/bin/bash
# SPDX-License-Identifier: MIT
# fetch.sh DIR
# Puts the kernel that belongs to the newest installed kernel headers into DIR,
# as vmlinux, out of Debian's package; the modules that the tests need, in the order
# in which they load, as modules/N-NAME.ko; and beside it the headers' release.
set -euo pipefail
dir=$1

release=$(find /usr/src -maxdepth 1 -name 'linux-headers-*-amd64' -printf '%f\n' |
  sed 's/^linux-headers-//' | sort -V | tail -n 1)
[ -n "$release" ] || { echo "fetch.sh: no kernel headers are installed" >&2; exit 1; }
mkdir -p "$dir"
modules=(net/llc/llc.ko net/802/stp.ko net/bridge/bridge.ko drivers/net/veth.ko
  drivers/net/ethernet/intel/e1000/e1000.ko)
here() { find "$dir/modules" -name '*.ko' 2>/dev/null | wc -l; }
if [ -s "$dir/vmlinux" ] && [ "$(here)" -eq ${#modules[@]} ] && [ "$(cat "$dir/release")" = "$release" ]; then exit 0; fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"
(cd "$work" && apt-get download -q "linux-image-$release" >download.log 2>&1) || {
  cat "$work/download.log" >&2
  echo "fetch.sh: cannot download linux-image-$release" >&2
  exit 1
}
place=./lib/modules/$release/kernel
dpkg-deb --fsys-tarfile "$work"/linux-image-*.deb |
  tar -x -C "$work" "./boot/vmlinuz-$release" "${modules[@]/#/$place/}"
rm -rf "$dir/modules"
mkdir "$dir/modules"
for each in "${!modules[@]}"; do
  mv "$work/$place/${modules[each]}" "$dir/modules/$each-${modules[each]##*/}"
done
python3 "$(dirname "${BASH_SOURCE[0]}")/unpack.py" "$work/boot/vmlinuz-$release" "$dir/vmlinux"
echo "$release" >"$dir/release"

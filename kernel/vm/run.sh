#!/bin/bash
# SPDX-License-Identifier: MIT
# run.sh DIR LIBRARY_DIR PROGRAM[,PROGRAM]... [ARGUMENT]...
# Builds the switch module, packs an initial RAM disk with it, the kernel's own
# modules that fetch.sh chose and the programs,
# and boots the kernel that fetch.sh put into DIR with it, in software emulation.
# Runs the first program, shows what it printed and ends with its status. The
# whole log of the machine is in DIR/vm.log and is shown if something goes
# wrong.
# Ends with 77 if what the machine needs is not there.
set -euo pipefail
dir=$1 library_dir=$(realpath "$2")
IFS=, read -ra programs <<<"$3"
shift 3
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
limit=${SWCTL_VM_SECONDS:-240}

not_run() {
  echo "not run: $* (./dev kernel fetches what is missing)"
  exit 77
}
for tool in qemu-system-x86_64 cpio busybox make; do
  command -v "$tool" >/dev/null || not_run "$tool is not installed"
done
[ -s "$dir/vmlinux" ] && [ -d "$dir/modules" ] || not_run "there is no kernel image"
headers=/usr/src/linux-headers-$(cat "$dir/release")
[ -d "$headers" ] || not_run "the headers of the kernel image are not installed"

dir=$(cd "$dir" && pwd)
exec 9>"$dir/lock"
flock 9

# Compiled again only if it has changed.
rm -rf "$dir/root"
mkdir -p "$dir/module"
cp --update --preserve=timestamps "$here"/../module/* "$dir/module"
make -s -C "$headers" M="$dir/module" modules >"$dir/module.log" 2>&1 || {
  cat "$dir/module.log" >&2
  exit 1
}

# A program and all that it loads.
install_program() {
  local library
  cp "$1" "$dir/root/bin/"
  while read -r library; do
    cp -L "$library" "$dir/root/lib/"
  done < <(LD_LIBRARY_PATH=$library_dir ldd "$1" | grep -o '/[^ ]*')
}
mkdir -p "$dir"/root/{bin,lib,lib64,proc,sys,dev,tmp}
cp "$(command -v busybox)" "$dir/root/bin/busybox"
ln -s busybox "$dir/root/bin/sh"
cp "$here/init" "$dir/root/init"
cp "$dir/module/swctl_switch.ko" "$dir/root/"
cp -r "$dir/modules" "$dir/root/"
for program in "${programs[@]}"; do
  install_program "$program"
done
cp "$dir"/root/lib/ld-linux-x86-64.so.2 "$dir/root/lib64/"
printf '%s\n' "$(basename "${programs[0]}")" "$@" >"$dir/root/command"
(cd "$dir/root" && find . | cpio --quiet -o -H newc -R 0:0) >"$dir/initrd"

status=0
timeout "$limit" qemu-system-x86_64 -machine pc,accel=tcg,hpet=off -smp 2 -m 256 \
  -kernel "$dir/vmlinux" -initrd "$dir/initrd" \
  -append "console=ttyS0 quiet panic=-1" \
  -nographic -no-reboot -nic none </dev/null >"$dir/vm.log" 2>&1 || status=$?

sed -i 's/\r//g' "$dir/vm.log"
ended=$(sed -n 's/^== ended with //p' "$dir/vm.log")
if [ "$status" -ne 0 ] || [ "$ended" != 0 ]; then
  cat "$dir/vm.log"
  echo "run.sh: the machine ended with $status, the program with ${ended:-nothing}" >&2
  exit 1
fi
sed -n '/== begins$/,/^== ended/{/== begins$/!{/^== /!p}}' "$dir/vm.log"

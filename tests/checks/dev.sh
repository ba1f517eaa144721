#!/bin/bash
# SPDX-License-Identifier: MIT
# dev.sh SOURCE_DIR
# ./dev with an apt, a dpkg-query and a sudo that only write down what they are
# asked: what it installs, what it says before, and that --no-install keeps it
# from it.
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/tree" "$work/bin"
cp "$1/dev" "$work/tree"

die() {
  echo "check_dev: $*" >&2
  sed 's/^/  | /' "$work/said" >&2
  exit 1
}

fake() {
  printf '#!/bin/bash\n%s\n' "$2" >"$work/bin/$1"
  chmod +x "$work/bin/$1"
}
# Only what "there" names is installed.
fake dpkg-query '[[ " $(cat "$FAKES/there") " != *" ${*: -1} "* ]] || echo installed'
fake apt-get 'echo "apt-get $*" >>"$FAKES/asked"'
fake sudo 'echo sudo >>"$FAKES/asked"; "$@"'
fake id 'cat "$FAKES/user"'
# What the command format would do with the tree.
fake git 'exit 0'
fake clang-format 'exit 0'

# dev STATUS WORD...: runs it as user $user with the packages $there.
dev() {
  local wanted=$1 status=0
  shift
  : >"$work/asked"
  echo "$there" >"$work/there"
  echo "$user" >"$work/user"
  FAKES=$work PATH=$work/bin:$PATH "$work/tree/dev" "$@" >"$work/said" 2>&1 || status=$?
  [ "$status" -eq "$wanted" ] || die "./dev $* ended with status $status, not $wanted"
}
says() { grep -qF -- "$1" "$work/said" || die "does not say: $1"; }
asks() { [ "$(cat "$work/asked")" = "$1" ] || die "asked: $(cat "$work/asked")"; }

update="apt-get update -q"
install="apt-get install -y -q --no-install-recommends"
user=0 there=""
dev 0 format
says "./dev format is about to install with apt: clang-format git"
asks "$update
$install clang-format git"
there="git"
dev 0 format
asks "$update
$install clang-format"
dev 1 format --no-install
says "./dev format stops for want of clang-format"
asks ""
dev 1 --no-install setup format
says "./dev setup stops for want of clang-format"
asks ""
user=1000
dev 0 setup format
asks "sudo
$update
sudo
$install clang-format"
there="git clang-format"
dev 0 format
asks ""
dev 0 setup --no-install format
asks ""
# What a command needs is a part of what all of them need.
there="" user=0
dev 0 setup
grep -q 'install .*clang-format.*cmake.*git.*qemu-user' "$work/asked" || die "setup installs too little"
dev 1 setup dinner
says '"dinner" after setup'
asks ""
dev 1 dinner
says 'unknown command "dinner"'
# A bad word is refused before anything is installed.
dev 1 soak never
says '"never" after soak'
asks ""
echo "check_dev: installs what is missing and says so first, not with --no-install"

#!/bin/bash
# SPDX-License-Identifier: MIT
# readme.sh SOURCE_DIR BUILD_DIR user|root
# Types what the README says under "Install", as root below /usr/local or without
# root below the home, and then what it says under "A program". The build is there
# already. What belongs to root is a directory of our own, in a name space; where
# there can be none, the status is 77.
set -euo pipefail
source_dir=$(cd "$1" && pwd) build_dir=$(cd "$2" && pwd)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

die() {
  echo "readme: $*" >&2
  exit 1
}

# The N-th indented block of a section.
block() {
  awk -v section="## $1" -v wanted="$2" '
    /^## / { inside = $0 == section }
    !inside { next }
    /^    / { if (!last) ++count; if (count == wanted) print substr($0, 5) }
    { last = /^    / }' "$source_dir/README.md"
}

# The commands, for a build that is there and may have another prefix and, as
# Debian's packages have, a folder of the machine's below lib.
in_this_build() {
  local libdir
  libdir=$(sed -n 's/^CMAKE_INSTALL_LIBDIR:PATH=//p' "$build_dir/CMakeCache.txt")
  sed -e 's/^cmake -S \. -B build && cmake --build build$/:/' \
    -e "s|^cmake --install build\$|& --prefix /usr/local|" -e "s|swctl/lib\b|swctl/$libdir|g"
}

# The program of the README, and the line that compiles it.
sed -n '/^```c$/,/^```$/p' "$source_dir/README.md" | sed '/^```/d' >"$work/program.c"
compile=$(block "A program" 1)

# try WHERE N: the N-th block of the section, the last one, and the program.
try() {
  local where=$1 home=$work/$1 said
  mkdir -p "$home/tree"
  ln -s "$build_dir" "$home/tree/build"
  {
    echo "set -e; cd ~/tree"
    block Install "$2" | in_this_build
    block Install 3
    echo "cd ~; cp '$work/program.c' .; $compile; ./a.out"
    [ "$where" = root ] || echo "SWPROBE=trace LD_PRELOAD=libswctl-probe.so ./a.out 2>&1 | grep -m 1 rtk_"
  } >"$home/script"
  said=$(env -i HOME="$home" PATH="/usr/local/bin:$PATH" bash "$home/script" 2>&1) ||
    die "$where: $said"
  [[ $said == *"3     up    1000"*"interface 3 is up"* ]] || die "$where: $said"
  echo "readme: as $where: every command works"
}

case $3 in
  user) try user 2 ;;
  root)
    unshare --map-root-user --mount true 2>/dev/null || {
      echo "readme: this machine lets nobody have a name space; the commands of root are not tried"
      exit 77
    }
    unshare --map-root-user --mount bash "${BASH_SOURCE[0]}" "$source_dir" "$build_dir" inside
    ;;
  inside)
    # A /usr/local and a loader's cache that vanish with the name space.
    for each in /usr/local /etc; do
      mkdir -p "$work/$each/over" "$work/$each/work"
      mount -t overlay overlay "$each" \
        -o "lowerdir=$each,upperdir=$work/$each/over,workdir=$work/$each/work"
    done
    try root 1
    ;;
esac

#!/bin/bash
# SPDX-License-Identifier: MIT
# build.sh BUILD_DIR OUTPUT_DIR
# Makes Debian packages of a build that was configured with the prefix /usr.
set -euo pipefail
source_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=$(cd "$1" && pwd)
mkdir -p "$2"
output_dir=$(cd "$2" && pwd)
stage=$output_dir/stage

die() {
  echo "package: $*" >&2
  exit 1
}

prefix=$(sed -n 's/^CMAKE_INSTALL_PREFIX:PATH=//p' "$build_dir/CMakeCache.txt")
[ "$prefix" = /usr ] || die "$build_dir has the prefix $prefix, not /usr"
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build_dir/CMakeCache.txt")
packaged=$(dpkg-parsechangelog -l "$source_dir/packaging/debian/changelog" -S Version)
[ "$packaged" = "$version" ] ||
  die "packaging/debian/changelog is of version $packaged, swctl.h of $version"

rm -rf "$stage" "$output_dir"/*.deb
mkdir -p "$stage"
cp -r "$source_dir/packaging/debian" "$stage"
# The Python package is built in a tree of its own: its build writes beside it.
for part in python include vchip/include probe/include; do
  mkdir -p "$stage/tree/$(dirname $part)"
  cp -r "$source_dir/$part" "$stage/tree/$part"
done
rm -rf "$stage/tree/python/build"

# A name of the interface is there since the first release, or since the one
# that its line in the export list names.
{
  echo "libswctl.so.1 libswctl1 #MINVER#"
  echo "* Build-Depends-Package: libswctl-dev"
  sed 's/#.*//' "$source_dir"/src/*/exports.txt | awk '
    NF { since = match($0, / since /) ? $NF : "0.1.0"
         print " " ($1 == "object" ? $2 : $1) "@Base " since }' | sort
} >"$stage/debian/libswctl1.symbols"

cd "$stage"
SWCTL_BUILD=$build_dir debian/rules binary >"$output_dir/package.log" 2>&1 || {
  cat "$output_dir/package.log" >&2
  die "debian/rules failed"
}
cd "$output_dir"
rm -rf "$stage"
printf 'package: %s\n' *.deb

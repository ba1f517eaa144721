#!/bin/bash
# SPDX-License-Identifier: MIT
# Holds the built library against the register of its ABI.
#   abi.sh check LIBRARY MACHINE SOURCES    what the tests run
#   abi.sh write LIBRARY MACHINE SOURCES    makes the register again
# The register is abi/SONAME-MACHINE.xml. CHANGELOG.md names its digest, so that
# no change of the ABI goes unsaid, and what breaks programs needs a new soname.
set -euo pipefail

word=$1 library=$2 machine=$3 sources=$4
soname=$(readelf -d "$library" | sed -n 's/.*(SONAME).*\[\(.*\)\].*/\1/p')
register=$sources/abi/$soname-$machine.xml

say() { echo "abi: $*" >&2; }

describe() {
  abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-parameter-names \
    --no-elf-needed --exported-interfaces-only "$library" |
    sed "s|path='[^']*/src/|path='src/|"
}

digest() { sha256sum "$1" | cut -c1-16; }

# Shows what changed. Bit 2 of abidiff's status says that something did.
difference() {
  local status=0
  abidiff "$register" "$library" || status=$?
  return $((status & 12))
}

# An added function or variable breaks no program, all else may.
breaks_programs() {
  local report
  report=$(abidiff "$register" "$library" || true)
  grep -E 'summary:.* [1-9][0-9]* (Removed|Changed)' <<<"$report"
}

check() {
  [ -f "$register" ] || {
    say "there is no register of $soname for $machine: $register"
    exit 1
  }
  difference || {
    say "$library is not what $register says"
    say "add to it: write the register again; break it: a new soname first"
    exit 1
  }
  grep -qF "$(digest "$register")" "$sources/CHANGELOG.md" || {
    say "CHANGELOG.md does not name the register $(basename "$register") as it is," \
      "$(digest "$register")"
    exit 1
  }
}

write() {
  if [ -f "$register" ] && breaks_programs >&2; then
    say "this breaks programs of $soname: raise SWCTL_SOVERSION in CMakeLists.txt first"
    exit 1
  fi
  describe >"$register.new"
  mv "$register.new" "$register"
  echo "$register: name $(digest "$register") in the ABI paragraph of CHANGELOG.md"
}

case $word in
  check | write) "$word" ;;
  *)
    say "unknown word \"$word\", expected check or write"
    exit 1
    ;;
esac

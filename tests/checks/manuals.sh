#!/bin/bash
# SPDX-License-Identifier: MIT
# manuals.sh SOURCE_DIR BUILD_DIR
# The manual pages are well-formed, refer to pages that exist, and leave out no
# command and no option of vchipctl.
set -euo pipefail
source_dir=$1 build_dir=$2
man=$source_dir/docs/man
pages=("$build_dir/docs/man/swctl.1" "$man/vchipctl.1" "$man/swctl-replay.1"
  "$man/libswctl.3" "$man/libswctl-probe.7")

status=0
complain() {
  echo "manuals: $*" >&2
  status=1
}

mandoc -T lint -W warning "${pages[@]}" >&2 || complain "mandoc has warnings"

while read -r name section; do
  [[ " ${pages[*]##*/} " == *" $name.$section "* ]] || complain "there is no page $name($section)"
done < <(sed -n 's/^\.Xr \([^ ]*\) \([0-9]\).*/\1 \2/p' "${pages[@]}" | sort -u)

# The page as a person reads it, without the way it is laid out.
text=$(mandoc -T ascii "$man/vchipctl.1" | sed 's/.\x08//g')
# What a command is called begins its line; an option may be anywhere.
words=$("$build_dir/bin/vchipctl" help | sed -n 's/^\([a-z][a-z-]*\)$/\1/p')
[ -n "$words" ] || complain "vchipctl help names no commands"
for word in $words; do
  grep -q "^  *$word\b" <<<"$text" || complain "vchipctl.1 leaves out the command $word"
done
for option in $("$build_dir/bin/vchipctl" help | grep -o -- '--[a-z]*' | sort -u); do
  grep -q -- "$option\b" <<<"$text" || complain "vchipctl.1 leaves out the option $option"
done

[ "$status" -eq 0 ] && echo "manuals: ${#pages[@]} pages"
exit "$status"

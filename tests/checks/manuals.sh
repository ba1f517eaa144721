#!/bin/bash
# SPDX-License-Identifier: MIT
# manuals.sh SOURCE_DIR BUILD_DIR
# The manual pages are well-formed, refer to pages that exist, and leave out no
# command and no option of the programs.
set -euo pipefail
source_dir=$1 build_dir=$2
man=$source_dir/docs/man
pages=("$build_dir/docs/man/swctl.1" "$man/vchipctl.1" "$man/vchipd.1" "$man/swctl-replay.1" "$man/swctl-faults.1"
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
text_of() { mandoc -T ascii "$man/$1.1" | sed 's/.\x08//g'; }

# A command begins its line in the help and in the page.
text=$(text_of vchipctl)
words=$("$build_dir/bin/vchipctl" help | sed -n 's/^\([a-z][a-z-]*\)$/\1/p')
[ -n "$words" ] || complain "vchipctl help names no commands"
for word in $words; do
  grep -q "^  *$word\b" <<<"$text" || complain "vchipctl.1 leaves out the command $word"
done

# options_in_page PROGRAM HELP: every option that the help names is in the page.
options_in_page() {
  local option options text
  text=$(text_of "$1")
  options=$("$build_dir/bin/$1" "$2" | grep -o -- '--[a-z][a-z-]*' | sort -u)
  [ -n "$options" ] || complain "$1 $2 names no options"
  for option in $options; do
    grep -q -- "$option\b" <<<"$text" || complain "$1.1 leaves out the option $option"
  done
}
options_in_page vchipctl help
options_in_page vchipd --help
options_in_page swctl-replay --help
options_in_page swctl-faults --help

[ "$status" -eq 0 ] && echo "manuals: ${#pages[@]} pages"
exit "$status"

#!/bin/bash
# SPDX-License-Identifier: MIT
# check.sh PROGRAM TARGET COUNT: runs every input of a target's corpus, then
# COUNT new ones. An input that is a finding stays beside the program.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
program=$1 corpus=$here/corpus/$2 dictionary=$here/dictionaries/$2.dict count=$3
inputs=$(find "$corpus" -type f | wc -l)
if [ "$inputs" -eq 0 ]; then
  echo "check.sh: $corpus is empty" >&2
  exit 1
fi
# What it learns would otherwise be written into the corpus.
learned=$(mktemp -d)
trap 'rm -rf "$learned"' EXIT
arguments=(-close_fd_mask=3 -timeout=20 -seed=1 "-artifact_prefix=$program-finding-"
  -print_final_stats=1 "-runs=$((inputs + count))")
[ ! -f "$dictionary" ] || arguments+=("-dict=$dictionary")
"$program" "${arguments[@]}" "$learned" "$corpus"

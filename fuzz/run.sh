#!/bin/bash
# SPDX-License-Identifier: MIT
# run.sh BUILD SECONDS: runs every fuzz target of a build for SECONDS in
# total, two at a time, and prints what each did. What is found stays in
# BUILD/findings; then the status is 1.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$(cd "$1" && pwd)
seconds=$2
if ! [[ $seconds =~ ^[1-9][0-9]*$ ]]; then
  echo "run.sh: \"$seconds\" is no number of seconds from 1 on" >&2
  exit 1
fi
targets=()
for folder in "$here"/corpus/*/; do targets+=("$(basename "$folder")"); done
each=$((seconds * 2 / ${#targets[@]}))
[ "$each" -gt 0 ] || each=1

# What a target learns stays in the build for the next time.
run_target() {
  local target=$1 dictionary=() work=$build/fuzz/runs/$1
  mkdir -p "$work/corpus" "$build/findings"
  if [ -f "$here/dictionaries/$target.dict" ]; then
    dictionary=("-dict=$here/dictionaries/$target.dict")
  fi
  # Settings of their own each time; the log has their number.
  export SWFUZZ_SETTINGS=$RANDOM
  echo "SWFUZZ_SETTINGS=$SWFUZZ_SETTINGS" >"$work/log"
  "$build/bin/${target}_fuzz" "${dictionary[@]}" -max_total_time="$each" -timeout=20 -entropic=0 -max_len=2048 \
    -close_fd_mask=3 -print_final_stats=1 -artifact_prefix="$build/findings/$target-" \
    "$work/corpus" "$here/corpus/$target" >>"$work/log" 2>&1 || touch "$work/failed"
}

statistic() { sed -n "s/^stat::$1: *//p" "$build/fuzz/runs/$2/log"; }

rm -rf "$build/findings" "$build"/fuzz/runs/*/failed
export build here each
export -f run_target
printf '%s\n' "${targets[@]}" | xargs -P 2 -I TARGET bash -euo pipefail -c 'run_target TARGET'

status=0 total=0
printf '%-12s%14s%10s  %s\n' target executions exec/s findings
for target in "${targets[@]}"; do
  executions=$(statistic number_of_executed_units "$target")
  finding=-
  if [ -e "$build/fuzz/runs/$target/failed" ]; then
    finding=$(find "$build/findings" -name "$target-*" -printf '%f ')
    status=1
    finding=${finding:-see $build/fuzz/runs/$target/log}
  fi
  total=$((total + ${executions:-0}))
  printf '%-12s%14s%10s  %s\n' "$target" "${executions:-?}" \
    "$(statistic average_exec_per_sec "$target")" "$finding"
done
printf '%-12s%14d\n' total "$total"
[ $status -eq 0 ] || echo "run.sh: findings in $build/findings, logs in $build/fuzz/runs" >&2
exit $status

#!/bin/bash
# SPDX-License-Identifier: MIT
# run.sh PROGRAM PROBE FOLDER: what each function of the library takes on a chip
# of this process (steps-private.txt) and on one in an image (steps-image.txt).
set -euo pipefail
program=$1 probe=$2 folder=$3
export VCHIP_LOG=none
unset VCHIP_IMAGE STEPS_RECORDING

run() { # a file for the figures, and the environment
  local figures=$1
  shift
  env "$@" "$program" >"$folder/steps.out" 2>"$folder/steps.err" || true
  sed -n 's/^steps //p' "$folder/steps.err" >"$figures"
}

rm -f "$folder/chip.img"
run /dev/null LD_PRELOAD="$(realpath "$probe")" SWPROBE="record:$folder/recording.ndjson"
run "$folder/steps-private.txt" STEPS_RECORDING="$folder/recording.ndjson"
run "$folder/steps-image.txt" STEPS_RECORDING="$folder/recording.ndjson" VCHIP_IMAGE="$folder/chip.img"
[ -s "$folder/steps-image.txt" ] || {
  cat "$folder/steps.err" >&2
  exit 1
}

#!/bin/bash
# SPDX-License-Identifier: MIT
# run.sh PROGRAM PROBE FOLDER: what each function of the library takes on a chip
# of this process (steps-private.txt) and on one in an image (steps-image.txt).
set -euo pipefail
program=$1 probe=$2 folder=$3
export VCHIP_LOG=none
unset VCHIP_IMAGE STEPS_RECORDING

# A file for the figures, and the environment. Status 1 only says that a call
# made again and again answered otherwise than once.
run() {
  local figures=$1 status=0
  shift
  env "$@" "$program" >"$folder/steps.out" 2>"$folder/steps.err" || status=$?
  [ "$status" -le 1 ] || {
    cat "$folder/steps.err" >&2
    echo "run.sh: $program ended with $status" >&2
    exit 1
  }
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

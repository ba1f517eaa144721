#!/bin/bash
# SPDX-License-Identifier: MIT
# run.sh PROGRAM PROBE FOLDER: what a call takes without the probe, with it
# preloaded and idle, and recording (probe.txt: call, and three times in
# nanoseconds of the processor).
set -euo pipefail
program=$1 probe=$(realpath "$2") folder=$3
unset SWPROBE SWPROBE_FAIL

"$program" >"$folder/probe.without"
env LD_PRELOAD="$probe" "$program" >"$folder/probe.idle"
env LD_PRELOAD="$probe" SWPROBE="record:$folder/probe.ndjson" "$program" >"$folder/probe.recording"
rm -f "$folder/probe.ndjson"
join "$folder/probe.without" "$folder/probe.idle" --nocheck-order |
  join - "$folder/probe.recording" --nocheck-order >"$folder/probe.txt"
[ -s "$folder/probe.txt" ]

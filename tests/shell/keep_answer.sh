#!/bin/bash
# SPDX-License-Identifier: MIT
# keep_answer.sh ARGUMENT...
# Runs swctl, the words of SWCTL_PROGRAM. If it is to answer in JSON, keeps the
# answer and the arguments in the directory SWCTL_ANSWERS, for answers.py. The
# answer then comes after all that is said on standard error.
# shellcheck disable=SC2086
case " $* " in
  *' -complete '*) exec $SWCTL_PROGRAM "$@" ;;
  *' -j '* | *' -p '*) ;;
  *) exec $SWCTL_PROGRAM "$@" ;;
esac
# What is neither pipe nor file may be there to be full or closed.
# shellcheck disable=SC2086
if [ ! -p /proc/self/fd/1 ] && [ ! -f /proc/self/fd/1 ]; then
  exec $SWCTL_PROGRAM "$@"
fi
answer=$SWCTL_ANSWERS/$$
printf '%s\0' "$@" >"$answer.arguments"
status=0
# shellcheck disable=SC2086
$SWCTL_PROGRAM "$@" >"$answer.json" || status=$?
cat "$answer.json"
exit "$status"

# SPDX-License-Identifier: MIT
# What the demonstrations show things with.

chapter() { printf '\n\033[1m%s\033[0m\n' "$*"; }
# Shows a command as one would type it, then runs it.
try() {
  printf '\n$ %s\n' "$*"
  eval "$*"
}
# The same for a command that is meant to be refused.
refused() {
  local status=0
  printf '\n$ %s\n' "$*"
  eval "$*" || status=$?
  [ "$status" -ne 0 ] || { echo "demo: this was to be refused" >&2; exit 1; }
  echo "(status $status)"
}

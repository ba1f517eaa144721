# SPDX-License-Identifier: MIT
# Gives a test a virtual chip of its own, as it is after power-on.
VCHIP_IMAGE="$PWD/chip.img"
export VCHIP_IMAGE
vchipctl --image "$VCHIP_IMAGE" reset

# Runs a command and shows only what it writes to standard output.
data() {
  "$@" 2>/dev/null
}

# Whether standard input is one JSON document.
is_json() {
  python3 -m json.tool >/dev/null && echo valid
}

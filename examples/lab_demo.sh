#!/bin/bash
# SPDX-License-Identifier: MIT
# lab_demo.sh, run by vchipctl lab --ports 3: what parts two hosts, and who listens.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/show.sh"

try vchipctl wires
try vchipctl lab enter 1 ping -c 2 -i 0.2 10.0.0.2
try swctl mac show

# A frame of the host at port 1 to the one at port 2.
frame=02000000000202000000000188b5
try swctl vlan add 20 untagged 2
try swctl vlan port del 1 2
try swctl port set 2 vlan 20
refused vchipctl lab enter 1 ping -c 1 -W 1 10.0.0.2
try vchipctl explain 1 $frame

try swctl vlan port add 20 untagged 1
try swctl port set 1 vlan 20
try swctl mirror add 1 to 3 ports 1 direction both
try "vchipctl capture 3 --filter icmp -c 4 -w mirror.pcapng &"
for look in {1..100}; do [ -s mirror.pcapng ] && break; sleep 0.05; done
try vchipctl lab enter 1 ping -c 2 -i 0.2 10.0.0.2
wait
try tcpdump -n -t -r mirror.pcapng

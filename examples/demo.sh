#!/bin/bash
# SPDX-License-Identifier: MIT
# demo.sh BUILD_DIR: a management program drives a switch that is not there.
set -euo pipefail
source_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=$(cd "$1" && pwd)
PATH=$build_dir/bin:$PATH

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# One chip for every program below; it outlives each of them.
export VCHIP_IMAGE=$work/chip.img
export PROBE=$build_dir/lib/libswctl-probe.so
cd "$work"

source "$source_dir/examples/show.sh"

chapter "A chip as after power-on, and three cables plugged into its front ports"
try vchipctl reset
try vchipctl link up 1-2
try vchipctl link up 3 --partner 10-full,100-full
try vchipctl medium 25 fibre
try vchipctl link up 25

chapter "A management program in C, linked against libswctl"
cc -std=c99 "$source_dir/examples/port_status.c" -o port_status -I"$source_dir/include" \
  -L"$build_dir/lib" -lswctl -lswctl-vchip -Wl,-rpath,"$build_dir/lib"
try "./port_status | head -n 4"

chapter "The shell sees the same chip, and changes it"
try swctl version
try swctl port show 1-4,25
try swctl port set 4 speed 100 duplex half loopback on
try swctl port show 4 detail

chapter "Everything else that a port has"
try swctl port set 2 ingress 10mbit egress 2mbit pause on vlan 20 isolation 0-4
try swctl port show 2 detail
try vchipctl counter 2 0 set 64000
try vchipctl counter 2 1 set 1000
try swctl port stats 1-3
try swctl storm set 2 type 2 rate 100
try vchipctl storm 2 2
try swctl storm show 2
try swctl flood set 0-4
try swctl flood show

chapter "A broken cable"
try vchipctl pair 3 A-D none --length 2400
try vchipctl pair 3 B open --length 1200
try swctl port cable 3

chapter "VLANs and stations"
try swctl vlan add 10 tagged 26 untagged 1-4
try swctl vlan add 20 tagged 25-26
try swctl vlan show 10,20
try swctl vlan rule add mac 0 02:00:5e:10:00:00 mask ff:ff:ff:ff:00:00 vlan 10 ports 5-8
try swctl vlan rule add protocol 0 encapsulation ethernet ethertype 0x88cc vlan 20
try swctl vlan rule show
try swctl vlan translate add 0 port 26 from 10 to 110
try swctl vlan translate show
try swctl mac add 02:00:5e:00:00:01 vlan 10 port 3
try vchipctl learn 02:00:5e:00:00:02 --port 2 --vlan 10
try swctl mac show

chapter "Groups of listeners"
try swctl mcast add 01:00:5e:01:02:03 vlan 10 ports 1,26
try swctl mcast join 01:00:5e:01:02:03 vlan 10 ports 2
try swctl mcast show
try swctl mcast ip add 232.1.2.3 vlan 10 source 192.0.2.1 ports 1-2
try swctl mcast ip lookup ip address
try swctl mcast ip miss ip 1-4 action 2
try swctl mcast ip show
try swctl trap set igmp cpu

chapter "Who goes first"
try swctl qos map set 6-7 queue 7
try swctl qos trust set 1-4 dscp
try swctl qos dscp set 46 priority 6
try swctl qos trust show 1-5
try swctl qos schedule set weighted weights 1,1,2,2,4,4,8,0
try swctl qos schedule show

chapter "A second spanning tree for VLAN 20"
try swctl stp instance add 1
try swctl stp vlan add 20 instance 1
try swctl stp vlan show
try swctl stp set 1 26 state forwarding
try swctl stp set 1 25 state blocking
try swctl stp show
try swctl trap set bpdu cpu

chapter "Who may not come in: rules, a meter, and what attackers try"
try swctl acl init
try swctl acl add 10 in-ports 1-4 src-ip 10.0.0.0/8 protocol tcp dst-port 80 action count:1,meter:2 enable
try swctl acl add 11 in-ports 1-4 ethertype 0x88cc action trap enable
try swctl acl add 12 in-ports 5-8 dst-mac 01:80:c2:00:00:00/ff:ff:ff:ff:ff:f0 action drop
try swctl meter set 2 rate 1600 burst 4096
try swctl meter show
try swctl acl show
try swctl acl enable 12
try swctl acl miss 9-12 drop
try swctl acl miss
try vchipctl rule-count 1 120 76800
try swctl acl stats 1
refused swctl acl add 10 ethertype 0x800 action permit
try swctl dos protect
try swctl dos set 3 action drop
try "swctl dos show | head -n 6"

chapter "Two ports as one, and a port to watch them"
try swctl trunk set 1 5-6
try swctl trunk hash ips
try swctl trunk show
try swctl trap set lacp cpu
try swctl trap set lldp forward ports 25-26
try swctl trap show
try swctl mirror add 1 to 24 ports 5-6 direction ingress
try swctl mirror show

chapter "What only a module in the kernel can answer, if there is one"
try swctl kernel status
try "swctl kernel send 2 010203fa -T 1 || echo \"(status \$?)\""

chapter "The same as JSON, for programs"
try "swctl -j port show 1-2"

chapter "Every SDK call that one command causes"
try SWPROBE=trace swctl port set 1 speed 100

chapter "A chip that fails on purpose: how does the program take it?"
refused "SWPROBE_FAIL='rtk_port_link_get port 2 result -1007' swctl port show 1-4"
refused "LD_PRELOAD=\$PROBE SWPROBE_FAIL='rtk_port_link_get port 2 result -1007' ./port_status"

chapter "What the chip itself holds, past every SDK call"
try "vchipctl dump --unit 0 --block port | sed -n 1,28p"

chapter "Hosts at the ports: namespaces of Linux, which ping each other through the chip"
if denied=$(vchipctl --image lab.img lab --ports 1 true 2>&1); then
  try "vchipctl --image lab.img lab --ports 3 \$source_dir/examples/lab_demo.sh"
else
  echo "Not here. $denied"
fi

chapter "A wrong word is named, with what was expected in its place"
refused swctl port set 4 sped 100
echo
echo "That was it. Next: README.md, docs/, and 'swctl' without a command."

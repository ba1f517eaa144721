# SPDX-License-Identifier: MIT
"""every_answer.py SCHEMA

Gives every command of swctl once with -j, over a chip where each has something
to show. The schema defines every answer, and defines none that did not come.
"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile

from answers import Checker, Line, commands_of

WORLD = """\
link up 3
learn 02:00:00:00:00:03 --port 4
"""

# Changes first, so that there is something to show; then they are taken back.
LINES = """\
port set 3 speed 100 duplex full
port show
port show 3 detail
port stats
port stats 3 period 1
port stats 3 all
port clear 3
port cable 3
vlan add 10-11 untagged 1-4 tagged 25
vlan set 11 tagged 5
vlan port add 11 untagged 6
vlan port del 11 6
vlan show
vlan show port 1
vlan default 1
vlan default
vlan rule add translation 0 from 10 to 11
vlan rule add double-tag 0 inner 10 outer 11 priority 3
vlan rule add mac 0 02:00:5e:00:00:01 vlan 10 mask ff:ff:ff:00:00:00 priority 5 ports 1-4
vlan rule add ip4 0 192.0.2.0/24 vlan 10
vlan rule add voice 0 02:00:5e:00:00:00 vlan 10
vlan rule add protocol 0 encapsulation llc ethertype 0x0806 vlan 10
vlan rule show
vlan rule del translation 0
vlan rule del double-tag 0
vlan rule del mac 0
vlan rule del ip4 0
vlan rule del voice 0
vlan rule del protocol 0
vlan translate init
vlan translate add 2 port 1 from 10 to 11
vlan translate show
vlan translate del 2
mac add 02:00:00:00:00:01 vlan 1 port 3
mac show
mac get 02:00:00:00:00:01 vlan 1
mac count
mac count 3 violations
mac limit 3 max 10
mac limit
mac aging 60
mac aging
mac dump addresses
mac restore-view addresses
mac del 02:00:00:00:00:01 vlan 1
mac flush all
mcast add 01:00:5e:00:00:01 vlan 10 ports 1-3
mcast join 01:00:5e:00:00:01 vlan 10 ports 4
mcast leave 01:00:5e:00:00:01 vlan 10 ports 1
mcast show
mac dump groups groups
mac restore-view groups groups
mcast del 01:00:5e:00:00:01 vlan 10
mcast ip add 232.1.2.3 vlan 10 source 192.0.2.1 ports 1-2
mcast ip add ff3e::8000:1 vlan 10 ports 25
mcast ip set 232.1.2.3 vlan 10 source 192.0.2.1 ports 3
mcast ip show
mcast ip del ff3e::8000:1 vlan 10
mcast ip lookup ip address
mcast ip lookup
mcast ip miss ip 1-2 action 2
mcast ip miss
acl init
acl add 300 in-ports 1 dst-mac 01:80:c2:00:00:00/ff:ff:ff:ff:ff:f0 ethertype 0x88cc action trap
acl add 301 src-ip 10.0.0.0/8 dst-ip 10.0.0.1 protocol tcp dst-port 80 dscp 46 action drop,meter:3
acl add 302 src-ip6 2001:db8::/32 dst-ip6 2001:db8::1 protocol 89 action redirect:25
acl add 303 outer-vlan 10/0xfff inner-vlan-id 10 frame-type 3 ip-type 10 src-port 67
acl template 303 1
acl double 306
acl single 306
acl enable 300
acl show
acl del 302
acl stats 5
acl miss 1-4 drop
acl miss
meter set 3 rate 1600 burst 4096
meter show
meter del 3
mirror add 1 to 26 ports 1-2 direction ingress
mirror show
mirror del 1
mirror reset 1
acl replace 300 src-port 7 action drop
mac replace 02:00:00:00:00:01 vlan 1 port 4
mcast replace 01:00:5e:00:00:01 vlan 10 ports 4
mcast ip replace 232.1.2.3 vlan 10 ports 3
vlan replace 10 tagged 1
vlan translate replace 2 port 1 from 10 to 11
vlan rule replace translation 2 from 10 to 11
vlan rule replace double-tag 2 inner 10 outer 11
vlan rule replace mac 2 02:00:00:00:00:01 vlan 10
vlan rule replace ip4 2 192.0.2.0/24 vlan 10
vlan rule replace voice 2 02:00:00:00:00:01 vlan 10
vlan rule replace protocol 2 vlan 10 encapsulation ethernet ethertype 0x800
config show
config save plan
port set 4 vlan 10
config diff plan
config load plan
config check plan
config load plan confirm 60
config confirm
config checkpoint kept
config checkpoints
config rollback kept
config forget kept
qos map set 3 queue 4
qos map show
qos dscp set 46 priority 5
qos dscp show
qos default set 3 priority 2
qos default show
qos trust set 1 dscp
qos trust show
qos schedule set weighted weights 0,0,1,1,2,2,4,8
qos schedule show
qos tag set 3 internal 4
qos tag show
storm set 2 type 2 rate 100 selection 1
storm show
storm reset 2
storm mode bytes
storm mode
flood set 0-4
flood add 5
flood remove 5
flood show
dos set 1 action drop
dos protect
dos show
stp instance add 3
stp set 3 1-4 state forwarding
stp vlan add 10 instance 3
stp show
stp vlan show
stp vlan del 10
stp instance del 3
trap set igmp cpu
trap show
trunk set 4 1-2
trunk hash ips
trunk hash
trunk show
trunk del 4
kernel status
vlan del 10-11
version
"""

# What answers otherwise: the module of the kernel, and events as they happen.
ELSEWHERE = {"kernel send", "mac monitor", "monitor"}


def answers_to(lines):
    for line in WORLD.splitlines():
        subprocess.run(["vchipctl", *line.split()], check=True)
    done = subprocess.run(["swctl", "-j", "-b", "-"], input=lines, text=True,
                          stdout=subprocess.PIPE, check=False)
    return json.loads(done.stdout)


def main():
    schema = json.loads(pathlib.Path(sys.argv[1]).read_text())
    checker = Checker(schema, commands_of("swctl"))
    with tempfile.TemporaryDirectory() as name:
        os.chdir(name)
        os.environ["VCHIP_IMAGE"] = f"{name}/chip.img"
        os.environ["SWCTL_STATE_DIRECTORY"] = f"{name}/state"
        subprocess.run(["vchipctl", "reset"], check=True)
        elements = answers_to(LINES)
    wrong = [f"{each['command']}: {fault}" for each in elements
             for fault in checker.check_answer(Line(each["command"].split()), each["output"])]
    wrong += [f"{each['command']}: status {each['status']}" for each in elements if each["status"]]
    # An empty array fits every definition.
    told = {checker.command(each["command"].split()) for each in elements
            if each["output"] or schema["$defs"].get(
                checker.command(each["command"].split())) == {"$ref": "#/$defs/nothing"}}
    names = {" ".join(each) for each in checker.commands}
    wrong += [f"{each}: no answer was checked" for each in names - told - ELSEWHERE]
    defined = {each for each in schema["$defs"] if each.split()[0] in {n.split()[0] for n in names}
               and (" " in each or each in names)}
    wrong += [f"{each}: is no command" for each in defined - names]
    for each in sorted(wrong):
        print(f"every_answer: {each}", file=sys.stderr)
    print(f"every_answer: {len(elements)} answers")
    sys.exit(bool(wrong))


main()

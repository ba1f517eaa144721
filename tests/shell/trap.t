The object trap: protocol frames for the processor.

  $ . "$TESTDIR/setup.sh"

After power-on:

  $ swctl trap show
  frames   action   ports  passes_blocked
  igmp     drop     all    -
  mld      drop     all    -
  own-mac  drop     all    -
  bpdu     drop     1-26   -
  lldp     drop     1-26   -
  lacp     forward  all    no
  oam      forward  all    -

What is set is what the chip does:

  $ traps() { vchipctl dump --unit 0 --block trap --compact; }

  $ swctl trap set igmp cpu
  $ swctl trap set mld forward
  $ swctl trap set own-mac cpu
  $ traps | grep -o '"mld":[^[]*' | head -1
  "mld":"forward","igmp":"trap","bpdu":"drop","lldp":"drop","own_mac":"trap","by_type":
  $ swctl trap set lacp cpu
  $ swctl trap set oam drop
  $ traps | grep -o '"oam":[^[]*'
  "oam":"drop","lacp":"trap","rma_groups":
  $ swctl trap set bpdu forward
  $ swctl trap set lldp cpu
  $ swctl trap set lldp forward ports 2,26
  $ for port in 0 1 25 26; do traps | grep -o "\"port\":$port,[^[]*"; done
  "port":0,"mld":"drop","igmp":"drop","bpdu":"forward","lldp":"trap","own_mac":"drop","by_type":
  "port":1,"mld":"drop","igmp":"drop","bpdu":"forward","lldp":"forward","own_mac":"drop","by_type":
  "port":25,"mld":"drop","igmp":"drop","bpdu":"drop","lldp":"drop","own_mac":"drop","by_type":
  "port":26,"mld":"drop","igmp":"drop","bpdu":"forward","lldp":"forward","own_mac":"drop","by_type":

The shell says the same of it, ports that do the same on one line:

  $ swctl trap show
  frames   action   ports   passes_blocked
  igmp     cpu      all     -
  mld      forward  all     -
  own-mac  cpu      all     -
  bpdu     forward  1-26    -
  lldp     forward  2,26    -
  lldp     cpu      1,3-25  -
  lacp     cpu      all     yes
  oam      drop     all     -
  $ swctl trap show lldp
  frames  action   ports   passes_blocked
  lldp    forward  2,26    -
  lldp    cpu      1,3-25  -
  $ swctl -j trap show lldp
  [{"frames":"lldp","action":"forward","ports":[2,26],"passes_blocked":null},{"frames":"lldp","action":"cpu","ports":[1,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25],"passes_blocked":null}]
  $ swctl -j trap show lacp
  [{"frames":"lacp","action":"cpu","ports":[1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26],"passes_blocked":true}]
  $ swctl -j trap show | is_json
  valid
  $ swctl trap set lacp drop
  $ swctl trap show lacp
  frames  action  ports  passes_blocked
  lacp    drop    all    no
  $ swctl -u 1 trap show lacp
  frames  action   ports  passes_blocked
  lacp    forward  all    no

What cannot be:

  $ swctl trap show stp
  swctl: trap show: bad value "stp", expected one of: igmp, mld, own-mac, bpdu, lldp, lacp, oam
  [1]
  $ swctl -u 2 trap show
  swctl: trap show: swctl_platform_trap_frame_get refused igmp: there is no such switch unit (result -1001)
  [2]
  $ swctl -u 2 -j trap show bpdu
  swctl: trap show bpdu: swctl_platform_trap_port_frame_get refused port 1: there is no such switch unit (result -1001)
  {"error":{"message":"trap show bpdu: swctl_platform_trap_port_frame_get refused port 1: there is no such switch unit (result -1001)","culprit":"1","expected":[],"suggestions":[],"function":"swctl_platform_trap_port_frame_get","result":-1001,"sentence":"there is no such switch unit","status":2}}
  [2]

What is after power-on can be set again:

  $ swctl trap set lacp forward
  $ swctl trap set igmp drop
  $ swctl trap set bpdu forward ports 3
  $ swctl trap show | grep -e lacp -e igmp -e bpdu -e frames
  frames   action   ports   passes_blocked
  igmp     drop     all     -
  bpdu     forward  1-26    -
  lacp     forward  all     no
  $ swctl trap set igmp cpu ports 3
  swctl: trap set igmp cpu ports 3: only frames of bpdu and lldp are chosen by port
  [1]
  $ swctl trap set stp cpu
  swctl: trap set: bad value "stp", expected one of: igmp, mld, own-mac, bpdu, lldp, lacp, oam
  [1]

The object trap: protocol frames for the processor.

  $ . "$TESTDIR/setup.sh"
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

What cannot be:

  $ swctl trap set lacp forward
  swctl: trap set lacp forward: frames of lacp have no such action, expected one of: cpu, drop
  [1]
  $ swctl trap set igmp drop
  swctl: trap set igmp drop: frames of igmp have no such action, expected one of: cpu, forward
  [1]
  $ swctl trap set bpdu cpu ports 3
  swctl: trap set bpdu cpu ports 3: only frames of lldp are chosen by port
  [1]
  $ swctl trap set stp cpu
  swctl: trap set: bad value "stp", expected one of: igmp, mld, own-mac, bpdu, lldp, lacp, oam
  [1]

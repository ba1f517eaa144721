The branch ip of the object mcast.

  $ . "$TESTDIR/setup.sh"
  $ entries() { vchipctl dump --unit 0 --block mcast_ip --compact | grep -o '^{"ip":.*"ip6_mode":.'; }

  $ swctl mcast ip add 232.1.2.3 vlan 10 source 192.0.2.1 ports 0,1-2,26
  $ swctl mcast ip add 239.0.0.1 vlan 10 ports 3
  $ swctl mcast ip add ff3e::8000:1 vlan 20 source 2001:db8::1 ports 25
  $ entries
  {"ip":[{"vid":10,"source":"192.0.2.1","group":"232.1.2.3","ports":[0,1,26,28]},{"vid":10,"source":"0.0.0.0","group":"239.0.0.1","ports":[2]}],"ip6":[{"vid":20,"source":"2001:db8::1","group":"ff3e::8000:1","ports":[24]}],"ip_mode":0,"ip6_mode":0
  $ swctl mcast ip show
  vlan  group         source       ports
  10    232.1.2.3     192.0.2.1    0-2,26
  10    239.0.0.1     any          3
  20    ff3e::8000:1  2001:db8::1  25
  $ swctl mcast ip show ip6
  vlan  group         source       ports
  20    ff3e::8000:1  2001:db8::1  25
  $ swctl mcast ip show vlan 10
  vlan  group      source     ports
  10    232.1.2.3  192.0.2.1  0-2,26
  10    239.0.0.1  any        3
  $ swctl -j mcast ip show ip
  [{"vlan":10,"group":"232.1.2.3","source":"192.0.2.1","ports":[0,1,2,26]},{"vlan":10,"group":"239.0.0.1","source":null,"ports":[3]}]
  $ swctl -j mcast ip show vlan 11
  []
  $ swctl -j mcast ip show | is_json
  valid
  $ swctl mcast ip set 239.0.0.1 vlan 10 ports 4
  $ swctl mcast ip del 232.1.2.3 vlan 10 source 192.0.2.1
  $ swctl mcast ip del ff3e::8000:1 vlan 20 source 2001:db8::1
  $ swctl mcast ip show
  vlan  group      source  ports
  10    239.0.0.1  any     4
  $ swctl mcast ip lookup ip6 address
  $ swctl mcast ip lookup
  family  lookup
  ip      mac
  ip6     address
  $ swctl -j mcast ip lookup ip6
  [{"family":"ip6","lookup":"address"}]
  $ swctl mcast ip miss ip 1,26 action 2
  $ swctl mcast ip miss ip6 1 action 1
  $ entries
  {"ip":[{"vid":10,"source":"0.0.0.0","group":"239.0.0.1","ports":[3]}],"ip6":[],"ip_mode":0,"ip6_mode":1
  $ vchipctl dump --unit 0 --block mcast_ip --compact | grep -o '"port":\(0\|1\|26\),[^]]*]'
  "port":0,"miss_action":[2,1,0,0,0,0]
  "port":1,"miss_action":[0,0,0,0,0,0]
  "port":26,"miss_action":[2,0,0,0,0,0]
  $ swctl mcast ip miss
  family  action  ports
  ip      0       2-25
  ip      2       1,26
  ip6     0       2-26
  ip6     1       1
  $ swctl -j mcast ip miss ip6
  [{"family":"ip6","action":0,"ports":[2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26]},{"family":"ip6","action":1,"ports":[1]}]
  $ swctl -u 1 mcast ip miss ip
  family  action  ports
  ip      0       1-26

What cannot be:

  $ swctl mcast ip miss ip 1-2
  swctl: mcast ip miss ip 1-2: ports and an action go together, expected action
  [1]
  $ swctl mcast ip miss ip action 2
  swctl: mcast ip miss ip action 2: ports and an action go together, expected PORTS
  [1]
  $ swctl mcast ip miss ip 1 action 4
  swctl: mcast ip miss ip 1 action 4: User_switch_ipmc_lookup_miss_action refused port 1: a value is outside its range (result -1004)
  [2]
  $ swctl mcast ip lookup address
  swctl: mcast ip lookup: bad value "address", expected one of: ip, ip6
  [1]
  $ swctl -u 2 mcast ip show
  swctl: mcast ip show: swctl_platform_ip_mcast_next refused entry 0: there is no such switch unit (result -1001)
  [2]

  $ swctl mcast ip add 232.1.2 vlan 10 ports 1
  swctl: mcast ip add 232.1.2 vlan 10 ports 1: "232.1.2" is no address, expected an address such as 232.1.2.3 or ff3e::8000:1
  [1]
  $ swctl mcast ip add 232.1.2.3 vlan 10 source 2001:db8::1 ports 1
  swctl: mcast ip add 232.1.2.3 vlan 10 source 2001:db8::1 ports 1: group and source are of two families, expected a source of the group's family
  [1]
  $ swctl mcast ip set ff3e::1 vlan 10 ports 1
  swctl: mcast ip set ff3e::1 vlan 10 ports 1: an IPv6 entry cannot be set, expected del and add
  [1]
  $ swctl mcast ip add 192.0.2.1 vlan 10 ports 1
  swctl: mcast ip add 192.0.2.1 vlan 10 ports 1: User_ip_mcast_add refused 192.0.2.1 in VLAN 10: a value is outside its range (result -1004)
  [2]
  $ swctl mcast ip del 232.1.2.3 vlan 10
  swctl: mcast ip del 232.1.2.3 vlan 10: there is no entry 232.1.2.3 in VLAN 10
  [1]

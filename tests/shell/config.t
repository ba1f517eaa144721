The configuration as text: what differs from power-on, as commands.

  $ . "$TESTDIR/setup.sh"

Nothing differs on a fresh chip:

  $ swctl config show
  $ swctl -j config show
  []

Settings are grouped by object, in an order that loads, whatever the order in which they were made:

  $ swctl -b - 2>/dev/null <<END
  > mac add 02:00:00:00:00:01 vlan 1 port 3
  > port set 5,3 mtu 9000 ingress 640kbit
  > acl add 300 src-ip 10.0.0.0/8 protocol 6 action meter:3,drop enable
  > meter set 3 rate 640 burst 2560
  > vlan add 20,12,10-11 tagged 25
  > port set 3 vlan 10 speed 100 duplex half
  > vlan set 1 untagged 0-24,26
  > trap set lldp cpu ports 3
  > END
  $ swctl config show | tee f
  meter set 3 rate 640 burst 2560 state on
  vlan set 1 untagged 0-24,26
  vlan add 10-12,20 tagged 25
  port set 3 vlan 10
  port set 3 speed 100 duplex half
  port set 1 mtu 9000
  port set 3,5 ingress 640kbit
  mac add 02:00:00:00:00:01 vlan 1 port 3
  trap set lldp cpu ports 3
  acl add 300 protocol tcp src-ip 10.0.0.0/255.0.0.0 action drop,meter:3 enable
  $ swctl config show vlan
  vlan set 1 untagged 0-24,26
  vlan add 10-12,20 tagged 25
  $ swctl -j config show trap
  [{"object":"trap","setting":"trap lldp","command":"trap set lldp cpu ports 3","reason":null,"missing":null}]

It loads, and is the same then:

  $ vchipctl reset
  $ swctl -b f 2>/dev/null
  $ swctl config show | cmp - f

What was learned is no configuration:

  $ vchipctl learn 02:00:00:00:00:09 --port 4 --vlan 1
  $ swctl config show | cmp - f

A chip that refuses, and an object that has no settings:

  $ SWPROBE_FAIL='rtk_l2_newMacOp_get result -5' swctl config show port
  swctl: config show port: rtk_l2_newMacOp_get refused port 1: result -5
  [2]
  $ swctl -j config show nothing 2>&1 | head -1
  swctl: config show: bad value "nothing", expected one of: acl, dos, flood, mac, mcast, meter, mirror, port, qos, storm, stp, trap, trunk, vlan

Unit 1 has no address table that the library reaches:

  $ swctl -u 1 config show mac
  # mac aging: not read: the library reaches unit 0 only
  # mac limit: not read: the library reaches unit 0 only
  # mac: not read: the library reaches unit 0 only

The settings of ports.

  $ . "$TESTDIR/setup.sh"

detail shows them all:

  $ swctl port show 3 detail
  port          3
  link          down
  speed         unknown
  duplex        both
  medium        copper
  loopback      off
  max_speed     1000
  chip_port     2
  admin         on
  autoneg       on
  advertise     10-half,10-full,100-half,100-full,1000-full,pause
  pause         off
  pause_active  off
  backpressure  off
  mdix          auto
  eee           off
  mtu           1518
  learning      on
  isolation     0-26
  vlan          1
  filter        off
  dtag          off
  tpid          0x8100
  ingress       16777200 kbit/s
  egress        16777200 kbit/s
  description   -

Each keyword changes one of them:

  $ swctl port set 3 admin off advertise 10-full,100-full,pause pause off mdix crossed eee on
  $ swctl port set 3 mtu 9000 learning off isolation 0-2,25 vlan 20 dtag on tpid 0x9100 entry 2
  $ swctl port set 3 ingress 10mbit egress 64kbit backpressure on filter on
  $ swctl port show 3 detail
  port          3
  link          down
  speed         unknown
  duplex        full
  medium        copper
  loopback      off
  max_speed     1000
  chip_port     2
  admin         off
  autoneg       on
  advertise     10-full,100-full
  pause         off
  pause_active  off
  backpressure  on
  mdix          crossed
  eee           on
  mtu           9000
  learning      off
  isolation     0-2,25
  vlan          20
  filter        on
  dtag          on
  tpid          0x9100
  ingress       10000 kbit/s
  egress        64 kbit/s
  description   -
  $ swctl -j port show 3 detail
  [{"port":3,"link":"down","speed":null,"duplex":"full","medium":"copper","loopback":false,"max_speed":1000,"chip_port":2,"admin":false,"autoneg":true,"advertise":["10-full","100-full"],"pause":false,"pause_active":false,"backpressure":true,"mdix":"crossed","eee":true,"mtu":9000,"learning":"off","isolation":[0,1,2,25],"vlan":20,"filter":true,"dtag":true,"tpid":37120,"ingress":10000,"egress":64,"description":null}]

The advertised modes go to the chip before autonegotiation is switched:

  $ SWPROBE=trace swctl port set 4 autoneg off advertise 1000-full,asymmetric-pause 2>&1
  adp_intf_2_phy_id(interface=4) = 3
  rtk_port_phyAutoNegoAbility_set(unit=0, port=3, ability=0x5000000) = 0
  rtk_port_phyAutoNegoEnable_set(unit=0, port=3, enable=0) = 0

Learning in all its forms. After forward, cpu would change nothing; what restore
brings back is what the same run of the shell has seen, so nothing here:

  $ for mode in on off cpu on cpu copy on copy forward cpu restore; do
  >   SWPROBE=trace swctl port set 5 learning $mode 2>&1 | grep _set
  > done
  rtk_l2_newMacOp_set(unit=0, port=4, mode=0, action=0) = 0
  rtk_l2_newMacOp_set(unit=0, port=4, mode=2, action=1) = 0
  rtk_l2_newMacOp_set(unit=0, port=4, mode=0, action=0) = 0
  rtk_l2_newMacOp_set(unit=0, port=4, mode=1, action=2) = 0
  rtk_l2_newMacOp_set(unit=0, port=4, mode=0, action=0) = 0
  rtk_l2_newMacOp_set(unit=0, port=4, mode=0, action=3) = 0
  rtk_l2_newMacOp_set(unit=0, port=4, mode=2, action=0) = 0
  rtk_l2_newMacOp_set(unit=0, port=4, mode=0, action=0) = 0

What does not fit together changes nothing:

  $ swctl port set 6 admin off speed 100 autoneg on
  swctl: port set 6 admin off speed 100 autoneg on: speed and duplex are forced, not negotiated, expected autoneg off
  [1]
  $ swctl port set 6 admin off entry 2
  swctl: port set 6 admin off entry 2: entry belongs to tpid, expected tpid
  [1]
  $ swctl port set 6 admin off isolation 0-27
  swctl: port set 6 admin off isolation: bad value "0-27": "27" is out of range, expected interface numbers 0-26 such as 1-4,7, all or none
  [1]
  $ swctl port set 6 admin off ingress 10
  swctl: port set 6 admin off ingress: bad value "10", expected a rate 0-16777200 kbit in steps of 16 such as 64kbit, 10mbit or 1gbit
  [1]
  $ swctl port set 6 admin off ingress 17gbit
  swctl: port set 6 admin off ingress: bad value "17gbit": "17" is out of range, expected a rate 0-16777200 kbit in steps of 16 such as 64kbit, 10mbit or 1gbit
  [1]
  $ swctl port set 6 admin off advertise 100-full,1000
  swctl: port set 6 admin off advertise: bad value "100-full,1000": "1000" is no choice, expected one of: 10-half, 10-full, 100-half, 100-full, 1000-half, 1000-full, pause, asymmetric-pause
  [1]
  $ swctl port show 6 detail | grep admin
  admin         on

A refusal says what was done before:

  $ SWPROBE_FAIL='rtk_eee_portEnable_set port 7 result -1004' swctl port set 7-9 eee on
  swctl: port set 7-9 eee on: user_eee_portEnable_set refused port 8: a value is outside its range (result -1004); already done: 7
  [2]
  $ SWPROBE_FAIL='rtk_eee_portEnable_set port 8 result -1004' swctl port set 7-9 eee on
  swctl: port set 7-9 eee on: user_eee_portEnable_set refused port 9: a value is outside its range (result -1004); already done: 7,8
  [2]

A limit below the first step is refused, one between two steps is said as set:

  $ swctl port set 6 ingress 1kbit
  swctl: port set 6 ingress: bad value "1kbit": less than the first step, 16 kbit, expected a rate 0-16777200 kbit in steps of 16 such as 64kbit, 10mbit or 1gbit
  [1]
  $ swctl port set 6 egress 100kbit
  swctl: port set 6 egress 100kbit: egress is 96 kbit, in steps of 16
  $ swctl port set 6 ingress 96kbit

All front ports, and no port at all, are words:

  $ swctl port set all admin off
  $ swctl -j port show all detail | jq -c '[.[].admin] | unique'
  [false]
  $ swctl port show all | wc -l
  27
  $ swctl port set 3 isolation none
  $ swctl port show 3 detail | grep isolation
  isolation     none
  $ swctl -j port show 3 detail | jq -c .[].isolation
  []
  $ swctl port set none admin on
  swctl: port set: bad value "none", expected interface numbers 1-26 such as 1-4,7, or all
  [1]

What the SDK only writes is shown by the platform:

  $ swctl port set 3 backpressure on filter on
  $ swctl -j port show 3-4 detail | jq -c '.[] | [.port, .backpressure, .filter]'
  [3,true,true]
  [4,false,false]

The object port, in tables and in detail.

  $ . "$TESTDIR/setup.sh"

After power-on every link is down, and the ports advertise several modes:

  $ swctl port show
  port  link  speed    duplex  medium  loopback
  1     down  unknown  both    copper  off
  2     down  unknown  both    copper  off
  3     down  unknown  both    copper  off
  4     down  unknown  both    copper  off
  5     down  unknown  both    copper  off
  6     down  unknown  both    copper  off
  7     down  unknown  both    copper  off
  8     down  unknown  both    copper  off
  9     down  unknown  both    copper  off
  10    down  unknown  both    copper  off
  11    down  unknown  both    copper  off
  12    down  unknown  both    copper  off
  13    down  unknown  both    copper  off
  14    down  unknown  both    copper  off
  15    down  unknown  both    copper  off
  16    down  unknown  both    copper  off
  17    down  unknown  both    copper  off
  18    down  unknown  both    copper  off
  19    down  unknown  both    copper  off
  20    down  unknown  both    copper  off
  21    down  unknown  both    copper  off
  22    down  unknown  both    copper  off
  23    down  unknown  both    copper  off
  24    down  unknown  both    copper  off
  25    down  unknown  both    copper  off
  26    down  unknown  both    copper  off

  $ vchipctl link up 3
  $ vchipctl link up 4 --partner 100-full,10-full
  $ vchipctl link up 5 --partner 10-half
  $ vchipctl medium 25 fibre

A list is shown in the order of the ports, each once:

  $ swctl port show 25,3-5,4
  port  link  speed    duplex  medium  loopback
  3     up    1000     full    copper  off
  4     up    100      full    copper  off
  5     up    10       half    copper  off
  25    down  unknown  both    fibre   off

One port is shown as many are:

  $ swctl port show 4
  port  link  speed  duplex  medium  loopback
  4     up    100    full    copper  off
  $ swctl -j port show 4
  [{"port":4,"link":"up","speed":100,"duplex":"full","medium":"copper","loopback":false,"max_speed":1000,"chip_port":3}]

With its settings, line by line; in JSON with the same keys for one and for many:

  $ swctl port show 4 detail
  port          4
  link          up
  speed         100
  duplex        full
  medium        copper
  loopback      off
  max_speed     1000
  chip_port     3
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
  $ swctl port show 26 detail
  port          26
  link          down
  speed         unknown
  duplex        both
  medium        copper
  loopback      off
  max_speed     1000
  chip_port     26
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

  $ swctl port show detail | grep -c '^port '
  26
  $ swctl port show detail | grep -c '^$'
  25
  $ swctl -j port show 4,26 detail | jq -c 'map(keys) | unique | length'
  1

Setting speed and duplex switches autonegotiation off:

  $ swctl port set 7 speed 100 duplex half
  $ swctl port show 7 detail
  port          7
  link          down
  speed         100
  duplex        half
  medium        copper
  loopback      off
  max_speed     1000
  chip_port     6
  admin         on
  autoneg       off
  advertise     10-half,10-full,100-half,100-full,1000-full,pause
  pause         on
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
  $ SWPROBE=trace swctl port set 7 speed 10 duplex full 2>&1 | grep _set
  rtk_port_phyAutoNegoEnable_set(unit=0, port=6, enable=0) = 0
  rtk_port_phyForceModeAbility_set(unit=0, port=6, speed=0, duplex=1, flow_control=1) = 0

With a speed alone the present duplex stays; one that is not decided becomes
full:

  $ swctl port set 7 duplex half
  $ swctl port set 7 speed 10
  $ swctl port show 7,8
  port  link  speed    duplex  medium  loopback
  7     down  10       half    copper  off
  8     down  unknown  both    copper  off
  $ swctl port set 8 speed 100
  $ swctl port show 8,9
  port  link  speed    duplex  medium  loopback
  8     down  100      full    copper  off
  9     down  unknown  both    copper  off

With a duplex alone the present speed stays:

  $ swctl port set 8 duplex half
  $ swctl port show 8,9
  port  link  speed    duplex  medium  loopback
  8     down  100      half    copper  off
  9     down  unknown  both    copper  off
  $ for speed in 10 100 1000; do
  >   swctl port set 8 speed $speed duplex full
  >   SWPROBE=trace swctl port set 8 duplex full 2>&1 | grep ForceModeAbility_set
  > done
  rtk_port_phyForceModeAbility_set(unit=0, port=7, speed=0, duplex=1, flow_control=1) = 0
  rtk_port_phyForceModeAbility_set(unit=0, port=7, speed=1, duplex=1, flow_control=1) = 0
  rtk_port_phyForceModeAbility_set(unit=0, port=7, speed=2, duplex=1, flow_control=1) = 0

A duplex alone needs a speed that is known; nothing is changed on any port:

  $ swctl port set 8-9 duplex half
  swctl: port set 8-9 duplex half: the present speed of port 9 is not known, expected speed beside duplex
  [1]
  $ swctl port show 8,9
  port  link  speed    duplex  medium  loopback
  8     down  1000     full    copper  off
  9     down  unknown  both    copper  off

The loopback:

  $ swctl port set 1-2,26 loopback on
  $ swctl port show 1-3,26
  port  link  speed    duplex  medium  loopback
  1     down  unknown  both    copper  on
  2     down  unknown  both    copper  on
  3     up    1000     full    copper  off
  26    down  unknown  both    copper  on
  $ swctl port set 1 loopback off
  $ swctl port show 1-3,26
  port  link  speed    duplex  medium  loopback
  1     down  unknown  both    copper  off
  2     down  unknown  both    copper  on
  3     up    1000     full    copper  off
  26    down  unknown  both    copper  on
  $ swctl port set 2 speed 1000 duplex full loopback off
  $ swctl port show 2,3
  port  link  speed  duplex  medium  loopback
  2     down  1000   full    copper  off
  3     up    1000   full    copper  off

Everything may be abbreviated but values:

  $ swctl p se 10 sp 100 du full lo on
  $ swctl po sh 10 detail
  port          10
  link          down
  speed         100
  duplex        full
  medium        copper
  loopback      on
  max_speed     1000
  chip_port     9
  admin         on
  autoneg       off
  advertise     10-half,10-full,100-half,100-full,1000-full,pause
  pause         on
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

Another unit has a state of its own:

  $ swctl -u 1 port set 3 loopback on
  $ swctl -u 1 port show 3 detail | grep loopback
  loopback      on
  $ swctl port show 3 detail | grep loopback
  loopback      off

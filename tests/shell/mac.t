The object mac, over the address table.

  $ . "$TESTDIR/setup.sh"
  $ VCHIP_LOG=none
  $ export VCHIP_LOG

An empty table:

  $ swctl mac show
  $ swctl -j mac show
  []

VLAN 1 exists after power-on. Addresses are static unless said otherwise:

  $ swctl mac add 02:00:00:00:00:01 vlan 1 port 3
  $ swctl mac add 0200.0000.0002 vlan 1 port 0 trunk 4 dynamic
  $ swctl mac get 02-00-00-00-00-02 vlan 1 | grep mac
  mac        02:00:00:00:00:02
  $ vchipctl learn 02:00:00:00:00:03 --port 25
  $ vchipctl learn 02:00:00:00:00:04 --port p25 --trunk 5
  $ vchipctl mark 02:00:00:00:00:01 --state 1 --aux 7
  $ swctl mac show
  vlan  mac                port  trunk  type     violation
  1     02:00:00:00:00:01  3     0      static   yes
  1     02:00:00:00:00:03  25    0      dynamic  no
  1     02:00:00:00:00:02  0     4      dynamic  no
  1     02:00:00:00:00:04  -     5      dynamic  no
  $ swctl mac get 02:00:00:00:00:01 vlan 1
  vlan       1
  mac        02:00:00:00:00:01
  port       3
  trunk      0
  type       static
  violation  yes
  flags      0x00800008
  aux        7
  chip_port  2
  $ swctl -j mac get 02:00:00:00:00:04 vlan 1
  [{"vlan":1,"mac":"02:00:00:00:00:04","port":null,"trunk":5,"type":"dynamic","violation":false,"flags":0,"aux":0,"chip_port":25}]

Filters:

  $ swctl mac show port 25
  vlan  mac                port  trunk  type     violation
  1     02:00:00:00:00:03  25    0      dynamic  no
  $ swctl mac show port 0
  vlan  mac                port  trunk  type     violation
  1     02:00:00:00:00:02  0     4      dynamic  no
  $ swctl mac show trunk 5
  vlan  mac                port  trunk  type     violation
  1     02:00:00:00:00:04  -     5      dynamic  no
  $ swctl mac show type static
  vlan  mac                port  trunk  type    violation
  1     02:00:00:00:00:01  3     0      static  yes
  $ swctl mac show type violation
  vlan  mac                port  trunk  type    violation
  1     02:00:00:00:00:01  3     0      static  yes
  $ swctl mac show type dynamic trunk 0
  vlan  mac                port  trunk  type     violation
  1     02:00:00:00:00:03  25    0      dynamic  no
  $ swctl mac show vlan 2
  $ swctl mac show address 02:00:00:00:00:02 vlan 1
  vlan  mac                port  trunk  type     violation
  1     02:00:00:00:00:02  0     4      dynamic  no

What is not there, and what cannot be:

  $ swctl mac get 02:00:00:00:00:09 vlan 1
  swctl: mac get 02:00:00:00:00:09 vlan 1: there is no address 02:00:00:00:00:09 in VLAN 1
  [1]
  $ swctl mac del 02:00:00:00:00:09 vlan 1
  swctl: mac del 02:00:00:00:00:09 vlan 1: there is no address 02:00:00:00:00:09 in VLAN 1
  [1]
  $ swctl mac add 02:00:00:00:00 vlan 1 port 3
  swctl: mac add: bad value "02:00:00:00:00", expected an address such as 02:00:5e:00:00:01
  [1]
  $ swctl mac add 01:00:00:00:00:01 vlan 1 port 3
  swctl: mac add 01:00:00:00:00:01 vlan 1 port 3: user_mac_addr_add refused 01:00:00:00:00:01 in VLAN 1: a value is outside its range (result -1004)
  [2]
  $ swctl mac add 02:00:00:00:00:05 vlan 1 port 27
  swctl: mac add 02:00:00:00:00:05 vlan 1 port: bad value "27", expected an interface number 0-26
  [1]
  $ swctl mac add 02:00:00:00:00:05 vlan 1 port 3 static dynamic
  swctl: mac add 02:00:00:00:00:05 vlan 1 port 3 static dynamic: static and dynamic exclude each other
  [1]
  $ swctl -u 1 mac show
  swctl: mac show: the library reaches the address table of unit 0 only, expected unit 0
  [1]
  $ swctl mac show | wc -l
  5

Addresses in VLANs that do not exist are removed on sight:

  $ swctl mac add 02:00:00:00:00:05 vlan 99 port 3
  $ vchipctl dump --unit 0 --block l2 --compact | grep -c '"vid":99'
  1
  $ swctl mac show vlan 99
  $ vchipctl dump --unit 0 --block l2 --compact | grep -c '"vid":99'
  0
  [1]

Counts, limits and aging:

  $ swctl mac count 25,1-2
  port  learned
  1     0
  2     0
  25    1
  $ swctl mac limit 3 max 10
  $ swctl mac limit 2-3
  port  limit
  2     8191
  3     10
  $ swctl mac limit 3 max 9000
  swctl: mac limit 3 max: bad value "9000", expected a number 0-8191 addresses
  [1]
  $ swctl mac aging
  aging  300
  $ swctl mac aging 60
  $ swctl -j mac aging
  [{"aging":60}]
  $ swctl mac aging 4000000000
  swctl: mac aging 4000000000: user_mac_age_time_set refused the time 4000000000: a value is outside its range (result -1004)
  [2]

Dump files:

  $ swctl mac dump table
  file     table
  entries  4
  $ wc -c < table
  208
  $ rm -f fresh; swctl mac dump fresh >/dev/null; cmp table fresh
  $ swctl mac restore-view table > seen
  $ swctl mac show > shown; diff seen shown
  $ head -c 60 table > short
  $ swctl mac restore-view short
  swctl: mac restore-view short: "short" is no whole dump: 60 bytes are no multiple of 52
  [2]
  $ swctl mac restore-view none
  swctl: mac restore-view none: there is no file "none"
  [1]
  $ swctl mac dump none/table
  swctl: mac dump none/table: "none/table" cannot be written: No such file or directory
  [2]
  $ swctl mcast add 01:00:5e:00:00:01 vlan 1 ports 1-3
  $ swctl mac dump groups groups
  file     groups
  entries  1
  $ swctl mac restore-view groups groups
  vlan  mac                ports
  1     01:00:5e:00:00:01  1-3
  $ : > empty
  $ swctl -j mac restore-view empty
  []

Aged entries go, static ones stay:

  $ vchipctl time 60
  $ swctl mac show
  vlan  mac                port  trunk  type    violation
  1     02:00:00:00:00:01  3     0      static  yes

Flush:

  $ vchipctl learn 02:00:00:00:00:03 --port 25
  $ vchipctl learn 02:00:00:00:00:06 --port 3
  $ swctl mac flush
  swctl: mac flush: missing keyword, expected one of: vlan, port, trunk, all, static
  [1]
  $ swctl mac flush trunk 5
  swctl: mac flush trunk 5: a trunk is flushed within a VLAN, expected vlan beside trunk
  [1]
  $ swctl mac flush all port 3
  swctl: mac flush all port 3: all comes alone or with static
  [1]
  $ swctl mac flush port 3
  $ swctl mac show
  vlan  mac                port  trunk  type     violation
  1     02:00:00:00:00:01  3     0      static   yes
  1     02:00:00:00:00:03  25    0      dynamic  no
  $ swctl mac flush port 3 vlan 1 static
  $ swctl mac show
  vlan  mac                port  trunk  type     violation
  1     02:00:00:00:00:03  25    0      dynamic  no
  $ swctl mac add 02:00:00:00:00:07 vlan 1 port 4 trunk 6
  $ swctl mac flush vlan 1 trunk 6 static
  $ swctl mac flush vlan 2
  $ swctl mac show
  vlan  mac                port  trunk  type     violation
  1     02:00:00:00:00:03  25    0      dynamic  no
  $ swctl mac flush all
  $ swctl mac show

Changes as they happen. The monitor knows what there is once it has read the
table; a second reading says so:

  $ await() {
  >   for try in $(seq 600); do
  >     test "$(grep -c "$1" "$2")" -ge "$3" && return
  >     sleep 0.1
  >   done
  >   echo "no $1 in $2"
  > }
  $ monitor() {
  >   : >calls
  >   (SWPROBE=trace:calls swctl "$@" interval 50 >seen & echo $! >process)
  >   await rtk_l2_nextValidAddr_get calls 2
  > }
  $ monitor mac monitor seconds 120
  $ vchipctl learn 02:00:00:00:00:08 --port 7
  $ await added seen 1
  $ vchipctl time 60
  $ await removed seen 1
  $ kill $(cat process)
  $ cat seen
  added  1  02:00:00:00:00:08  7  0  dynamic  no
  removed  1  02:00:00:00:00:08  7  0  dynamic  no
  $ monitor -j mac monitor seconds 3 port 7
  $ vchipctl learn 02:00:00:00:00:09 --port 8
  $ vchipctl learn 02:00:00:00:00:08 --port 7
  $ await added seen 1
  $ cat seen
  {"event":"added","vlan":1,"mac":"02:00:00:00:00:08","port":7,"trunk":0,"type":"dynamic","violation":false,"flags":0,"aux":0,"chip_port":6}
  $ echo 'mac monitor seconds 1' | swctl
  stdin:1: mac monitor seconds 1: monitor shows changes as they happen, not in a batch
  [1]

What is not there: status 1 and a sentence for one that was named, an empty
answer for a filter.

  $ . "$TESTDIR/setup.sh"
  $ ask() {
  >   while read -r line; do
  >     swctl $line </dev/null
  >     echo "status $?"
  >   done
  > }

  $ ask <<'END'
  > acl show 9
  > acl del 9,11
  > acl enable 9
  > mac get 02:00:00:00:00:09 vlan 1
  > mac del 02:00:00:00:00:09 vlan 1
  > mac restore-view nofile
  > mcast del 01:00:5e:00:00:02 vlan 1
  > mcast join 01:00:5e:00:00:02 vlan 1 ports 1
  > mcast leave 01:00:5e:00:00:02 vlan 1 ports 1
  > mcast ip set 232.1.2.3 vlan 1 ports 1
  > mcast ip del 232.1.2.3 vlan 1 source 192.0.2.1
  > mcast ip del ff3e::1 vlan 1
  > stp show 3
  > stp set 3 1 state blocking
  > stp instance del 3
  > stp vlan show 3
  > stp vlan add 99 instance 0
  > stp vlan add 1 instance 3
  > stp vlan del 99
  > trunk show 3
  > trunk del 3
  > vlan show 99
  > vlan del 99
  > vlan set 99 tagged 1
  > vlan port add 99 tagged 1
  > vlan port del 99 1
  > vlan rule del translation 2
  > vlan rule del double-tag 2
  > vlan rule del mac 2
  > vlan rule del ip4 2
  > vlan rule del voice 2
  > vlan rule del protocol 2
  > vlan translate del 3
  > vlan translate del 512
  > END
  swctl: acl show 9: there is no rule 9
  status 1
  swctl: acl del 9,11: there is no rule 9,11
  status 1
  swctl: acl enable 9: there is no rule 9
  status 1
  swctl: mac get 02:00:00:00:00:09 vlan 1: there is no address 02:00:00:00:00:09 in VLAN 1
  status 1
  swctl: mac del 02:00:00:00:00:09 vlan 1: there is no address 02:00:00:00:00:09 in VLAN 1
  status 1
  swctl: mac restore-view nofile: there is no file "nofile"
  status 1
  swctl: mcast del 01:00:5e:00:00:02 vlan 1: there is no group 01:00:5e:00:00:02 in VLAN 1
  status 1
  swctl: mcast join 01:00:5e:00:00:02 vlan 1 ports 1: there is no group 01:00:5e:00:00:02 in VLAN 1
  status 1
  swctl: mcast leave 01:00:5e:00:00:02 vlan 1 ports 1: there is no group 01:00:5e:00:00:02 in VLAN 1
  status 1
  swctl: mcast ip set 232.1.2.3 vlan 1 ports 1: there is no entry 232.1.2.3 in VLAN 1
  status 1
  swctl: mcast ip del 232.1.2.3 vlan 1 source 192.0.2.1: there is no entry 232.1.2.3 in VLAN 1 from 192.0.2.1
  status 1
  swctl: mcast ip del ff3e::1 vlan 1: there is no entry ff3e::1 in VLAN 1
  status 1
  swctl: stp show 3: there is no instance 3
  status 1
  swctl: stp set 3 1 state blocking: there is no instance 3
  status 1
  swctl: stp instance del 3: there is no instance 3
  status 1
  swctl: stp vlan show 3: there is no instance 3
  status 1
  swctl: stp vlan add 99 instance 0: there is no VLAN 99
  status 1
  swctl: stp vlan add 1 instance 3: there is no instance 3
  status 1
  swctl: stp vlan del 99: there is no VLAN 99
  status 1
  swctl: trunk show 3: there is no trunk 3
  status 1
  swctl: trunk del 3: there is no trunk 3
  status 1
  swctl: vlan show 99: there is no VLAN 99
  status 1
  swctl: vlan del 99: there is no VLAN 99
  status 1
  swctl: vlan set 99 tagged 1: there is no VLAN 99
  status 1
  swctl: vlan port add 99 tagged 1: there is no VLAN 99
  status 1
  swctl: vlan port del 99 1: there is no VLAN 99
  status 1
  swctl: vlan rule del translation 2: there is no translation rule 2
  status 1
  swctl: vlan rule del double-tag 2: there is no double-tag rule 2
  status 1
  swctl: vlan rule del mac 2: there is no mac rule 2
  status 1
  swctl: vlan rule del ip4 2: there is no ip4 rule 2
  status 1
  swctl: vlan rule del voice 2: there is no voice rule 2
  status 1
  swctl: vlan rule del protocol 2: there is no protocol rule 2
  status 1
  swctl: vlan translate del 3: there is no translation 3
  status 1
  swctl: vlan translate del 512: there is no translation 512
  status 1

In JSON it is an error as any other:

  $ data swctl -j trunk show 3
  {"error":{"message":"trunk show 3: there is no trunk 3","culprit":"3","expected":[],"suggestions":[],"status":1}}
  [1]

One that is not there, and nothing is done to the others:

  $ swctl acl add 7 ethertype 0x800 action drop
  $ swctl acl del 7-8
  swctl: acl del 7-8: there is no rule 8
  [1]
  $ swctl acl show 7
  rule  enabled  match            actions
  7     no       ethertype 0x800  drop

Where the chip refuses one that is there, it is the chip that is named:

  $ swctl mac add 02:00:00:00:00:01 vlan 1 port 3 2>/dev/null
  $ SWPROBE_FAIL="rtk_l2_addr_get result -5" swctl mac get 02:00:00:00:00:01 vlan 1
  swctl: mac get 02:00:00:00:00:01 vlan 1: user_mac_addr_get refused 02:00:00:00:00:01 in VLAN 1: result -5
  [2]
  $ SWPROBE_FAIL="rtk_l2_addr_del result -5" swctl mac del 02:00:00:00:00:01 vlan 1
  swctl: mac del 02:00:00:00:00:01 vlan 1: user_mac_addr_delete refused 02:00:00:00:00:01 in VLAN 1: result -5
  [2]
  $ swctl mcast add 01:00:5e:00:00:01 vlan 1 ports 1
  $ SWPROBE_FAIL="rtk_l2_mcastAddr_get result -5" swctl mcast join 01:00:5e:00:00:01 vlan 1 ports 2
  swctl: mcast join 01:00:5e:00:00:01 vlan 1 ports 2: User_mcast_port_get refused 01:00:5e:00:00:01 in VLAN 1: result -5
  [2]
  $ SWPROBE_FAIL="rtk_l2_mcastAddr_del result -5" swctl mcast del 01:00:5e:00:00:01 vlan 1
  swctl: mcast del 01:00:5e:00:00:01 vlan 1: User_mcast_addr_remove refused 01:00:5e:00:00:01 in VLAN 1: result -5
  [2]
  $ swctl mcast ip add 232.1.2.3 vlan 1 ports 1
  $ SWPROBE_FAIL="rtk_l2_ipMcastAddr_del result -5" swctl mcast ip del 232.1.2.3 vlan 1
  swctl: mcast ip del 232.1.2.3 vlan 1: User_ip_mcast_del refused 232.1.2.3 in VLAN 1: result -5
  [2]

Filters that nothing fits:

  $ ask <<'END'
  > mac show vlan 99
  > mac show address 02:00:00:00:00:09
  > mcast show vlan 99
  > mcast ip show vlan 99
  > vlan rule show mac
  > vlan translate show
  > END
  status 0
  status 0
  status 0
  status 0
  status 0
  status 0
  $ for filter in "mac show vlan 99" "mcast show vlan 99" "mcast ip show vlan 99" \
  >   "vlan rule show mac"; do
  >   swctl -j $filter
  > done
  []
  []
  []
  []

Calls that the chip refuses: its sentence, function and port, and status 2.

  $ . "$TESTDIR/setup.sh"

  $ SWPROBE_FAIL="rtk_port_link_get port 2 result -1007" swctl port show 3
  swctl: port show 3: user_port_link_status_get refused port 3: the port's link is down (result -1007)
  [2]
  $ SWPROBE_FAIL="rtk_diag_portMacLocalLoopbackEnable_get port 24 result -1004" swctl port show
  swctl: port show: user_port_loopback_get refused port 25: a value is outside its range (result -1004)
  [2]
  $ swctl -u 2 port show 1
  swctl: port show 1: user_port_loopback_get refused port 1: there is no such switch unit (result -1001)
  [2]

A platform without a sentence for it gives the number:

  $ SWPROBE_FAIL="rtk_port_link_get port 2 result -77" swctl port show 1-4
  swctl: port show 1-4: user_port_link_status_get refused port 3: result -77
  [2]

A read that fails before anything is changed:

  $ SWPROBE_FAIL="rtk_port_link_get port 2 result -1007" swctl port set 1-4 speed 100
  rtk get error[-1007]
  swctl: port set 1-4 speed 100: user_port_duplex_get refused port 3: the port's link is down (result -1007)
  [2]
  $ swctl port show 1-4
  port  link  speed    duplex  medium  loopback
  1     down  unknown  both    copper  off
  2     down  unknown  both    copper  off
  3     down  unknown  both    copper  off
  4     down  unknown  both    copper  off

A change that fails says how far it got:

  $ SWPROBE_FAIL="rtk_port_phyForceModeAbility_set port 2 result -1004" \
  >   swctl port set 1-4 speed 100
  swctl: port set 1-4 speed 100: user_port_speed_set refused port 3: a value is outside its range (result -1004); already done: 1,2
  [2]
  $ swctl port show 1-4
  port  link  speed    duplex  medium  loopback
  1     down  100      full    copper  off
  2     down  100      full    copper  off
  3     down  1000     full    copper  off
  4     down  unknown  both    copper  off
  $ SWPROBE_FAIL="rtk_diag_portMacLocalLoopbackEnable_set port 5 result -1004" \
  >   swctl port set 6-7 loopback on
  swctl: port set 6-7 loopback on: user_port_loopback_set refused port 6: a value is outside its range (result -1004)
  [2]
  $ SWPROBE_FAIL="rtk_port_phyForceModeAbility_set port 0 result -1004" \
  >   swctl port set 1 duplex half
  swctl: port set 1 duplex half: user_port_duplex_set refused port 1: a value is outside its range (result -1004)
  [2]

The library's own line is kept out of the data:

  $ export SWPROBE_FAIL="rtk_port_phyAutoNegoEnable_get port 6 result -1007"
  $ data swctl port show 7
  [2]
  $ data swctl -j port show 7
  {"error":{"message":"port show 7: user_port_speed_get refused port 7: the port's link is down (result -1007)","culprit":"7","expected":[],"suggestions":[],"function":"user_port_speed_get","result":-1007,"sentence":"the port's link is down","status":2}}
  [2]
  $ data swctl -j port show 7 | is_json
  valid
  $ unset SWPROBE_FAIL

What the library does not hand on is seen all the same:

  $ SWPROBE_FAIL="rtk_stat_port_reset result -5" swctl port clear 3-4
  swctl: port clear 3-4: rtk_stat_port_reset refused port 3: result -5
  [2]
  $ SWPROBE_FAIL="rtk_qos_schedulingQueue_get result -5" swctl qos schedule show
  swctl: qos schedule show: rtk_qos_schedulingQueue_get refused unit 0: result -5
  [2]
  $ SWPROBE_FAIL="rtk_sec_attackPreventAction_get nth 9 result -1005" swctl dos show
  swctl: dos show: user_dos_attack_prevent_action_get refused type 8: an index is outside its table (result -1005)
  [2]

What the chip refuses to read is not taken for something that is not there, and
not written over:

  $ swctl vlan add 10 tagged 1-4
  $ SWPROBE_FAIL="rtk_vlan_port_get result -1041" swctl vlan show 10
  swctl: vlan show 10: user_vlan_port_get refused VLAN 10: there is no such VLAN (result -1041)
  [2]
  $ SWPROBE_FAIL="rtk_vlan_port_get result -1041" swctl vlan port add 10 tagged 9
  swctl: vlan port add 10 tagged 9: user_vlan_port_get refused VLAN 10: there is no such VLAN (result -1041)
  [2]
  $ VCHIP_LOG=none swctl mac add 02:00:00:00:00:01 vlan 10 port 3
  $ SWPROBE_FAIL="rtk_l2_nextValidAddr_get result -1031" swctl mac show
  swctl: mac show: rtk_l2_nextValidAddr_get refused the table of addresses: the layer-2 table has no such entry (result -1031)
  [2]

Once it may be the end of the table, to which another process has added an entry since;
the chip then says the same at the end. Another refusal is one:

  $ VCHIP_LOG=none swctl mac add 02:00:00:00:00:02 vlan 10 port 4
  $ for nth in 1 2; do
  >   SWPROBE_FAIL="rtk_l2_nextValidAddr_get nth $nth result -1031" swctl mac show | tail -n +2
  > done
  10    02:00:00:00:00:02  4     0      static  no
  10    02:00:00:00:00:01  3     0      static  no
  10    02:00:00:00:00:02  4     0      static  no
  10    02:00:00:00:00:01  3     0      static  no
  $ SWPROBE_FAIL="rtk_l2_nextValidAddr_get nth 2 result -5" swctl mac show
  swctl: mac show: rtk_l2_nextValidAddr_get refused the table of addresses: result -5
  [2]
  $ swctl mac del 02:00:00:00:00:02 vlan 10
  $ swctl vlan show 10
  vlan  tagged  untagged
  10    1-4     -

What was changed halfway is put back:

  $ swctl mcast add 01:00:5e:00:00:01 vlan 10 ports 1-3
  $ SWPROBE_FAIL="rtk_l2_mcastAddr_add nth 1 result -5" \
  >   swctl mcast join 01:00:5e:00:00:01 vlan 10 ports 9
  swctl: mcast join 01:00:5e:00:00:01 vlan 10 ports 9: User_mcast_port_add refused 01:00:5e:00:00:01 in VLAN 10: result -5; the group is as it was
  [2]
  $ swctl mcast show
  vlan  mac                ports
  10    01:00:5e:00:00:01  1-3
  $ swctl mirror add 1 to 20 ports 1-3
  $ SWPROBE_FAIL="rtk_mirror_group_get nth 2 result -5" swctl mirror add 1 to 20 ports 9
  swctl: mirror add 1 to 20 ports 9: rtk_mirror_group_get refused port 9: result -5; the group is as it was
  [2]
  $ swctl mirror show | head -n 3
  group  state  to  ingress  egress  flows
  0      off    -   -        -       no
  1      on     20  1-3      1-3     no

A virtual chip that cannot be used is refused in one line:

  $ echo junk > broken.img
  $ export VCHIP_IMAGE=broken.img
  $ swctl port show
  swctl: port show: image broken.img: not a virtual chip image
  [2]
  $ swctl port show 3
  swctl: port show 3: image broken.img: not a virtual chip image
  [2]
  $ swctl port set 3 loopback on
  swctl: port set 3 loopback on: image broken.img: not a virtual chip image
  [2]
  $ printf 'port show 3\nmac show\n' | swctl -force
  stdin:1: port show 3: image broken.img: not a virtual chip image
  stdin:2: mac show: image broken.img: not a virtual chip image
  [2]
  $ data swctl -j mac show
  {"error":{"message":"mac show: image broken.img: not a virtual chip image","culprit":null,"expected":[],"suggestions":[],"status":2}}
  [2]
  $ vchipctl dump
  vchipctl: image broken.img: not a virtual chip image
  [2]
  $ cat broken.img
  junk

What needs no chip goes on:

  $ swctl help | head -1
  Usage: swctl * (glob)
  $ swctl version | head -1
  version   * (glob)
  $ swctl port show 99999
  swctl: port show: bad value "99999", expected * (glob)
  [1]

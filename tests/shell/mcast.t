The object mcast, layer-2 multicast groups.

  $ . "$TESTDIR/setup.sh"

  $ swctl mcast show
  $ swctl mcast add 01:00:5e:00:00:01 vlan 10 ports 0,1-3,26
  $ swctl mcast add 33:33:00:00:00:02 vlan 20 ports 7
  $ swctl mcast show
  vlan  mac                ports
  10    01:00:5e:00:00:01  0-3,26
  20    33:33:00:00:00:02  7
  $ swctl -j mcast show vlan 20
  [{"vlan":20,"mac":"33:33:00:00:00:02","ports":[7],"forwarding":2}]

Ports come and go; the other ones stay:

  $ swctl mcast join 01:00:5e:00:00:01 vlan 10 ports 3,9
  $ swctl mcast show vlan 10
  vlan  mac                ports
  10    01:00:5e:00:00:01  0-3,9,26
  $ swctl mcast leave 01:00:5e:00:00:01 vlan 10 ports 0-2
  $ swctl mcast show vlan 10
  vlan  mac                ports
  10    01:00:5e:00:00:01  3,9,26

A port that is no member, a group that is not there or there already:

  $ swctl mcast leave 01:00:5e:00:00:01 vlan 10 ports 3,4-5
  swctl: mcast leave 01:00:5e:00:00:01 vlan 10 ports 3,4-5: no member of the group: 4,5
  [1]
  $ swctl mcast show vlan 10
  vlan  mac                ports
  10    01:00:5e:00:00:01  3,9,26
  $ swctl mcast join 01:00:5e:00:00:09 vlan 10 ports 3
  swctl: mcast join 01:00:5e:00:00:09 vlan 10 ports 3: there is no group 01:00:5e:00:00:09 in VLAN 10
  [1]
  $ swctl mcast add 01:00:5e:00:00:01 vlan 10 ports 4
  swctl: mcast add 01:00:5e:00:00:01 vlan 10 ports 4: User_mcast_addr_add refused 01:00:5e:00:00:01 in VLAN 10: the multicast group exists already (result -1033)
  [2]
  $ swctl mcast del 01:00:5e:00:00:09 vlan 10
  swctl: mcast del 01:00:5e:00:00:09 vlan 10: there is no group 01:00:5e:00:00:09 in VLAN 10
  [1]
  $ swctl mcast add 02:00:5e:00:00:01 vlan 10 ports 4
  swctl: mcast add 02:00:5e:00:00:01 vlan 10 ports 4: User_mcast_addr_add refused 02:00:5e:00:00:01 in VLAN 10: a value is outside its range (result -1004)
  [2]
  $ swctl mcast add 01:00:5e:00:00:01 vlan 10
  swctl: mcast add 01:00:5e:00:00:01 vlan 10: missing keyword, expected ports
  [1]

Each unit has groups of its own:

  $ swctl -u 1 mcast show
  $ swctl -u 1 mcast add 01:00:5e:00:00:01 vlan 10 ports 5
  $ swctl mcast del 01:00:5e:00:00:01 vlan 10
  $ swctl mcast show
  vlan  mac                ports
  20    33:33:00:00:00:02  7
  $ swctl -u 1 mcast show
  vlan  mac                ports
  10    01:00:5e:00:00:01  5

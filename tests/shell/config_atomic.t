A batch that is refused half-way, with -atomic: what it changed is put back.

  $ . "$TESTDIR/setup.sh"
  $ swctl vlan add 10 untagged 3
  $ swctl mac add 02:00:00:00:00:01 vlan 10 port 3 2>/dev/null
  $ vchipctl learn 02:00:00:00:00:02 --port 2 --vlan 10
  $ swctl config save before
  $ cat > batch <<END
  > port set 3 mtu 9000 vlan 10
  > vlan del 10
  > mac flush all
  > port clear 3
  > acl add 7 src-port 7 action drop enable
  > port set 3 loopbak on
  > vlan add 20
  > END
  $ swctl -atomic -b batch
  batch:6: port set 3: unknown word "loopbak" (did you mean "loopback"?), expected one of: speed, duplex, admin, advertise, autoneg, pause, backpressure, mdix, eee, loopback, mtu, learning, isolation, vlan, filter, dtag, tpid, entry, outer, ingress, egress, description
  STATIC-MAC: User add static MAC 02:00:00:00:00:01 into network system
  batch: all settings are as they were
  batch: cannot be undone: port clear 3
  [1]
  $ swctl config show | cmp - before
  $ swctl mac show
  vlan  mac                port  trunk  type     violation
  10    02:00:00:00:00:02  2     0      dynamic  no
  10    02:00:00:00:00:01  3     0      static   no

Without it, they stay:

  $ swctl -b batch 2>/dev/null
  [1]
  $ swctl config show | cmp -s - before
  [1]

A chip that refuses again when it is put back is told apart:

  $ swctl config load before 2>/dev/null
  $ SWPROBE_FAIL='rtk_vlan_create result -5' swctl -atomic -b batch 2>&1 | tail -2
  batch: not put back: vlan 10, mac 02:00:00:00:00:01 vlan 10
  batch: cannot be undone: port clear 3
  $ swctl -atomic -force -b batch
  swctl: option "-atomic" beside -force: a batch stops or goes on
  [1]

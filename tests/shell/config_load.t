Configurations in files: saved, compared, checked, loaded.

  $ . "$TESTDIR/setup.sh"
  $ cat > plan <<END
  > # a plan by hand, in any order
  > mac add 02:00:00:00:00:01 vlan 10 port 3
  > vlan add 10-12 tagged 25
  > vlan port add 11 untagged 4
  > port set 3-4 vl 10 ingress 100mbit
  > acl add 300 src-ip 10.0.0.0/8 action drop en
  > END
  $ swctl config check plan
  $ swctl config load plan 2>/dev/null
  $ swctl config show
  vlan add 10,12 tagged 25
  vlan add 11 tagged 25 untagged 4
  port set 3,4 vlan 10
  port set 3,4 ingress 100000kbit
  mac add 02:00:00:00:00:01 vlan 10 port 3
  acl add 300 src-ip 10.0.0.0/255.0.0.0 action drop enable

A second load has nothing to do, and makes no call that sets anything:

  $ SWPROBE=record:calls swctl config load plan
  $ grep -c -e _set -e _add -e _del -e _create -e _destroy -e _write calls
  0
  [1]

What is saved is what is shown; the file is written whole:

  $ swctl config save saved
  $ swctl config show | cmp - saved
  $ mkdir directory
  $ swctl config save directory
  swctl: config save directory: "directory" cannot be written: Is a directory
  [2]
  $ swctl config save nowhere/file
  swctl: config save nowhere/file: "nowhere/file" cannot be written: No such file or directory
  [2]

What differs, as lines and as the commands that get there. A load makes just these:

  $ sed -e 's/10,12/10,13/' -e /^acl/d -e 's/^port set 3,4 vlan/port set 3 vlan/' saved > other
  $ swctl config diff other
  --- running
  +++ other
  @@ -1,6 +1,5 @@
  -vlan add 10,12 tagged 25
  +vlan add 10,13 tagged 25
   vlan add 11 tagged 25 untagged 4
  -port set 3,4 vlan 10
  +port set 3 vlan 10
   port set 3,4 ingress 100000kbit
   mac add 02:00:00:00:00:01 vlan 10 port 3
  -acl add 300 src-ip 10.0.0.0/255.0.0.0 action drop enable
  $ swctl config diff other commands
  acl del 300
  vlan add 13 tagged 25
  port set 4 vlan 1
  vlan del 12
  $ swctl config diff other plan commands
  vlan add 12 tagged 25
  port set 4 vlan 10
  acl add 300 src-ip 10.0.0.0/255.0.0.0 action drop enable
  vlan del 13
  $ swctl -j config diff other
  [{"object":"acl","setting":"acl","command":"acl del 300"},{"object":"vlan","setting":"vlan","command":"vlan add 13 tagged 25"},{"object":"port","setting":"port vlan","command":"port set 4 vlan 1"},{"object":"vlan","setting":"vlan","command":"vlan del 12"}]
  $ swctl config load other
  $ swctl config diff other
  $ swctl config show | cmp - other

Everything that is wrong with a file is said, and nothing is changed:

  $ cat > bad <<END
  > vlan add 10 tagged 25
  > port set 3 sped 100
  > port set 3 speed 100
  > mac add 02:00:00:00:00:01 vlan 14 port 3
  > mac show
  > mac add 02:00:00:00:00:02 vlan 1 port 3 dynamic
  > trunk set 1 1-2
  > trunk set 2 2-3
  > vlan set 20 tagged 3
  > acl add 7 src-port 7 action drop
  > acl add 7 src-port 8 action drop
  > meter set 1 rate 160 burst 128
  > meter set 2 rate 160 burst 256
  > meter set 3 rate 160 burst 384
  > port set "3
  > port set 3 learning restore
  > END
  $ swctl config check bad
  bad:2: port set 3: unknown word "sped" (did you mean "speed"?), expected one of: speed, duplex, admin, advertise, autoneg, pause, backpressure, mdix, eee, loopback, mtu, learning, isolation, vlan, filter, dtag, tpid, entry, outer, ingress, egress, description
  bad:3: port set 3 speed 100: speed and duplex are given together in a configuration, expected duplex
  bad:4: the file makes no vlan 14
  bad:5: mac show: "mac show" makes no setting of a configuration
  bad:6: mac add 02:00:00:00:00:02 vlan 1 port 3 dynamic: "mac add" makes no setting of a configuration
  bad:8: port 2 is in another trunk too
  bad:9: vlan set 20 tagged 3: there is no VLAN 20 up to this line
  bad:11: acl add 7 src-port 8 action drop: rule 7 is there already
  bad:14: meters share two burst sizes, and this is a third
  bad:15: a quote " is not closed
  bad:16: port set 3 learning restore: "port set" makes no setting of a configuration
  swctl: config check bad: 11 faults
  [1]
  $ data swctl -j config load bad | jq -c '.error | [.message, (.details | length)]'
  ["config load bad: 11 faults",11]
  $ swctl config show | cmp - other
  $ swctl config load missing
  swctl: config load missing: "missing": No such file or directory
  [1]

What the chip refuses half-way is put back:

  $ for call in rtk_acl_ruleValidate_set rtk_vlan_destroy rtk_vlan_portPvid_set rtk_vlan_port_set; do
  >   SWPROBE_FAIL="$call nth 1 result -5" swctl config load saved
  >   swctl config show | cmp - other
  > done
  swctl: acl add 300 src-ip 10.0.0.0/255.0.0.0 action drop enable: user_field_entry_install refused rule 300: result -5; nothing of it was kept; all is as it was
  swctl: vlan del 13: user_vlan_destroy refused VLAN 13: result -5; all is as it was
  swctl: port set 4 vlan 10: user_port_untagged_vlan_set refused port 4: result -5; all is as it was
  swctl: vlan add 12 tagged 25: user_vlan_port_set refused VLAN 12: result -5; all is as it was
  $ SWPROBE_FAIL="rtk_vlan_destroy result -5" swctl config load saved
  swctl: vlan del 13: user_vlan_destroy refused VLAN 13: result -5; not put back: vlan 12
  [2]

A port in double-tag mode changes a TPID of the whole switch; the file says what that is:

  $ vchipctl reset
  $ echo 'port set 8 dtag on' | swctl config load -
  $ swctl config show
  port set 8 dtag on
  port set 1-26 tpid 0x8100 entry 0 outer 0x88a8
  $ swctl config show > printed
  $ vchipctl reset
  $ swctl -b printed
  $ swctl config show | cmp - printed

Scripts that may run twice: -may-exist, and replace.

  $ . "$TESTDIR/setup.sh"
  $ cat > script <<END
  > vlan add 10-12 tagged 25
  > port set 3 vlan 10 mtu 9000
  > mac add 02:00:00:00:00:01 vlan 10 port 3
  > mcast add 01:00:5e:00:00:01 vlan 10 ports 1-3
  > acl add 7 src-port 7 action drop enable
  > vlan rule add mac 3 02:00:5e:00:00:01 vlan 20 ports 1-4
  > stp instance add 3
  > vlan rule del voice 2
  > END
  $ swctl -may-exist -b script 2>&1 | grep -v STATIC
  script:8: vlan rule del voice 2: already so: vlan rule voice 2
  $ swctl config save first
  $ swctl -b script 2>&1 | grep -v STATIC
  script:4: mcast add 01:00:5e:00:00:01 vlan 10 ports 1-3: User_mcast_addr_add refused 01:00:5e:00:00:01 in VLAN 10: the multicast group exists already (result -1033)
  $ swctl -may-exist -b script
  script:1: vlan add 10-12 tagged 25: already so: vlan 10-12
  script:2: port set 3 vlan 10 mtu 9000: already so: port vlan 3, port mtu
  script:3: mac add 02:00:00:00:00:01 vlan 10 port 3: already so: mac 02:00:00:00:00:01 vlan 10
  script:4: mcast add 01:00:5e:00:00:01 vlan 10 ports 1-3: already so: mcast 01:00:5e:00:00:01 vlan 10
  script:5: acl add 7 src-port 7 action drop enable: already so: acl 7
  script:6: vlan rule add mac 3 02:00:5e:00:00:01 vlan 20 ports 1-4: already so: vlan rule mac 3
  script:7: stp instance add 3: already so: stp instance 3
  script:8: vlan rule del voice 2: already so: vlan rule voice 2
  $ swctl config show | cmp - first

Only what is missing is made; something else in the place is an error:

  $ swctl -may-exist vlan add 11-13 tagged 25
  swctl: vlan add 11-13 tagged 25: already so: vlan 11,12
  $ swctl -may-exist acl add 7 src-port 8 action drop
  swctl: acl add 7 src-port 8 action drop: rule 7 is there already
  [1]
  $ swctl -may-exist port show 3 | head -1
  port  link  speed    duplex  medium  loopback

replace takes the place of what is there:

  $ swctl acl replace 7 src-port 8 action permit enable
  $ swctl mcast replace 01:00:5e:00:00:01 vlan 10 ports 9
  $ swctl mcast replace 01:00:5e:00:00:02 vlan 10 ports 8
  $ swctl vlan replace 11 untagged 1
  $ swctl config diff first
  --- running
  +++ first
  @@ -1,10 +1,8 @@
  -vlan add 10,12,13 tagged 25
  -vlan add 11 untagged 1
  +vlan add 10-12 tagged 25
   vlan rule add mac 3 02:00:5e:00:00:01 vlan 20 ports 1-4
   stp instance add 3
   port set 3 vlan 10
   port set 1 mtu 9000
   mac add 02:00:00:00:00:01 vlan 10 port 3
  -mcast add 01:00:5e:00:00:01 vlan 10 ports 9
  -mcast add 01:00:5e:00:00:02 vlan 10 ports 8
  -acl add 7 src-port 8 action permit enable
  +mcast add 01:00:5e:00:00:01 vlan 10 ports 1-3
  +acl add 7 src-port 7 action drop enable

So do the rules of VLANs, each sort in its own places:

  $ vchipctl reset
  $ swctl vlan rule replace mac 3 02:00:5e:00:00:01 vlan 20 ports 1-4
  $ swctl vlan rule add ip4 3 192.0.2.0/24 vlan 10
  $ swctl vlan rule replace mac 3 02:00:5e:00:00:02 vlan 30 priority 5
  $ swctl vlan rule replace translation 1 from 10 to 11
  $ swctl vlan rule replace translation 1 from 10 to 12
  $ swctl vlan rule replace double-tag 1 inner 10 outer 11
  $ swctl vlan rule replace double-tag 1 inner 10 outer 12
  $ swctl vlan rule replace ip4 3 198.51.100.0/24 vlan 11
  $ swctl vlan rule replace voice 2 02:00:5e:00:00:01 vlan 11
  $ swctl vlan rule replace voice 2 02:00:5e:00:00:01 vlan 12
  $ swctl vlan rule replace protocol 2 vlan 10 encapsulation ethernet ethertype 0x800
  $ swctl vlan rule replace protocol 2 vlan 11 encapsulation snap ethertype 0x800
  $ swctl config show
  vlan rule add translation 1 from 10 to 12
  vlan rule add double-tag 1 inner 10 outer 12
  vlan rule add mac 3 02:00:5e:00:00:02 vlan 30 priority 5
  vlan rule add ip4 3 198.51.100.0/255.255.255.0 vlan 11
  vlan rule add voice 2 02:00:5e:00:00:01 vlan 12
  vlan rule add protocol 2 vlan 11 encapsulation snap ethertype 0x800
  $ SWPROBE=record:calls swctl vlan rule replace translation 1 from 10 to 12
  $ grep -c adp_fp_add_entity_rule calls
  0
  [1]
  $ SWPROBE=record:calls swctl vlan rule replace translation 1 from 10 to 13
  $ grep -c adp_fp_add_entity_rule calls
  1
  $ swctl vlan rule replace mac 3 02:00:5e:00:00:02 vlan 99999
  swctl: vlan rule replace mac 3 02:00:5e:00:00:02 vlan: bad value "99999", expected a number 1-4094
  [1]
  $ SWPROBE_FAIL='adp_fp_add_entity_rule nth 1 result -5' swctl vlan rule replace mac 3 02:00:5e:00:00:03 vlan 30
  swctl: vlan rule add mac 3 02:00:5e:00:00:03 vlan 30: adp_fp_add_entity_rule refused mac rule 3: result -5; all is as it was
  [2]
  $ swctl config show vlan | grep 'rule add mac'
  vlan rule add mac 3 02:00:5e:00:00:02 vlan 30 priority 5

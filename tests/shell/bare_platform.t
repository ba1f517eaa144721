A platform without any of the functions that it may add: everything that the
SDK answers works, and what cannot be told is refused by name.

  $ . "$TESTDIR/setup.sh"
  $ swctl trunk set 4 1-2
  $ swctl acl add 7 ethertype 0x88cc action drop
  $ LD_LIBRARY_PATH="$BARE_PLATFORM"
  $ export LD_LIBRARY_PATH
  $ swctl -j version | jq -r .[].platform | grep -o 'bare/.*'
  bare/libswctl-vchip.so.1

  $ cat > questions <<WORDS
  > acl show
  > acl show 7 detail
  > acl miss
  > vlan rule show
  > vlan rule show mac
  > vlan translate show
  > stp vlan show
  > trap show
  > trap show bpdu
  > trap show lacp
  > trunk show
  > trunk hash
  > qos trust show
  > qos tag show
  > mcast ip show
  > mcast ip show ip6
  > mcast ip lookup
  > mcast ip lookup ip6
  > mcast ip miss
  > WORDS
  $ swctl -force -b questions
  questions:1: acl show: this platform cannot tell: it has no swctl_platform_acl_rule_next
  questions:2: acl show 7 detail: this platform cannot tell: it has no swctl_platform_acl_rule_next
  questions:3: acl miss: this platform cannot tell: it has no swctl_platform_acl_miss_get
  questions:4: vlan rule show: this platform cannot tell: it has no swctl_platform_entity_rule_next
  questions:5: vlan rule show mac: this platform cannot tell: it has no swctl_platform_entity_rule_next
  questions:6: vlan translate show: this platform cannot tell: it has no swctl_platform_vlan_egress_next
  questions:7: stp vlan show: this platform cannot tell: it has no swctl_platform_vlan_next
  questions:8: trap show: this platform cannot tell: it has no swctl_platform_trap_frame_get
  questions:9: trap show bpdu: this platform cannot tell: it has no swctl_platform_trap_port_frame_get
  questions:10: trap show lacp: this platform cannot tell: it has no swctl_platform_trap_group_get
  questions:11: trunk show: this platform cannot tell: it has no swctl_platform_trunk_hash_get
  questions:12: trunk hash: this platform cannot tell: it has no swctl_platform_trunk_hash_get
  questions:13: qos trust show: this platform cannot tell: it has no swctl_platform_qos_port_group_get
  questions:14: qos tag show: this platform cannot tell: it has no swctl_platform_qos_tag_get
  questions:15: mcast ip show: this platform cannot tell: it has no swctl_platform_ip_mcast_next
  questions:16: mcast ip show ip6: this platform cannot tell: it has no swctl_platform_ip6_mcast_next
  questions:17: mcast ip lookup: this platform cannot tell: it has no swctl_platform_ip_mcast_mode_get
  questions:18: mcast ip lookup ip6: this platform cannot tell: it has no swctl_platform_ip6_mcast_mode_get
  questions:19: mcast ip miss: this platform cannot tell: it has no swctl_platform_lookup_miss_get
  [2]
  $ swctl trunk show
  swctl: trunk show: this platform cannot tell: it has no swctl_platform_trunk_hash_get
  [2]

  $ data swctl -j trunk show
  {"error":{"message":"trunk show: this platform cannot tell: it has no swctl_platform_trunk_hash_get","culprit":"swctl_platform_trunk_hash_get","expected":[],"suggestions":[],"status":2}}
  [2]

What only sets still sets, and a refusal has its number alone:

  $ swctl trunk hash ips
  $ swctl vlan rule add mac 3 02:00:5e:00:00:01 vlan 20
  $ swctl mcast ip miss ip 1-2 action 2
  $ swctl trunk set 5 2
  swctl: trunk set 5 2: user_trunk_set refused trunk 5: result -1081
  [2]

  $ unset LD_LIBRARY_PATH
  $ swctl trunk show
  trunk  ports  hash
  4      1,2    ips

Rules come on top of each other where nobody can tell that one is in use:

  $ LD_LIBRARY_PATH="$BARE_PLATFORM" swctl acl add 7 src-port 7 action permit
  $ swctl acl show 7 detail
  rule      7
  enabled   no
  match
    ethertype  0x88cc
    src-port   7
  actions   permit
  template  -
  double    no

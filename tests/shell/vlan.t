VLANs: show, make, change, destroy.

  $ . "$TESTDIR/setup.sh"

After power-on:

  $ swctl vlan show
  vlan  tagged  untagged
  1     -       0-26
  $ swctl -j vlan show
  [{"vlan":1,"tagged":[],"untagged":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26]}]

One line makes VLANs and fills them; again it changes nothing:

  $ swctl vlan add 100-110 untagged 1-4 tagged 25
  $ swctl vlan show 100-110
  vlan  tagged  untagged
  100   25      1-4
  101   25      1-4
  102   25      1-4
  103   25      1-4
  104   25      1-4
  105   25      1-4
  106   25      1-4
  107   25      1-4
  108   25      1-4
  109   25      1-4
  110   25      1-4
  $ swctl -j vlan show 100,110
  [{"vlan":100,"tagged":[25],"untagged":[1,2,3,4]},{"vlan":110,"tagged":[25],"untagged":[1,2,3,4]}]
  $ vchipctl dump --compact > before
  $ swctl vlan add 100-110 untagged 1-4 tagged 25
  $ vchipctl diff before chip.img
  $ vchipctl dump --block vlan --unit 0 --compact | jq -c '.vlans[1]'
  {"vid":100,"member":[0,1,2,3,24],"untagged":[0,1,2,3],"stg":0}
  $ swctl -u 1 vlan show
  vlan  tagged  untagged
  1     -       0-26

What one port has to do with VLANs:

  $ swctl vlan show port 25
  port  vlan  tagged  pvid
  25    1     no      yes
  25    100   yes     no
  25    101   yes     no
  25    102   yes     no
  25    103   yes     no
  25    104   yes     no
  25    105   yes     no
  25    106   yes     no
  25    107   yes     no
  25    108   yes     no
  25    109   yes     no
  25    110   yes     no
  $ swctl vlan show 100,101 port 3
  port  vlan  tagged  pvid
  3     100   no      no
  3     101   no      no
  $ swctl -j vlan show 100 port 3
  [{"port":3,"vlan":100,"tagged":false,"pvid":false}]
  $ swctl -j vlan show 100 port 24
  []

Ports come and go:

  $ swctl vlan add 10,20-21
  $ swctl vlan port add 10,20 tagged 1,0 untagged 2
  $ swctl vlan port del 10 1
  $ swctl vlan show 10,20-21
  vlan  tagged  untagged
  10    0       2
  20    0,1     2
  21    -       -
  $ swctl vlan set 20-21 untagged 26
  $ swctl vlan show 20-21
  vlan  tagged  untagged
  20    -       26
  21    -       26
  $ vchipctl dump --block vlan --unit 0 --compact | jq -c '.vlans[2]'
  {"vid":20,"member":[26],"untagged":[26],"stg":0}

The default VLAN:

  $ swctl vlan default 10
  $ swctl vlan default | head -3
  port  pvid
  1     10
  2     10
  $ swctl -j vlan default | cut -c-42
  [{"port":1,"pvid":10},{"port":2,"pvid":10}
  $ vchipctl dump --block vlan --unit 0 --compact | jq -c '.pvid'
  [10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,1,10,1,10]
  $ SWPROBE_FAIL="rtk_vlan_portPvid_set port 4 result -1004" swctl vlan default 20
  swctl: vlan default 20: user_vlan_default_set refused VLAN 20: a value is outside its range (result -1004)
  [2]

VLANs are destroyed only if all are there:

  $ swctl vlan del 10,30,40-41
  swctl: vlan del 10,30,40-41: there is no VLAN 30,40,41
  [1]
  $ swctl vlan del 10,20-21
  $ swctl vlan show 10
  swctl: vlan show 10: there is no VLAN 10
  [1]

Wrong words change nothing:

  $ vchipctl dump --compact > before
  $ swctl vlan add 4095
  swctl: vlan add: bad value "4095", expected a list of numbers 1-4094 such as 1-4,7
  [1]
  $ swctl vlan add 30 tagged 1-3 untagged 3
  swctl: vlan add 30 tagged 1-3 untagged 3: port 3 is both tagged and untagged
  [1]
  $ swctl vlan add 30 tagged 27
  swctl: vlan add 30 tagged: bad value "27", expected interface numbers 0-26 such as 1-4,7, or all
  [1]
  $ swctl vlan port add 100
  swctl: vlan port add 100: missing keyword, expected one of: tagged, untagged
  [1]
  $ swctl vlan port add 100,200 tagged 5
  swctl: vlan port add 100,200 tagged 5: there is no VLAN 200
  [1]
  $ swctl vlan set 200 tagged 5
  swctl: vlan set 200 tagged 5: there is no VLAN 200
  [1]
  $ vchipctl diff before chip.img

The chip may refuse:

  $ SWPROBE_FAIL="rtk_vlan_create vid 31 result -1004" swctl vlan add 30-32
  swctl: vlan add 30-32: user_vlan_create refused VLAN 31: a value is outside its range (result -1004); already done: 30
  [2]
  $ SWPROBE_FAIL="rtk_vlan_port_set vid 101 result -1004" swctl vlan port add 100-102 tagged 7
  swctl: vlan port add 100-102 tagged 7: user_vlan_port_set refused VLAN 101: a value is outside its range (result -1004); already done: 100
  [2]
  $ swctl -u 7 vlan show
  swctl: vlan show: user_vlan_default_get refused unit 7: there is no such switch unit (result -1001)
  [2]
  $ swctl -u 7 -j vlan show 2>/dev/null
  {"error":{"message":"vlan show: user_vlan_default_get refused unit 7: there is no such switch unit (result -1001)","culprit":"unit 7","expected":[],"suggestions":[],"function":"user_vlan_default_get","result":-1001,"sentence":"there is no such switch unit","status":2}}
  [2]

Rules go to the adapter:

  $ swctl vlan rule add translation 0 from 10 to 20 ports 1-2
  $ swctl vlan rule add double-tag 29 inner 10 outer 200 priority 3
  $ swctl vlan rule add mac 3 02:00:5e:00:00:01 vlan 20 priority 5 ports 1-4
  $ swctl vlan rule add ip4 0 192.0.2.0/24 vlan 30
  $ swctl vlan rule add voice 3 02:11:22:00:00:00 vlan 40 priority 6
  $ swctl vlan rule add protocol 1 encapsulation snap ethertype 0x0806 vlan 40 ports 5
  $ vchipctl dump --block rules --compact | jq -c '.[] | [.name, .index, [.actions[].value], [.qualifiers[] | select(.number != 13) | .value, .mask]]'
  ["protocol-vlan",1,[40],[3,null,"0x0806",null,1,null]]
  ["ip4-vlan",0,[30],["192.0.2.0","255.255.255.0",1,null]]
  ["mac-vlan",3,[20,5],["02:00:5e:00:00:01","ff:ff:ff:ff:ff:ff",1,null]]
  ["voice-vlan",18,[40,6],["02:11:22:00:00:00","ff:ff:ff:00:00:00"]]
  ["double-tag",29,[200,3],[0,null,10,null]]
  ["translation",0,[20],[0,null,10,null]]
  $ swctl vlan rule show
  kind         index  match                                                       sets
  translation  0      ports 1,2 frames tagged from 10                             to 20
  double-tag   29     ports 1-26 frames tagged inner 10                           outer 200 priority 3
  mac          3      ports 1-4 mac 02:00:5e:00:00:01 frames untagged             vlan 20 priority 5
  ip4          0      ports 1-26 subnet 192.0.2.0/255.255.255.0 frames untagged   vlan 30
  voice        3      ports 1-26 mac 02:11:22:00:00:00/ff:ff:ff:00:00:00          vlan 40 priority 6
  protocol     1      ports 5 encapsulation snap ethertype 0x806 frames untagged  vlan 40
  $ swctl -j vlan rule show voice
  [{"kind":"voice","index":3,"match":{"ports":[1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26],"mac":"02:11:22:00:00:00/ff:ff:ff:00:00:00"},"sets":{"vlan":40,"priority":6}}]
  $ swctl -j vlan rule show | is_json
  valid
  $ vchipctl dump --compact > before
  $ swctl vlan rule add mac 3 02:00:5e:00:00:02 vlan 30
  swctl: vlan rule add mac 3 02:00:5e:00:00:02 vlan 30: mac rule 3 is in use, expected a free rule, or vlan rule del mac 3 before
  [1]
  $ SWPROBE_FAIL="adp_fp_add_entity_rule result -5" \
  >   swctl vlan rule add mac 4 02:00:5e:00:00:02 vlan 30
  swctl: vlan rule add mac 4 02:00:5e:00:00:02 vlan 30: adp_fp_add_entity_rule refused mac rule 4: result -5
  [2]
  $ SWPROBE_FAIL="adp_fp_add_entity_qualify nth 2 result -5" \
  >   swctl vlan rule add mac 4 02:00:5e:00:00:02 vlan 30
  swctl: vlan rule add mac 4 02:00:5e:00:00:02 vlan 30: adp_fp_add_entity_qualify refused mac rule 4: result -5; nothing of it was kept
  [2]
  $ swctl vlan rule del mac 4
  swctl: vlan rule del mac 4: there is no mac rule 4
  [1]
  $ swctl vlan rule show mac
  kind  index  match                                            sets
  mac   3      ports 1-4 mac 02:00:5e:00:00:01 frames untagged  vlan 20 priority 5
  $ vchipctl diff before chip.img
  $ swctl vlan rule add mac 4 02:00:5e:00:00:02 vlan 30 mask ff:ff:ff:00:00:00 ports 26
  $ swctl vlan rule show mac
  kind  index  match                                                             sets
  mac   3      ports 1-4 mac 02:00:5e:00:00:01 frames untagged                   vlan 20 priority 5
  mac   4      ports 26 mac 02:00:5e:00:00:02/ff:ff:ff:00:00:00 frames untagged  vlan 30
  $ swctl vlan rule del mac 4
  $ swctl vlan rule show arp
  swctl: vlan rule show: bad value "arp", expected one of: translation, double-tag, mac, ip4, voice, protocol
  [1]
  $ swctl vlan rule del mac 3
  $ swctl vlan rule del voice 3
  $ swctl vlan rule show voice
  $ swctl -j vlan rule show voice
  []
  $ vchipctl dump --block rules --compact | jq -c '[.[].name]'
  ["protocol-vlan","ip4-vlan","double-tag","translation"]
  $ swctl vlan rule add mac 30 02:00:5e:00:00:01 vlan 20
  swctl: vlan rule add mac: bad value "30", expected a number 0-29
  [1]
  $ swctl vlan rule add mac 3 02:00:5e:00:00 vlan 20
  swctl: vlan rule add mac 3: bad value "02:00:5e:00:00", expected an address such as 02:00:5e:00:00:01
  [1]
  $ swctl vlan rule add mac 3 02:00:5e:00:00:100 vlan 20
  swctl: vlan rule add mac 3: bad value "02:00:5e:00:00:100", expected an address such as 02:00:5e:00:00:01
  [1]
  $ swctl vlan rule add ip4 3 192.0.2.0/33 vlan 20
  swctl: vlan rule add ip4 3 192.0.2.0/33 vlan 20: bad value "192.0.2.0/33": out of range, expected a subnet such as 192.0.2.0/24
  [1]
  $ swctl vlan rule add ip4 3 192.0.2 vlan 20
  swctl: vlan rule add ip4 3 192.0.2 vlan 20: bad value "192.0.2": not an address, expected a subnet such as 192.0.2.0/24
  [1]
  $ swctl vlan rule add ip4 3 192.0.2.5/24 vlan 20
  swctl: vlan rule add ip4 3 192.0.2.5/24 vlan 20: bad value "192.0.2.5/24": has bits after its length; the subnet is 192.0.2.0/24, expected a subnet such as 192.0.2.0/24
  [1]
  $ swctl vlan rule add ip4 4 192.0.2.7 vlan 20 ports 1
  $ vchipctl dump --block rules --compact | jq -c '.[] | select(.index == 4) | .qualifiers[1]'
  {"number":9,"name":"source-ip4","value":"192.0.2.7","mask":"255.255.255.255"}

Translation on the way out:

  $ swctl vlan translate add 3 port 25 from 10 to 20
  $ vchipctl dump --block conversion --unit 0 --compact | jq -c '.egress'
  [{"index":3,"port":24,"vid":10,"second_key":null,"new_vid":20,"other_fields":[0,0,0,0,0,0]}]
  $ swctl vlan translate add 511 port 1 from 4094 to 1
  $ swctl vlan translate show
  index  port  from  to
  3      25    10    20
  511    1     4094  1
  $ swctl -j vlan translate show
  [{"index":3,"port":25,"from":10,"to":20},{"index":511,"port":1,"from":4094,"to":1}]
  $ swctl -u 1 -j vlan translate show
  []
  $ swctl vlan translate del 511
  $ swctl vlan translate add 512 port 25 from 10 to 20
  swctl: vlan translate add 512 port 25 from 10 to 20: user_vlan_translate_egress_add refused entry 512: an index is outside its table (result -1005)
  [2]
  $ swctl vlan translate del 3
  $ swctl vlan translate init
  $ vchipctl dump --block conversion --unit 0 --compact | jq -c '.'
  {"egress":[],"ingress_block_modes":[1,2,0]}

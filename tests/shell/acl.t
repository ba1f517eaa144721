The object acl: rules, their counters, and what no rule matches.

  $ . "$TESTDIR/setup.sh"
  $ swctl acl show
  $ swctl -j acl show
  []

A rule is written with its conditions and actions; it takes effect with enable:

  $ swctl acl add 7 in-ports 1-4 dst-mac 01:80:c2:00:00:00/ff:ff:ff:ff:ff:f0 ethertype 0x88cc action trap
  $ swctl acl add 300 src-ip 10.0.0.0/8 protocol tcp dst-port 80 dscp 46 action drop,meter:3,redirect:25 enable
  $ swctl acl show
  rule  enabled  match                                                                      actions
  7     no       in-ports 1-4 dst-mac 01:80:c2:00:00:00/ff:ff:ff:ff:ff:f0 ethertype 0x88cc  trap
  300   yes      protocol tcp src-ip 10.0.0.0/255.0.0.0 dscp 46 dst-port 80                 drop,redirect:25,meter:3
  $ swctl acl show 7 detail
  rule      7
  enabled   no
  match
    in-ports   1-4
    dst-mac    01:80:c2:00:00:00/ff:ff:ff:ff:ff:f0
    ethertype  0x88cc
  actions   trap
  template  -
  double    no
  $ swctl -j acl show 300
  [{"rule":300,"enabled":true,"match":{"protocol":"tcp","src-ip":"10.0.0.0/255.0.0.0","dscp":{"value":46,"mask":63},"dst-port":{"value":80,"mask":65535}},"actions":[{"action":"drop","parameter":null},{"action":"redirect","parameter":25,"chip_port":24},{"action":"meter","parameter":3}],"template":null,"double":false}]
  $ swctl acl enable 7
  $ swctl -j acl show 7 | grep -o '"enabled":true'
  "enabled":true

The chip has it:

  $ vchipctl dump --block acl --unit 0 | grep '"text": "match'
        "text": "match in ports 0-3, destination mac 01:80:c2:00:00:00 mask ff:ff:ff:ff:ff:f0, ethertype 0x88cc; trap",
        "text": "match ip protocol tcp, source ip 10.0.0.0 mask 255.0.0.0, traffic class 0xb8 mask 0xfc, destination port 80; redirect to port 24; meter 3; drop",

What is written reads back:

  $ swctl acl del 7,300
  $ while read -r condition; do
  >   swctl acl add 9 $condition
  >   swctl acl show 9 | tail -n 1
  >   swctl -j acl show 9 | jq -c .[].match
  >   swctl acl del 9
  > done <<CONDITIONS
  > in-ports 0,25,26
  > dst-mac 02:00:5E:00:00:01
  > src-mac 02:00:5e:00:00:01/ff:00:00:00:00:00
  > ethertype 0x800/0xff00
  > outer-vlan 10/0xfff
  > outer-vlan-id 4094
  > outer-priority 5/7
  > inner-vlan 35
  > inner-vlan-id 10/0
  > inner-priority 7
  > frame-type 3
  > ip-type 10
  > protocol udp
  > protocol 89
  > src-ip 10.1.2.3
  > dst-ip 10.1.2.3/0.0.0.0
  > src-ip6 2001:db8::1
  > dst-ip6 2001:db8::/33
  > dscp 46/0x38
  > traffic-class 0xb9
  > src-port 67
  > dst-port 65535/0xff00
  > CONDITIONS
  9     no       in-ports 0,25,26  -
  {"in-ports":[0,25,26]}
  9     no       dst-mac 02:00:5e:00:00:01  -
  {"dst-mac":"02:00:5e:00:00:01"}
  9     no       src-mac 02:00:5e:00:00:01/ff:00:00:00:00:00  -
  {"src-mac":"02:00:5e:00:00:01/ff:00:00:00:00:00"}
  9     no       ethertype 0x800/0xff00  -
  {"ethertype":{"value":2048,"mask":65280}}
  9     no       outer-vlan 10/0xfff  -
  {"outer-vlan":{"value":10,"mask":4095}}
  9     no       outer-vlan-id 4094  -
  {"outer-vlan-id":{"value":4094,"mask":65535}}
  9     no       outer-priority 5/0x7  -
  {"outer-priority":{"value":5,"mask":7}}
  9     no       inner-vlan 35  -
  {"inner-vlan":{"value":35,"mask":255}}
  9     no       inner-vlan-id 10/0x0  -
  {"inner-vlan-id":{"value":10,"mask":0}}
  9     no       inner-priority 7  -
  {"inner-priority":{"value":7,"mask":255}}
  9     no       frame-type 3  -
  {"frame-type":3}
  9     no       ip-type 10  -
  {"ip-type":10}
  9     no       protocol udp  -
  {"protocol":"udp"}
  9     no       protocol 89  -
  {"protocol":89}
  9     no       src-ip 10.1.2.3  -
  {"src-ip":"10.1.2.3"}
  9     no       dst-ip 10.1.2.3/0.0.0.0  -
  {"dst-ip":"10.1.2.3/0.0.0.0"}
  9     no       src-ip6 2001:db8::1  -
  {"src-ip6":"2001:db8::1"}
  9     no       dst-ip6 2001:db8::/ffff:ffff:8000::  -
  {"dst-ip6":"2001:db8::/ffff:ffff:8000::"}
  9     no       dscp 46/0x38  -
  {"dscp":{"value":46,"mask":56}}
  9     no       traffic-class 0xb9  -
  {"traffic-class":{"value":185,"mask":255}}
  9     no       src-port 67  -
  {"src-port":{"value":67,"mask":65535}}
  9     no       dst-port 65535/0xff00  -
  {"dst-port":{"value":65535,"mask":65280}}
  $ for action in drop permit trap redirect:26 redirect-ports:9 redirect-group:2 mirror:1 count:5 \
  >   meter:3 outer-vlan:10 inner-vlan:20 priority:7 queue:0 remark-0:46 remark-1:5 remark-2:1 \
  >   code:53:0:8 code:24:1; do
  >   swctl acl add 9 action $action
  >   swctl acl show 9 | tail -n 1
  >   swctl -j acl show 9 | jq -c .[].actions
  >   swctl acl del 9
  > done
  9     no       all    drop
  [{"action":"drop","parameter":null}]
  9     no       all    permit
  [{"action":"permit","parameter":null}]
  9     no       all    trap
  [{"action":"trap","parameter":null}]
  9     no       all    redirect:26
  [{"action":"redirect","parameter":26,"chip_port":26}]
  9     no       all    redirect-ports:9
  [{"action":"redirect-ports","parameter":9}]
  9     no       all    redirect-group:2
  [{"action":"redirect-group","parameter":2}]
  9     no       all    mirror:1
  [{"action":"mirror","parameter":1}]
  9     no       all    count:5
  [{"action":"count","parameter":5}]
  9     no       all    meter:3
  [{"action":"meter","parameter":3}]
  9     no       all    outer-vlan:10
  [{"action":"outer-vlan","parameter":10}]
  9     no       all    inner-vlan:20
  [{"action":"inner-vlan","parameter":20}]
  9     no       all    priority:7
  [{"action":"priority","parameter":7}]
  9     no       all    queue:0
  [{"action":"queue","parameter":0}]
  9     no       all    remark-0:46
  [{"action":"remark-0","parameter":46}]
  9     no       all    remark-1:5
  [{"action":"remark-1","parameter":5}]
  9     no       all    remark-2:1
  [{"action":"remark-2","parameter":1}]
  9     no       all    meter:8
  [{"action":"meter","parameter":8}]
  9     no       all    trap
  [{"action":"trap","parameter":null}]

A rule that is in use is not overwritten:

  $ swctl acl add 7 ethertype 0x800 action drop
  $ swctl acl add 7 action permit
  swctl: acl add 7 action permit: rule 7 is in use, expected a free rule, or acl del 7 before
  [1]

A wrong word is found before anything is written:

  $ swctl acl add 9 ethertype 0x1ffff
  swctl: acl add 9 ethertype 0x1ffff: bad value "0x1ffff" of ethertype: out of range, expected a number 0-65535, or NUMBER/MASK
  [1]
  $ swctl acl add 9 dst-mac 01:80:c2 action drop
  swctl: acl add 9 dst-mac 01:80:c2 action drop: bad value "01:80:c2" of dst-mac: not an address, expected an address such as 01:80:c2:00:00:00, or ADDRESS/MASK
  [1]
  $ swctl acl add 9 src-ip 10.0.0.0/33
  swctl: acl add 9 src-ip 10.0.0.0/33: bad value "10.0.0.0/33" of src-ip: out of range, expected an address such as 10.0.0.1, ADDRESS/LENGTH or ADDRESS/MASK
  [1]
  $ swctl acl add 9 protocol sctp
  swctl: acl add 9 protocol sctp: bad value "sctp" of protocol: not a number, expected udp, tcp, icmp, igmp or a number 0-255
  [1]
  $ swctl acl add 9 dscp 1 traffic-class 1
  swctl: acl add 9 dscp 1 traffic-class 1: dscp and traffic-class are one field of the chip, expected one of them
  [1]
  $ swctl acl add 9 ethertype 0x800 action drop,meter
  swctl: acl add 9 ethertype 0x800 action drop,meter: bad action "meter": a parameter is missing, expected meter:NUMBER
  [1]
  $ swctl acl add 9 action redirect:27
  swctl: acl add 9 action redirect:27: bad action "redirect:27": "27" is out of range, expected an interface number 0-26
  [1]
  $ swctl acl add 1536 action drop
  swctl: acl add: bad value "1536", expected a number 0-1535
  [1]
  $ swctl acl add 9
  swctl: acl add 9: missing keyword, expected one of: in-ports, dst-mac, src-mac, ethertype, outer-vlan, outer-vlan-id, outer-priority, inner-vlan, inner-vlan-id, inner-priority, frame-type, ip-type, protocol, src-ip, dst-ip, src-ip6, dst-ip6, dscp, traffic-class, src-port, dst-port, action, enable
  [1]
  $ swctl acl show 9
  swctl: acl show 9: there is no rule 9
  [1]

Actions that have one place in a rule are not cut to one:

  $ for actions in meter:1,meter:2 trap,redirect:3 drop,permit remark-0:1,remark-2:1 \
  >   meter:1,code:53:0:2; do
  >   swctl acl add 9 action $actions
  > done
  swctl: acl add 9 action meter:1,meter:2: bad action "meter:2": a rule cannot do this and "meter:1", expected one of the two
  swctl: acl add 9 action trap,redirect:3: bad action "redirect:3": a rule cannot do this and "trap", expected one of the two
  swctl: acl add 9 action drop,permit: bad action "permit": a rule cannot do this and "drop", expected one of the two
  swctl: acl add 9 action remark-0:1,remark-2:1: bad action "remark-2:1": a rule cannot do this and "remark-0:1", expected one of the two
  swctl: acl add 9 action meter:1,code:53:0:2: bad action "code:53:0:2": a rule cannot do this and "meter:1", expected one of the two
  [1]
  $ swctl acl add 9 src-ip 192.0.2.5/24
  swctl: acl add 9 src-ip 192.0.2.5/24: bad value "192.0.2.5/24" of src-ip: has bits after its length; the subnet is 192.0.2.0/24, expected an address such as 10.0.0.1, ADDRESS/LENGTH or ADDRESS/MASK
  [1]

A field that the chip refuses leaves nothing:

  $ SWPROBE_FAIL="rtk_acl_ruleEntryField_write nth 2 result -1004" \
  >   swctl acl add 9 ethertype 0x800 src-port 7 action drop
  swctl: acl add 9 ethertype 0x800 src-port 7 action drop: user_field_qualify_L4SrcPort refused src-port of rule 9: a value is outside its range (result -1004); nothing of it was kept
  [2]
  $ SWPROBE_FAIL="rtk_acl_ruleAction_set nth 2 result -1004" \
  >   swctl acl add 9 ethertype 0x800 action drop,meter:3
  swctl: acl add 9 ethertype 0x800 action drop,meter:3: user_field_action_add refused action meter:3 of rule 9: a value is outside its range (result -1004); nothing of it was kept
  [2]
  $ SWPROBE_FAIL="rtk_acl_ruleValidate_set result -1004" swctl acl add 9 ethertype 0x800 enable
  swctl: acl add 9 ethertype 0x800 enable: user_field_entry_install refused rule 9: a value is outside its range (result -1004); nothing of it was kept
  [2]
  $ swctl -j acl show 9
  swctl: acl show 9: there is no rule 9
  {"error":{"message":"acl show 9: there is no rule 9","culprit":"9","expected":[],"suggestions":[],"status":1}}
  [1]
  $ SWPROBE_FAIL="rtk_acl_ruleAction_set result -1004; rtk_acl_rule_del result -7" \
  >   swctl acl add 9 ethertype 0x800 action drop 2>&1 | grep -o '; what.*'
  ; what was written of it could not be removed (result -7)
  $ swctl acl del 7,9

The form of the table:

  $ swctl acl template 7 5
  $ swctl acl double 6
  $ swctl acl show
  $ swctl acl show 6,7
  rule  enabled  match  actions
  6     no       all    -
  7     no       all    -
  $ swctl -u 1 acl init
  $ vchipctl dump --block acl --unit 1 | grep -c '"joined": true'
  384
  $ SWPROBE_FAIL="rtk_acl_template_set result -1004" swctl acl init
  user_field_init:[00283] call api failed, ret=-1004 
  swctl: acl init: user_field_init refused the rule table: a value is outside its range (result -1004)
  [2]

Frames that no rule matches, and counters:

  $ swctl acl miss 1-4,25 drop
  $ swctl acl miss 3 forward
  $ vchipctl dump --block acl --unit 0 --compact | grep -o '"drops_what_no_rule_matches":[^]]*]'
  "drops_what_no_rule_matches":[0,1,3,24]
  $ swctl acl miss
  action   ports
  forward  0,3,5-24,26
  drop     1,2,4,25
  $ swctl acl miss 0,4-5
  action   ports
  forward  0,5
  drop     4
  $ swctl -j acl miss 1
  [{"action":"drop","ports":[1]}]
  $ vchipctl rule-count 5 10 6400
  $ swctl acl stats 4-5
  counter  packets  bytes
  4        0        0
  5        10       6400
  $ swctl -j acl stats 5 clear
  [{"counter":5,"packets":10,"bytes":6400}]
  $ swctl acl stats 5
  counter  packets  bytes
  5        0        0

A hundred rules from a file, and a line that is wrong:

  $ for rule in $(seq 1 100); do
  >   echo "acl add $rule in-ports 1 dst-mac 02:00:00:00:00:01 ethertype 0x800 action drop enable"
  > done > rules
  $ swctl -b rules
  $ swctl acl show | wc -l
  101
  $ swctl -j acl show | is_json
  valid
  $ swctl acl del 1-100
  $ sed -i '51s/0x800/0x80000/' rules
  $ swctl -b rules
  rules:51: acl add 51 in-ports 1 dst-mac 02:00:00:00:00:01 ethertype 0x80000 action drop enable: bad value "0x80000" of ethertype: out of range, expected a number 0-65535, or NUMBER/MASK
  [1]
  $ swctl acl show | wc -l
  51

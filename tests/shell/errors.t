Wrong usage: the culprit, what was expected, and status 1.

  $ . "$TESTDIR/setup.sh"

Words that the shell does not know:

  $ swctl prot
  swctl: unknown word "prot" (did you mean "port"?), expected one of: acl, config, dos, flood, kernel, mac, mcast, meter, mirror, monitor, port, qos, storm, stp, trap, trunk, vlan, version, help
  [1]
  $ swctl port shwo
  swctl: port: unknown word "shwo" (did you mean "show"?), expected one of: show, set, stats, clear, cable, help
  [1]
  $ swctl port set 3 sped 100
  swctl: port set 3: unknown word "sped" (did you mean "speed"?), expected one of: speed, duplex, admin, advertise, autoneg, pause, backpressure, mdix, eee, loopback, mtu, learning, isolation, vlan, filter, dtag, tpid, entry, outer, ingress, egress, description
  [1]
  $ swctl port set 3 loopback on now
  swctl: port set 3 loopback on: unknown word "now", expected one of: speed, duplex, admin, advertise, autoneg, pause, backpressure, mdix, eee, mtu, learning, isolation, vlan, filter, dtag, tpid, entry, outer, ingress, egress, description
  [1]
  $ swctl version now
  swctl: version: unexpected word "now", expected end of command
  [1]

Ambiguous words:

  $ swctl port s
  swctl: port: ambiguous word "s", expected one of: show, set, stats
  [1]

Words that are missing:

  $ swctl port
  swctl: port: missing word, expected one of: show, set, stats, clear, cable, help
  [1]
  $ swctl port set
  swctl: port set: missing PORTS, expected interface numbers 1-26 such as 1-4,7, or all
  [1]
  $ swctl port set 3
  swctl: port set 3: missing keyword, expected one of: speed, duplex, admin, advertise, autoneg, pause, backpressure, mdix, eee, loopback, mtu, learning, isolation, vlan, filter, dtag, tpid, entry, outer, ingress, egress, description
  [1]
  $ swctl port set 3 speed
  swctl: port set 3 speed: missing value, expected one of: 10, 100, 1000, 10000
  [1]

Values that are not to be had:

  $ swctl port set 3 speed 12
  swctl: port set 3 speed: bad value "12", expected one of: 10, 100, 1000, 10000
  [1]
  $ swctl port set 3 duplex f
  swctl: port set 3 duplex: bad value "f", expected one of: half, full
  [1]
  $ swctl port set 3 loopback yes
  swctl: port set 3 loopback: bad value "yes", expected one of: on, off
  [1]
  $ swctl port set 3 speed 10 duplex half speed 100
  swctl: port set 3 speed 10 duplex half: keyword "speed" is there twice, expected one of: admin, advertise, autoneg, pause, backpressure, mdix, eee, loopback, mtu, learning, isolation, vlan, filter, dtag, tpid, entry, outer, ingress, egress, description
  [1]

Interfaces that the device does not have:

  $ swctl port show 0
  swctl: port show: bad value "0", expected one of: interface numbers 1-26 such as 1-4,7, or all, detail
  [1]
  $ swctl port show 27
  swctl: port show: bad value "27", expected one of: interface numbers 1-26 such as 1-4,7, or all, detail
  [1]
  $ swctl port show x
  swctl: port show: bad value "x", expected one of: interface numbers 1-26 such as 1-4,7, or all, detail
  [1]
  $ swctl port show 1-4,30
  swctl: port show: bad value "1-4,30": "30" is out of range, expected one of: interface numbers 1-26 such as 1-4,7, or all, detail
  [1]
  $ swctl port show 4-1
  swctl: port show: bad value "4-1": the range 4-1 runs backwards, expected one of: interface numbers 1-26 such as 1-4,7, or all, detail
  [1]
  $ swctl port show 1,
  swctl: port show: bad value "1,": a number is missing, expected one of: interface numbers 1-26 such as 1-4,7, or all, detail
  [1]
  $ swctl port show ''
  swctl: port show: bad value "": a number is missing, expected one of: interface numbers 1-26 such as 1-4,7, or all, detail
  [1]

An interface that this board has no port for:

  $ no25="adp_phy_2_intf_id port 24 result -1; adp_intf_2_phy_id interface 25"
  $ SWPROBE_FAIL="$no25 result -1" swctl port show 25
  swctl: port show 25: interface 25 has no port on this board, expected interfaces 1-24,26
  [1]
  $ SWPROBE_FAIL="$no25 result 32" swctl port show 24-25
  swctl: port show 24-25: interface 25 has no port on this board, expected interfaces 1-24,26
  [1]
  $ SWPROBE_FAIL="$no25 result -1" swctl port show | tail -n 2
  24    down  unknown  both    copper  off
  26    down  unknown  both    copper  off

An adapter that fails says so in two directions that do not agree, or in none:

  $ SWPROBE_FAIL="adp_intf_2_phy_id interface 25 result -1" swctl port show
  swctl: port show: adp_intf_2_phy_id refused interface 25: result -1
  [2]
  $ SWPROBE_FAIL="adp_* result -5" swctl port show 3
  swctl: port show 3: adp_intf_2_phy_id refused interface 3: result -5
  [2]

One bad number in a list and nothing is changed:

  $ swctl port set 1-4,30 loopback on
  swctl: port set: bad value "1-4,30": "30" is out of range, expected interface numbers 1-26 such as 1-4,7, or all
  [1]
  $ SWPROBE_FAIL="adp_phy_2_intf_id port 3 result -1; adp_intf_2_phy_id interface 4 result -1" swctl port set 1-4 loopback on
  swctl: port set 1-4 loopback on: interface 4 has no port on this board, expected interfaces 1-3,5-26
  [1]
  $ swctl port show 1-4
  port  link  speed    duplex  medium  loopback
  1     down  unknown  both    copper  off
  2     down  unknown  both    copper  off
  3     down  unknown  both    copper  off
  4     down  unknown  both    copper  off

Options:

  $ swctl -x port show
  swctl: unknown option "-x", expected one of: -json, -pretty, -batch, -force, -atomic, -may-exist, -no-pager, -echo-status, -unit, -help, -Version
  [1]
  $ swctl -unit
  swctl: option "-unit" lacks its value
  [1]
  $ swctl -u none port show
  swctl: bad value "none" of -unit: not a number, expected a number from 0
  [1]
  $ swctl -b
  swctl: option "-b" lacks its value
  [1]
  $ swctl -b file port show
  swctl: unexpected word "port" beside -batch
  [1]

Control characters do not reach the terminal:

  $ swctl "$(printf '\033[2J')"
  swctl: unknown word "\x1b[2J", expected one of: acl, config, dos, flood, kernel, mac, mcast, meter, mirror, monitor, port, qos, storm, stp, trap, trunk, vlan, version, help
  [1]

A word that is one slip away is suggested:

  $ swctl prot show
  swctl: unknown word "prot" (did you mean "port"?), expected one of: acl, config, dos, flood, kernel, mac, mcast, meter, mirror, monitor, port, qos, storm, stp, trap, trunk, vlan, version, help
  [1]
  $ swctl port set 3 loopbak on
  swctl: port set 3: unknown word "loopbak" (did you mean "loopback"?), expected one of: speed, duplex, admin, advertise, autoneg, pause, backpressure, mdix, eee, loopback, mtu, learning, isolation, vlan, filter, dtag, tpid, entry, outer, ingress, egress, description
  [1]
  $ swctl port set 3 mdix straigth
  swctl: port set 3 mdix: bad value "straigth" (did you mean "straight"?), expected one of: auto, straight, crossed
  [1]
  $ swctl Port show
  swctl: unknown word "Port" (did you mean "port"?), expected one of: acl, config, dos, flood, kernel, mac, mcast, meter, mirror, monitor, port, qos, storm, stp, trap, trunk, vlan, version, help
  [1]
  $ swctl port shw
  swctl: port: unknown word "shw" (did you mean "show"?), expected one of: show, set, stats, clear, cable, help
  [1]
  $ swctl -jsn
  swctl: unknown option "-jsn" (did you mean "-json"?), expected one of: -json, -pretty, -batch, -force, -atomic, -may-exist, -no-pager, -echo-status, -unit, -help, -Version
  {"error":{"message":"unknown option \"-jsn\"","culprit":"-jsn","expected":["-json","-pretty","-batch","-force","-atomic","-may-exist","-no-pager","-echo-status","-unit","-help","-Version"],"suggestions":["-json"],"status":1}}
  [1]
  $ data swctl -j port shw | jq -c .error.suggestions
  ["show"]
  $ data swctl -j port bla | jq -c .error.suggestions
  []

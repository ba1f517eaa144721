Commands from a file.

  $ . "$TESTDIR/setup.sh"
  $ cat > good <<'END'
  > # loopback on two ports
  > port set 3-4 loopback on
  > 
  >   port set "5" \
  >     loopback 'on'   # and a third
  > port show 3-6
  > # not continued \
  > port set 6 loopback on
  > END
  $ swctl -b good
  port  link  speed    duplex  medium  loopback
  3     down  unknown  both    copper  on
  4     down  unknown  both    copper  on
  5     down  unknown  both    copper  on
  6     down  unknown  both    copper  off
  $ swctl port show 5-6
  port  link  speed    duplex  medium  loopback
  5     down  unknown  both    copper  on
  6     down  unknown  both    copper  on
  $ swctl -b - < good
  port  link  speed    duplex  medium  loopback
  3     down  unknown  both    copper  on
  4     down  unknown  both    copper  on
  5     down  unknown  both    copper  on
  6     down  unknown  both    copper  on
  $ swctl < good
  port  link  speed    duplex  medium  loopback
  3     down  unknown  both    copper  on
  4     down  unknown  both    copper  on
  5     down  unknown  both    copper  on
  6     down  unknown  both    copper  on
  $ printf 'port show 3,5\r\n' | swctl
  port  link  speed    duplex  medium  loopback
  3     down  unknown  both    copper  on
  5     down  unknown  both    copper  on

Ten times as many lines of one command take ten times as long:

  $ many() { (yes 'vlan \' | head -n "$1"; echo show) | sed '2,$s/vlan//'; }
  $ many 200000 > continued
  $ timeout 30 swctl -b continued
  vlan  tagged  untagged
  1     -       0-26

It stops at exit or quit:

  $ printf 'port show 3\nexit\nport show 4\n' | swctl
  port  link  speed    duplex  medium  loopback
  3     down  unknown  both    copper  on
  $ printf 'prot\nquit\nport show 4\n' > ended
  $ swctl -j -force -b ended 2>/dev/null | jq -c '.[] | [.line, .status]'
  [1,1]
  $ printf 'exit now\n' | swctl
  stdin:1: unknown word "exit", expected one of: acl, config, dos, flood, kernel, mac, mcast, meter, mirror, monitor, port, qos, storm, stp, trap, trunk, vlan, version, help
  [1]
  $ swctl exit
  swctl: unknown word "exit", expected one of: acl, config, dos, flood, kernel, mac, mcast, meter, mirror, monitor, port, qos, storm, stp, trap, trunk, vlan, version, help
  [1]

It stops at the first command that fails, with its status:

  $ cat > bad <<'END'
  > port set 1 loopback on
  > port set 2 \
  >   loopback maybe
  > port set 3 loopback off
  > END
  $ swctl -b bad
  bad:2: port set 2 loopback: bad value "maybe", expected one of: on, off
  [1]
  $ swctl port show 1-3
  port  link  speed    duplex  medium  loopback
  1     down  unknown  both    copper  on
  2     down  unknown  both    copper  off
  3     down  unknown  both    copper  on
  $ swctl < bad
  stdin:2: port set 2 loopback: bad value "maybe", expected one of: on, off
  [1]
  $ SWPROBE_FAIL="rtk_diag_portMacLocalLoopbackEnable_set port 0 result -1004" swctl -b bad
  bad:1: port set 1 loopback on: user_port_loopback_set refused port 1: a value is outside its range (result -1004)
  [2]

With -force it goes on, and the status is that of the first failure:

  $ swctl -force -b bad
  bad:2: port set 2 loopback: bad value "maybe", expected one of: on, off
  [1]
  $ swctl port show 1-3
  port  link  speed    duplex  medium  loopback
  1     down  unknown  both    copper  on
  2     down  unknown  both    copper  off
  3     down  unknown  both    copper  off
  $ SWPROBE_FAIL="rtk_diag_portMacLocalLoopbackEnable_set port 0 result -1004" \
  >   swctl -force -b bad
  bad:1: port set 1 loopback on: user_port_loopback_set refused port 1: a value is outside its range (result -1004)
  bad:2: port set 2 loopback: bad value "maybe", expected one of: on, off
  [2]

Other lines that are wrong:

  $ echo "port show '3" | swctl
  stdin:1: a quote ' is not closed
  [1]
  $ printf 'port show 3 \\' | swctl -j | is_json
  valid
  $ echo "prot" | swctl -b -
  stdin:1: unknown word "prot" (did you mean "port"?), expected one of: acl, config, dos, flood, kernel, mac, mcast, meter, mirror, monitor, port, qos, storm, stp, trap, trunk, vlan, version, help
  [1]
  $ echo "help nothing" | swctl
  stdin:1: unknown word "nothing", expected one of: acl, config, dos, flood, kernel, mac, mcast, meter, mirror, monitor, port, qos, storm, stp, trap, trunk, vlan, version, help
  [1]

Files that are not there:

  $ swctl -b nowhere
  swctl: batch file "nowhere": No such file or directory
  [1]
  $ swctl -b .
  swctl: batch file ".": Is a directory
  [1]

Under -j a batch is one array, with an element for each command:

  $ swctl -j -b good
  [{"line":2,"command":"port set 3-4 loopback on","status":0,"output":[]}
  ,{"line":4,"command":"port set 5 loopback on","status":0,"output":[]}
  ,{"line":6,"command":"port show 3-6","status":0,"output":[{"port":3,"link":"down","speed":null,"duplex":"both","medium":"copper","loopback":true,"max_speed":1000,"chip_port":2},{"port":4,"link":"down","speed":null,"duplex":"both","medium":"copper","loopback":true,"max_speed":1000,"chip_port":3},{"port":5,"link":"down","speed":null,"duplex":"both","medium":"copper","loopback":true,"max_speed":1000,"chip_port":4},{"port":6,"link":"down","speed":null,"duplex":"both","medium":"copper","loopback":true,"max_speed":1000,"chip_port":5}]}
  ,{"line":8,"command":"port set 6 loopback on","status":0,"output":[]}
  ]
  $ swctl -j -b bad
  bad:2: port set 2 loopback: bad value "maybe", expected one of: on, off
  [{"line":1,"command":"port set 1 loopback on","status":0,"output":[]}
  ,{"line":2,"command":"port set 2 loopback maybe","status":1,"output":{"error":{"message":"port set 2 loopback: bad value \"maybe\"","culprit":"maybe","expected":["on","off"],"suggestions":[],"status":1}}}
  ]
  [1]
  $ data swctl -j -b bad | is_json
  valid
  $ data swctl -j -force -b bad | is_json
  valid
  $ data swctl -p -force -b bad
  [
    {
      "line": 1,
      "command": "port set 1 loopback on",
      "status": 0,
      "output": []
    }
    ,
    {
      "line": 2,
      "command": "port set 2 loopback maybe",
      "status": 1,
      "output": {
        "error": {
          "message": "port set 2 loopback: bad value \"maybe\"",
          "culprit": "maybe",
          "expected": [
            "on",
            "off"
          ],
          "suggestions": [],
          "status": 1
        }
      }
    }
    ,
    {
      "line": 4,
      "command": "port set 3 loopback off",
      "status": 0,
      "output": []
    }
  ]
  [1]
  $ SWPROBE_FAIL="rtk_diag_portMacLocalLoopbackEnable_set port 0 result -1004" \
  >   swctl -j -b bad 2>/dev/null
  [{"line":1,"command":"port set 1 loopback on","status":2,"output":{"error":{"message":"port set 1 loopback on: user_port_loopback_set refused port 1: a value is outside its range (result -1004)","culprit":"1","expected":[],"suggestions":[],"function":"user_port_loopback_set","result":-1004,"sentence":"a value is outside its range","status":2}}}
  ]
  [2]
  $ swctl -j -b /dev/null
  []
  $ echo '# nothing' | swctl -p -b -
  []

Standard input without -batch has an answer on each line, for a conversation:

  $ printf 'port show 3\n\n# nothing\nport set 3 loopback off\nprot\n' | data swctl -j
  {"line":1,"command":"port show 3","status":0,"output":[{"port":3,"link":"down","speed":null,"duplex":"both","medium":"copper","loopback":false,"max_speed":1000,"chip_port":2}]}
  {"line":4,"command":"port set 3 loopback off","status":0,"output":[]}
  {"line":5,"command":"prot","status":1,"output":{"error":{"message":"unknown word \"prot\"","culprit":"prot","expected":["acl","config","dos","flood","kernel","mac","mcast","meter","mirror","monitor","port","qos","storm","stp","trap","trunk","vlan","version","help"],"suggestions":["port"],"status":1}}}
  [1]
  $ swctl -j < /dev/null
  $ echo 'port show "3' | data swctl -j
  {"line":1,"command":"port show 3","status":1,"output":{"error":{"message":"a quote \" is not closed","culprit":"port show \"3","expected":[],"suggestions":[],"status":1}}}
  [1]

-echo-status ends each answer with a line, an empty one and an error alike:

  $ printf 'port show 3\nport set 3 loopback off\nport show 99\nversion now\n' > told
  $ swctl -echo-status -force -b told 2>/dev/null
  port  link  speed    duplex  medium  loopback
  3     down  unknown  both    copper  off
  status 0
  status 0
  status 1
  status 1
  [1]
  $ swctl -echo-status port set 3 loopback off
  status 0
  $ swctl -echo-status -j -b told
  swctl: option "-echo-status" beside -json: a batch in JSON has each status
  {"error":{"message":"option \"-echo-status\" beside -json: a batch in JSON has each status","culprit":"-echo-status","expected":[],"suggestions":[],"status":1}}
  [1]

Each answer is there before the next command is read:

  $ cat > answered <<'END'
  > for tries in $(seq 200); do
  >   [ -s answers ] && exit
  >   sleep 0.1
  > done
  > echo 'nothing came'
  > END
  $ (echo 'port show 3'; sh answered; echo 'port show 4') | swctl > answers
  $ grep -c port answers
  2

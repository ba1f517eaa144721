JSON on standard output, whatever happens.

  $ . "$TESTDIR/setup.sh"
  $ vchipctl link up 3 --partner 100-full

  $ swctl -j port show 3-4
  [{"port":3,"link":"up","speed":100,"duplex":"full","medium":"copper","loopback":false,"max_speed":1000,"chip_port":2},{"port":4,"link":"down","speed":null,"duplex":"both","medium":"copper","loopback":false,"max_speed":1000,"chip_port":3}]
  $ swctl -p port show 3 detail
  [
    {
      "port": 3,
      "link": "up",
      "speed": 100,
      "duplex": "full",
      "medium": "copper",
      "loopback": false,
      "max_speed": 1000,
      "chip_port": 2,
      "admin": true,
      "autoneg": true,
      "advertise": [
        "10-half",
        "10-full",
        "100-half",
        "100-full",
        "1000-full",
        "pause"
      ],
      "pause": false,
      "pause_active": false,
      "backpressure": false,
      "mdix": "auto",
      "eee": false,
      "mtu": 1518,
      "learning": "on",
      "isolation": [
        0,
        1,
        2,
        3,
        4,
        5,
        6,
        7,
        8,
        9,
        10,
        11,
        12,
        13,
        14,
        15,
        16,
        17,
        18,
        19,
        20,
        21,
        22,
        23,
        24,
        25,
        26
      ],
      "vlan": 1,
      "filter": false,
      "dtag": false,
      "tpid": 33024,
      "ingress": 16777200,
      "egress": 16777200,
      "description": null
    }
  ]
  $ swctl -j port show | is_json
  valid
  $ swctl -p port show | python3 -c 'import json, sys; print(len(json.load(sys.stdin)))'
  26
  $ swctl -j version | is_json
  valid

A command without an answer answers nothing:

  $ swctl -j port set 3 loopback on
  []

Errors are there and, as ever, on standard error:

  $ swctl -j port set 3 sped 100
  swctl: port set 3: unknown word "sped" (did you mean "speed"?), expected one of: speed, duplex, admin, advertise, autoneg, pause, backpressure, mdix, eee, loopback, mtu, learning, isolation, vlan, filter, dtag, tpid, entry, outer, ingress, egress, description
  {"error":{"message":"port set 3: unknown word \"sped\"","culprit":"sped","expected":["speed","duplex","admin","advertise","autoneg","pause","backpressure","mdix","eee","loopback","mtu","learning","isolation","vlan","filter","dtag","tpid","entry","outer","ingress","egress","description"],"suggestions":["speed"],"status":1}}
  [1]
  $ data swctl -j port set 3 sped 100 | is_json
  valid
  $ data swctl -j port set 3 speed
  {"error":{"message":"port set 3 speed: missing value","culprit":null,"expected":["10","100","1000","10000"],"suggestions":[],"status":1}}
  [1]
  $ data swctl -j -x
  {"error":{"message":"unknown option \"-x\"","culprit":"-x","expected":["-json","-pretty","-batch","-force","-atomic","-may-exist","-no-pager","-echo-status","-unit","-help","-Version"],"suggestions":[],"status":1}}
  [1]
  $ data swctl -x -j
  {"error":{"message":"unknown option \"-x\"","culprit":"-x","expected":["-json","-pretty","-batch","-force","-atomic","-may-exist","-no-pager","-echo-status","-unit","-help","-Version"],"suggestions":[],"status":1}}
  [1]
  $ data swctl -p -u
  {
    "error": {
      "message": "option \"-u\" lacks its value",
      "culprit": "-u",
      "expected": [],
      "suggestions": [],
      "status": 1
    }
  }
  [1]
  $ data swctl -j -b nowhere
  {"error":{"message":"batch file \"nowhere\": No such file or directory","culprit":"nowhere","expected":[],"suggestions":[],"status":1}}
  [1]
  $ SWPROBE_FAIL="rtk_port_link_get port 2 result -1007" swctl -p port show 3 detail
  swctl: port show 3 detail: user_port_link_status_get refused port 3: the port's link is down (result -1007)
  {
    "error": {
      "message": "port show 3 detail: user_port_link_status_get refused port 3: the port's link is down (result -1007)",
      "culprit": "3",
      "expected": [],
      "suggestions": [],
      "function": "user_port_link_status_get",
      "result": -1007,
      "sentence": "the port's link is down",
      "status": 2
    }
  }
  [2]
  $ SWPROBE_FAIL="rtk_port_link_get port 2 result -77" swctl -j port show 3 2>/dev/null
  {"error":{"message":"port show 3: user_port_link_status_get refused port 3: result -77","culprit":"3","expected":[],"suggestions":[],"function":"user_port_link_status_get","result":-77,"sentence":null,"status":2}}
  [2]
  $ VCHIP_IMAGE=/dev/null swctl -j port show 2>/dev/null | is_json
  valid

Bytes that are no text:

  $ data swctl -j "$(printf '\377')" | is_json
  valid

Options among the words of the command:

  $ swctl port -j show 3
  [{"port":3,"link":"up","speed":100,"duplex":"full","medium":"copper","loopback":true,"max_speed":1000,"chip_port":2}]
  $ swctl port show 3 --json | is_json
  valid
  $ swctl port show 3 -u 1 -j | is_json
  valid
  $ swctl mac dump -- -j
  file     -j
  entries  0
  $ swctl mac restore-view -- -j -j
  swctl: mac restore-view -j: unknown word "-j", expected groups
  [1]
  $ swctl port show -u
  swctl: option "-u" lacks its value
  [1]
  $ swctl port show -b x
  swctl: unexpected word "port" beside -batch
  [1]
  $ swctl port show -js
  swctl: port show: bad value "-js", expected one of: interface numbers 1-26 such as 1-4,7, or all, detail
  [1]

Help and version:

  $ swctl -j version help
  [{"usage":"swctl version","help":"Show the version and the library files in use","words":[]}]
  $ swctl -j port help
  [{"usage":"swctl port COMMAND ...","help":"Ports: state, settings, counters, cables","words":[{"word":"show","help":"Show the state of ports"},{"word":"set","help":"Change settings of ports"},{"word":"stats","help":"Show counters of ports"},{"word":"clear","help":"Set the counters of ports to 0"},{"word":"cable","help":"Test the cable of a copper port"}]}]
  $ swctl -j port set help | is_json
  valid
  $ swctl -j -h | is_json
  valid
  $ swctl -j help | python3 -c 'import json, sys; print(json.load(sys.stdin)[0]["usage"])'
  swctl [OPTIONS] OBJECT COMMAND [KEYWORD VALUE]...
  $ swctl -j -V
  [{"version":"0.1.0"}]

The object qos: priorities, queues and their schedule.

  $ . "$TESTDIR/setup.sh"

Priorities go to queues; those that are not named stay:

  $ swctl qos map set 0-7 queue 0
  $ swctl qos map set 4-5,7 queue 6
  $ swctl qos map show
  priority  queue
  0         0
  1         0
  2         0
  3         0
  4         6
  5         6
  6         0
  7         6
  $ swctl -j qos map show
  [{"priority":0,"queue":0},{"priority":1,"queue":0},{"priority":2,"queue":0},{"priority":3,"queue":0},{"priority":4,"queue":6},{"priority":5,"queue":6},{"priority":6,"queue":0},{"priority":7,"queue":6}]
  $ vchipctl dump --unit 0 --block qos | python3 -c 'import json,sys; print(json.load(sys.stdin)["internal_queue"])'
  [0, 0, 0, 0, 6, 6, 0, 6]

Code points and ports have a priority:

  $ swctl qos dscp set 46 priority 5
  $ swctl qos dscp show 45-46
  dscp  priority
  45    0
  46    5
  $ swctl -j qos dscp show 46
  [{"dscp":46,"priority":5}]
  $ swctl qos default set 25-26 priority 3
  $ swctl -j qos default show 25
  [{"port":25,"priority":3}]
  $ swctl qos default show 24-26
  port  priority
  24    0
  25    3
  26    3
  $ swctl -u 1 qos tag set 5 internal 2
  $ vchipctl dump --unit 1 --block qos --compact | grep -o '"inner_internal":[^]]*]'
  "inner_internal":[0,0,0,0,0,2,0,0]
  $ swctl -u 1 qos tag show 4-5
  priority  internal
  4         0
  5         2
  $ swctl -j qos tag show 5
  [{"priority":5,"internal":0}]
  $ swctl qos tag show | wc -l
  9

A schedule is drawn as bars, one per queue:

  $ swctl qos schedule set weighted weights 0,0,1,1,2,2,4,8
  $ swctl qos schedule show
  queue  schedule  weight  share
  0      weighted  0       strict
  1      weighted  0       strict
  2      weighted  1       6 %
  3      weighted  1       6 %
  4      weighted  2       11 %
  5      weighted  2       11 %
  6      weighted  4       22 %
  7      weighted  8       44 %
  $ swctl -j qos schedule show | jq -c '.[0,7]'
  {"queue":0,"schedule":"weighted","weight":0,"share":null}
  {"queue":7,"schedule":"weighted","weight":8,"share":44}
  $ swctl qos schedule set strict
  $ swctl qos schedule show
  queue  schedule  weight  share
  0      strict    0       strict
  1      strict    0       strict
  2      strict    0       strict
  3      strict    0       strict
  4      strict    0       strict
  5      strict    0       strict
  6      strict    0       strict
  7      strict    0       strict
  $ swctl qos schedule set equal
  $ swctl qos schedule show | head -2
  queue  schedule  weight  share
  0      equal     1       13 %

Trust is a group of the chip, and each port has one:

  $ SWPROBE=trace swctl qos trust set 1,26 dscp 2>&1 | grep rtk_
  rtk_qos_priSelGroup_set(unit=0, group=2, weights=[3 2 2 1 1]) = 0
  rtk_qos_portPriSelGroup_set(unit=0, port=0, group=2) = 0
  rtk_qos_portPriSelGroup_set(unit=0, port=26, group=2) = 0
  $ swctl qos trust set 2 port
  $ swctl qos trust set 3 tag
  $ swctl qos trust show 1-4,26
  port  trust  weights
  1     dscp   3,2,2,1,1
  2     port   0,0,0,1,1
  3     tag    0,2,2,1,1
  4     none   0,0,0,0,0
  26    dscp   3,2,2,1,1
  $ swctl -j qos trust show 3-4
  [{"port":3,"trust":"tag","weights":[0,2,2,1,1]},{"port":4,"trust":"none","weights":[0,0,0,0,0]}]
  $ swctl qos trust show | wc -l
  27
  $ vchipctl dump --unit 0 --block qos --compact | jq -c '[.ports[0,1,2,3,26].group]'
  [2,0,1,3,2]
  $ swctl -u 1 qos trust show
  swctl: qos trust show: works on unit 0 alone, expected unit 0
  [1]

Everything is checked before the chip is touched:

  $ swctl qos schedule set weighted
  swctl: qos schedule set weighted: the schedule needs weights, expected weights
  [1]
  $ swctl qos schedule set strict weights 1,1,1,1,1,1,1,1
  swctl: qos schedule set strict weights 1,1,1,1,1,1,1,1: the schedule has no weights
  [1]
  $ swctl qos schedule set weighted weights 1,2,3
  swctl: qos schedule set weighted weights 1,2,3: bad weights "1,2,3", expected eight numbers 0-65535 such as 0,0,1,1,2,2,4,8
  [1]
  $ swctl qos schedule set weighted weights 1,2,3,4,5,6,7,x
  swctl: qos schedule set weighted weights 1,2,3,4,5,6,7,x: bad weights "1,2,3,4,5,6,7,x", expected eight numbers 0-65535 such as 0,0,1,1,2,2,4,8
  [1]
  $ swctl qos map set 8 queue 0
  swctl: qos map set: bad value "8", expected a list of numbers 0-7 such as 1-4,7
  [1]
  $ swctl -u 1 qos map show
  swctl: qos map show: works on unit 0 alone, expected unit 0
  [1]
  $ swctl qos schedule show | head -2
  queue  schedule  weight  share
  0      equal     1       13 %

The chip may still refuse:

  $ swctl qos schedule set weighted weights 1,1,1,1,1,1,1,200
  swctl: qos schedule set weighted weights 1,1,1,1,1,1,1,200: user_qos_schedule_set refused unit 0: a value is outside its range (result -1004)
  [2]

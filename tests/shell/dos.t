Prevention of denial-of-service attacks.

  $ . "$TESTDIR/setup.sh"
  $ swctl dos set 3 action drop
  $ swctl dos show
  type  action
  0     forward
  1     forward
  2     forward
  3     drop
  4     forward
  5     forward
  6     forward
  7     forward
  8     forward
  9     forward
  10    forward
  11    forward
  12    forward
  13    forward
  14    forward
  15    forward
  $ swctl dos set 3 action forward
  $ swctl -j dos show
  [{"type":0,"action":"forward"},{"type":1,"action":"forward"},{"type":2,"action":"forward"},{"type":3,"action":"forward"},{"type":4,"action":"forward"},{"type":5,"action":"forward"},{"type":6,"action":"forward"},{"type":7,"action":"forward"},{"type":8,"action":"forward"},{"type":9,"action":"forward"},{"type":10,"action":"forward"},{"type":11,"action":"forward"},{"type":12,"action":"forward"},{"type":13,"action":"forward"},{"type":14,"action":"forward"},{"type":15,"action":"forward"}]
  $ swctl dos protect
  $ vchipctl dump --unit 0 --block attack --compact
  {"protected_ports":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,26],"action":[0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0]}
  $ swctl dos set 16 action drop
  swctl: dos set 16 action drop: user_dos_attack_prevent_action_set refused unit 0: an index is outside its table (result -1005)
  [2]
  $ swctl dos set 3 action maybe
  swctl: dos set 3 action: bad value "maybe", expected one of: forward, drop
  [1]
  $ swctl -u 1 dos set 3 action drop
  $ swctl dos show | grep drop
  [1]

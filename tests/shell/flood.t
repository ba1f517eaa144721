Flooding of frames to unknown unicast addresses.

  $ . "$TESTDIR/setup.sh"
  $ swctl flood show
  unknown_unicast  0-26
  $ swctl flood set 0-4,26
  $ swctl flood show
  unknown_unicast  0-4,26
  $ swctl flood remove 2,26
  $ swctl flood add 25
  $ swctl flood show
  unknown_unicast  0,1,3,4,25
  $ swctl -j flood show
  [{"unknown_unicast":[0,1,3,4,25]}]
  $ vchipctl dump --unit 0 --block forward_mask --compact
  [{"index":0,"ports":[0,2,3,24,28]},{"index":1,"ports":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28]},{"index":2,"ports":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28]},{"index":3,"ports":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28]},{"index":4,"ports":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28]},{"index":5,"ports":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28]},{"index":6,"ports":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28]},{"index":7,"ports":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28]}]
  $ swctl flood set 27
  swctl: flood set: bad value "27", expected interface numbers 0-26 such as 1-4,7, all or none
  [1]
  $ SWPROBE_FAIL='rtk_l2_mcastFwdPortmask_get result -1005' swctl flood show
  swctl: flood show: user_ulf_flood_ports_get refused unit 0: an index is outside its table (result -1005)
  [2]

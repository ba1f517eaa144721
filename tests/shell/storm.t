Storm control.

  $ . "$TESTDIR/setup.sh"
  $ swctl storm mode packets
  $ swctl storm set 2-3 type 2 rate 100 selection 1
  $ swctl storm set 3 type 4 rate 7
  $ vchipctl storm 3 4
  $ swctl storm show 2-3
  port  type  control  rate      selection  exceeded
  2     0     off      16777215  0          no
  2     1     off      16777215  0          no
  2     2     on       100       1          no
  2     3     off      16777215  0          no
  2     4     off      16777215  0          no
  3     0     off      16777215  0          no
  3     1     off      16777215  0          no
  3     2     on       100       1          no
  3     3     off      16777215  0          no
  3     4     on       7         0          yes
  $ swctl storm set 3 type 4 rate 0
  $ swctl storm reset 3
  $ swctl -j storm show 3
  [{"port":3,"type":0,"control":false,"rate":16777215,"selection":0,"exceeded":false},{"port":3,"type":1,"control":false,"rate":16777215,"selection":0,"exceeded":false},{"port":3,"type":2,"control":true,"rate":100,"selection":1,"exceeded":false},{"port":3,"type":3,"control":false,"rate":16777215,"selection":0,"exceeded":false},{"port":3,"type":4,"control":false,"rate":0,"selection":0,"exceeded":false}]
  $ swctl storm set 3 type 5 rate 1
  swctl: storm set 3 type: bad value "5", expected a number 0-4
  [1]
  $ swctl storm set 3 rate 1
  swctl: storm set 3 rate 1: missing keyword, expected type
  [1]
  $ swctl storm mode frames
  swctl: storm mode: bad value "frames", expected one of: bytes, packets
  [1]
  $ SWPROBE_FAIL='rtk_rate_stormControlRateMode_set result 5' swctl storm mode bytes
  swctl: storm mode bytes: user_rate_stormCountMode_set refused unit 0: result 5
  [2]

What is counted:

  $ swctl storm mode packets
  $ swctl storm mode
  mode  packets
  $ swctl storm mode bytes
  $ swctl -j storm mode
  [{"mode":"bytes"}]

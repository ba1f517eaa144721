The object meter.

  $ . "$TESTDIR/setup.sh"
  $ swctl meter show
  $ swctl meter set 3 rate 1600 burst 4096
  $ swctl meter set 255 rate 31
  swctl: meter set 255 rate 31: rate is 16, in steps of 16
  $ swctl meter show
  meter  state  rate  burst_slot  burst_word
  3      on     1600  0           32
  255    on     16    0           32
  $ swctl meter show 4
  meter  state  rate  burst_slot  burst_word
  4      off    0     0           32
  $ swctl -j meter show 3
  [{"meter":3,"state":true,"rate":1600,"burst_slot":0,"burst_word":32}]

What is not given stays:

  $ swctl meter set 3 state off
  $ swctl meter show 3,4
  meter  state  rate  burst_slot  burst_word
  3      off    1600  0           32
  4      off    0     0           32
  $ swctl meter set 3 burst 8192
  $ swctl meter show 3,4
  meter  state  rate  burst_slot  burst_word
  3      on     1600  1           64
  4      off    0     0           32

All meters share the two burst sizes, and a third is refused:

  $ vchipctl reset
  $ cat > meters <<BATCH
  > meter set 1 rate 160 burst 4096
  > meter set 2 rate 160 burst 8192
  > meter set 3 rate 160 burst 4096
  > meter show 1-3
  > meter set 4 rate 160 burst 2048
  > meter show 4
  > meter del 2
  > meter set 4 rate 160 burst 2048
  > meter show 1-4
  > BATCH
  $ swctl -force -b meters
  meter  state  rate  burst_slot  burst_word
  1      on     160   0           32
  2      on     160   1           64
  3      on     160   0           32
  meters:5: meter set 4 rate 160 burst 2048: both burst sizes are in use by other meters: 4096 by 1,3, 8192 by 2
  meter  state  rate  burst_slot  burst_word
  4      off    0     0           32
  meter  state  rate  burst_slot  burst_word
  1      on     160   0           32
  2      off    0     0           32
  3      on     160   0           32
  4      on     160   1           16
  [2]

Another process sees which sizes are in use, and changes none of them:

  $ vchipctl reset
  $ swctl meter set 1 rate 160 burst 4096
  $ swctl meter set 2 rate 160 burst 8192
  $ swctl meter set 3 rate 160 burst 2048
  swctl: meter set 3 rate 160 burst 2048: both burst sizes are in use by other meters: 4096 by 1, 8192 by 2
  [2]
  $ swctl meter set 2 burst 2048
  $ swctl meter show
  meter  state  rate  burst_slot  burst_word
  1      on     160   0           32
  2      on     160   1           16

A meter that is off and has no rate keeps no burst size from the others:

  $ swctl meter set 2 rate 0 state off
  $ swctl meter set 3 rate 160 burst 8192
  $ swctl meter show
  meter  state  rate  burst_slot  burst_word
  1      on     160   0           32
  2      off    0     1           64
  3      on     160   1           64
  $ swctl meter set 3 state off
  $ swctl meter set 4 rate 160 burst 2048
  swctl: meter set 4 rate 160 burst 2048: both burst sizes are in use by other meters: 4096 by 1, 8192 by 3
  [2]
  $ swctl meter del 3-4

A number between two steps is said as it was set, one below the first is refused:

  $ swctl meter set 3 rate 1
  swctl: meter set 3 rate: bad value "1": less than the first step, 16, expected a number 0-16777200 in steps of 16
  [1]
  $ swctl meter set 3 burst 127
  swctl: meter set 3 burst: bad value "127": less than the first step, 128 bytes, expected a number 1-8388480 bytes in steps of 128
  [1]
  $ swctl -j meter set 1 rate 100
  swctl: meter set 1 rate 100: rate is 96, in steps of 16
  []
  $ echo 'meter set 1 rate 50' | swctl
  stdin:1: meter set 1 rate 50: rate is 48, in steps of 16

A size is taken back if the meter is then refused:

  $ vchipctl reset
  $ SWPROBE_FAIL="rtk_acl_meterEntry_set result -1004" swctl meter set 3 rate 160 burst 4096
  swctl: meter set 3 rate 160 burst 4096: user_field_meter_rate_burst_set refused meter 3: a value is outside its range (result -1004)
  [2]
  $ swctl meter show 3 | tail -1
  3      off    0     0           512

  $ swctl meter set 3 rate 160
  $ swctl meter del 3-4
  $ swctl meter show
  $ SWPROBE_FAIL="rtk_acl_meterEntry_set nth 2 result -1005" swctl meter del 3-4
  swctl: meter del 3-4: user_field_meter_entry_del refused meter 4: an index is outside its table (result -1005); already done: 3
  [2]
  $ swctl meter set 256 rate 1
  swctl: meter set: bad value "256", expected a number 0-255
  [1]
  $ swctl meter set 3
  swctl: meter set 3: missing keyword, expected one of: rate, burst, state
  [1]

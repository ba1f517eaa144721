The object meter.

  $ . "$TESTDIR/setup.sh"
  $ swctl meter show
  $ swctl meter set 3 rate 1600 burst 4096
  $ swctl meter set 255 rate 31
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
  3      on     1600  0           64
  4      off    0     0           64

In one session meters share the two burst sizes, and a third is refused:

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
  meters:5: meter set 4 rate 160 burst 2048: user_field_meter_burst_size_set_del refused burst 2048 of meter 4, both slots hold other bursts: result -1
  meter  state  rate  burst_slot  burst_word
  4      off    0     0           32
  meter  state  rate  burst_slot  burst_word
  1      on     160   0           32
  2      off    0     0           32
  3      on     160   0           32
  4      on     160   1           16
  [2]

A slot is given back if the meter is then refused:

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

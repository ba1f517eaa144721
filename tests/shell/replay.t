The calls of a recorded session, made again into a fresh chip.

  $ . "$TESTDIR/setup.sh"
  $ SWPROBE=record:live swctl -b "$TESTDIR/replay/session" >/dev/null 2>&1
  $ vchipctl dump > expected
  $ replayed() {
  >   rm -f new.img
  >   VCHIP_IMAGE="$PWD/new.img" swctl-replay "$@" 2>/dev/null
  >   VCHIP_IMAGE="$PWD/new.img" vchipctl dump | sed 's/new\.img/chip.img/' | diff expected - && echo the same chip
  > }
  $ replayed live
  [0-9]+ calls replayed, every answer the same (re)
  the same chip

The same session, recorded on machines of both byte orders:

  $ replayed "$TESTDIR/replay/little.ndjson"
  [0-9]+ calls replayed, every answer the same (re)
  the same chip
  $ replayed "$TESTDIR/replay/big.ndjson"
  [0-9]+ calls replayed, every answer the same (re)
  the same chip

A recording can come from standard input:

  $ rm -f new.img
  $ VCHIP_IMAGE=new.img swctl-replay - < live 2>/dev/null
  [0-9]+ calls replayed, every answer the same (re)
  $ swctl-replay - - < live
  swctl-replay: standard input can be read only once
  [1]
  $ swctl-replay - <&-
  swctl-replay: cannot read 'standard input': Bad file descriptor
  [1]
  $ echo '{}' | swctl-replay -
  swctl-replay: standard input:1: 'format' is missing
  [1]

One answer is another:

  $ cat > three <<'END'
  > {"format":"swctl-calls","version":1,"byte_order":"little"}
  > {"number":1,"call":"rtk_port_adminEnable_set","arguments":{"unit":{"in":0},"port":{"in":3},"enable":{"in":0}},"result":0,"made_up":false}
  > {"number":2,"call":"rtk_port_adminEnable_get","arguments":{"unit":{"in":0},"port":{"in":3},"enable":{"out":1}},"result":0,"made_up":false}
  > {"number":3,"call":"rtk_port_adminEnable_get","arguments":{"unit":{"in":0},"port":{"in":40},"enable":{}},"result":-5,"made_up":false}
  > END
  $ swctl-replay three
  three:3: the answer differs
    recorded: rtk_port_adminEnable_get(unit=0, port=3, enable=>1) = 0
    answered: rtk_port_adminEnable_get(unit=0, port=3, enable=>0) = 0
  2 calls replayed, 1 answered otherwise
  [2]
  $ swctl-replay --keep-going three 2>&1 | tail -1
  3 calls replayed, 2 answered otherwise
  $ data swctl-replay -j -k three
  {"replayed":3,"made_up":0,"differences":[{"place":"three:3","call":"rtk_port_adminEnable_get","recorded":"rtk_port_adminEnable_get(unit=0, port=3, enable=>1) = 0","answered":"rtk_port_adminEnable_get(unit=0, port=3, enable=>0) = 0"},{"place":"three:4","call":"rtk_port_adminEnable_get","recorded":"rtk_port_adminEnable_get(unit=0, port=40) = -5","answered":"rtk_port_adminEnable_get(unit=0, port=40) = -1002"}]}
  [2]

What a fault plan answered never reached the platform:

  $ SWPROBE=record:failed SWPROBE_FAIL="rtk_port_adminEnable_set nth 2 result -5" swctl port set 1-3 admin off
  swctl: port set 1-3 admin off: user_port_enable_set refused port 2: * (glob)
  [2]
  $ VCHIP_IMAGE= swctl-replay failed
  [0-9]+ calls replayed, 1 left out that a fault plan answered, every answer the same (re)

A recording that is broken is not begun:

  $ vchipctl reset
  $ vchipctl dump > before
  $ sed '3s/"port":{"in":3},//' three > lacking
  $ swctl-replay lacking
  swctl-replay: lacking:3: rtk_port_adminEnable_get: 'port' is missing
  [1]
  $ sed '4s/-5/-5.5/' three > fraction
  $ swctl-replay three fraction
  swctl-replay: fraction:4: 'result' is not a whole number
  [1]
  $ cat > bytes <<'END'
  > {"format":"swctl-calls","version":1}
  > {"number":1,"call":"rtk_acl_ruleEntryField_write","arguments":{"unit":{"in":0},"table":{"in":0},"rule":{"in":1},"field":{"in":15},"data":{"in":[8]},"mask":{"in":[255,255]}},"result":0,"made_up":false}
  > END
  $ swctl-replay bytes
  swctl-replay: bytes:2: rtk_acl_ruleEntryField_write: 'data' has 1 elements, not 2
  [1]
  $ sed '1s/little/middle/' three > order
  $ swctl-replay order
  swctl-replay: order:1: byte order "middle" is not known
  [1]
  $ sed '3s/"port":/port:/' three > json
  $ swctl-replay json
  swctl-replay: json:3: character 76 is not JSON
  [1]
  $ sed '3s/.made_up.*//' three > short
  $ swctl-replay short
  swctl-replay: short:3: the line breaks off
  [1]
  $ sed '3s/"rtk_port_adminEnable_get"/5/' three > number
  $ swctl-replay number
  swctl-replay: number:3: 'call' is not a text
  [1]
  $ sed '3s/false/0/' three > flag
  $ swctl-replay flag
  swctl-replay: flag:3: 'made_up' is neither true nor false
  [1]
  $ cat > text <<'END'
  > {"format":"swctl-calls","version":1}
  > {"number":1,"call":"sys_trace_add_log","arguments":{"location":{"in":"here"},"message":{"in":8}},"made_up":false}
  > END
  $ swctl-replay text
  swctl-replay: text:2: 'message' is not a text
  [1]
  $ vchipctl dump | diff before -

One that is cut off, as a process that is killed leaves it, is replayed up to its last whole line:

  $ head -c 450 three > cut
  $ swctl-replay cut
  swctl-replay: cut:4: the recording is cut off here; what comes before is used
  cut:3: the answer differs
    recorded: rtk_port_adminEnable_get(unit=0, port=3, enable=>1) = 0
    answered: rtk_port_adminEnable_get(unit=0, port=3, enable=>0) = 0
  2 calls replayed, 1 answered otherwise
  [2]

A chip that cannot be used:

  $ echo junk > broken.img
  $ VCHIP_IMAGE=broken.img swctl-replay three
  swctl-replay: image broken.img: not a virtual chip image
  [2]

Wrong words:

  $ swctl-replay nowhere
  swctl-replay: cannot read 'nowhere': No such file or directory
  [1]
  $ swctl-replay
  swctl-replay: FILE is required
  [1]
  $ swctl-replay --slowly three
  swctl-replay: The following argument was not expected: --slowly
  [1]
  $ swctl-replay --help | head -1
  Makes the calls of recordings again, on this platform, and compares the answers
  $ swctl-replay -V
  swctl-replay [0-9.]+ (re)
  $ swctl-replay --help >/dev/full
  swctl-replay: standard output cannot be written
  [2]

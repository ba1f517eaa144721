What became of frames is counted in three places, and they agree.

  $ . "$TESTDIR/setup.sh"
  $ vchipctl link up 1-3
  $ frames() { yes "ffffffffffff02000000000188b5" | head -n "$1" | xargs -n 2000 vchipctl send 1 >/dev/null; }
  $ drain() { yes "ffffffffffff02000000000188b5" | head -n "$1" | xargs -n 2000 vchipctl send 1 --drain >/dev/null; }

What the queues sent is what the port counted:

  $ agree() {
  >   vchipctl queues -j "$1" | jq -c '.[0].queues | [(map(.sent) | add), (map(.bytes) | add)]'
  >   swctl -j port stats "$1" | jq -c '.[0] | [.tx_packets, .tx_bytes]'
  > }
  $ frames 30
  $ agree 2
  [30,1920]
  [30,1920]

In a period of three seconds that is the rate:

  $ (sleep 1; frames 30) &
  $ swctl -j port stats 1-3 period 3 | jq -c '.[] | [.port, ."rx_packets/s", ."rx_bytes/s", ."tx_packets/s", ."tx_bytes/s"]'
  [1,10,640,0,0]
  [2,0,0,10,640]
  [3,0,0,10,640]
  $ wait
  $ agree 3
  [60,3840]
  [60,3840]

What was received has left by a port or has a reason:

  $ vchipctl drops -j 1 | jq -c '.[0].counts | [.received, .forwarded]'
  [60,60]
  $ swctl -j port stats 1 | jq '.[0].rx_packets'
  60
  $ swctl vlan del 1
  $ frames 5
  $ vchipctl drops -j 1 | jq -c '.[0].counts | [.received, .forwarded, .filter]'
  [65,60,5]
  $ swctl -j port stats 1 | jq '.[0].rx_packets'
  65

A full queue drops, and counts that itself. 256 frames of 64 bytes empty the
bucket of the limit, 1,000 wait:

  $ vchipctl reset
  $ vchipctl link up 1-3
  $ swctl port set 2 egress 16kbit
  $ drain 1300
  $ agree 2
  [1256,80384]
  [1256,80384]
  $ vchipctl queues -j 2 | jq '.[0].queues | map(.dropped) | add'
  44
  $ vchipctl drops -j 2 | jq '.[0].counts.queue'
  44
  $ vchipctl drops -j 1 | jq -c '.[0].counts | [.received, .forwarded]'
  [1300,1300]
  $ agree 3
  [1300,83200]
  [1300,83200]

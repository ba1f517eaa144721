Counters of ports.

  $ . "$TESTDIR/setup.sh"
  $ vchipctl counter 3 0 set 15000
  $ vchipctl counter 3 1 set 100
  $ vchipctl counter 3 2 set 20
  $ vchipctl counter 3 3 set 3
  $ vchipctl counter 3 4 set 640
  $ vchipctl counter 3 5 set 10
  $ vchipctl counter 3 45 set 7
  $ vchipctl counter 3 41 set 1
  $ swctl port stats 2-3
  port  rx_bytes  rx_packets  tx_bytes  tx_packets  errors
  2     0         0           0         0           0
  3     15000     123         640       10          8
  $ swctl port stats | wc -l
  27
  $ swctl -j port stats 3
  [{"port":3,"rx_bytes":15000,"rx_packets":123,"tx_bytes":640,"tx_packets":10,"errors":8}]

A counter counts to 2^64 - 1:

  $ vchipctl counter 4 0 set 18446744073709551615
  $ swctl -j port stats 4
  [{"port":4,"rx_bytes":18446744073709551615,"rx_packets":0,"tx_bytes":0,"tx_packets":0,"errors":0}]

Rates are what came in between, also across the end of a counter:

  $ (sleep 1; vchipctl counter 4 0 add 3001; vchipctl counter 4 1 add 30) &
  $ swctl port stats 4 period 3
  port  rx_bytes/s  rx_packets/s  tx_bytes/s  tx_packets/s  errors/s
  4     1000        10            0           0             0
  $ wait
  $ swctl port stats 4 period 0
  swctl: port stats 4 period: bad value "0", expected a number 1-3600 seconds
  [1]

There is no rate of counters that were reset meanwhile:

  $ vchipctl counter 5 0 set 5000
  $ (sleep 1; swctl port clear 5; vchipctl counter 5 0 add 100) &
  $ swctl port stats 5 period 3
  port  rx_bytes/s  rx_packets/s  tx_bytes/s  tx_packets/s  errors/s
  5     reset       reset         reset       reset         reset
  $ wait

Every counter, by its number:

  $ swctl port stats 3 all | head -n 4
  port  counter  name             value
  3     0        rx_octets        15000
  3     1        rx_unicast       100
  3     2        rx_multicast     20
  $ swctl port stats 3 all | wc -l
  49
  $ swctl -j port stats 3 all | jq -c '.[45,46]'
  {"port":3,"counter":45,"name":"checksum_errors","value":7}
  {"port":3,"counter":46,"name":null,"value":0}
  $ swctl port stats all all | wc -l
  1249
  $ swctl port stats 3 all period 1
  swctl: port stats 3 all period 1: all counters are shown without a period
  [1]

Clearing:

  $ swctl port clear 3
  $ swctl port stats 3-4
  port  rx_bytes  rx_packets  tx_bytes  tx_packets  errors
  3     0         0           0         0           0
  4     3000      30          0         0           0

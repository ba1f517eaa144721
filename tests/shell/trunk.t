The object trunk: ports that work as one link.

  $ . "$TESTDIR/setup.sh"
  $ trunks() { vchipctl dump --unit 0 --block trunk --compact; }

  $ swctl trunk set 4 1-2,26
  $ swctl trunk show
  trunk  ports   hash
  4      1,2,26  source-port
  $ swctl -j trunk show
  [{"trunk":4,"ports":[1,2,26],"hash":"source-port"}]
  $ trunks
  {"trunks":[{"trunk":4,"members":[0,1,26]}],"algorithms":[{"hash":["source-port"]},{"hash":["source-port"]}]}
  $ swctl trunk set 4 3
  $ trunks | grep -o '"members":[^]]*]'
  "members":[2]
  $ swctl trunk hash ips
  $ trunks | grep -o '"hash":[^]]*]' | head -1
  "hash":["source-ip","destination-ip"]
  $ swctl trunk set 31 25,7-8
  $ swctl trunk show
  trunk  ports   hash
  4      3       ips
  31     7,8,25  ips
  $ swctl trunk show 31
  trunk  ports   hash
  31     7,8,25  ips
  $ swctl -j trunk show 5
  swctl: trunk show 5: there is no trunk 5
  {"error":{"message":"trunk show 5: there is no trunk 5","culprit":"5","expected":[],"suggestions":[],"status":1}}
  [1]
  $ swctl trunk del 31
  $ swctl trunk del 4
  $ swctl trunk show
  $ trunks | grep -o '"trunks":[^]]*]'
  "trunks":[]

What spreads the frames; on this chip it is the source port after power-on,
which has no word:

  $ for fields in none source-mac destination-mac macs source-ip destination-ip ips; do
  >   echo "trunk hash $fields"
  >   echo "trunk hash"
  > done > hashes
  $ swctl -b hashes
  hash  none
  hash  source-mac
  hash  destination-mac
  hash  macs
  hash  source-ip
  hash  destination-ip
  hash  ips
  $ swctl trunk hash
  hash  ips
  $ vchipctl reset
  $ swctl trunk hash
  hash  source-port

A port belongs to one trunk:

  $ swctl trunk set 1 1-2
  $ swctl trunk set 2 2-3
  swctl: trunk set 2 2-3: user_trunk_set refused trunk 2: a port belongs to another trunk (result -1081)
  [2]

  $ swctl trunk hash everything
  swctl: trunk hash: bad value "everything", expected one of: source-port, none, source-mac, destination-mac, macs, source-ip, destination-ip, ips
  [1]
  $ swctl trunk set 32 1
  swctl: trunk set: bad value "32", expected a number 0-31
  [1]
  $ swctl -u 1 trunk show
  swctl: trunk show: works on unit 0 alone, expected unit 0
  [1]
  $ swctl -u 1 trunk hash
  swctl: trunk hash: works on unit 0 alone, expected unit 0
  [1]
  $ swctl -u 1 trunk del 1
  swctl: trunk del 1: works on unit 0 alone, expected unit 0
  [1]

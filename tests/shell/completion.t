What completion offers.

  $ . "$TESTDIR/setup.sh"

  $ swctl -complete 1 swctl ""
  acl
  config
  dos
  flood
  kernel
  mac
  mcast
  meter
  mirror
  monitor
  port
  qos
  storm
  stp
  trap
  trunk
  vlan
  version
  help
  $ swctl -complete 1 swctl po
  port
  $ swctl -complete 2 swctl port
  show
  set
  stats
  clear
  cable
  help
  $ swctl -complete 3 swctl port show ""
  detail
  $ swctl -complete 4 swctl port set 3 ""
  speed
  duplex
  admin
  advertise
  autoneg
  pause
  backpressure
  mdix
  eee
  loopback
  mtu
  learning
  isolation
  vlan
  filter
  dtag
  tpid
  entry
  outer
  ingress
  egress
  description
  $ swctl -complete 5 swctl port set 3 speed 10
  10
  100
  1000
  10000
  $ swctl -complete 6 swctl port set 3 loopback on ""
  speed
  duplex
  admin
  advertise
  autoneg
  pause
  backpressure
  mdix
  eee
  mtu
  learning
  isolation
  vlan
  filter
  dtag
  tpid
  entry
  outer
  ingress
  egress
  description
  $ swctl -complete 3 swctl -j port s
  show
  set
  stats
  $ swctl -complete 1 swctl -
  -json
  -pretty
  -batch
  -force
  -atomic
  -may-exist
  -no-pager
  -echo-status
  -unit
  -help
  -Version
  $ swctl -complete 1 swctl --p
  --pretty
  $ swctl -complete 2 swctl -batch ""
  $ swctl -complete 2 swctl prot ""
  $ swctl -complete many swctl
  swctl: bad value of -complete: not a number
  [1]
  $ swctl -complete 9 swctl
  swctl: bad value of -complete: out of range
  [1]

In bash:

  $ cat > ask <<'END'
  > . "$1/../../shell/completion/swctl"
  > shift
  > COMP_WORDS=("$@")
  > COMP_CWORD=$(($# - 1))
  > _swctl
  > echo "${COMPREPLY[@]}"
  > END
  $ bash ask "$TESTDIR" swctl port ""
  show set stats clear cable help
  $ bash ask "$TESTDIR" swctl port set 1-4 d
  duplex dtag description
  $ bash ask "$TESTDIR" swctl -j po
  port

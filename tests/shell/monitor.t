What changes on the chip, as it happens.

  $ . "$TESTDIR/setup.sh"
  $ after() { sleep 2; vchipctl link up 3; swctl vlan add 10 tagged 3; swctl trap set igmp cpu; vchipctl learn 02:00:00:00:00:08 --port 7 --vlan 1; sleep 1; swctl vlan del 10; }
  $ after & swctl monitor link,vlan,trap,mac interval 50 seconds 8 | sort; wait
  added  mac  02:00:00:00:00:08 vlan 1  port 7
  added  trap  trap igmp  cpu
  added  vlan  vlan 10  tagged 3
  changed  link  port 3  up
  removed  vlan  vlan 10  tagged 3
  $ echo 'monitor seconds 1' | swctl
  stdin:1: monitor seconds 1: monitor shows changes as they happen, not in a batch
  [1]
  $ swctl monitor counter
  swctl: monitor counter: counters and a threshold go together, expected threshold
  [1]

Checkpoints, and loads that have to be confirmed.

  $ . "$TESTDIR/setup.sh"
  $ SWCTL_STATE_DIRECTORY="$PWD/state"
  $ export SWCTL_STATE_DIRECTORY
  $ swctl vlan add 10 tagged 1-4
  $ swctl config checkpoint first
  $ swctl vlan add 20 tagged 5
  $ swctl config checkpoint second
  $ swctl config checkpoints | sed 's/20..-..-..T.*$/TIME/'
  checkpoint  time
  first       TIME
  second      TIME
  $ cat state/unit0/checkpoints/first
  vlan add 10 tagged 1-4
  $ swctl config rollback first
  $ swctl config show
  vlan add 10 tagged 1-4
  $ swctl config forget first
  $ swctl config rollback first
  swctl: config rollback first: there is no checkpoint first
  [1]
  $ swctl config checkpoint ../x
  swctl: config checkpoint ../x: "../x" is no name of a checkpoint, expected up to 64 letters, digits, - _ and .
  [1]

At most 50 are kept:

  $ for number in $(seq 2 50); do echo "config checkpoint c$number"; done | swctl
  $ swctl config checkpoint one-more
  swctl: config checkpoint one-more: there are 50 checkpoints, and no more can be kept, expected config forget of one before
  [1]
  $ swctl config checkpoint c2
  $ swctl -j config checkpoints | jq length
  50

A directory that cannot be written:

  $ SWCTL_STATE_DIRECTORY=/dev/null/x swctl config checkpoint a
  swctl: config checkpoint a: "/dev/null/x/unit0" cannot be made: Not a directory
  [2]

A load that nobody confirms is taken back, by a process that outlives the session:

  $ wait_for() { for i in $(seq 100); do "$@" >/dev/null 2>&1 && return; sleep 0.2; done; echo never; }
  $ echo "vlan add 30 tagged 7" > plan
  $ swctl config load plan confirm 2 | cat
  $ swctl config show
  vlan add 30 tagged 7
  $ swctl config load plan confirm 2
  swctl: config load plan confirm 2: another load waits for its confirmation, expected config confirm
  [1]
  $ wait_for test -f state/unit0/last-rollback
  $ cat state/unit0/last-rollback
  the load was not confirmed: the configuration of before is back
  $ swctl config show
  vlan add 10 tagged 1-4
  $ swctl config confirm
  swctl: config confirm: no load waits for a confirmation
  [1]

One that is confirmed stays:

  $ swctl config load plan confirm 2
  $ swctl config confirm
  $ sleep 3
  $ swctl config show
  vlan add 30 tagged 7

One that is refused waits for nothing:

  $ SWPROBE_FAIL='rtk_vlan_destroy nth 1 result -5' swctl config load state/unit0/checkpoints/second confirm 60
  swctl: vlan del 30: user_vlan_destroy refused VLAN 30: result -5; all is as it was
  [2]
  $ swctl config confirm
  swctl: config confirm: no load waits for a confirmation
  [1]

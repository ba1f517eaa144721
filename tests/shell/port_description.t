Descriptions of ports, which the chip has no place for.

  $ . "$TESTDIR/setup.sh"
  $ SWCTL_STATE_DIRECTORY="$PWD/state"
  $ export SWCTL_STATE_DIRECTORY
  $ swctl port show 3 detail | grep description
  description   -
  $ ls state
  ls: cannot access 'state': No such file or directory
  [2]
  $ swctl port set 3-4,7 description uplink
  $ swctl port set 5 description 'to the "north" \ side # 1' mtu 2000
  $ swctl port show 5 detail | grep description
  description   to the "north" \ side # 1
  $ swctl -j port show 3,6 detail | jq -c '.[].description'
  "uplink"
  null

They are part of the configuration:

  $ swctl config show
  port set 3,4,7 description "uplink"
  port set 5 description "to the \"north\" \\ side # 1"
  port set 1 mtu 2000
  $ swctl -j config show port | jq -c '.[0]'
  {"object":"port","setting":"port description","command":"port set 3,4,7 description \"uplink\"","reason":null,"missing":null}
  $ swctl config save plan
  $ swctl config checkpoint named
  $ swctl port set 4 description ""
  $ swctl port set 5 description north
  $ swctl config diff plan commands
  port set 4 description "uplink"
  port set 5 description "to the \"north\" \\ side # 1"
  $ swctl config load plan
  $ swctl config diff plan
  $ swctl port set 1-8 description other
  $ swctl config rollback named
  $ swctl config show | diff - plan
  $ swctl -may-exist port set 3-4 description uplink
  swctl: port set 3-4 description uplink: already so: port description 3,4

What stops half-way is put back:

  $ printf 'port set 1-5 description z\nport set 3 x\n' | swctl -atomic -b - 2>&1 | tail -1
  stdin: all settings are as they were
  $ swctl config show | diff - plan
  $ printf 'port set 1-5 description z\nvlan add 9\n' > other
  $ SWPROBE_FAIL='rtk_vlan_create nth 1 result -5' swctl config load other 2>&1 | grep -o 'all is as it was'
  all is as it was
  $ swctl config show | diff - plan

After a reset, the text makes the same:

  $ vchipctl reset
  $ swctl -b plan
  $ swctl config show | diff - plan

What cannot be kept is named:

  $ swctl port set 3 mtu 9000 description "$(printf 'a\tb')"
  swctl: port set 3 mtu 9000 description a\x09b: bad value "a\x09b" of description: "\x09" is a control character, expected up to 64 characters without control characters
  [1]
  $ swctl port set 3 description "$(printf 'a\302\205b')" 2>&1 | grep -o 'U+.*character,'
  U+0085 is a control character,
  $ for bytes in '\377' '\300\200' '\355\240\200' '\364\220\200\200' '\342\202' '\303('; do
  >   swctl port set 3 description "$(printf "$bytes")" 2>&1 | grep -ao 'it is not UTF-8'
  > done
  it is not UTF-8
  it is not UTF-8
  it is not UTF-8
  it is not UTF-8
  it is not UTF-8
  it is not UTF-8
  $ swctl port set 3 description "$(printf 'x%.0s' $(seq 65))" 2>&1 | grep -o '65 characters are too many'
  65 characters are too many
  $ printf 'port set 3 description "a\tb"\n' | swctl config check -
  stdin:1: port set 3 description a\x09b: bad value "a\x09b" of description: "\x09" is a control character, expected up to 64 characters without control characters
  swctl: config check -: 1 fault
  [1]
  $ swctl config show | diff - plan
  $ swctl port set 3 description "$(printf '\303\274%.0s' $(seq 64))"
  $ swctl -j port show 3 detail | jq '.[0].description | length'
  64

An image has none of another one, not even if it takes its place:

  $ VCHIP_IMAGE="$PWD/other.img" swctl config show
  $ mv chip.img before.img
  $ swctl config show
  $ swctl port set 1 description new
  $ VCHIP_IMAGE="$PWD/before.img" swctl config show | head -1 | cut -d' ' -f1-4
  port set 3 description

Nor has a chip without an image:

  $ VCHIP_IMAGE= swctl config show
  $ printf 'port set 9 description mine\nconfig show\n' | VCHIP_IMAGE= swctl
  port set 9 description "mine"

A directory that cannot be used is an error, and costs nothing else:

  $ SWCTL_STATE_DIRECTORY=/dev/null/x swctl port set 1 description a
  swctl: port set 1 description a: "/dev/null/x/unit0" cannot be made: Not a directory
  [2]
  $ SWCTL_STATE_DIRECTORY=/dev/null/x swctl port show 1 detail | grep description
  description   -

Standard output that takes nothing is noticed, with status 2.

  $ . "$TESTDIR/setup.sh"

  $ swctl port show >/dev/full
  swctl: standard output: No space left on device
  [2]
  $ swctl -j port show >/dev/full
  swctl: standard output: No space left on device
  [2]
  $ swctl help >/dev/full
  swctl: standard output: No space left on device
  [2]
  $ swctl port show >&-
  swctl: standard output: Bad file descriptor
  [2]
  $ swctl port show >&- 2>&-
  [2]

A pipe that nobody reads:

  $ cat > unread.py <<'END'
  > import os, subprocess
  > reader, writer = os.pipe()
  > os.close(reader)
  > print(subprocess.run(["swctl", "port", "show"], stdout=writer).returncode)
  > END
  $ python3 unread.py
  swctl: standard output: Broken pipe
  2

A command that writes nothing does not mind:

  $ swctl port set 3 loopback on >&-
  $ swctl port set 4 loopback on >/dev/full
  $ swctl port show 3-4
  port  link  speed    duplex  medium  loopback
  3     down  unknown  both    copper  on
  4     down  unknown  both    copper  on

A batch ends there, even with -force:

  $ printf 'port show 3\nport set 3 loopback off\n' > commands
  $ swctl -force -b commands >/dev/full
  swctl: standard output: No space left on device
  [2]
  $ swctl port show 3-4
  port  link  speed    duplex  medium  loopback
  3     down  unknown  both    copper  on
  4     down  unknown  both    copper  on

Standard input that is closed cannot be read:

  $ swctl <&-
  stdin:1: Bad file descriptor
  [1]

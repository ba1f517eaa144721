The object mirror: copies of frames to a port.

  $ . "$TESTDIR/setup.sh"

  $ swctl mirror add 1 to 26 ports 1-2 direction ingress
  $ swctl mirror add 1 to 26 ports 25
  $ swctl mirror add 2 to 3 flows
  $ swctl mirror show
  group  state  to  ingress  egress  flows
  0      off    -   -        -       no
  1      on     26  1,2,25   25      no
  2      on     3   -        -       yes
  3      off    -   -        -       no
  $ swctl -j mirror show
  [{"group":0,"state":false,"to":null,"ingress":[],"egress":[],"flows":false},{"group":1,"state":true,"to":26,"ingress":[1,2,25],"egress":[25],"flows":false},{"group":2,"state":true,"to":3,"ingress":[],"egress":[],"flows":true},{"group":3,"state":false,"to":null,"ingress":[],"egress":[],"flows":false}]

The CPU is port 0; the chip notes it:

  $ swctl mirror add 3 to 4 ports 0 direction egress
  $ vchipctl dump --unit 0 --block mirror --compact | grep -o '"cpu_port":true'
  "cpu_port":true

A group goes with its last port:

  $ swctl mirror del 1 ports 1,25
  $ swctl mirror show | head -3
  group  state  to  ingress  egress  flows
  0      off    -   -        -       no
  1      on     26  2        -       no
  $ swctl mirror del 1 ports 2
  $ swctl mirror show | head -3
  group  state  to  ingress  egress  flows
  0      off    -   -        -       no
  1      off    -   -        -       no

A group that is disabled as a whole keeps its ports:

  $ swctl mirror add 0 to 9 ports 7
  $ swctl mirror del 0
  $ swctl mirror show | head -2
  group  state  to  ingress  egress  flows
  0      off    -   7        7       no
  $ swctl mirror add 0 to 10 flows
  $ swctl mirror show | head -2
  group  state  to  ingress  egress  flows
  0      on     10  7        7       yes

Wrong words change nothing:

  $ swctl mirror add 0 to 9
  swctl: mirror add 0 to 9: nothing to mirror, expected one of: ports, flows
  [1]
  $ swctl mirror add 0 to 9 flows direction egress
  swctl: mirror add 0 to 9 flows direction egress: a direction is one of ports, expected ports
  [1]
  $ swctl mirror add 0 ports 3
  swctl: mirror add 0 ports 3: missing keyword, expected to
  [1]
  $ swctl mirror add 4 to 9 flows
  swctl: mirror add: bad value "4", expected a number 0-3
  [1]
  $ swctl -u 1 mirror show
  swctl: mirror show: works on unit 0 alone, expected unit 0
  [1]
  $ swctl mirror show | head -2
  group  state  to  ingress  egress  flows
  0      on     10  7        7       yes

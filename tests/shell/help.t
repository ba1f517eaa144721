Help at every level.

  $ . "$TESTDIR/setup.sh"

  $ swctl help
  Usage: swctl [OPTIONS] OBJECT COMMAND [KEYWORD VALUE]...
  
  Shows and changes a switch chip through libswctl.
  Objects, commands and keywords may be abbreviated; values are written in full.
  Without a command, swctl reads commands: from a terminal with history and
  completion, from a file or pipe as a batch.
  
  Objects:
    acl      Access-control rules
    mac      The layer-2 address table
    mcast    Layer-2 multicast groups
    meter    Meters, which limit the rate of what rules match
    port     Ports: link, speed, duplex, medium, loopback
    vlan     VLANs: ports, defaults, rules, translation
    version  Show the version and the library files in use
    help     Say what may come next, here and behind every word
  
  Options, with one dash or two:
    -j, -json        Answer in JSON
    -p, -pretty      Answer in JSON on indented lines
    -b, -batch FILE  Run the commands of a file, - for standard input
    -force           In a batch, go on after a command that failed
    -u, -unit N      Work on switch unit N instead of 0
    -h, -help        Show this help
    -V, -Version     Show the version of the program
  $ swctl port help
  Usage: swctl port COMMAND ...
  
  Ports: link, speed, duplex, medium, loopback.
  
  Commands:
    show  Show the state of ports
    set   Force speed and duplex, switch the loopback
    help  Say what may come next, here and behind every word
  $ swctl port show help
  Usage: swctl port show [PORTS]
  
  Show the state of ports.
  Without PORTS, all front ports in a table; a single port in detail.
  Speed and duplex are those in operation; with the link down, those forced or,
  under autonegotiation, those advertised: several speeds or none are unknown,
  duplex both stands for both or neither.
  
    PORTS  Ports to show: interface numbers 1-26 such as 1-4,7
  $ swctl port set help
  Usage: swctl port set PORTS [speed 10|100|1000|10000] [duplex half|full] [loopback on|off]
  
  Force speed and duplex, switch the loopback.
  speed and duplex switch autonegotiation off and force the mode; flow control
  stays as it is. Every port is checked before the first one is changed.
  
    PORTS                    Ports to change: interface numbers 1-26 such as 1-4,7
    speed 10|100|1000|10000  Forced speed in Mbit/s; without duplex, the present one stays
      10                     10 Mbit/s
      100                    100 Mbit/s
      1000                   1 Gbit/s
      10000                  10 Gbit/s
    duplex half|full         Forced duplex; without speed, the present one stays
      half                   One direction at a time
      full                   Both directions at once
    loopback on|off          Whether the MAC sends its own frames back to itself
  $ swctl version help
  Usage: swctl version
  
  Show the version and the library files in use.
  platform is the file that answers the calls of the chip's SDK; between lists
  the files that such a call passes on its way there.

It may be asked for in several ways:

  $ swctl help > expected
  $ swctl -h | diff expected -
  $ swctl --help | diff expected -
  $ swctl h | diff expected -
  $ swctl port set help > expected
  $ swctl port set 3 help | diff expected -
  $ swctl port set 3 speed 100 help | diff expected -
  $ swctl help port set | diff expected -
  $ swctl help prot
  swctl: unknown word "prot", expected one of: acl, mac, mcast, meter, port, vlan, version, help
  [1]

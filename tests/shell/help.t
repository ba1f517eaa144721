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
    config   The configuration as text
    dos      Prevention of denial-of-service attacks
    flood    Flooding: ports that get frames to unknown unicast addresses
    kernel   The message channel to the kernel's switch module
    mac      The layer-2 address table
    mcast    Multicast: layer-2 groups, IP entries
    meter    Meters, which limit the rate of what rules match
    mirror   Mirroring: copies of frames to a port
    monitor  Print what changes as it happens
    port     Ports: state, settings, counters, cables
    qos      Quality of service: priorities and queues
    storm    Storm control: rates of flooded traffic
    stp      Spanning tree: instances, VLANs, port states
    trap     Protocol frames for the processor
    trunk    Trunks: ports that work as one link
    vlan     VLANs: ports, defaults, rules, translation
    version  Show the version and the library files in use
    help     Say what may come next, here and after every word
  
  Options, with one dash or two:
    -j, -json        Answer in JSON
    -p, -pretty      Answer in JSON on indented lines
    -b, -batch FILE  Run the commands of a file, - for standard input
    -force           In a batch, go on after a command that failed
    -atomic          Put back what a batch has changed if a command of it fails
    -may-exist       Make only what is not so already
    -no-pager        Write long answers to a terminal as they are
    -echo-status     After each answer, a line with the status of its command
    -u, -unit N      Work on switch unit N instead of 0
    -h, -help        Show this help
    -V, -Version     Show the version of the program
  $ swctl port help
  Usage: swctl port COMMAND ...
  
  Ports: state, settings, counters, cables.
  
  Commands:
    show   Show the state of ports
    set    Change settings of ports
    stats  Show counters of ports
    clear  Set the counters of ports to 0
    cable  Test the cable of a copper port
    help   Say what may come next, here and after every word
  $ swctl port show help
  Usage: swctl port show [PORTS] [detail]
  
  Show the state of ports.
  Without PORTS, all front ports.
  Speed and duplex are those in operation; with the link down, those forced or,
  under autonegotiation, those advertised: several speeds or none are unknown,
  duplex both means both or neither.
  
    PORTS   Ports to show: interface numbers 1-26 such as 1-4,7, or all
    detail  Their settings too, line by line
  $ swctl port set help
  Usage: swctl port set PORTS [speed 10|100|1000|10000] [duplex half|full]
                        [admin on|off] [advertise LIST] [autoneg on|off]
                        [pause on|off] [backpressure on|off]
                        [mdix auto|straight|crossed] [eee on|off]
                        [loopback on|off] [mtu 64-16383]
                        [learning on|off|forward|cpu|copy|restore]
                        [isolation PORTS] [vlan 1-4094] [filter on|off]
                        [dtag on|off] [tpid 0-65535] [entry 0-3] [outer 0-65535]
                        [ingress RATE] [egress RATE] [description TEXT]
  
  Change settings of ports.
  speed and duplex switch autonegotiation off and force the mode; flow control
  stays as it is. Everything is checked before the first port is changed; then
  the settings are made in the order shown here, port by port.
  
    PORTS                       Ports to change: interface numbers 1-26 such as
                                1-4,7, or all
    speed 10|100|1000|10000     Forced speed in Mbit/s; without duplex, the
                                present one stays
      10                        10 Mbit/s
      100                       100 Mbit/s
      1000                      1 Gbit/s
      10000                     10 Gbit/s
    duplex half|full            Forced duplex; without speed, the present one
                                stays
      half                      One direction at a time
      full                      Both directions at once
    admin on|off                Whether the port is switched on
    advertise LIST              What autonegotiation offers, such as
                                100-full,pause
    autoneg on|off              Autonegotiation
    pause on|off                Flow control
    backpressure on|off         Flow control by collisions, in half duplex
    mdix auto|straight|crossed  Which pairs the port sends on
    eee on|off                  Energy-efficient Ethernet
    loopback on|off             Whether the MAC sends its own frames back to
                                itself
    mtu 64-16383                Longest frame, for all ports of the unit: a number
                                64-16383 bytes
    learning on|off|forward|cpu|copy|restore
                                What new source addresses lead to
      on                        Learn and forward
      off                       Drop frames from unknown addresses
      forward                   Forward without learning
      cpu                       Leave learning to the processor
      copy                      Learn, and copy to the processor
      restore                   What the last change found
    isolation PORTS             Isolation: ports it may send to, 0 the CPU:
                                interface numbers 0-26 such as 1-4,7, all or none
    vlan 1-4094                 PVID, the VLAN of untagged frames: a number 1-4094
    filter on|off               Ingress filtering: drop frames of other VLANs
    dtag on|off                 Double-tag mode
    tpid 0-65535                Tag protocol identifier: a number 0-65535
    entry 0-3                   Place of tpid in the switch's tables; 0 if not
                                given: a number 0-3
    outer 0-65535               Tag protocol identifier of outer tags; tpid if not
                                given: a number 0-65535
    ingress RATE                Ingress rate limit: a rate 0-16777200 kbit in
                                steps of 16 such as 64kbit, 10mbit or 1gbit
    egress RATE                 Egress rate limit: a rate 0-16777200 kbit in steps
                                of 16 such as 64kbit, 10mbit or 1gbit
    description TEXT            What the port is called; "" is no description: a
                                text
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
  $ swctl port set --help | diff expected -
  $ swctl port set 3 speed -h | diff expected -
  $ swctl -h port set | diff expected -
  $ swctl port -help set 3 | diff expected -
  $ echo 'port set --help' | swctl | diff expected -
  $ swctl help prot
  swctl: unknown word "prot" (did you mean "port"?), expected one of: acl, config, dos, flood, kernel, mac, mcast, meter, mirror, monitor, port, qos, storm, stp, trap, trunk, vlan, version, help
  [1]

It is as wide as COLUMNS says, errors are one line:

  $ COLUMNS=40 swctl mac show help | head -n 5
  Usage: swctl mac show [vlan 0-4095]
      [port PORT] [trunk 0-31]
      [type dynamic|static|other|violation]
      [address MAC]
  
  $ COLUMNS=20 swctl port show 99
  swctl: port show: bad value "99", expected one of: interface numbers 1-26 such as 1-4,7, or all, detail
  [1]

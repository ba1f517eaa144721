# SPDX-License-Identifier: MIT
"""lacp_test.py PROGRAMS: Open vSwitch bundles two links to a trunk of the chip by LACP
(IEEE 802.1AX). The switch's own side of the protocol is a small speaker on the
interfaces of cpu:, as a daemon of the switch would be."""
import errno
import os
import select
import socket
import struct
import threading

import neighbours
from neighbours import wait_until

SCHEMA = "/usr/share/openvswitch/vswitch.ovsschema"
GROUP = b"\x01\x80\xc2\0\0\x02"
OWN = struct.pack(">H6sH", 0x8000, b"\x02\0\0\0\0\xaa", 1)  # priority, system, key
IN_SYNC = 0x3F  # active, short timeout, aggregates, in sync, collects and distributes
ETH_P_SLOW = 0x8809
PACKET_IGNORE_OUTGOING = 23


class Speaker(threading.Thread):
    """Answers each LACPDU of the other end, on the interfaces of some ports."""

    def __init__(self, ports):
        super().__init__(daemon=True)
        self.ports, self.stops, self.heard = {}, threading.Event(), {port: 0 for port in ports}
        for port in ports:
            own = socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(ETH_P_SLOW))
            own.setsockopt(263, PACKET_IGNORE_OUTGOING, 1)
            own.bind((f"cpu{port}", ETH_P_SLOW))
            self.ports[own] = port

    def run(self):
        while not self.stops.is_set():
            for own in select.select(list(self.ports), [], [], 0.1)[0]:
                try:
                    self.converse(own)
                except OSError as fault:  # the port goes down, and may come back
                    if fault.errno not in (errno.ENETDOWN, errno.ENXIO):
                        raise

    def converse(self, own):
        data = own.recv(2048)
        if data[:6] == GROUP and data[14] == 1:
            self.heard[self.ports[own]] += 1
            own.send(self.answer(self.ports[own], data[18:33]))

    @staticmethod
    def answer(port, other):
        """A LACPDU: what this end is, and what it has heard of the other."""
        actor = OWN + struct.pack(">HHB", 0x8000, port, IN_SYNC)
        return (GROUP + b"\x02\0\0\0\x01" + bytes([port]) + struct.pack(">HBB", ETH_P_SLOW, 1, 1) +
                b"\x01\x14" + actor + bytes(3) + b"\x02\x14" + other + bytes(3) +
                b"\x03\x10" + bytes(14) + bytes(52))

    def close(self):
        self.stops.set()
        self.join()
        for own in self.ports:
            own.close()


class Lacp(neighbours.Case):
    def setUp(self):
        super().setUp()
        self.bundle, self.other = self.hosts(2, 1, more=["0=cpu:"])
        for link in ("eth0", "eth1"):
            self.bundle.up(link)
        self.other.up("eth0", "10.0.0.3/24")
        for port in (1, 2):
            neighbours.subprocess.run(["ip", "link", "set", f"cpu{port}", "up"], check=True)
        self.start_switch()

    def control(self, *words):
        return self.bundle.run(f"ovs-vsctl --db=unix:{self.path('db.sock')} -t 10 " +
                               " ".join(words))

    def start_switch(self):
        os.environ["OVS_RUNDIR"] = self.directory
        self.addCleanup(os.environ.pop, "OVS_RUNDIR")
        self.bundle.run(f"ovsdb-tool create {self.path('conf.db')} {SCHEMA}")
        self.bundle.start("ovsdb-server", self.path("conf.db"),
                          f"--remote=punix:{self.path('db.sock')}",
                          f"--unixctl={self.path('db.ctl')}")
        wait_until(lambda: os.path.exists(self.path("db.sock")), "the database answers")
        self.control("--no-wait", "init")
        self.daemon = self.bundle.start("ovs-vswitchd", f"unix:{self.path('db.sock')}",
                                        f"--unixctl={self.path('vs.ctl')}", "--disable-system")
        self.control("add-br br0 -- set bridge br0 datapath_type=netdev")
        self.control("add-bond br0 bond0 eth0 eth1 lacp=active bond_mode=balance-tcp "
                     "other_config:lacp-time=fast")
        self.bundle.up("br0", "10.0.0.1/24")

    def lacp(self):
        return self.bundle.run(f"ovs-appctl -t {self.path('vs.ctl')} lacp/show bond0")

    def speak(self):
        speaker = Speaker((1, 2))
        self.addCleanup(speaker.close)
        speaker.start()
        return speaker

    def test_a_bundle_and_a_trunk(self):
        self.swctl("trunk set 1 1-2")
        self.swctl("trap set lacp cpu")
        speaker = self.speak()
        wait_until(lambda: "negotiated" in self.lacp() and
                   self.lacp().count("current attached") == 2, "both links are bundled")
        self.assertIn("02:00:00:00:00:aa", self.lacp())
        wait_until(lambda: self.other.pings("10.0.0.1"), "the hosts see each other")
        # A link less, and the trunk goes on.
        self.swctl("port set 1 admin off")
        wait_until(lambda: self.lacp().count("current attached") == 1, "it is left out")
        wait_until(lambda: self.other.pings("10.0.0.1"), "they see each other by the other link")
        self.assertGreater(speaker.heard[1], 0)
        self.assertGreater(speaker.heard[2], 0)

    def test_dropped_nothing_is_agreed(self):
        self.swctl("trap set lacp drop")
        speaker = self.speak()
        wait_until(lambda: self.drops(1)["trap"] >= 2 and self.drops(2)["trap"] >= 2,
                   "both links ask")
        self.assertNotIn("negotiated", self.lacp())
        self.assertEqual(speaker.heard, {1: 0, 2: 0})


if __name__ == "__main__":
    if os.geteuid() != 0 or not os.access("/dev/net/tun", os.R_OK | os.W_OK):
        neighbours.skip("cpu: and Open vSwitch need root, and /dev/net/tun")
    neighbours.main("ovs-vswitchd", "ovsdb-server", "ovsdb-tool", "ovs-vsctl", "ovs-appctl")

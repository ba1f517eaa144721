# SPDX-License-Identifier: MIT
"""lacp_test.py PROGRAMS: Open vSwitch bundles two links to a trunk of the chip by LACP
(IEEE 802.1AX). The switch's own side of the protocol is another Open vSwitch, on the
interfaces of cpu:."""
import os

import neighbours
from neighbours import wait_until
from open_vswitch import PROGRAMS, OpenVswitch


class Lacp(neighbours.Case):
    def setUp(self):
        super().setUp()
        self.bundle, self.other = self.hosts(2, 1, more=["0=cpu:"])
        for link in ("eth0", "eth1"):
            self.bundle.up(link)
        self.other.up("eth0", "10.0.0.3/24")
        self.own = neighbours.Machine(self)
        self.near = self.far = None
        for port in (1, 2):
            self.own.up(f"cpu{port}")

    def tearDown(self):
        for each in (self.near, self.far):
            if each:
                each.close()
        super().tearDown()

    def start_both(self):
        """One at each end of the two links."""
        self.near = OpenVswitch(self, self.own, "sw0")
        self.near.bundle("cpu1", "cpu2")
        self.far = OpenVswitch(self, self.bundle, "br0")
        self.far.bundle("eth0", "eth1")
        self.bundle.up("br0", "10.0.0.1/24")

    def bundled(self, links):
        return all(end.is_negotiated() and end.attached() == links for end in (self.near, self.far))

    def test_a_bundle_and_a_trunk(self):
        self.swctl("trunk set 1 1-2")
        self.swctl("trap set lacp cpu")
        self.start_both()
        wait_until(lambda: self.bundled(2), "both links are bundled, as both ends see it")
        wait_until(lambda: self.other.pings("10.0.0.1"), "the hosts see each other")
        self.assertTrue(self.other.pings("10.0.0.1", 5))
        # A link less, and the trunk goes on.
        self.swctl("port set 1 admin off")
        wait_until(lambda: self.bundled(1), "it is left out at both ends")
        wait_until(lambda: self.other.pings("10.0.0.1"), "they see each other by the other link")
        self.swctl("port set 1 admin on")
        wait_until(lambda: self.bundled(2), "it is back")

    def test_dropped_nothing_is_agreed(self):
        self.swctl("trap set lacp drop")
        self.start_both()
        wait_until(lambda: self.drops(1)["trap"] >= 2 and self.drops(2)["trap"] >= 2,
                   "both links ask")
        # The switch hears nothing of the other end, which hears that it is not heard.
        wait_until(lambda: self.near.lacp().count("defaulted detached") == 2, "it gives up")
        self.assertFalse(self.near.is_negotiated(), self.near.lacp())
        wait_until(lambda: not self.far.is_negotiated(), "the other end gives up, too")


if __name__ == "__main__":
    if os.geteuid() != 0 or not os.access("/dev/net/tun", os.R_OK | os.W_OK):
        neighbours.skip("cpu: and Open vSwitch need root, and /dev/net/tun")
    neighbours.main(*PROGRAMS)

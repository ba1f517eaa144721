# SPDX-License-Identifier: MIT
"""dhcp_test.py PROGRAMS: dnsmasq gives a client at another port an address, if the VLANs
of the chip let them see each other."""
import os
import shutil

import neighbours
import open_vswitch

SCRIPT = """#!/bin/sh
[ "$1" = bound ] && ip addr add "$ip/24" dev "$interface"
exit 0
"""


class Dhcp(neighbours.Case):
    def setUp(self):
        super().setUp()
        self.server, self.client = self.hosts(1, 1)
        self.server.up("eth0")
        self.client.up("eth0")
        with open(self.path("script"), "w", encoding="ascii") as file:
            file.write(SCRIPT)
        os.chmod(self.path("script"), 0o755)

    def serve(self, interface):
        self.server.up(interface, "10.20.0.1/24")
        self.server.start("dnsmasq", "--no-daemon", "--conf-file=/dev/null", "--port=0",
                          f"--interface={interface}", "--bind-interfaces",
                          "--dhcp-range=10.20.0.50,10.20.0.60,1h",
                          f"--dhcp-leasefile={self.path('leases')}", "--pid-file",
                          "--log-facility=-")

    def lease(self, tries):
        """Whether the client gets one."""
        result = self.client.ask("busybox", "udhcpc", "-i", "eth0", "-n", "-q", "-f", "-t", tries,
                                 "-T", "1", "-s", self.path("script"))
        return result.returncode == 0

    def put_into_vlan(self, port):
        self.swctl(f"vlan port del 1 {port}")
        self.swctl(f"port set {port} vlan 20")

    def expect_lease_in_vlan(self):
        self.assertFalse(self.lease(1), "the client's port is in VLAN 1")
        self.put_into_vlan(2)
        self.assertTrue(self.lease(8), self.said(self.server.daemons[0]))
        self.assertRegex(self.client.run("ip -4 addr show eth0"), r"inet 10\.20\.0\.(5\d|60)/24")
        self.assertTrue(self.client.pings("10.20.0.1"))

    def test_between_access_ports(self):
        self.serve("eth0")
        self.swctl("vlan add 20 untagged 1-2")
        self.put_into_vlan(1)
        self.expect_lease_in_vlan()

    def test_from_a_trunk(self):
        """The server hears the VLAN with its tag."""
        made = self.server.ask("ip", "link", "add", "link", "eth0", "name", "eth0.20", "type",
                               "vlan", "id", 20)
        if made.returncode != 0:
            self.skipTest(f"the kernel has no interfaces of VLANs: {made.stderr.strip()}")
        self.serve("eth0.20")
        self.swctl("vlan add 20 tagged 1 untagged 2")
        self.expect_lease_in_vlan()

    def test_from_a_trunk_of_open_vswitch(self):
        """The server is at an access port of a bridge, which puts the tag on."""
        missing = [name for name in open_vswitch.PROGRAMS if not shutil.which(name)]
        if missing:
            self.skipTest(f"there is no {missing[0]}")
        if os.geteuid() != 0 or not os.access("/dev/net/tun", os.R_OK | os.W_OK):
            self.skipTest("Open vSwitch needs root, and /dev/net/tun")
        bridge = open_vswitch.OpenVswitch(self, self.server, "br0")
        bridge.control("add-port br0 eth0 vlan_mode=trunk trunks=20")
        bridge.control("add-port br0 server tag=20 -- set interface server type=internal")
        self.serve("server")
        self.swctl("vlan add 20 tagged 1 untagged 2")
        self.expect_lease_in_vlan()
        # It was the tag: the same frames without one are in VLAN 1.
        bridge.control("set port eth0 vlan_mode=native-untagged tag=20")
        self.assertFalse(self.client.pings("10.20.0.1"))


if __name__ == "__main__":
    neighbours.main("dnsmasq", "busybox")

# SPDX-License-Identifier: MIT
"""bridges_test.py PROGRAMS: two bridges of the kernel, joined by two links through the
chip, find the loop by spanning tree, unless the chip drops what they say."""
import json
import time

import neighbours
from neighbours import wait_until

FORWARDING, BLOCKING = "forwarding", "blocking"


class Bridges(neighbours.Case):
    """Each link has a VLAN of its own, as if it were a cable."""

    def setUp(self):
        super().setUp()
        self.bridges = self.hosts(2, 2)
        for vlan, ports in ((11, (1, 3)), (12, (2, 4))):
            self.swctl(f"vlan add {vlan} untagged {ports[0]},{ports[1]}")
            for port in ports:
                self.swctl(f"vlan port del 1 {port}")
                self.swctl(f"port set {port} vlan {vlan}")

    def start_bridges(self):
        for number, host in enumerate(self.bridges, 1):
            host.run("ip link add br0 type bridge stp_state 1 forward_delay 200 hello_time 100 "
                     f"max_age 600 priority {number * 4096}")
            for link in ("eth0", "eth1"):
                host.run(f"ip link set {link} master br0")
                host.run(f"ip link set {link} up")
            host.run("ip link set br0 up")

    def states(self):
        """Of the four ports, the first bridge's first."""
        return [next(each["state"] for each in json.loads(host.run(f"bridge -j link show dev {link}")))
                for host in self.bridges for link in ("eth0", "eth1")]

    def test_one_port_blocks(self):
        self.swctl("trap set bpdu forward")
        self.start_bridges()
        wait_until(lambda: sorted(self.states()) == [BLOCKING] + [FORWARDING] * 3, "the loop is cut")
        # The second link of the bridge that is not the root.
        self.assertEqual(self.states()[3], BLOCKING)
        self.bridges[0].up("br0", "10.0.0.1/24")
        self.bridges[1].up("br0", "10.0.0.2/24")
        wait_until(lambda: self.bridges[0].pings("10.0.0.2"), "the bridges see each other")
        # The other link takes over when the first goes.
        self.swctl("port set 1 admin off")
        wait_until(lambda: self.states()[3] == FORWARDING, "the blocked port forwards")
        wait_until(lambda: self.bridges[0].pings("10.0.0.2"), "they see each other again")

    def test_dropped_bpdus_leave_the_loop(self):
        self.swctl("trap set bpdu drop")
        self.start_bridges()
        wait_until(lambda: self.states() == [FORWARDING] * 4, "nobody blocks")
        time.sleep(1)
        self.assertEqual(self.states(), [FORWARDING] * 4)
        self.assertGreater(self.drops(1)["trap"], 0)


if __name__ == "__main__":
    neighbours.main("bridge")

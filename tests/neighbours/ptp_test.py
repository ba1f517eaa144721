# SPDX-License-Identifier: MIT
"""ptp_test.py PROGRAMS: ptp4l measures the delay of the way through the chip, end to end
and with stamps made in software; no clock is set."""
import re

import neighbours
from neighbours import wait_until

SETTINGS = """[global]
time_stamping software
delay_mechanism E2E
network_transport {transport}
free_running 1
logSyncInterval -3
logMinDelayReqInterval -3
summary_interval -4
logAnnounceInterval -2
announceReceiptTimeout 2
"""
MEASURED = re.compile(r"master offset +(-?\d+) .* path delay +(\d+)")
LIMIT = 50_000_000  # nanoseconds, on a machine that has more to do


class Ptp(neighbours.Case):
    def measure(self, transport):
        """Offsets and delays, in nanoseconds. Both hosts have the clock of this machine."""
        server, client = self.hosts(1, 1)
        for number, host in enumerate((server, client), 1):
            host.up("eth0", f"10.0.0.{number}/24")
            with open(self.path(host.name), "w", encoding="ascii") as file:
                file.write(SETTINGS.format(transport=transport))
        server.start("ptp4l", "-i", "eth0", "-m", "-f", self.path(server.name))
        clock = client.start("ptp4l", "-s", "-i", "eth0", "-m", "-f", self.path(client.name))
        wait_until(lambda: len(MEASURED.findall(self.said(clock))) >= 3,
                   "three measurements", 60)
        for offset, delay in MEASURED.findall(self.said(clock)):
            self.assertLess(abs(int(offset)), LIMIT)
            self.assertTrue(0 < int(delay) < LIMIT, delay)

    def test_over_ethernet(self):
        self.measure("L2")

    def test_over_udp(self):
        self.measure("UDPv4")


if __name__ == "__main__":
    neighbours.main("ptp4l")

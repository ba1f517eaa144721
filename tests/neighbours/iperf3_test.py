# SPDX-License-Identifier: MIT
"""iperf3_test.py PROGRAMS: TCP between hosts whose offloads are as they come."""
import json

import neighbours
from neighbours import wait_until

ENOUGH = 20_000_000  # bits a second: a switch that loses every long packet is far below


class Iperf3(neighbours.Case):
    def transfer(self, client, server, *words):
        """What iperf3 says at the end. A server has one client: between two of them it
        resets connections."""
        server.start("iperf3", "-s", "-1")
        wait_until(lambda: "5201" in server.run("ss -ltn"), "the server listens")
        result = json.loads(client.ask("iperf3", "-J", "-c", "10.0.0.2", *words).stdout)
        self.assertNotIn("error", result)
        wait_until(lambda: "5201" not in server.run("ss -ltn"), "the server is gone")
        return result["end"]

    def test_tcp_and_udp(self):
        client, server = self.hosts(1, 1)
        client.up("eth0", "10.0.0.1/24")
        server.up("eth0", "10.0.0.2/24")
        wait_until(lambda: client.pings("10.0.0.2"), "the hosts see each other")
        for words in ((), ("-R",)):
            end = self.transfer(client, server, "-n", "4M", *words)
            self.assertGreaterEqual(end["sum_sent"]["bytes"], 4 << 20)
            # What is still in the sockets at the end is not counted.
            self.assertGreater(end["sum_received"]["bytes"], 1 << 20)
            self.assertGreater(end["sum_received"]["bits_per_second"], ENOUGH)
        total = self.transfer(client, server, "-u", "-b", "5M", "-l", "1400", "-t", "1")["sum"]
        self.assertGreater(total["packets"], 100)
        self.assertEqual(total["lost_packets"], 0)
        self.assertEqual([row["unusable"] for row in self.wires().values()], [0, 0])


if __name__ == "__main__":
    neighbours.main("iperf3", "ss")

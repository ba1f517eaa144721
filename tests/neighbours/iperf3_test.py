# SPDX-License-Identifier: MIT
"""iperf3_test.py PROGRAMS: TCP between hosts whose offloads are as they come."""
import json

import neighbours
from neighbours import wait_until

ENOUGH = 20_000_000  # bits a second: a switch that loses every long packet is far below


class Iperf3(neighbours.Case):
    def transfer(self, client, *words):
        result = client.ask("iperf3", "-J", "-c", "10.0.0.2", "-n", "4M", *words)
        return json.loads(result.stdout)

    def test_tcp_and_udp(self):
        client, server = self.hosts(1, 1)
        client.up("eth0", "10.0.0.1/24")
        server.up("eth0", "10.0.0.2/24")
        wait_until(lambda: client.pings("10.0.0.2"), "the hosts see each other")
        server.start("iperf3", "-s")
        wait_until(lambda: "5201" in server.run("ss -ltn"), "the server listens")
        for words in ((), ("-R",)):
            end = self.transfer(client, *words)["end"]
            self.assertGreaterEqual(end["sum_sent"]["bytes"], 4 << 20)
            # What is still in the sockets at the end is not counted.
            self.assertGreater(end["sum_received"]["bytes"], 1 << 20)
            self.assertGreater(end["sum_received"]["bits_per_second"], ENOUGH)
        datagrams = client.ask("iperf3", "-J", "-c", "10.0.0.2", "-u", "-b", "5M", "-l", "1400",
                               "-t", "1")
        total = json.loads(datagrams.stdout)["end"]["sum"]
        self.assertGreater(total["packets"], 100)
        self.assertEqual(total["lost_packets"], 0)
        self.assertEqual([row["unusable"] for row in self.wires().values()], [0, 0])


if __name__ == "__main__":
    neighbours.main("iperf3", "ss")

# SPDX-License-Identifier: MIT
"""streams_test.py PROGRAMS: vchipd with unix: and tcp:, which need no privilege."""
import json
import os
import socket
import struct

import wires
from wires import BROADCAST, NOTHING, frame, mac, wait_until


class Switching(wires.Case):
    """Three hosts at unix: sockets."""

    def setUp(self):
        super().setUp()
        self.start(*(f"{port}=unix:{self.path(f's{port}')}" for port in (1, 2, 3)))
        self.host = {port: self.connect(port, f"s{port}") for port in (1, 2, 3)}

    def test_learns_and_forwards(self):
        flooded = frame(BROADCAST, mac(1))
        self.host[1].send(flooded)
        self.assertEqual(self.host[2].receive(), flooded)
        self.assertEqual(self.host[3].receive(), flooded)
        answer = frame(mac(1), mac(2))
        self.host[2].send(answer)
        self.assertEqual(self.host[1].receive(), answer)
        self.assertIsNone(self.host[3].receive(NOTHING))

    def test_obeys_a_vlan_set_while_it_runs(self):
        self.swctl("vlan add 20 untagged 2-3")
        self.swctl("vlan port del 1 2-3")
        self.swctl("port set 2-3 vlan 20")
        self.host[1].send(frame(BROADCAST, mac(1)))
        self.host[2].send(frame(BROADCAST, mac(2)))
        self.assertEqual(self.host[3].receive(), frame(BROADCAST, mac(2)))
        self.assertIsNone(self.host[1].receive(NOTHING))
        self.assertIsNone(self.host[2].receive(NOTHING))

    def test_every_length(self):
        for length in (14, 59, 60, 61, 1000, 1514):
            sent = frame(BROADCAST, mac(1))[:length].ljust(length, b"x")
            self.host[1].send(sent)
            self.assertEqual(self.host[2].receive(), sent.ljust(60, b"\0"), length)

    def test_lengths_that_no_port_takes(self):
        self.host[1].send(b"", b"\1" * 13, b"\2" * 16380, frame(BROADCAST, mac(1)))
        self.assertEqual(self.host[2].receive(), frame(BROADCAST, mac(1)))
        self.assertEqual(self.wires()[1]["unusable"], 3)
        self.assertEqual(self.wires()[1]["received"], 1)

    def test_a_length_beyond_reason_ends_the_stream(self):
        self.host[1].socket.sendall(struct.pack(">I", 0x7fffffff) + b"x" * 100)
        self.assertIsNone(self.host[1].receive())
        wait_until(lambda: not self.wires()[1]["carrier"], "the carrier is gone")

    def test_frames_in_pieces(self):
        sent = frame(BROADCAST, mac(1))
        for byte in struct.pack(">I", len(sent)) + sent:
            self.host[1].socket.sendall(bytes([byte]))
        self.assertEqual(self.host[2].receive(), sent)

    def test_a_link_is_the_other_end(self):
        def links():
            return [port["link"]["up"] for port in json.loads(
                self.vchipctl("dump", "--unit", "0", "--block", "port"))[:3]]
        self.assertEqual(links(), [True, True, True])
        self.host[2].close()
        wait_until(lambda: links() == [True, False, True], "the link goes down")
        self.connect(2, "s2")
        self.assertEqual(links(), [True, True, True])

    def test_a_reset_chip_keeps_its_wires(self):
        self.swctl("vlan add 20")
        self.vchipctl("reset")
        wait_until(lambda: json.loads(self.swctl("-j port show 1"))[0]["link"] == "up",
                   "the cable is still there")
        wait_until(lambda: json.loads(self.swctl("-j port show 2"))[0]["link"] == "up",
                   "the other one too")
        self.host[1].send(frame(BROADCAST, mac(1)))
        self.assertIsNotNone(self.host[2].receive())

    def test_a_cable_has_two_ends(self):
        third = wires.Stream(self.path("s1"))
        self.addCleanup(third.close)
        self.assertIsNone(third.receive())
        self.host[2].send(frame(BROADCAST, mac(2)))
        self.assertIsNotNone(self.host[1].receive())

    def test_who_does_not_read_loses_frames_and_holds_nobody_up(self):
        burst = [frame(BROADCAST, mac(1), b"x" * 1400)] * 100
        for _ in range(20):
            self.host[1].send(*burst)
            for _ in burst:
                self.assertIsNotNone(self.host[3].receive())
        counts = self.wires()
        self.assertEqual(counts[1]["received"], 2000)
        self.assertEqual(counts[3]["sent"], 2000)
        self.assertGreater(counts[2]["lost"], 0)
        self.assertEqual(counts[2]["sent"] + counts[2]["lost"], 2000)
        # What it reads in the end are whole frames.
        for _ in range(counts[2]["sent"]):
            self.assertEqual(self.host[2].receive(), burst[0])
        self.assertIsNone(self.host[2].receive(NOTHING))


class Cable(wires.Case):
    """Two chips, each with a vchipd, joined by a stream."""

    def setUp(self):
        super().setUp()
        self.start(f"1=unix:{self.path('cable')}", f"2=unix:{self.path('s2')}")
        self.near = self.image
        self.far = self.path("far.img")
        self.environment["VCHIP_IMAGE"] = self.far
        self.start(f"3=unix:{self.path('cable')}", f"4=unix:{self.path('s4')}")
        wait_until(lambda: self.link(self.near, 1) == ("up", 1000), "the near link is up")
        wait_until(lambda: self.link(self.far, 3) == ("up", 1000), "the far link is up")

    def at(self, image, line):
        self.environment["VCHIP_IMAGE"] = image
        return self.swctl(line)

    def link(self, image, port):
        row = json.loads(self.at(image, f"-j port show {port}"))[0]
        return row["link"], row["speed"]

    def test_frames_pass(self):
        self.environment["VCHIP_IMAGE"] = self.near
        two = self.connect(2, "s2")
        self.environment["VCHIP_IMAGE"] = self.far
        four = self.connect(4, "s4")
        two.send(frame(BROADCAST, mac(1)))
        self.assertEqual(four.receive(), frame(BROADCAST, mac(1)))

    def test_the_chips_negotiate(self):
        self.at(self.near, "port set 1 advertise 10-full,100-full")
        wait_until(lambda: self.link(self.far, 3) == ("up", 100), "the far end goes along")
        self.assertEqual(self.link(self.near, 1), ("up", 100))
        self.at(self.far, "port set 3 advertise 1000-full")
        wait_until(lambda: self.link(self.near, 1)[0] == "down", "nothing in common")
        self.assertEqual(self.link(self.far, 3)[0], "down")
        self.at(self.near, "port set 1 advertise 1000-full,100-full")
        wait_until(lambda: self.link(self.near, 1) == ("up", 1000) and
                   self.link(self.far, 3) == ("up", 1000), "in common again")

    def test_a_port_that_is_off_is_a_dead_cable(self):
        self.at(self.far, "port set 3 admin off")
        wait_until(lambda: self.link(self.near, 1)[0] == "down", "the near link goes down")
        self.at(self.far, "port set 3 admin on")
        wait_until(lambda: self.link(self.near, 1) == ("up", 1000), "and comes back")


class Wires(wires.Case):
    def test_change_while_it_runs(self):
        self.start(f"1=unix:{self.path('s1')}")
        one = self.connect(1, "s1")
        self.vchipctl("wire", "2", f"unix:{self.path('s2')}")
        two = self.connect(2, "s2")
        one.send(frame(BROADCAST, mac(1)))
        self.assertIsNotNone(two.receive())
        self.vchipctl("wire", "2", "none")
        self.assertIsNone(two.receive())
        self.assertEqual(list(self.wires()), [1])
        self.vchipctl("wire", "2", "none")

    def test_a_port_has_one_wire(self):
        self.start(f"1=unix:{self.path('s1')}")
        refused = self.run_program("vchipctl", "wire", "1", "tcp:127.0.0.1:1")
        self.assertEqual((refused.returncode, refused.stderr),
                         (2, f"vchipctl: port 1 has a wire already: unix:{self.path('s1')}\n"))

    def test_two_ports_joined_are_a_cable(self):
        """What waits at a name is joined by who comes second."""
        self.start(f"1=unix:{self.path('s')}", f"2=unix:{self.path('s')}")
        wait_until(lambda: all(row["carrier"] for row in self.wires().values()), "both are up")

    def test_who_expects_wires_to_be_up(self):
        self.start(f"1=unix:{self.path('s1')}", f"2=unix:{self.path('s2')}")
        self.connect(1, "s1")
        self.done("vchipctl", "wires", "--up", "1")
        for ports, complaint in (("1-2", f"port 2: unix:{self.path('s2')} is down (listening)"),
                                 ("1,3", "port 3 has no wire")):
            result = self.run_program("vchipctl", "wires", "--up", ports)
            self.assertEqual((result.returncode, result.stderr), (2, f"vchipctl: {complaint}\n"))
            self.assertIn("unix:", result.stdout)
        for ports in ("", "27", "x"):
            result = self.run_program("vchipctl", "wires", "--up", ports)
            self.assertEqual((result.returncode, result.stdout), (1, ""), result.stderr)

    def test_text(self):
        self.start(f"3=unix:{self.path('s')}")
        header, row = self.vchipctl("wires").splitlines()
        self.assertEqual(header.split(),
                         ["port", "wire", "carrier", "received", "sent", "lost", "unusable", "missed"])
        self.assertEqual(row.split(),
                         ["3", f"unix:{self.path('s')}", "down", "(listening)"] + ["0"] * 5)

    def test_tcp(self):
        with socket.create_server(("127.0.0.1", 0)) as probe:
            port = probe.getsockname()[1]
        self.start(f"1=tcp:127.0.0.1:{port}", f"2=unix:{self.path('s2')}")
        one = wires.Stream(("127.0.0.1", port), socket.AF_INET)
        self.addCleanup(one.close)
        two = self.connect(2, "s2")
        one.send(frame(BROADCAST, mac(1)))
        self.assertIsNotNone(two.receive())

    def test_tcp_connects_to_who_listens(self):
        with socket.create_server(("127.0.0.1", 0)) as server:
            self.start(f"1=tcp:127.0.0.1:{server.getsockname()[1]}")
            connection, _ = server.accept()
            connection.close()
            # And again, when the other end is back.
            connection, _ = server.accept()
            connection.close()

    def test_a_leftover_socket_is_no_partner(self):
        with socket.socket(socket.AF_UNIX) as leftover:
            leftover.bind(self.path("s1"))
        self.start(f"1=unix:{self.path('s1')}")
        self.connect(1, "s1")

    def test_a_long_name_of_the_image(self):
        deep = self.path("d" * 100 + "/" + "e" * 100)
        os.makedirs(deep)
        self.environment["VCHIP_IMAGE"] = deep + "/chip.img"
        self.start(f"1=unix:{self.path('s1')}")
        self.assertEqual(list(self.wires()), [1])


if __name__ == "__main__":
    wires.main()

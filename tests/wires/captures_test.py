# SPDX-License-Identifier: MIT
"""captures_test.py PROGRAMS: vchipd with pcap:, in virtual and in real time."""
import time

import wires
from wires import BROADCAST, frame, mac, read_capture, write_capture

SECOND = 10**9


class Captures(wires.Case):
    def play(self, *ports):
        process = self.launch("--virtual-time", *(word for port in ports
                                                  for word in ("--port", port)))
        _, errors = process.communicate(timeout=wires.PATIENCE)
        self.assertEqual((process.returncode, errors), (0, ""))

    def test_frames_at_their_times(self):
        """The first of all captures arrives at once, on the chip's clock."""
        first, second = frame(BROADCAST, mac(1)), frame(mac(1), mac(2))
        begin = 1_700_000_000 * SECOND
        write_capture(self.path("one"), [(begin, first), (begin + 3 * SECOND, first)])
        write_capture(self.path("two"), [(begin + SECOND + 7, second)])
        self.play(f"1=pcap:{self.path('one')},{self.path('out1')}",
                  f"2=pcap:{self.path('two')},{self.path('out2')}",
                  f"3=pcap:,{self.path('out3')}")
        self.assertEqual(read_capture(self.path("out1")), [(SECOND + 7, second)])
        self.assertEqual(read_capture(self.path("out2")), [(0, first), (3 * SECOND, first)])
        self.assertEqual(read_capture(self.path("out3")), [(0, first), (3 * SECOND, first)])
        self.assertEqual(self.drops(1)["received"], 2)

    def test_the_clock_goes_on_where_the_chip_was(self):
        write_capture(self.path("one"), [(0, frame(BROADCAST, mac(1))),
                                         (5, frame(BROADCAST, mac(1)))])
        for begin in (0, 5):
            self.play(f"1=pcap:{self.path('one')}", f"2=pcap:,{self.path('out')}")
            stamps = [stamp for stamp, _ in read_capture(self.path("out"))]
            self.assertEqual(stamps, [begin, begin + 5])

    def test_it_ends_when_nothing_waits(self):
        """What an egress limit holds leaves at its time, however late."""
        self.swctl("port set 2 egress 16kbit")
        sent = frame(BROADCAST, mac(1), b"x" * 1400)
        write_capture(self.path("one"), [(0, sent)] * 20)
        self.play(f"1=pcap:{self.path('one')}", f"2=pcap:,{self.path('out')}")
        stamps = [stamp for stamp, _ in read_capture(self.path("out"))]
        self.assertEqual(len(stamps), 20)
        # 2,000 bytes a second, after a bucket of 16,384.
        wire = len(sent) + 4
        self.assertEqual(stamps[-1], (20 * wire - 16384) * SECOND // 2000)

    def test_unusable_frames_are_passed_over(self):
        write_capture(self.path("one"), [(0, b"\1" * 13), (0, frame(BROADCAST, mac(1)))])
        self.play(f"1=pcap:{self.path('one')}", f"2=pcap:,{self.path('out')}")
        self.assertEqual(len(read_capture(self.path("out"))), 1)

    def test_real_time(self):
        write_capture(self.path("one"), [(0, frame(BROADCAST, mac(1))),
                                         (SECOND // 2, frame(BROADCAST, mac(1)))])
        begin = time.monotonic()
        process = self.start(f"1=pcap:{self.path('one')}", f"2=pcap:,{self.path('out')}")
        wires.wait_until(lambda: self.wires()[2]["sent"] == 2, "both frames have left")
        self.assertGreaterEqual(time.monotonic() - begin, 0.5)
        self.end(process)
        (early, _), (late, _) = read_capture(self.path("out"))
        # Neither is early; a busy machine may make each of them late.
        self.assertLess(early, late)
        self.assertGreaterEqual(late, SECOND // 2)

    def test_time_moves_the_clock(self):
        """vchipctl time lets what an egress limit holds go."""
        self.swctl("port set 2 egress 16kbit")
        self.start(f"1=unix:{self.path('s1')}", f"2=unix:{self.path('s2')}",
                   options=["--virtual-time"])
        one, two = self.connect(1, "s1"), self.connect(2, "s2")
        one.send(*[frame(BROADCAST, mac(1), b"x" * 1500)] * 20)
        wires.wait_until(lambda: self.wires()[2]["sent"] == 10, "the bucket is empty")
        for _ in range(10):
            self.assertIsNotNone(two.receive())
        self.assertIsNone(two.receive(wires.NOTHING))
        self.vchipctl("time", "4")
        # 8,000 bytes more, and what was left of the bucket.
        for _ in range((16384 + 8000) // 1518 - 10):
            self.assertIsNotNone(two.receive())
        self.assertIsNone(two.receive(wires.NOTHING))


if __name__ == "__main__":
    wires.main()

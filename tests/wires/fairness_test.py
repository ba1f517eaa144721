# SPDX-License-Identifier: MIT
"""fairness_test.py PROGRAMS: a wire that brings frames without end does not keep those of
another one waiting."""
import fcntl
import statistics
import sys
import termios
import threading
import time

import wires
from wires import frame, mac

FLOOD = 20000    # frames that the flood sends at a time
TRIES = 100
LIMIT = 0.05     # seconds that a frame may take in the median: a loaded machine is slow
LONGEST = 1.0


class Fairness(wires.Case):
    def setUp(self):
        super().setUp()
        ports = range(1, 5)
        self.start(*(f"{port}=unix:{self.path(f's{port}')}" for port in ports))
        self.host = {port: self.connect(port, f"s{port}") for port in ports}
        self.stops = threading.Event()
        for port in (2, 4):  # known, so that nothing is flooded
            self.host[port].send(frame(mac(1), mac(port)))

    def flood(self):
        """What port 1 brings is more than vchipd takes: the sender waits for room."""
        data = b"".join((60).to_bytes(4, "big") + frame(mac(2), mac(1)) for _ in range(FLOOD))
        while not self.stops.is_set():
            self.host[1].socket.sendall(data)

    def queued(self):
        """Bytes of the flood that vchipd has not taken yet."""
        size = fcntl.ioctl(self.host[1].socket, termios.TIOCOUTQ, bytes(4))
        return int.from_bytes(size, sys.byteorder)

    def time_of_one(self, number):
        begin = time.monotonic()
        each = frame(mac(4), mac(3), number.to_bytes(4, "big"))
        self.host[3].send(each)
        self.assertEqual(self.host[4].receive(LONGEST), each)
        return time.monotonic() - begin

    def test_a_flood_keeps_nobody_waiting(self):
        while self.host[4].receive(wires.NOTHING) is not None:
            pass
        before = self.wires()[1]["received"]
        flood = threading.Thread(target=self.flood)
        flood.start()
        try:
            time.sleep(0.2)
            times, queued = [], []
            for number in range(TRIES):
                queued.append(self.queued())
                times.append(self.time_of_one(number))
                time.sleep(0.002)
            self.assertGreater(statistics.median(queued), 0, "there was room for the flood")
        finally:
            self.stops.set()
            flood.join()
        self.assertLess(statistics.median(times), LIMIT, sorted(times)[::10])
        self.assertGreater(self.wires()[1]["received"] - before, FLOOD, "the flood has its turns")


if __name__ == "__main__":
    wires.main()

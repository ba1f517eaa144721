# SPDX-License-Identifier: MIT
"""endings_test.py PROGRAMS: how vchipd ends, and how the next one goes on."""
import json
import os
import pathlib
import signal
import threading
import time

import wires
from wires import BROADCAST, frame, mac, wait_until


# A soak may want more.
KILLS = int(os.environ.get("WIRES_KILLS", "5"))


class Endings(wires.Case):
    def left_files(self):
        return sorted(name for name in os.listdir(self.directory) if name != "chip.img")

    def links(self):
        ports = json.loads(self.vchipctl("dump", "--unit", "0", "--block", "port"))
        return [port["port"] for port in ports[:28] if port["link"]["up"]]

    def test_a_signal_ends_it_and_nothing_is_left(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            process = self.start(f"1=unix:{self.path('s1')}", "2=tcp:127.0.0.1:0")
            self.connect(1, "s1")
            self.assertEqual(self.links(), [0])
            self.assertEqual(self.end(process, number), "")
            self.assertEqual(self.left_files(), [])
            self.assertEqual(self.links(), [])

    def test_what_is_queued_is_sent(self):
        """Frames held by an egress limit leave in the second that there is for them."""
        self.swctl("port set 2 egress 64kbit")
        process = self.start(f"1=unix:{self.path('s1')}", f"2=unix:{self.path('s2')}")
        one, two = self.connect(1, "s1"), self.connect(2, "s2")
        one.send(*[frame(BROADCAST, mac(1), b"x" * 1500)] * 14)
        wait_until(lambda: self.drops(1)["received"] == 14, "all have arrived")
        self.end(process)
        got = 0
        while two.receive() is not None:
            got += 1
        self.assertEqual(got, 14)

    def test_what_cannot_be_sent_is_counted(self):
        self.swctl("port set 2 egress 16kbit")
        process = self.start(f"1=unix:{self.path('s1')}", f"2=unix:{self.path('s2')}")
        one, two = self.connect(1, "s1"), self.connect(2, "s2")
        one.send(*[frame(BROADCAST, mac(1), b"x" * 1500)] * 100)
        wait_until(lambda: self.drops(1)["received"] == 100, "all have arrived")
        self.end(process)
        got = 0
        while two.receive() is not None:
            got += 1
        held = self.drops(2)["held"]
        self.assertGreater(held, 0)
        self.assertEqual(got + held, 100)

    def test_killed_at_load_the_next_goes_on(self):
        """The image stays sound, and what was learned and set is still there."""
        ports = [f"{port}=unix:{self.path(f's{port}')}" for port in (1, 2)]
        self.swctl("vlan add 77")
        for number in range(1, KILLS + 1):
            process = self.start(*ports)
            begin = time.monotonic()
            one, two = self.connect(1, "s1"), self.connect(2, "s2")
            stops = threading.Event()
            def flood(stream, source):
                try:
                    while not stops.is_set():
                        stream.send(*[frame(BROADCAST, mac(source))] * 100)
                except OSError:
                    pass
            threads = [threading.Thread(target=flood, args=each)
                       for each in ((one, number), (two, 100 + number))]
            for thread in threads:
                thread.start()
            wait_until(lambda: self.wires()[1]["received"] > 200, "frames flow")
            self.assertLess(time.monotonic() - begin, 3)
            time.sleep(number * 0.003)
            process.kill()
            process.communicate()
            stops.set()
            for thread in threads:
                thread.join()
            check = self.run_program("vchipctl", "check")
            self.assertEqual(check.returncode, 0, check.stdout)
        table = self.swctl("mac show")
        self.assertIn("02:00:00:00:00:01", table)
        self.assertIn(f"02:00:00:00:00:{KILLS:02x}", table)
        self.assertIn("77", self.swctl("vlan show"))
        self.end(self.start(*ports))
        self.assertEqual(self.left_files(), [])

    def test_idle_costs_nothing(self):
        process = self.start(f"1=unix:{self.path('s1')}", f"2=unix:{self.path('s2')}")
        self.connect(1, "s1")
        self.connect(2, "s2")
        def ticks():
            text = pathlib.Path(f"/proc/{process.pid}/stat").read_text(encoding="ascii")
            fields = text.rpartition(")")[2].split()
            return int(fields[11]) + int(fields[12])
        begin = ticks()
        time.sleep(1.2)
        self.assertLessEqual(ticks() - begin, 1)


if __name__ == "__main__":
    wires.main()

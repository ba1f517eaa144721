# SPDX-License-Identifier: MIT
"""changes_test.py PROGRAMS: settings that belong together are changed by another process, with
one call each time, while frames pass: each frame leaves as the settings before or after
a change say, never by a mixture of both."""
import collections
import os
import struct
import subprocess

import wires
from wires import BROADCAST, frame, mac, tagged

VLAN = 10
MARK = 20        # a VLAN that does not change, whose frame ends a batch
FRAMES = 300     # of a batch: fewer than a queue holds
SECONDS = 1
TRIES = 4        # on a busy machine the two programs may run by turns
# A processor for each of them, so that a change falls among the frames of a batch.
PLACES = sorted(os.sched_getaffinity(0))
UNTAGGED = None  # in place of a VLAN's number


def numbered(number, vlan=VLAN):
    return tagged(frame(BROADCAST, mac(1), struct.pack(">I", number)), vlan)


def number_and_vlan(got):
    if got[12:14] != b"\x81\x00":
        return struct.unpack_from(">I", got, 14)[0], UNTAGGED
    return struct.unpack_from(">I", got, 18)[0], struct.unpack_from(">H", got, 14)[0] & 0xfff


class Changes(wires.Case):
    def setUp(self):
        super().setUp()
        self.number = 0

    def put_up(self, vlan, *lines):
        for line in (f"vlan add {VLAN} {vlan}", f"vlan add {MARK} tagged 1-5", *lines):
            self.swctl(line)
        chip = self.start(*(f"{port}=unix:{self.path(f's{port}')}" for port in range(1, 6)))
        os.sched_setaffinity(chip.pid, {PLACES[-1]})
        self.hosts = {port: self.connect(port, f"s{port}") for port in range(1, 6)}

    def until_mark(self, port, mark):
        """The frames of this batch at a port. A mark is mirrored too."""
        while True:
            got = self.hosts[port].receive()
            self.assertIsNotNone(got, f"port {port} has lost the mark")
            number, vlan = number_and_vlan(got)
            if number == mark and vlan == MARK:
                return
            if number > mark - FRAMES - 1 and number < mark:
                yield number, vlan

    def pass_batch(self):
        """For each frame of a batch, at what ports it came out, and with what VLAN."""
        ways = {number: set() for number in range(self.number, self.number + FRAMES)}
        mark = self.number + FRAMES
        self.number = mark + 1
        self.hosts[1].send(*map(numbered, ways), numbered(mark, MARK))
        for port in (2, 3, 4, 5):
            for number, vlan in self.until_mark(port, mark):
                ways[number].add((port, vlan))
        return collections.Counter(map(frozenset, ways.values()))

    def expect(self, what, *allowed):
        """While WHAT is changed, every frame goes one of the ways that are allowed."""
        allowed = list(map(frozenset, allowed))
        self.done("wires_changer", what, "0.01")  # from here on there is one of the two settings
        seen, mixed, calls, tries = collections.Counter(), 0, 0, TRIES
        while mixed == 0 and tries > 0:
            changer = subprocess.Popen([wires.PROGRAMS / "wires_changer", what, str(SECONDS)],
                                       env=self.environment, stdout=subprocess.PIPE, text=True)
            os.sched_setaffinity(changer.pid, {PLACES[0]})
            self.processes.append(changer)
            while changer.poll() is None:
                batch = self.pass_batch()
                seen += batch
                mixed += len(batch) > 1
            calls += int(changer.stdout.read())
            tries -= 1
        self.assertEqual({tuple(way): count for way, count in seen.items() if way not in allowed},
                         {}, f"in {calls} calls, beside {sum(seen.values())} frames in all")
        for way in allowed:
            self.assertGreater(seen[way], FRAMES, f"{sorted(way)} of {seen}")
        # A change within a batch, or nothing has been tried.
        self.assertGreater(mixed, 0)
        self.assertGreater(calls, 100)

    def test_members_and_tags_of_a_vlan(self):
        self.put_up("tagged 1,3 untagged 2")
        self.expect("vlan", {(2, UNTAGGED), (3, VLAN)}, {(3, UNTAGGED), (4, VLAN)})

    def test_where_a_mirror_copies_to_and_whether(self):
        self.put_up("tagged 1 untagged 2")
        self.expect("mirror", {(2, UNTAGGED), (4, UNTAGGED)}, {(2, UNTAGGED)})

    def test_port_and_number_of_a_translation(self):
        self.put_up("tagged 1,3,4")
        self.expect("translation", {(3, 111), (4, VLAN)}, {(3, VLAN), (4, 222)})


if __name__ == "__main__":
    wires.main()

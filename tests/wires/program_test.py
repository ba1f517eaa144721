# SPDX-License-Identifier: MIT
"""program_test.py PROGRAMS: veth: where the system lets a program in the kernel receive,
which takes the rights of the machine's root."""
import os
import pathlib
import shutil
import subprocess
import sys
import time

import interfaces_test
import memory_test
import wires
from interfaces_test import Hosts, Raw, ip
from wires import BROADCAST, frame, mac, wait_until

FRAME = frame(BROADCAST, mac(1))
TYPES = "/sys/kernel/btf/vmlinux"
# Those that concern what comes in.
SAME = ("Raw.test_frames_and_tags", "Raw.test_every_length",
        "Raw.test_frames_that_no_port_takes_stop_nothing",
        "Raw.test_a_burst_of_every_kind_stays_in_order",
        "Raw.test_a_flood_stays_in_order_and_is_counted",
        "Raw.test_an_end_that_goes_down_and_comes_back",
        "Raw.test_a_pair_of_a_killed_one_is_used_again")
OWN = ("Receiving.test_each_pair_has_a_program",
       "Receiving.test_it_leaves_the_processor_of_a_sender",
       "Foreign.test_what_a_sender_left_to_its_interface_is_done",
       "Foreign.test_others_get_the_frames_too", "Memory.test_interfaces")


def programs_of(process):
    """How many interfaces a program of the process is at."""
    folder = f"/proc/{process.pid}/fd"
    return [os.readlink(f"{folder}/{name}") for name in os.listdir(folder)].count(
        "anon_inode:bpf_link")


def processor_of(process):
    text = pathlib.Path(f"/proc/{process}/stat").read_text(encoding="ascii")
    return int(text.rpartition(")")[2].split()[36])


class Receiving(Raw):
    def test_each_pair_has_a_program(self):
        self.start_pair()
        self.assertEqual(programs_of(self.process), 2)
        self.vchipctl("wire", "2", "none")
        self.assertEqual(programs_of(self.process), 1)

    def flood_until(self, sender, holds):
        end = time.monotonic() + wires.PATIENCE
        while not holds():
            self.assertLess(time.monotonic(), end, "waited in vain")
            for _ in range(200):
                sender.send(FRAME)

    def test_it_leaves_the_processor_of_a_sender(self):
        """Where it may; and may afterwards go where it could before."""
        one, _ = self.start_pair()
        own = self.process.pid
        places = os.sched_getaffinity(own)
        here = min(places)
        os.sched_setaffinity(0, {here})
        self.addCleanup(os.sched_setaffinity, 0, places)
        os.sched_setaffinity(own, {here})
        end = time.monotonic() + 0.2
        self.flood_until(one, lambda: time.monotonic() > end)
        self.assertEqual(os.sched_getaffinity(own), {here})
        os.sched_setaffinity(own, places)
        if len(places) > 1:
            self.flood_until(one, lambda: processor_of(own) != here)
        # It may be on its way, with the others alone to go to.
        wait_until(lambda: os.sched_getaffinity(own) == places, "it may go anywhere again")


class Foreign(Hosts):
    """Pairs that were there, with all offloads."""

    def start_hosts(self):
        for number, host in enumerate(self.hosts, 1):
            ip(f"link add sw{number} type veth peer name eth0 netns {host.process.pid}")
        process = self.start(*(f"{number}=veth:sw{number}" for number in (1, 2)))
        self.give_addresses("eth0", "eth0")
        wait_until(self.pings, "the hosts see each other")
        self.assertEqual(programs_of(process), 2)

    def test_what_a_sender_left_to_its_interface_is_done(self):
        self.start_hosts()
        sent, got = self.transfer(2_000_000)
        self.assertEqual(sent, got)
        counts = self.wires()[1]
        self.assertEqual(counts["unusable"], 0)
        # What was one long packet of the sender are many frames.
        self.assertGreater(counts["received"], 2_000_000 // 1460)

    def test_others_get_the_frames_too(self):
        self.start_hosts()
        ip("addr add 10.9.0.9/24 dev sw1")
        self.hosts[0].run("ping -c 1 -W 2 10.9.0.9")


class Memory(memory_test.Memory):
    """As with packet sockets; a few ports show it."""
    ports = 8
    seconds = 0.3


def obstacle():
    """Why vchipd cannot have a program in the kernel here; nothing if it can."""
    missing = [name for name in ("unshare", "nsenter", "ip", "ping") if not shutil.which(name)]
    if missing:
        return f"no {', '.join(missing)}"
    allowed = subprocess.run(["unshare", "-n", "true"], capture_output=True, text=True, check=False)
    owned = pathlib.Path("/proc/self/uid_map").read_text(encoding="ascii").split()
    if allowed.returncode != 0 or owned != ["0", "0", str(2**32 - 1)]:
        return "it takes the rights of the machine's root"
    if tuple(map(int, os.uname().release.split(".")[:2])) < (6, 6):
        return "it takes Linux 6.6"
    if os.uname().machine not in ("x86_64", "aarch64") or not os.path.exists(TYPES):
        return "the kernel does not describe its packets"
    return None


def enter():
    """Into a network of this test's own; 77 if the system does not allow what it is about."""
    reason = obstacle()
    if reason:
        print(f"program_test: not run: {reason}")
        sys.exit(77)
    os.environ[interfaces_test.INSIDE] = "1"
    os.execvp("unshare", ["unshare", "-n", sys.executable, *sys.argv])


if __name__ == "__main__":
    if interfaces_test.INSIDE not in os.environ:
        enter()
    sys.argv[2:] = sys.argv[2:] or SAME + OWN
    wires.main()

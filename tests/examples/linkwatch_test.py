# SPDX-License-Identifier: MIT
"""linkwatch_test.py [EMULATOR...] LINKWATCH

Drives the daemon of the examples: vchipctl plugs cables in, swctl is the neighbour that
looks on and interferes.
"""
import json
import os
import pathlib
import queue
import signal
import subprocess
import sys
import tempfile
import threading
import unittest

LINKWATCH = sys.argv[1:]
PATIENCE = 30.0
PLAN = "# two VLANs\nvlan 10 untagged 1-4 tagged 26\nvlan 20 untagged 5,6 tagged 26\n"


def tool(*words):
    return subprocess.run(words, check=True, capture_output=True, text=True).stdout


def vlans():
    return {each["vlan"]: (each["tagged"], each["untagged"])
            for each in json.loads(tool("swctl", "-j", "vlan", "show")) if each["vlan"] != 1}


class Daemon:
    """One linkwatch, and what it says."""

    def __init__(self, plan):
        self.process = subprocess.Popen([*LINKWATCH, "-i", "20", str(plan)], text=True,
                                        stderr=subprocess.PIPE)
        self.lines = queue.Queue()
        threading.Thread(target=self.read, daemon=True).start()

    def read(self):
        for line in self.process.stderr:
            self.lines.put(line.rstrip("\n"))
        self.lines.put("(the end)")

    def expect(self, line):
        said = self.lines.get(timeout=PATIENCE)
        assert said == f"linkwatch: {line}", f"{said!r} instead of {line!r}"

    def hang_up(self):
        self.process.send_signal(signal.SIGHUP)

    def end(self):
        self.process.send_signal(signal.SIGTERM)
        return self.process.wait(PATIENCE)


class LinkWatch(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.TemporaryDirectory()
        self.addCleanup(self.directory.cleanup)
        os.environ["VCHIP_IMAGE"] = f"{self.directory.name}/chip.img"
        tool("vchipctl", "reset")
        self.plan = pathlib.Path(self.directory.name, "plan")
        self.plan.write_text(PLAN)

    def start(self):
        daemon = Daemon(self.plan)
        self.addCleanup(daemon.process.stderr.close)
        self.addCleanup(daemon.process.wait)
        self.addCleanup(daemon.process.kill)
        daemon.expect("the plan is set: 2 VLANs")
        return daemon

    def test_sets_the_plan_and_follows_the_links(self):
        tool("vchipctl", "link", "up", "3")
        daemon = self.start()
        daemon.expect("interface 3 is up, 1000 Mbit/s full duplex")
        self.assertEqual(vlans(), {10: ([26], [1, 2, 3, 4]), 20: ([26], [5, 6])})
        self.assertEqual(json.loads(tool("swctl", "-j", "port", "show", "5", "detail"))[0]["vlan"], 20)
        tool("vchipctl", "link", "down", "3")
        daemon.expect("interface 3 is down")
        self.assertEqual(daemon.end(), 0)

    def test_gives_a_port_its_vlans_again_when_it_comes_up(self):
        daemon = self.start()
        tool("swctl", "vlan", "port", "del", "20", "5,6")
        tool("swctl", "port", "set", "5", "vlan", "1")
        tool("vchipctl", "link", "up", "5", "--partner", "100-full")
        daemon.expect("interface 5 is up, 100 Mbit/s full duplex")
        # It says so before it does it; the next round follows.
        tool("vchipctl", "link", "down", "5")
        daemon.expect("interface 5 is down")
        self.assertEqual(vlans()[20], ([26], [5]))
        self.assertEqual(json.loads(tool("swctl", "-j", "port", "show", "5", "detail"))[0]["vlan"], 20)

    def test_reads_a_changed_plan(self):
        daemon = self.start()
        self.plan.write_text("vlan 10 untagged 1 tagged 26\nvlan 30 tagged 25,26")
        daemon.hang_up()
        daemon.expect("the plan is set: 2 VLANs")
        self.assertEqual(vlans(), {10: ([26], [1]), 30: ([25, 26], [])})

    def test_keeps_the_plan_if_the_changed_one_is_wrong(self):
        daemon = self.start()
        before = vlans()
        self.plan.write_text("vlan 10 untagged 1\nvlan 30 untaged 2\n")
        daemon.hang_up()
        daemon.expect(f"{self.plan}:2: expected untagged or tagged, not untaged")
        daemon.expect("the plan stays as it was")
        self.assertEqual(vlans(), before)
        self.plan.write_text(PLAN)
        daemon.hang_up()
        daemon.expect("the plan is set: 2 VLANs")

    def test_a_wrong_plan_changes_nothing(self):
        before = tool("vchipctl", "dump")
        for plan, said in (
                ("lan 10", "expected vlan, not lan"),
                ("vlan", "no VLAN ID 1-4094 (end of line)"),
                ("vlan 4095", "no VLAN ID 1-4094 4095"),
                ("vlan 10x", "no VLAN ID 1-4094 10x"),
                ("vlan 10 tagged", "no ports after tagged"),
                ("vlan 10 tagged 1-27", "no list of ports 1-26 1-27"),
                ("vlan 10 tagged 4-3", "no list of ports 1-26 4-3"),
                ("vlan 10 tagged 1,", "no list of ports 1-26 1,"),
                ("vlan 10 tagged 1 untagged 1-2", "a port cannot be both untagged and tagged"),
                ("vlan 9\nvlan 9", "there is a line already for VLAN 9"),
                ("vlan 9 untagged 3\nvlan 8 untagged 3",
                 "untagged in another VLAN too: a port of VLAN 8"),
                (f"vlan 9 {' ' * 300}", "too long a line (more than 254 characters)")):
            self.plan.write_text(plan)
            done = subprocess.run([*LINKWATCH, "-1", str(self.plan)], capture_output=True,
                                  text=True, check=False)
            line = plan.count("\n") + 1
            self.assertEqual(done.stderr, f"linkwatch: {self.plan}:{line}: {said}\n")
            self.assertEqual(done.returncode, 1)
        self.assertEqual(tool("vchipctl", "dump"), before)

    def test_names_what_the_chip_refuses(self):
        os.environ["SWPROBE_FAIL"] = "rtk_vlan_create vid 20 result -7"
        self.addCleanup(os.environ.pop, "SWPROBE_FAIL")
        done = subprocess.run([*LINKWATCH, "-1", str(self.plan)], capture_output=True,
                              text=True, check=False)
        self.assertEqual(done.stderr, "linkwatch: user_vlan_create refused VLAN 20 (result -7)\n")
        self.assertEqual(done.returncode, 1)


unittest.main(argv=sys.argv[:1])

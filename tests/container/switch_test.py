# SPDX-License-Identifier: MIT
"""switch_test.py PROGRAMS

What the container image starts, in a namespace whose interfaces are made by
hand: no container is needed. container_test.py runs the image itself.
"""
import os
import pathlib
import signal
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "neighbours"))
# pylint: disable=wrong-import-position
import neighbours  # noqa: E402
from neighbours import wait_until  # noqa: E402
from wires import PROGRAMS  # noqa: E402

SWITCH = pathlib.Path(__file__).resolve().parents[2] / "packaging/container/swctl-switch"


class Switch(neighbours.Case):
    def setUp(self):
        super().setUp()
        self.host = neighbours.Host(self, "switch")
        self.config = pathlib.Path(self.path("config"))
        self.words = ["env", f"PATH={PROGRAMS}:{os.environ['PATH']}", f"VCHIP_IMAGE={self.image}",
                      "VCHIP_LOG=none", f"SWCTL_STATE_DIRECTORY={self.directory}",
                      f"SWCTL_CONFIG={self.config}"]

    def begin(self):
        self.running = self.host.start(*self.words, SWITCH)
        self.addCleanup(self.finish, self.running)

    def finish(self, running):
        """It would leave vchipd if it were killed."""
        running.terminate()
        try:
            self.ends()
        except subprocess.TimeoutExpired:
            running.kill()

    def ends(self, seconds=10):
        """The exit status."""
        return self.running.wait(timeout=seconds)

    def inside(self, *words):
        return self.host.ask(*self.words, *words)

    def swctl(self, line):
        result = self.inside("swctl", *line.split())
        self.assertEqual((result.returncode, result.stderr), (0, ""), line)
        return result.stdout

    def healthy(self):
        return self.inside(SWITCH, "healthy")

    def wait_for_health(self):
        wait_until(lambda: self.healthy().returncode == 0, "it is healthy", 15)

    def cable(self, interface, other):
        """Between an interface of the switch and eth0 of a host, which is up."""
        self.host.run(f"ip link add {interface} type veth peer name eth0 netns "
                      f"{other.holder.pid}")
        other.run("ip link set eth0 up")

    def new_host(self, number, interface):
        host = neighbours.Host(self, f"host{number}")
        self.cable(interface, host)
        host.run(f"ip addr add 10.0.0.{number}/24 dev eth0")
        return host

    def test_a_switch_of_what_is_there(self):
        self.config.write_text("vlan add 20 untagged 3\nport set 3 vlan 20\n")
        hosts = [self.new_host(number, f"eth{number}") for number in (1, 2, 3)]
        self.begin()
        self.wait_for_health()
        self.assertEqual(self.swctl("config show"),
                         "vlan add 20 untagged 3\nport set 3 vlan 20\n")
        self.swctl("vlan port del 1 3")
        self.assertTrue(hosts[0].pings("10.0.0.2"))
        self.assertFalse(hosts[0].pings("10.0.0.3"))

    def test_interfaces_that_come_and_go(self):
        """eth0 and eth27 are no ports; an interface is another one under its old name."""
        first = self.new_host(1, "eth1")
        self.host.run("ip link add eth27 type veth peer name eth0")
        self.begin()
        self.wait_for_health()
        second = self.new_host(2, "eth26")
        self.wait_for_health()
        self.assertTrue(first.pings("10.0.0.2", 3))
        self.host.run("ip link del eth26")
        wait_until(lambda: '"port":26' not in self.inside("vchipctl", "wires", "-j").stdout,
                   "its port has no wire")
        self.cable("eth26", second)
        second.run("ip addr add 10.0.0.2/24 dev eth0")
        self.wait_for_health()
        first.run("ip neigh flush dev eth0")
        self.assertTrue(first.pings("10.0.0.2", 3))
        self.assertNotIn('"port":27', self.inside("vchipctl", "wires", "-j").stdout)

    def test_health(self):
        self.assertEqual(self.healthy().returncode, 1)
        self.begin()
        self.assertIn("there is no interface eth1 to eth26", self.healthy().stdout)
        host = self.new_host(1, "eth1")
        self.wait_for_health()
        host.run("ip link set eth0 down")
        wait_until(lambda: self.healthy().returncode != 0, "it is not healthy")
        sick = self.healthy()
        self.assertEqual((sick.returncode, sick.stderr),
                         (2, "vchipctl: port 1: netdev:eth1 is down\n"))
        host.run("ip link set eth0 up")
        self.wait_for_health()
        self.running.send_signal(signal.SIGTERM)
        self.ends()
        self.assertEqual(self.healthy().returncode, 2)

    def test_term_ends_it_and_the_chip_stays(self):
        self.new_host(1, "eth1")
        self.begin()
        self.wait_for_health()
        self.swctl("vlan add 77")
        self.swctl("port set 1 description north")
        before = self.swctl("config show")
        self.running.send_signal(signal.SIGTERM)
        self.assertEqual(self.ends(), 0)
        self.assertFalse(os.path.exists(f"{self.image}.wires0"))
        self.begin()
        self.wait_for_health()
        self.assertEqual(self.swctl("config show"), before)
        self.assertIn("vlan add 77", before)
        self.assertIn("north", before)

    def test_term_while_it_starts(self):
        self.config.write_text("vlan add 20\n")
        for hundredths in (0, 1, 2, 5, 10, 20, 40):
            with self.subTest(hundredths):
                self.begin()
                time.sleep(hundredths / 100)
                self.running.send_signal(signal.SIGTERM)
                self.ends()
                self.assertNotEqual(self.inside("vchipctl", "wires").returncode, 0)
                self.assertEqual(self.vchipds(), "")

    def vchipds(self):
        """Those of this test's namespace: it is the one that they are in."""
        found = subprocess.run(["pgrep", "--ns", str(self.host.holder.pid), "--nslist", "net",
                                "vchipd"], capture_output=True, text=True, check=False)
        return found.stdout

    def test_a_wrong_configuration_ends_it(self):
        self.config.write_text("vlan add 20\nvlan subtract 30\n")
        self.begin()
        self.assertEqual(self.ends(), 2)
        self.assertIn(f"{self.config}:2: vlan:", self.said(self.running))

    def test_it_ends_with_vchipd(self):
        self.new_host(1, "eth1")
        self.begin()
        self.wait_for_health()
        os.kill(int(self.vchipds()), signal.SIGKILL)
        self.assertEqual(self.ends(), 128 + signal.SIGKILL)

    def test_words(self):
        result = self.inside(SWITCH, "heathy")
        self.assertEqual((result.returncode, result.stderr), (
            1, 'swctl-switch: unknown word "heathy", expected healthy or nothing\n'))


if __name__ == "__main__":
    neighbours.main("bash", "pgrep", "sed")

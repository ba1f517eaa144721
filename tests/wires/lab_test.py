# SPDX-License-Identifier: MIT
"""lab_test.py PROGRAMS: vchipctl lab, as an ordinary user."""
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys

import wires
from wires import wait_until

INSIDE = "WIRES_TEST_USER"


class Lab(wires.Case):
    def words(self, *words):
        return [wires.PROGRAMS / "vchipctl", "lab", *words]

    def lab(self, *words):
        """A lab that runs a command to its end."""
        return subprocess.run(self.words(*words), env=self.environment, capture_output=True,
                              text=True, timeout=60, check=False)

    def open_lab(self, ports=2):
        """A lab that is there until it is closed or told to end."""
        process = subprocess.Popen(
            self.words("--ports", str(ports), "sh", "-c", "echo $PPID; cat"), env=self.environment,
            text=True, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.processes.append(process)
        self.assertNotEqual(process.stdout.readline(), "", "the lab is there")
        return process

    def enter(self, *words):
        return self.run_program("vchipctl", "lab", "enter", *words)

    def pings(self, host, address):
        return self.enter(host, "ping", "-c", "1", "-W", "1", address).returncode == 0

    def processes_of_the_image(self):
        """Those that have its name in their environment or are of a lab on it."""
        found = []
        for entry in pathlib.Path("/proc").iterdir():
            try:
                if entry.name.isdigit() and int(entry.name) != os.getpid() and \
                        self.image.encode() in (entry / "environ").read_bytes():
                    found.append(int(entry.name))
            except OSError:
                pass
        return found

    def expect_nothing_left(self):
        wait_until(lambda: not self.processes_of_the_image(), "its processes are gone")
        self.assertEqual([name for name in os.listdir(self.directory)
                          if name.endswith((".lab", ".wires0"))], [])

    def test_hosts_ping_and_a_vlan_parts_them(self):
        lab = self.open_lab(3)
        self.assertEqual(self.enter("2", "hostname").stdout, "host2\n")
        self.assertEqual(self.enter("hostname").returncode, 1)
        self.assertTrue(self.pings("1", "10.0.0.2"))
        self.assertTrue(self.pings("3", "10.0.0.1"))
        self.swctl("vlan add 20 untagged 2")
        self.swctl("vlan port del 1 2")
        self.swctl("port set 2 vlan 20")
        self.assertFalse(self.pings("1", "10.0.0.2"))
        self.assertTrue(self.pings("3", "10.0.0.1"))
        self.assertEqual(self.enter("4", "true").stderr,
                         "vchipctl: the lab has no host at port 4\n")
        lab.communicate(timeout=20)
        self.assertEqual(lab.returncode, 0)
        self.expect_nothing_left()
        self.assertIn("there is no lab", self.enter("1", "true").stderr)

    def test_hosts_are_apart(self):
        self.open_lab()
        links = json.loads(self.enter("1", "ip", "-j", "addr").stdout)
        self.assertEqual(sorted(link["ifname"] for link in links), ["eth0", "lo"])
        own = next(link for link in links if link["ifname"] == "eth0")
        self.assertEqual(own["address"], "02:00:00:00:00:01")
        self.assertIn(("10.0.0.1", 24), [(each["local"], each["prefixlen"])
                                         for each in own["addr_info"]])
        switch = json.loads(self.run_program("vchipctl", "lab", "enter", "switch", "ip", "-j",
                                             "link").stdout)
        self.assertEqual(sorted(link["ifname"] for link in switch), ["lo", "sw1", "sw2"])

    def test_the_command_decides_the_status(self):
        self.assertEqual(self.lab("--ports", "1", "sh", "-c", "exit 7").returncode, 7)
        self.assertEqual(self.lab("--ports", "1", "no-such-program").returncode, 127)
        result = self.lab("--ports", "1", "vchipctl", "lab", "enter", "1", "sh", "-c", "exit 8")
        self.assertEqual(result.returncode, 8, result.stderr)
        self.expect_nothing_left()

    def test_its_own_image(self):
        del self.environment["VCHIP_IMAGE"]
        result = self.lab("--ports", "1", "sh", "-c", "echo $VCHIP_IMAGE; vchipctl wires -j")
        image, rows = result.stdout.splitlines()
        self.assertEqual(json.loads(rows)[0]["carrier"], True)
        self.assertFalse(os.path.exists(os.path.dirname(image)))

    def test_a_configuration(self):
        with open(self.path("config"), "w", encoding="ascii") as file:
            file.write("vlan add 30 tagged 1\n")
        result = self.lab("--ports", "1", "--config", self.path("config"), "swctl", "vlan", "show")
        self.assertRegex(result.stdout, r"(?m)^ *30\b")
        with open(self.path("config"), "w", encoding="ascii") as file:
            file.write("vlan nonsense 30\n")
        result = self.lab("--ports", "1", "--config", self.path("config"), "true")
        self.assertEqual(result.returncode, 2)
        self.assertIn("swctl has refused it", result.stderr)
        self.expect_nothing_left()

    def test_refusals(self):
        self.open_lab(1)
        self.assertIn("there is a lab already", self.lab("true").stderr)
        for words, said in ((("--ports", "27", "true"), "27"), (("--ports", "0", "true"), "0 ports"),
                            (("--prots", "2"), "--prots"), (("enter", "x", "true"), "x")):
            result = self.lab(*words)
            self.assertEqual(result.returncode, 1, words)
            self.assertIn(said, result.stderr)

    def test_signals_end_all_of_it(self):
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGKILL):
            lab = self.open_lab(1)
            self.assertNotEqual(self.processes_of_the_image(), [])
            lab.send_signal(number)
            lab.communicate(timeout=20)
            wait_until(lambda: not self.processes_of_the_image(), "its processes are gone")
        # The next one goes on where one was killed, once the kernel has let go of its locks.
        wait_until(lambda: self.lab("--ports", "1", "true").returncode == 0, "another one goes on")

    def test_what_would_help_is_said(self):
        result = subprocess.run(
            ["unshare", "-Ur", "sh", "-c",
             "echo 0 >/proc/sys/user/max_net_namespaces; exec \"$@\"", "sh", *self.words("true")],
            env=self.environment, capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual(result.returncode, 2)
        self.assertIn("no right to make network namespaces", result.stderr)
        self.assertIn("user.max_user_namespaces", result.stderr)
        self.expect_nothing_left()


def enter():
    """Again as an ordinary user; 77 if the system does not allow what a lab needs."""
    missing = [name for name in ("unshare", "ip", "ping") if not shutil.which(name)]
    if missing:
        print(f"lab_test: not run: no {', '.join(missing)}")
        sys.exit(77)
    as_user = ["unshare", "-U", "--map-user=1000", "--map-group=1000"]
    allowed = subprocess.run([*as_user, "unshare", "-Urn", "true"], capture_output=True, text=True,
                             check=False)
    if allowed.returncode != 0:
        print(f"lab_test: not run: user namespaces are denied: {allowed.stderr.strip()}")
        sys.exit(77)
    os.environ[INSIDE] = "1"
    os.execvp("unshare", [*as_user, sys.executable, *sys.argv])


if __name__ == "__main__":
    if INSIDE not in os.environ:
        enter()
    wires.main()

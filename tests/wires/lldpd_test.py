# SPDX-License-Identifier: MIT
"""lldpd_test.py PROGRAMS: an unmodified lldpd on the interfaces of the processor's
side sees its neighbours at their ports, and is seen by them."""
import json
import os
import shutil
import subprocess
import sys

import wires

INSIDE = "LLDPD_TEST_INSIDE"
LLDPD = shutil.which("lldpd", path="/usr/sbin:/usr/bin")


def wait_until(holds, what):
    """lldpd sends when it thinks fit."""
    wires.wait_until(holds, what, 30)


def run(*words):
    return subprocess.run(words, capture_output=True, text=True, timeout=60, check=True).stdout


class Neighbour:
    """A host with an lldpd, in namespaces of its own, seen from the chip's."""

    def __init__(self, case, name, pattern):
        self.name = name
        self.control = case.path(f"{name}.socket")
        self.pattern = pattern
        self.host = subprocess.Popen(
            ["unshare", "-n", "-m", "sh", "-c",
             "mount -t tmpfs none /run; mkdir /run/lldpd; echo up; "
             "exec sleep 1000"], stdout=subprocess.PIPE)
        case.addCleanup(self.close)
        self.host.stdout.readline()
        self.path = f"/proc/{self.host.pid}/ns/net"
        self.daemon = None

    def inside(self, *words):
        return ["nsenter", "-n", "-m", "-t", str(self.host.pid), *words]

    def start(self):
        self.daemon = subprocess.Popen(
            self.inside(LLDPD, "-d", "-u", self.control, "-I", self.pattern),
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_until(self.configure, "lldpd answers")

    def configure(self):
        """lldpd sends nothing until it is told to go on, which it may miss from its own
        lldpcli while another one speaks with it."""
        return (self.ask("resume") is not None and
                self.ask("configure", "lldp", "tx-interval", "1") is not None and
                self.ask("configure", "system", "hostname", self.name) is not None)

    def ask(self, *words):
        result = subprocess.run(self.inside("lldpcli", "-u", self.control, "-f", "json0", *words),
                                capture_output=True, text=True, timeout=30, check=False)
        return result.stdout if result.returncode == 0 else None

    def neighbours(self):
        """Own interface and the neighbour's name, of each."""
        answer = self.ask("show", "neighbors")
        if not answer or not answer.strip():
            return set()
        found = set()
        for part in json.loads(answer).get("lldp", []):
            for each in part.get("interface", []):
                for chassis in each.get("chassis", []):
                    for name in chassis.get("name", []):
                        found.add((each["name"], name["value"]))
        return found

    def close(self):
        for process in (self.daemon, self.host):
            if process is not None:
                process.terminate()
                process.communicate()


class Lldpd(wires.Case):
    def test_both_see_each_other(self):
        # lldpcli works as a user of its own.
        os.chmod(self.directory, 0o755)
        switch = Neighbour(self, "switch", "cpu*")
        hosts = [Neighbour(self, f"host{number}", "eth0") for number in (1, 2)]
        self.start(*(f"{number}=veth:sw{number}:eth0@{host.path}"
                     for number, host in enumerate(hosts, 1)), "0=cpu:")
        for number in (1, 2):
            run("ip", "link", "set", f"cpu{number}", "netns", str(switch.host.pid))
            run(*switch.inside("ip", "link", "set", f"cpu{number}", "up"))
        for host in hosts:
            run(*host.inside("ip", "link", "set", "eth0", "up"))
        self.swctl("trap set lldp cpu")
        everybody = (switch, *hosts)
        for each in everybody:
            each.start()
        wait_until(lambda: all([each.configure() for each in everybody]) and
                   switch.neighbours() == {("cpu1", "host1"), ("cpu2", "host2")},
                   "the switch sees each host at its port")
        for host in hosts:
            wait_until(lambda: host.neighbours() == {("eth0", "switch")},
                       "each host sees the switch and not the other host")
        self.swctl("trap set lldp forward")
        wait_until(lambda: ("eth0", "host2") in hosts[0].neighbours(),
                   "switched as other frames, they reach the other host")


def enter():
    """Into namespaces of this test's own; 77 if the system does not allow it."""
    reason = None
    if LLDPD is None or shutil.which("lldpcli") is None:
        reason = "there is no lldpd"
    elif os.getuid() != 0:
        reason = "lldpd needs root: it gives its rights away to a user of its own"
    elif not os.access("/dev/net/tun", os.R_OK | os.W_OK):
        reason = "no right to open /dev/net/tun"
    elif subprocess.run(["unshare", "-n", "-m", "true"], check=False).returncode != 0:
        reason = "namespaces are denied"
    if reason:
        print(f"lldpd_test: not run: {reason}")
        sys.exit(77)
    os.environ[INSIDE] = "1"
    os.execvp("unshare", ["unshare", "-n", "-m", sys.executable, *sys.argv])


if __name__ == "__main__":
    if INSIDE not in os.environ:
        enter()
    wires.main()

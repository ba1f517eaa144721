# SPDX-License-Identifier: MIT
"""What the tests with programs of others share: hosts around a chip."""
import os
import pathlib
import shutil
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "wires"))
# pylint: disable=wrong-import-position
import wires  # noqa: E402

INSIDE = "NEIGHBOURS_INSIDE"
PATH = f"{os.environ.get('PATH', '')}:/usr/local/sbin:/usr/sbin:/sbin"


def wait_until(holds, what, seconds=30):
    """Protocols of others take their time."""
    end = time.monotonic() + seconds
    while not holds():
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain: {what}")
        time.sleep(0.2)


class Machine:
    """Programs in a network; the one in which vchipd runs, the switch itself."""

    def __init__(self, case, name="switch"):
        self.case, self.name = case, name
        self.daemons = []
        case.addCleanup(self.close)

    def inside(self, *words):
        return list(map(str, words))

    def ask(self, *words):
        """A command, however it ends."""
        return subprocess.run(self.inside(*words), capture_output=True, text=True, timeout=60,
                              check=False)

    def run(self, line):
        result = self.ask(*line.split())
        if result.returncode != 0:
            raise AssertionError((line, result.stdout, result.stderr))
        return result.stdout

    def start(self, *words):
        """A program that goes on; what it says is in the file of this name and number."""
        log = self.case.path(f"{self.name}.{len(self.daemons)}.log")
        with open(log, "w", encoding="utf-8") as file:
            daemon = subprocess.Popen(self.inside(*words), stdin=subprocess.DEVNULL, stdout=file,
                                      stderr=subprocess.STDOUT)
        daemon.log = pathlib.Path(log)
        self.daemons.append(daemon)
        return daemon

    def up(self, interface, address=None):
        if address:
            self.run(f"ip addr add {address} dev {interface}")
        self.run(f"ip link set {interface} up")

    def pings(self, address, count=1):
        return self.ask("ping", "-c", count, "-i", "0.1", "-W", "1", address).returncode == 0

    def close(self):
        for process in self.daemons:
            process.kill()
            process.wait()


class Host(Machine):
    """A machine of its own: network, mounts and /run."""

    def __init__(self, case, name):
        self.holder = subprocess.Popen(
            ["unshare", "-n", "-m", "-u", "sh", "-c",
             f"hostname {name}; mount -t tmpfs none /run && mkdir -p /run/lock && "
             "mount -t sysfs none /sys; ip link set lo up; echo up; exec sleep 1000"],
            stdout=subprocess.PIPE)
        super().__init__(case, name)
        self.holder.stdout.readline()
        self.path = f"/proc/{self.holder.pid}/ns/net"

    def inside(self, *words):
        return ["nsenter", "-n", "-m", "-u", "-t", str(self.holder.pid), *map(str, words)]

    def close(self):
        super().close()
        self.holder.kill()
        self.holder.wait()
        self.holder.stdout.close()


class Case(wires.Case):
    """A chip with hosts at its ports."""

    def hosts(self, *counts, more=()):
        """As many hosts, each with so many interfaces: port 1 is the first one's eth0."""
        hosts = [Host(self, f"host{number}") for number in range(1, len(counts) + 1)]
        ends = [(host, place) for host, count in zip(hosts, counts) for place in range(count)]
        self.start(*(f"{port}=veth:sw{port}:eth{place}@{host.path}"
                     for port, (host, place) in enumerate(ends, 1)), *more)
        return hosts

    def tearDown(self):
        """In order: a pair that a killed vchipd left would be used by the next one, and go
        with the namespace of its host."""
        for process in self.processes:
            process.terminate()
            try:
                process.communicate(timeout=wires.PATIENCE)
            except subprocess.TimeoutExpired:
                process.kill()
        super().tearDown()

    def said(self, daemon):
        return daemon.log.read_text(encoding="utf-8", errors="replace")


def reason_against(programs):
    missing = [name for name in ("unshare", "nsenter", "ip", "ping", *programs)
               if not shutil.which(name, path=PATH)]
    if missing:
        return f"there is no {', '.join(missing)}"
    if subprocess.run(space(), capture_output=True, check=False).returncode != 0:
        return "namespaces are denied"
    return None


def space(*words):
    """Root's own rights are more than those of a user in a namespace."""
    own = ["unshare", "-n", "-m"]
    if os.geteuid() != 0 or subprocess.run([*own, "true"], capture_output=True,
                                           check=False).returncode != 0:
        own = ["unshare", "-U", "-r", "-n", "-m"]
    return [*own, *(words or ("true",))]


def skip(reason):
    print(f"{pathlib.Path(sys.argv[0]).stem}: not run: {reason}", flush=True)
    sys.exit(77)


def main(*programs):
    """Runs the tests in a space of their own; 77 if a program or a right is missing."""
    os.environ["PATH"] = PATH
    if INSIDE not in os.environ:
        reason = reason_against(programs)
        if reason:
            skip(reason)
        os.environ[INSIDE] = "1"
        words = space(sys.executable, *sys.argv)
        os.execvp(words[0], words)
    wires.main()

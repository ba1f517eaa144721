# SPDX-License-Identifier: MIT
"""Switches with two hosts at ends of veth, each in place as long as its block runs:
the kernel's bridge, and vchipd."""
import json
import os
import pathlib
import resource
import shutil
import socket
import subprocess
import sys
import tempfile
import time

PROGRAMS = pathlib.Path(sys.argv[1]).resolve()
SECONDS = 2.0
RULES = 100


def run(*words, check=True):
    return subprocess.run(words, check=check, capture_output=True, text=True, timeout=120).stdout


def ip(line):
    run("ip", *line.split())


def load(*words, within=()):
    return json.loads(run(*within, PROGRAMS / "swctl_wire_load", *map(str, words)))


class Busy:
    """The processor time of the sender and of the switch, with what the kernel does in
    their names."""

    def __init__(self, switch):
        self.switch = switch
        self.begin = self.now()

    def now(self):
        usage = resource.getrusage(resource.RUSAGE_CHILDREN)
        return usage.ru_utime + usage.ru_stime + self.switch.own_time()

    def __call__(self):
        return self.now() - self.begin


def time_of(process):
    """Seconds of processor time that a process has used."""
    text = pathlib.Path(f"/proc/{process}/stat").read_text(encoding="ascii")
    fields = text.rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


class Veth:
    """A switch with hosts' ends of veth: as many as `ends` has."""

    one, two = "h1", "h2"
    sender = ()  # words in front of the sending program

    def __init__(self, ends=(one, two)):
        self.ends = ends

    def own_time(self):
        return 0.0

    def quiet(self):
        for name in self.ends:
            ip(f"link set {name} addrgenmode none")
            ip(f"link set {name} up")
        time.sleep(0.7)

    def received(self):
        statistics = json.loads(run("ip", "-j", "-s", "link", "show", self.two))[0]["stats64"]
        return statistics["rx"]["packets"]

    def settled(self, seconds=2.0):
        """What has been received once nothing more comes, or after that time."""
        end, last, now = time.monotonic() + seconds, None, self.received()
        while now != last and time.monotonic() < end:
            time.sleep(0.05)
            last, now = now, self.received()
        return now

    def learn(self):
        """The second host is known, so that nothing is flooded."""
        with socket.socket(socket.AF_PACKET, socket.SOCK_RAW) as host:
            host.bind((self.two, 0))
            host.send(bytes.fromhex("020000000001020000000002" "88b5").ljust(60, b"\0"))
        time.sleep(0.1)

    def measure(self, size, rate=0, seconds=SECONDS):
        self.learn()
        begin, busy = self.received(), Busy(self)
        result = load("interface", self.one, seconds, size, rate, within=self.sender)
        received = self.settled() - begin
        return {"offered": result["sent"] / result["seconds"],
                "rate": received / result["seconds"],
                "lost": result["sent"] - received, "busy": busy()}


class Bridge(Veth):
    name = "kernel bridge"
    missing = None

    def __enter__(self):
        ip("link add br0 type bridge mcast_snooping 0")
        ip("link set br0 addrgenmode none")
        for number, end in enumerate(self.ends, 1):
            name = f"s{number}"
            ip(f"link add {name} type veth peer name {end}")
            ip(f"link set {name} addrgenmode none")
            ip(f"link set {name} master br0")
            ip(f"link set {name} up")
        ip("link set br0 up")
        self.quiet()
        return self

    def forget(self):
        """The addresses that were learned."""
        ip("link set br0 type bridge fdb_flush")

    def __exit__(self, *_):
        for name in ("br0", *(f"s{number}" for number in range(1, len(self.ends) + 1))):
            ip(f"link del {name}")


class Vchipd(Veth):
    """With a VLAN, and with rules in effect that the frames do not match."""

    name = "vchipd"
    missing = None
    options = ()

    def __enter__(self):
        self.directory = tempfile.mkdtemp(prefix="wires-bench-")
        self.image = os.path.join(self.directory, "chip.img")
        os.environ.update(VCHIP_IMAGE=self.image, VCHIP_LOG="none")
        lines = [f"vlan add 10 untagged 1-{len(self.ends)}", f"port set 1-{len(self.ends)} vlan 10"]
        lines += [f"acl add {rule} dst-ip 192.0.2.{rule} protocol tcp dst-port 80 action drop enable"
                  for rule in range(RULES)]
        config = pathlib.Path(self.directory, "config")
        config.write_text("\n".join(lines) + "\n", encoding="ascii")
        self.process = subprocess.Popen(
            [*self.options, PROGRAMS / "vchipd", *self.ports(), "--config", str(config)])
        while subprocess.run([PROGRAMS / "vchipctl", "wires"], capture_output=True,
                             check=False).returncode != 0:
            if self.process.poll() is not None:
                raise SystemExit("vchipd has ended")
            time.sleep(0.02)
        self.ready()
        return self

    def ports(self):
        return [word for port, end in enumerate(self.ends, 1)
                for word in ("--port", f"{port}=veth:s{port}:{end}")]

    def ready(self):
        self.quiet()

    def own_time(self):
        return time_of(self.process.pid)

    def forget(self):
        run(PROGRAMS / "swctl", "mac", "flush", "all")

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait(timeout=10)
        shutil.rmtree(self.directory)


class Urgent(Vchipd):
    """Scheduled before the sender, as the bridge is, which works in its interrupts."""

    name = "vchipd, real-time"
    options = ("chrt", "-f", "1")
    missing = (None if subprocess.run(["chrt", "-f", "1", "true"], capture_output=True,
                                      check=False).returncode == 0
               else "no right to a real-time priority")


class Streams(Vchipd):
    name = "vchipd, unix:"

    def ports(self):
        return [word for port in (1, 2) for word in
                ("--port", f"{port}=unix:{self.directory}/p{port}")]

    def ready(self):
        pass

    def measure(self, size, rate=0, seconds=SECONDS):
        busy = Busy(self)
        result = load("streams", f"{self.directory}/p1", f"{self.directory}/p2", seconds, size, rate)
        return {"offered": result["sent"] / result["seconds"],
                "rate": result["received"] / result["seconds"],
                "even": result["even"], "odd": result["odd"],
                "lost": result["sent"] - result["received"], "busy": busy()}

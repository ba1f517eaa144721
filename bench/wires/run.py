# SPDX-License-Identifier: MIT
"""run.py PROGRAMS [wires|rfc]

Frames through vchipd, and in the same run through the other switches of this
machine: the kernel's bridge, Open vSwitch and vde where they are installed.

wires: 60 and 1,514 bytes over veth, as fast as the sender goes, and over streams;
with each the processor time that a frame took, of sender and switch together, which
a busy machine changes less than the rate.

rfc: throughput, latency and frame loss rate (RFC 2544) and forwarding (RFC 2889) over
veth.
"""
import json
import os
import pathlib
import resource
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import time

INSIDE = "WIRES_BENCH_INSIDE"
PROGRAMS = pathlib.Path(sys.argv[1]).resolve()
WHAT = sys.argv[2] if len(sys.argv) > 2 else "wires"
SECONDS = 2.0
RULES = 100


def run(*words, check=True):
    return subprocess.run(words, check=check, capture_output=True, text=True, timeout=120).stdout


def ip(line):
    run("ip", *line.split())


def load(*words):
    return json.loads(run(PROGRAMS / "swctl_wire_load", *map(str, words)))


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


class Veth:
    """A switch with two hosts' ends of veth."""

    one, two = "h1", "h2"

    def own_time(self):
        return 0.0

    def quiet(self):
        for name in (self.one, self.two):
            ip(f"link set {name} addrgenmode none")
            ip(f"link set {name} up")
        time.sleep(0.7)

    def received(self):
        statistics = json.loads(run("ip", "-j", "-s", "link", "show", self.two))[0]["stats64"]
        return statistics["rx"]["packets"]

    def learn(self):
        """The second host is known, so that nothing is flooded."""
        with socket.socket(socket.AF_PACKET, socket.SOCK_RAW) as host:
            host.bind((self.two, 0))
            host.send(bytes.fromhex("020000000001020000000002" "88b5").ljust(60, b"\0"))
        time.sleep(0.1)

    def measure(self, size, rate=0, seconds=SECONDS):
        self.learn()
        begin, busy = self.received(), Busy(self)
        result = load("interface", self.one, seconds, size, rate)
        time.sleep(0.05)
        return {"offered": result["sent"] / result["seconds"],
                "rate": (self.received() - begin) / result["seconds"],
                "lost": result["sent"] - (self.received() - begin),
                "busy": busy()}


class Bridge(Veth):
    name = "kernel bridge"
    missing = None

    def __enter__(self):
        ip("link add br0 type bridge mcast_snooping 0")
        ip("link set br0 addrgenmode none")
        for name, end in (("s1", self.one), ("s2", self.two)):
            ip(f"link add {name} type veth peer name {end}")
            ip(f"link set {name} addrgenmode none")
            ip(f"link set {name} master br0")
            ip(f"link set {name} up")
        ip("link set br0 up")
        self.quiet()
        return self

    def __exit__(self, *_):
        for name in ("br0", "s1", "s2"):
            ip(f"link del {name}")


class Vchipd(Veth):
    """With a VLAN, and with rules in effect that the frames do not match."""

    name = "vchipd"
    missing = None
    options = ()
    wires = ("--port", "1=veth:s1:h1", "--port", "2=veth:s2:h2")

    def __enter__(self):
        self.directory = tempfile.mkdtemp(prefix="wires-bench-")
        self.image = os.path.join(self.directory, "chip.img")
        os.environ.update(VCHIP_IMAGE=self.image, VCHIP_LOG="none")
        lines = ["vlan add 10 untagged 1-2", "port set 1-2 vlan 10"]
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
        return self.wires

    def ready(self):
        self.quiet()

    def own_time(self):
        text = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text(encoding="ascii")
        fields = text.rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

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
                "lost": result["sent"] - result["received"], "busy": busy()}


def table(rows):
    widths = [max(len(str(row[place])) for row in rows) for place in range(len(rows[0]))]
    for row in rows:
        print("  ".join(str(cell).ljust(width) if place == 0 else str(cell).rjust(width)
                        for place, (cell, width) in enumerate(zip(row, widths))))
    print()


def compare():
    for name, why in (("Open vSwitch", shutil.which("ovs-vsctl")), ("vde", shutil.which("vde_switch"))):
        print(f"{name}: " + ("installed, not compared here" if why else "not installed"))
    print(f"{os.cpu_count()} processors, load {os.getloadavg()[0]:.1f}; {RULES} rules, one VLAN\n")
    for size in (60, 1514):
        rows, reference = [["", "offered/s", "received/s", "lost", "us/frame", "times the bridge"]], 0
        for kind in (Bridge, Vchipd, Urgent, Streams):
            if kind.missing:
                print(f"{kind.name}: not measured: {kind.missing}")
                continue
            with kind() as switch:
                result = switch.measure(size)
            reference = reference or result["rate"]
            rows.append([kind.name, f"{result['offered']:,.0f}", f"{result['rate']:,.0f}",
                         f"{result['lost']:,}",
                         f"{result['busy'] / max(result['rate'] * SECONDS, 1) * 1e6:.2f}",
                         f"{result['rate'] / reference:.2f}"])
        print(f"{size} bytes")
        table(rows)
    control()
    with Vchipd() as switch:
        time.sleep(1)
        begin = switch.own_time()
        time.sleep(5)
        print(f"idle: {switch.own_time() - begin:.2f} s of processor time in 5 s\n")


def control():
    """A thousand changes of a setting a second, from another process, at full load."""
    with Streams() as switch:
        alone = switch.measure(60)["rate"]
        caller = subprocess.Popen([PROGRAMS / "swctl_wire_load", "calls", str(SECONDS + 1), "1000"],
                                  stdout=subprocess.PIPE, text=True)
        time.sleep(0.3)
        shared = switch.measure(60)["rate"]
        answer = json.loads(caller.communicate(timeout=30)[0])
    print(f"under 1,000 control calls a second: {shared:,.0f} frames/s of {alone:,.0f} "
          f"({shared / alone:.2f}); a call takes {answer['median']:.0f} us in the median, "
          f"{answer['p99']:.0f} at the 99th percentile, {answer['most']:.0f} at most\n")


def throughput(switch, size):
    """RFC 2544, 26.1: the highest rate at which nothing is lost, by bisection."""
    low, high = 0.0, switch.measure(size, 0, 1)["offered"]
    best = None
    for _ in range(8):
        rate = (low + high) / 2
        result = switch.measure(size, rate, 1)
        if result["lost"] == 0:
            low, best = rate, result
        else:
            high = rate
    return best["rate"] if best else 0


def latency(count=2000):
    """RFC 2544, 26.2, of one frame at a time: from before it is sent until a program has
    received it, which includes the system's part of both; microseconds, sorted."""
    sender = socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(0))
    receiver = socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(0x88b6))
    sender.bind((Veth.one, 0))
    receiver.bind((Veth.two, 0x88b6))
    receiver.settimeout(1)
    times = []
    for number in range(count):
        frame = bytes.fromhex("020000000002020000000001" "88b6") + struct.pack(">I", number)
        begin = time.perf_counter()
        sender.send(frame.ljust(60, b"\0"))
        receiver.recv(2048)
        times.append((time.perf_counter() - begin) * 1e6)
    sender.close()
    receiver.close()
    return sorted(times)


def rfc():
    print(f"{os.cpu_count()} processors, load {os.getloadavg()[0]:.1f}; frames a second\n")
    for kind in (Bridge, Vchipd):
        print(kind.name)
        with kind() as switch:
            rows = [["bytes", "throughput (RFC 2544, 26.1)", "forwarding (RFC 2889, 5.1)"]]
            for size in (60, 124, 252, 508, 1020, 1276, 1514):
                rows.append([size + 4, f"{throughput(switch, size):,.0f}",
                             f"{switch.measure(size, 0, 1)['rate']:,.0f}"])
            table(rows)
            full = switch.measure(60, 0, 1)["offered"]
            rows = [["offered/s", "frame loss rate (RFC 2544, 26.3): (offered - received) / offered"]]
            for part in range(10, 0, -2):
                result = switch.measure(60, full * part / 10, 1)
                sent = result["lost"] + result["rate"]
                rows.append([f"{result['offered']:,.0f}", f"{max(result['lost'], 0) / sent:.2%}"])
            table(rows)
            times = latency()
            print("latency, microseconds: " + ", ".join(
                f"{name} {times[min(int(len(times) * part), len(times) - 1)]:.0f}"
                for name, part in (("least", 0), ("median", 0.5), ("99 %", 0.99), ("most", 1))), "\n")


if __name__ == "__main__":
    if INSIDE not in os.environ:
        os.environ[INSIDE] = "1"
        space = ["-n"] if os.getuid() == 0 else ["-Urn"]
        os.execvp("unshare", ["unshare", *space, sys.executable, *sys.argv])
    (rfc if WHAT == "rfc" else compare)()

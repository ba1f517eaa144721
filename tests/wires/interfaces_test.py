# SPDX-License-Identifier: MIT
"""interfaces_test.py PROGRAMS: vchipd with veth:, netdev: and tap:, in namespaces
that an ordinary user may make."""
import json
import os
import shutil
import socket
import struct
import subprocess
import sys
import time

import wires
from wires import BROADCAST, NOTHING, frame, mac, tagged, wait_until

INSIDE = "WIRES_TEST_INSIDE"
PACKET_IGNORE_OUTGOING = 23
ETH_P_ALL = 3


def run(*words):
    result = subprocess.run(words, capture_output=True, text=True, timeout=60, check=False)
    if result.returncode != 0:
        raise AssertionError((words, result.stdout, result.stderr))
    return result.stdout


def ip(line):
    return run("ip", *line.split())


def link(name):
    return json.loads(run("ip", "-j", "-d", "link", "show", name))[0]


def names():
    return sorted(each["ifname"] for each in json.loads(run("ip", "-j", "link")))


def processor_time(process):
    """Seconds that a process has used."""
    with open(f"/proc/{process}/stat", encoding="ascii") as stat:
        fields = stat.read().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def remove_links():
    """Those of a vchipd that was killed: the next one would use them."""
    for name in names():
        if name.startswith(("sw", "tp", "nd")):
            subprocess.run(["ip", "link", "del", name], check=False, capture_output=True)


def may_make_taps():
    return os.access("/dev/net/tun", os.R_OK | os.W_OK)


class Interface:
    """Frames at the host's end, as they are on the cable."""

    def __init__(self, name):
        self.socket = socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(ETH_P_ALL))
        self.socket.setsockopt(socket.SOL_PACKET if hasattr(socket, "SOL_PACKET") else 263,
                               PACKET_IGNORE_OUTGOING, 1)
        self.socket.setsockopt(263, 8, 1)  # PACKET_AUXDATA
        self.socket.bind((name, 0))

    def send(self, *frames):
        for each in frames:
            self.socket.send(each)

    def receive(self, seconds=wires.PATIENCE):
        self.socket.settimeout(seconds)
        try:
            data, auxiliary, _, _ = self.socket.recvmsg(65536, 1024)
        except TimeoutError:
            return None
        status, _, _, _, _, tag, kind = struct.unpack("=IIIHHHH", auxiliary[0][2])
        if status & 1 << 4:
            kind = kind if status & 1 << 6 else 0x8100
            data = data[:12] + struct.pack(">HH", kind, tag) + data[12:]
        return data

    def make_room(self):
        """For a flood that is read afterwards; of a process with rights over the machine."""
        self.socket.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 8 << 20)

    def close(self):
        self.socket.close()


class Namespace:
    """A host of its own."""

    def __init__(self):
        self.process = subprocess.Popen(["unshare", "-n", "sh", "-c", "echo up; exec sleep 1000"],
                                        stdout=subprocess.PIPE)
        self.process.stdout.readline()
        self.path = f"/proc/{self.process.pid}/ns/net"

    def run(self, line):
        return run("nsenter", f"--net={self.path}", *line.split())

    def start(self, *words):
        return subprocess.Popen(["nsenter", f"--net={self.path}", *words], text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def close(self):
        self.process.kill()
        self.process.communicate()


class Raw(wires.Case):
    """The hosts' ends in the same namespace, as raw frames."""

    def open(self, name):
        ip(f"link set {name} up")
        interface = Interface(name)
        self.addCleanup(interface.close)
        return interface

    def start_pair(self, within=()):
        self.process = self.start("1=veth:sw1", "2=veth:sw2", within=within)
        # Silent hosts: no frame but those of the test.
        for name in ("sw1h", "sw2h"):
            ip(f"link set {name} addrgenmode none")
        one, two = self.open("sw1h"), self.open("sw2h")
        wait_until(lambda: all(row["carrier"] for row in self.wires().values()), "both are up")
        return one, two

    def tearDown(self):
        super().tearDown()
        remove_links()

    def test_frames_and_tags(self):
        one, two = self.start_pair()
        plain = frame(BROADCAST, mac(1))
        one.send(plain)
        self.assertEqual(two.receive(), plain)
        # In VLAN 1 both ports are untagged members; a tag of another type is payload.
        one.send(tagged(plain, 1, priority=5))
        self.assertEqual(two.receive(), plain)
        foreign = plain[:12] + struct.pack(">HH", 0x88a8, 0x2005) + plain[12:]
        one.send(foreign)
        self.assertEqual(two.receive(), foreign)
        self.swctl("vlan add 30 tagged 1-2")
        marked = tagged(plain, 30, priority=3)
        one.send(marked)
        self.assertEqual(two.receive(), marked)
        one.send(tagged(plain, 31))
        self.assertIsNone(two.receive(NOTHING))
        self.assertEqual(self.drops(1)["filter"], 1)

    def test_every_length(self):
        one, two = self.start_pair()
        self.swctl("port set 1-2 mtu 16383")
        for name in ("sw1h", "sw2h"):
            ip(f"link set {name} mtu 16365")
        for length in (14, 60, 1514, 1518, 1930, 1960, 2000, 2048, 9000, 16379):
            sent = (BROADCAST + mac(1) + b"\x88\xb5").ljust(length, b"x")
            one.send(sent)
            self.assertEqual(two.receive(), sent.ljust(60, b"\0"), length)
        sent = tagged((BROADCAST + mac(1) + b"\x88\xb5").ljust(9000, b"x"), 1)
        one.send(sent)
        self.assertEqual(two.receive(), sent[:12] + sent[16:])

    def test_frames_that_no_port_takes_stop_nothing(self):
        """More of them in a row than are taken in at a time."""
        one, two = self.start_pair()
        for name in ("sw1", "sw1h"):
            ip(f"link set {name} mtu 16365")
        long = tagged((BROADCAST + mac(1) + b"\x88\xb5").ljust(16379, b"x"), 1)
        for _ in range(100):
            one.send(long)
            time.sleep(0.0005)
        one.send(frame(BROADCAST, mac(1)))
        self.assertEqual(two.receive(), frame(BROADCAST, mac(1)))
        row = self.wires()[1]
        self.assertEqual(row["unusable"] + row["missed"], 100)
        self.assertGreater(row["unusable"], 64)

    def test_a_burst_of_every_kind_stays_in_order(self):
        """Small and large ones by turns."""
        one, two = self.start_pair()
        self.swctl("port set 1-2 mtu 16383")
        for name in ("sw1h", "sw2h"):
            ip(f"link set {name} mtu 16365")
        burst = [frame(BROADCAST, mac(1), bytes([number]) * (50 + number % 3 * 2500))
                 for number in range(40)]
        one.send(*burst)
        for number, sent in enumerate(burst):
            self.assertEqual(two.receive(), sent, number)

    def counted(self, port):
        """Frames that a port has taken or missed, and those that the system has dropped on
        the way to it: of a sender that outruns a busy machine it keeps a thousand."""
        row = self.wires()[port]
        link = json.loads(ip(f"-j -s link show sw{port}h"))[0]
        return row["received"] + row["missed"] + link["stats64"]["tx"]["dropped"]

    def pass_many(self, one, two, count):
        """A flood with numbers: each that comes is whole, and none before an earlier one."""
        before, taken = self.counted(1), -self.wires()[1]["received"]
        for first in range(0, count, 50):
            one.send(*[frame(BROADCAST, mac(1), struct.pack(">I", number))
                       for number in range(first, first + 50)])
        wait_until(lambda: self.counted(1) - before == count, "all are counted", 20)
        taken += self.wires()[1]["received"]
        numbers = []
        while len(numbers) < taken and (got := two.receive()) is not None:
            numbers.append(struct.unpack(">I", got[14:18])[0])
            self.assertEqual(got, frame(BROADCAST, mac(1), got[14:18]))
        self.assertEqual(numbers, sorted(set(numbers)))
        self.assertIsNone(two.receive(NOTHING))
        return len(numbers), taken

    def test_a_flood_stays_in_order_and_is_counted(self):
        one, two = self.start_pair()
        two.make_room()
        self.assertEqual([row["note"] for row in self.wires().values()], ["", ""])
        came, taken = self.pass_many(one, two, 5000)
        self.assertEqual(came, taken)
        self.assertEqual(self.wires()[2]["sent"], taken)
        # Afterwards one frame alone is not waited for, and none costs nothing.
        one.send(frame(BROADCAST, mac(1)))
        self.assertEqual(two.receive(), frame(BROADCAST, mac(1)))
        time.sleep(0.1)
        before = processor_time(self.process.pid)
        time.sleep(0.5)
        self.assertLess(processor_time(self.process.pid) - before, 0.05)

    def test_frames_pass_where_af_xdp_is_refused(self):
        """It locks memory; without a right to that, packet sockets send."""
        one, two = self.start_pair(within=["prlimit", "--memlock=0:0"])
        two.make_room()
        for row in self.wires().values():
            self.assertEqual(row["note"],
                             "sends without AF_XDP: memory: No buffer space available")
        came, taken = self.pass_many(one, two, 1000)
        self.assertEqual(came, taken)
        self.assertEqual(self.wires()[2]["sent"], taken)

    def test_a_host_that_keeps_frames(self):
        """They are held in memory of the chip's end for as long as the host's bridge has
        them queued; what is more is sent in another way, after them."""
        one, two = self.start_pair()
        ip("link add nd1 type bridge mcast_snooping 0")
        ip("link add nd2 type veth peer name nd2h")
        for name in ("nd1", "nd2", "nd2h"):
            ip(f"link set {name} addrgenmode none")
        ip("link set sw2h master nd1")
        ip("link set nd2 master nd1")
        run("tc", *"qdisc add dev nd2 root tbf rate 1mbit burst 1600 limit 1000000".split())
        far = self.open("nd2h")
        for name in ("nd1", "nd2"):
            ip(f"link set {name} up")
        # Known to the bridge, so that it queues the frames themselves, not copies.
        def is_known():
            far.send(frame(BROADCAST, mac(9)))
            return one.receive(NOTHING) is not None
        wait_until(is_known, "the bridge forwards")
        sent = [frame(mac(9), mac(1), bytes([number])) for number in range(200)]
        one.send(*sent)
        for number, each in enumerate(sent):
            self.assertEqual(far.receive(), each, number)
        self.assertEqual([row["note"] for row in self.wires().values()], ["", ""])
        self.assertEqual((self.wires()[2]["sent"], self.wires()[2]["lost"]), (200, 0))
        del two

    def test_an_end_that_goes_down_and_comes_back(self):
        one, two = self.start_pair()
        for _ in range(3):
            ip("link set sw2 down")
            one.send(frame(BROADCAST, mac(1)))
            ip("link set sw2 up")
            wait_until(lambda: self.wires()[2]["carrier"], "the cable is plugged")
            one.send(frame(BROADCAST, mac(1)))
            self.assertEqual(two.receive(), frame(BROADCAST, mac(1)))
            self.assertEqual(self.wires()[2]["note"], "")

    def test_the_system_says_nothing_on_the_chips_end(self):
        self.start_pair()
        flags = link("sw1")
        self.assertIn("NOARP", flags["flags"])
        self.assertEqual(flags["inet6_addr_gen_mode"], "none")

    def test_the_carrier_is_the_cable(self):
        def up(port):
            ports = json.loads(self.vchipctl("dump", "--unit", "0", "--block", "port"))
            return ports[port - 1]["link"]["up"]
        self.start_pair()
        self.assertTrue(up(1) and up(2))
        ip("link set sw1h down")
        wait_until(lambda: not up(1), "the cable is pulled")
        self.assertTrue(up(2))
        ip("link set sw1h up")
        wait_until(lambda: up(1), "the cable is plugged")
        ip("link del sw2h")
        wait_until(lambda: not up(2), "the pair is gone")
        self.assertEqual(self.wires()[2]["note"], "the interface is gone")

    def test_it_removes_what_it_made(self):
        before = names()
        self.start_pair()
        self.assertEqual(names(), sorted(before + ["sw1", "sw1h", "sw2", "sw2h"]))
        self.vchipctl("wire", "2", "none")
        self.assertEqual(names(), sorted(before + ["sw1", "sw1h"]))
        if may_make_taps():
            self.vchipctl("wire", "2", "tap:tp2")
            self.assertIn("tp2", names())
        self.end(self.process)
        self.assertEqual(names(), before)

    def test_a_pair_of_a_killed_one_is_used_again(self):
        self.start_pair()
        index = link("sw1")["ifindex"]
        self.process.kill()
        self.process.communicate()
        one, two = self.start_pair()
        self.assertEqual(link("sw1")["ifindex"], index)
        one.send(frame(BROADCAST, mac(1)))
        self.assertIsNotNone(two.receive())
        self.end(self.process)
        self.assertNotIn("sw1", names())

    def test_others_interfaces_stay(self):
        ip("link add sw1 type veth peer name sw1h")
        ip("link add nd1 type bridge")
        process = self.launch("--port", "1=veth:nd1")
        _, errors = process.communicate(timeout=wires.PATIENCE)
        self.assertEqual((process.returncode, errors),
                         (2, "vchipd: veth:nd1: there is an interface nd1 already, which is no veth; "
                          "netdev:nd1 would use it as it is\n"))
        self.end(self.start("1=veth:sw1", "2=netdev:nd1"))
        self.assertTrue({"sw1", "sw1h", "nd1"} <= set(names()))
        process = self.launch("--port", "3=veth:sw3:nd1")
        _, errors = process.communicate(timeout=wires.PATIENCE)
        self.assertEqual((process.returncode, errors),
                         (2, "vchipd: veth:sw3:nd1: there is an interface nd1 already\n"))
        self.assertNotIn("sw3", names())
        if not may_make_taps():
            return
        process = self.launch("--port", "3=tap:nd1")
        _, errors = process.communicate(timeout=wires.PATIENCE)
        self.assertEqual((process.returncode, errors),
                         (2, "vchipd: tap:nd1: there is an interface nd1, and it is no tap\n"))

    def test_tap(self):
        if not may_make_taps():
            self.skipTest("no right to open /dev/net/tun")
        self.start("1=tap:tp1", "2=tap:tp2")
        for name in ("tp1", "tp2"):
            ip(f"link set {name} addrgenmode none")
        self.assertFalse(self.wires()[1]["carrier"])
        one, two = self.open("tp1"), self.open("tp2")
        wait_until(lambda: all(row["carrier"] for row in self.wires().values()), "both are up")
        sent = frame(BROADCAST, mac(1))
        one.send(sent)
        self.assertEqual(two.receive(), sent)
        self.swctl("vlan add 30 tagged 1-2")
        one.send(tagged(sent, 30))
        self.assertEqual(two.receive(), tagged(sent, 30))
        self.swctl("port set 1 admin off")
        wait_until(lambda: "LOWER_UP" not in link("tp1")["flags"], "the host sees the link go")

    def test_a_tap_that_is_removed_costs_nothing(self):
        if not may_make_taps():
            self.skipTest("no right to open /dev/net/tun")
        process = self.start("1=tap:tp1", "0=cpu:")
        ip("link set tp1 up")
        wait_until(lambda: self.wires()[1]["carrier"], "the cable is plugged")
        ip("link del tp1")
        ip("link del cpu3")
        wait_until(lambda: self.wires()[1]["note"] == "the interface is gone", "the tap is gone")
        wait_until(lambda: self.wires()[0]["note"] == "an interface is gone", "one of many is gone")
        self.assertFalse(self.wires()[1]["carrier"])
        before = processor_time(process.pid)
        time.sleep(0.5)
        self.assertLess(processor_time(process.pid) - before, 0.1)

    def test_the_processors_side(self):
        """What is trapped comes up on the interface of its port, and goes back there."""
        if not may_make_taps():
            self.skipTest("no right to open /dev/net/tun")
        one, two = self.start_pair()
        self.vchipctl("wire", "0", "cpu:")
        for name in ("cpu0", "cpu1", "cpu2"):
            ip(f"link set {name} addrgenmode none")
        cpu = {port: self.open(f"cpu{port}") for port in (0, 1, 2)}
        wait_until(lambda: "LOWER_UP" in link("cpu1")["flags"] and
                   "LOWER_UP" not in link("cpu3")["flags"], "carriers are the links")
        lldp = frame(bytes.fromhex("0180c200000e"), mac(2), b"neighbour", kind=0x88cc)
        self.swctl("trap set lldp cpu")
        two.send(lldp)
        self.assertEqual(cpu[2].receive(), lldp)
        self.assertIsNone(cpu[1].receive(NOTHING))
        self.assertIsNone(one.receive(NOTHING))
        # The setting decides: switched, it is a frame as any other.
        self.swctl("trap set lldp forward")
        two.send(lldp)
        self.assertEqual(one.receive(), lldp)
        self.assertEqual(cpu[0].receive(), lldp)
        self.assertIsNone(cpu[2].receive(NOTHING))
        # Sent there, it leaves at the port.
        cpu[2].send(lldp)
        self.assertEqual(two.receive(), lldp)
        self.assertIsNone(one.receive(NOTHING))
        # The CPU port is a member of VLAN 1.
        one.send(frame(BROADCAST, mac(1)))
        self.assertEqual(cpu[0].receive(), frame(BROADCAST, mac(1)))
        cpu[0].send(frame(mac(1), mac(9)))
        self.assertEqual(one.receive(), frame(mac(1), mac(9)))

    def test_a_flood_starves_nobody(self):
        """Two wires take turns: what one sends gets through while the other floods."""
        one, two = self.start_pair()
        self.vchipctl("wire", "3", f"unix:{self.path('s3')}")
        three = self.connect(3, "s3")
        end = time.monotonic() + 1
        sent = 0
        while time.monotonic() < end:
            one.send(*[frame(mac(9), mac(1))] * 50)
            three.send(frame(mac(1), mac(3)))
            sent += 1
        wait_until(lambda: self.wires()[3]["received"] == sent, "all have come in")
        wait_until(lambda: self.counted(1) == 50 * sent, "all are counted")
        counts = self.wires()
        self.assertEqual((counts[1]["sent"], counts[1]["lost"]), (sent, 0))
        # The flood gets its turns too, and what it has too much of is counted.
        self.assertGreater(counts[1]["received"], sent)
        del two


class Hosts(wires.Case):
    """Hosts in namespaces of their own, with the protocols of the system."""

    def setUp(self):
        super().setUp()
        self.hosts = [Namespace(), Namespace()]
        for host in self.hosts:
            self.addCleanup(host.close)

    def tearDown(self):
        super().tearDown()
        remove_links()

    def give_addresses(self, *interfaces):
        for number, (host, interface) in enumerate(zip(self.hosts, interfaces), 1):
            host.run("ip link set lo up")
            host.run(f"ip addr add 10.9.0.{number}/24 dev {interface}")
            host.run(f"ip link set {interface} up")

    def start_hosts(self):
        self.start(*(f"{number}=veth:sw{number}:eth0@{host.path}"
                     for number, host in enumerate(self.hosts, 1)))
        self.give_addresses("eth0", "eth0")

    def pings(self, count=2):
        result = subprocess.run(
            ["nsenter", f"--net={self.hosts[0].path}", "ping", "-c", str(count), "-i", "0.05",
             "-W", "1", "10.9.0.2"], capture_output=True, text=True, timeout=60, check=False)
        return result.returncode == 0

    def transfer(self, size):
        """Sends bytes by TCP from the first host to the second; what came, of its sum."""
        server = self.hosts[1].start(
            sys.executable, "-c",
            "import socket,zlib,sys\n"
            "s=socket.create_server(('10.9.0.2',5001)); print('up',flush=True)\n"
            "c,_=s.accept(); n=k=0\n"
            "while d:=c.recv(1<<20): n+=len(d); k=zlib.crc32(d,k)\n"
            "print(n,k)")
        server.stdout.readline()
        client = self.hosts[0].start(
            sys.executable, "-c",
            "import socket,zlib,random\n"
            f"d=random.Random(1).randbytes({size})\n"
            "s=socket.create_connection(('10.9.0.2',5001),10); s.sendall(d); s.close()\n"
            "print(len(d),zlib.crc32(d))")
        sent = client.communicate(timeout=60)[0]
        return sent, server.communicate(timeout=60)[0]

    def test_ping_obeys_vlans(self):
        self.start_hosts()
        wait_until(self.pings, "the hosts see each other")
        self.swctl("vlan add 20 untagged 2")
        self.swctl("vlan port del 1 2")
        self.swctl("port set 2 vlan 20")
        self.assertFalse(self.pings(1))
        self.swctl("vlan port add 20 untagged 1")
        self.swctl("port set 1 vlan 20")
        self.assertTrue(self.pings())

    def test_tcp_with_offloads_as_they_come(self):
        self.start_hosts()
        wait_until(self.pings, "the hosts see each other")
        sent, got = self.transfer(4_000_000)
        self.assertEqual(sent, got)
        self.assertEqual(self.wires()[1]["unusable"], 0)

    def test_tcp_where_offloads_cannot_be_reached(self):
        """Interfaces that others made: what a sender left to them is done here."""
        for number, host in enumerate(self.hosts, 1):
            ip(f"link add nd{number} type veth peer name eth0 netns {host.process.pid}")
            ip(f"link set nd{number} up")
        self.start("1=netdev:nd1", "2=netdev:nd2")
        self.give_addresses("eth0", "eth0")
        wait_until(self.pings, "the hosts see each other")
        sent, got = self.transfer(4_000_000)
        self.assertEqual(sent, got)
        counts = self.wires()[1]
        self.assertEqual(counts["unusable"], 0)
        # What was one long packet of the sender are many frames.
        self.assertGreater(counts["received"], 4_000_000 // 1460)
        for number in (1, 2):
            ip(f"link del nd{number}")


def enter():
    """Into namespaces of this test's own; 77 if the system does not allow it."""
    missing = [name for name in ("unshare", "nsenter", "ip", "ping", "prlimit", "tc") if not shutil.which(name)]
    if missing:
        print(f"interfaces_test: not run: no {', '.join(missing)}")
        sys.exit(77)
    allowed = subprocess.run(["unshare", "-Urn", "true"], capture_output=True, text=True,
                             check=False)
    if allowed.returncode != 0:
        print(f"interfaces_test: not run: user namespaces are denied: {allowed.stderr.strip()}")
        sys.exit(77)
    os.environ[INSIDE] = "1"
    os.execvp("unshare", ["unshare", "-Urn", sys.executable, *sys.argv])


if __name__ == "__main__":
    if INSIDE not in os.environ:
        enter()
    wires.main()

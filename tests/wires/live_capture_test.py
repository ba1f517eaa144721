# SPDX-License-Identifier: MIT
"""live_capture_test.py PROGRAMS: what vchipctl capture writes, held against the format
and against what tshark, capinfos and tcpdump make of it where they are."""
import os
import shutil
import signal
import socket
import struct
import subprocess
import sys
import time

import wires
from wires import BROADCAST, frame, mac, wait_until

SECTION, INTERFACE, STATISTICS, FRAME = 0x0A0D0D0A, 1, 5, 6
IN, OUT = 1, 2


class Block:
    """One block, with its options by code."""

    def __init__(self, kind, body):
        self.kind, self.options = kind, {}
        fixed = {SECTION: 16, INTERFACE: 8, STATISTICS: 12, FRAME: 20}[kind]
        if kind == FRAME:
            self.interface, high, low, size, self.whole = struct.unpack("=IIIII", body[:20])
            self.time, self.bytes = high << 32 | low, body[20:20 + size]
            fixed += (size + 3) // 4 * 4
        elif kind == STATISTICS:
            self.interface = struct.unpack("=I", body[:4])[0]
        elif kind == INTERFACE:
            self.link_type = struct.unpack("=H", body[:2])[0]
        rest = body[fixed:]
        while rest:
            code, size = struct.unpack("=HH", rest[:4])
            self.options[code] = rest[4:4 + size]
            rest = rest[4 + (size + 3) // 4 * 4:]

    def text(self, code):
        return self.options.get(code, b"").decode()

    def number(self, code):
        return int.from_bytes(self.options.get(code, b""), "little")


def blocks(data):
    """The blocks of a capture, which has to end with the last."""
    found = []
    while data:
        kind, size = struct.unpack("=II", data[:8])
        assert size % 4 == 0 and struct.unpack("=I", data[size - 4:size])[0] == size
        found.append(Block(kind, data[8:size - 4]))
        data = data[size:]
    return found


class Capture:
    """A capture being read."""

    def __init__(self, case, *words):
        self.case = case
        self.process = subprocess.Popen(
            [wires.PROGRAMS / "vchipctl", "capture", *words], env=case.environment,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        case.processes.append(self.process)
        os.set_blocking(self.process.stdout.fileno(), False)
        self.data = b""
        wait_until(lambda: self.read() or self.process.poll() is not None, "the head is there")

    def read(self):
        self.data += self.process.stdout.read() or b""
        return self.data

    def end(self):
        """Interrupts it; its blocks and what it has said."""
        self.process.send_signal(signal.SIGINT)
        return self.result()

    def result(self):
        os.set_blocking(self.process.stdout.fileno(), True)
        rest, errors = self.process.communicate(timeout=wires.PATIENCE)
        self.case.assertEqual(self.process.returncode, 0, errors)
        return blocks(self.data + rest), errors.decode()


def of(found, kind):
    return [block for block in found if block.kind == kind]


class Ports(wires.Case):
    """Three ports, and frames between them."""

    def setUp(self):
        super().setUp()
        self.vchipd = self.start(*(f"{port}=unix:{self.path(f's{port}')}" for port in (1, 2, 3)))
        self.ends = [self.connect(port, f"s{port}") for port in (1, 2, 3)]

    def frames(self, found):
        """(name of the interface, direction, bytes, comment)"""
        names = [block.text(2) for block in of(found, INTERFACE)]
        return [(names[block.interface], block.number(2) & 3, block.bytes, block.text(1))
                for block in of(found, FRAME)]

    def pass_frames(self):
        """A broadcast, its answer, and one for a VLAN that there is not."""
        one, two, _ = self.ends
        ask, answer = frame(BROADCAST, mac(1), b"ask"), frame(mac(1), mac(2), b"answer")
        lost = wires.tagged(frame(mac(2), mac(1)), 99)
        one.send(ask)
        self.assertEqual(two.receive(), ask)
        two.send(answer)
        self.assertEqual(one.receive(), answer)
        one.send(lost)
        wait_until(lambda: self.drops(1)["filter"] == 1, "the last is dropped")
        return ask, answer, lost


class Captures(Ports):
    def test_frames_directions_and_reasons(self):
        before = time.time_ns()
        plain, full = Capture(self), Capture(self, "--drops")
        ask, answer, lost = self.pass_frames()
        why = "dropped at filter: there is no VLAN 99"
        ways = [("port1", IN, ask), ("port2", OUT, ask), ("port3", OUT, ask),
                ("cpu", OUT, ask), ("port2", IN, answer), ("port1", OUT, answer), ("port1", IN, lost)]
        found, errors = plain.end()
        self.assertEqual(self.frames(found), [(*way, "") for way in ways])
        self.assertEqual(errors, "vchipctl: 7 frames captured, 0 missed\n")
        stamps = [block.time for block in of(found, FRAME)]
        self.assertEqual(stamps, sorted(stamps))
        self.assertTrue(before < stamps[0] <= stamps[-1] < time.time_ns())
        self.assertEqual([block.whole for block in of(found, FRAME)],
                         [len(way[2]) for way in ways])
        for block in of(found, INTERFACE):
            self.assertEqual((block.number(9), block.link_type), (9, 1))
        self.assertEqual([block.text(3) for block in of(found, INTERFACE)],
                         [f"unix:{self.path(name)}" for name in ("s1", "s2", "s3")] + [""])
        self.assertEqual([(block.number(4), block.number(5)) for block in of(found, STATISTICS)],
                         [(3, 0), (2, 0), (1, 0), (1, 0)])
        found, _ = full.end()
        self.assertEqual(self.frames(found), [(*way, why if way[2] == lost else "") for way in ways])

    def test_ports_filter_count_and_file(self):
        some = Capture(self, "2", "--filter", "ether src 02:00:00:00:00:01")
        counted = Capture(self, "-c", "2")
        written = self.path("written")
        to_file = subprocess.Popen([wires.PROGRAMS / "vchipctl", "capture", "-w", written],
                                   env=self.environment, stderr=subprocess.PIPE)
        self.processes.append(to_file)
        wait_until(lambda: os.path.exists(written) and os.path.getsize(written), "it has begun")
        ask, answer, _ = self.pass_frames()
        found, _ = some.end()
        self.assertEqual(self.frames(found), [("port2", OUT, ask, "")])
        self.assertEqual(of(found, INTERFACE)[0].text(11), "\0ether src 02:00:00:00:00:01")
        found, errors = counted.result()
        self.assertEqual(len(of(found, FRAME)), 2)
        self.assertIn("2 frames captured", errors)
        # vchipd ends, and with it the capture, whole.
        self.end(self.vchipd)
        to_file.communicate(timeout=wires.PATIENCE)
        self.assertEqual(to_file.returncode, 0)
        with open(written, "rb") as file:
            found = blocks(file.read())
        self.assertEqual(len(of(found, FRAME)), 7)
        self.assertIn(("port2", IN, answer, ""), self.frames(found))
        self.assertEqual(len(of(found, STATISTICS)), 4)

    def test_the_cpu_says_why(self):
        self.swctl("trap set bpdu cpu")
        capture = Capture(self, "0")
        bpdu = frame(b"\x01\x80\xc2\0\0\0", mac(1), kind=0x26)
        self.ends[0].send(bpdu)
        wait_until(lambda: b"bpdu" in capture.read(), "it came up")
        found, _ = capture.end()
        self.assertEqual(self.frames(found), [("cpu", OUT, bpdu, "to the CPU: bpdu, from port 1")])

    def test_a_full_queue_is_outbound(self):
        self.swctl("port set 2 egress 16kbit")
        self.swctl("port set 3 admin off")
        capture = Capture(self, "2", "--drops")
        sent = frame(BROADCAST, mac(1), b"x" * 1000)
        self.ends[0].send(*[sent] * 1030)
        wait_until(lambda: self.drops(2)["queue"] > 0, "the queue is full")
        lost = self.drops(2)["queue"]
        found, _ = capture.end()
        comments = [each for each in self.frames(found) if each[3]]
        self.assertEqual(comments, [("port2", OUT, sent,
                                     "dropped at queue: port 2: its queue is full")] * lost)

    def test_a_slow_reader_holds_up_nothing(self):
        slow = socket.socket(socket.AF_UNIX)
        self.addCleanup(slow.close)
        slow.connect(self.image + ".wires0")
        slow.send(b'{"do":"capture","ports":[0]}\n')
        wait_until(lambda: select_readable(slow), "it has begun")
        self.swctl("vlan port del 1 2-3")
        sent = frame(BROADCAST, mac(1), b"x" * 1400)
        for _ in range(80):
            self.ends[0].send(*[sent] * 100)
        wait_until(lambda: self.drops(1)["received"] == 8000, "all have gone through")
        slow.shutdown(socket.SHUT_WR)
        data = b""
        while more := slow.recv(1 << 20):
            data += more
        line, _, data = data.partition(b"\n")
        self.assertEqual(line, b"{}")
        found = blocks(data)
        last = of(found, STATISTICS)[0]
        self.assertEqual(last.number(4), 8000)
        self.assertGreater(last.number(5), 0)
        self.assertEqual(len(of(found, FRAME)) + last.number(5), 8000)

    def test_a_reader_that_goes_is_forgotten(self):
        capture = Capture(self)
        capture.process.stdout.close()
        self.assertEqual(capture.process.wait(timeout=wires.PATIENCE), 0)
        capture.process.stderr.close()
        self.processes.remove(capture.process)
        self.pass_frames()

    def test_wrong_words(self):
        before = self.path("before")
        with open(before, "w", encoding="ascii") as file:
            file.write("kept")
        for words, status, said in (
                (("--filter", "nonsense"), 2, "bad filter 'nonsense'"),
                (("30",), 1, "30"),
                (("--unit", "1"), 2, "no vchipd serves unit 1"),
                (("-c", "x"), 1, "x")):
            result = self.run_program("vchipctl", "capture", "-w", before, *words)
            self.assertEqual(result.returncode, status, words)
            self.assertIn(said, result.stderr)
        with open(before, encoding="ascii") as file:
            self.assertEqual(file.read(), "kept")
        nowhere = self.run_program("vchipctl", "capture", "-w", self.path("no/where"))
        self.assertEqual(nowhere.returncode, 2)
        self.assertIn("no/where", nowhere.stderr)


def select_readable(connection):
    try:
        connection.recv(1, socket.MSG_PEEK | socket.MSG_DONTWAIT)
    except BlockingIOError:
        return False
    return True


class Extcap(Ports):
    """Wireshark's words for external captures."""

    def setUp(self):
        super().setUp()
        self.interface = f"swctl:{self.image}:0:"

    def test_words(self):
        listed = self.vchipctl("extcap", "--extcap-interfaces", "--extcap-version=4.4")
        self.assertIn("extcap {version=", listed.splitlines()[0])
        for port, text in (("all", "all ports"), ("2", f"port 2 (unix:{self.path('s2')})")):
            self.assertIn(f"interface {{value={self.interface}{port}}}"
                          f"{{display=chip.img unit 0: {text}}}\n", listed)
        self.assertEqual(self.vchipctl("extcap", "--extcap-dlts", "--extcap-interface",
                                       self.interface + "2"),
                         "dlt {number=1}{name=EN10MB}{display=Ethernet}\n")
        self.assertIn("{call=--drops}", self.vchipctl("extcap", "--extcap-config",
                                                      "--extcap-interface", self.interface + "2"))
        result = self.run_program("vchipctl", "extcap", "--capture", "--extcap-interface", "eth0")
        self.assertEqual(result.returncode, 1)
        self.assertIn("no interface 'eth0'", result.stderr)

    def test_a_named_pipe(self):
        pipe = self.path("pipe")
        os.mkfifo(pipe)
        process = subprocess.Popen(
            [wires.PROGRAMS / "vchipctl", "extcap", "--capture", "--extcap-interface",
             self.interface + "2", "--fifo", pipe, "--extcap-capture-filter", "ether proto 0x88b5"],
            stderr=subprocess.PIPE)
        self.processes.append(process)
        with open(pipe, "rb", buffering=0) as file:
            data = file.read(8)
            ask, answer, _ = self.pass_frames()
            process.terminate()
            while more := file.read(65536):
                data += more
        self.assertEqual(self.frames(blocks(data)),
                         [("port2", OUT, ask, ""), ("port2", IN, answer, "")])

    def test_tshark_lists_and_takes_them(self):
        if not shutil.which("tshark"):
            self.skipTest("there is no tshark")
        if os.geteuid() == 0:
            return self.again_as_a_user()
        folder = self.path("extcap")
        os.mkdir(folder)
        here = os.path.dirname(os.path.abspath(__file__))
        shutil.copy(os.path.join(here, "../../vchip/extcap/swctl-extcap"), folder)
        environment = {**os.environ, "WIRESHARK_EXTCAP_DIR": folder, "HOME": self.directory,
                       "PATH": f"{wires.PROGRAMS}:{os.environ['PATH']}"}
        listed = subprocess.run(["tshark", "-D"], env=environment, capture_output=True, text=True,
                                timeout=60, check=False)
        self.assertIn(self.interface + "2", listed.stdout, listed.stderr)
        process = subprocess.Popen(
            ["tshark", "-l", "-n", "-i", self.interface + "2", "-c", "2", "-T", "fields", "-e",
             "frame.interface_name", "-e", "eth.src"], env=environment, text=True,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.processes.append(process)
        end = time.monotonic() + 20
        while process.poll() is None and time.monotonic() < end:
            self.ends[0].send(frame(BROADCAST, mac(1)))
            time.sleep(0.1)
        said, errors = process.communicate(timeout=wires.PATIENCE)
        self.assertEqual([line.split("\t")[-1] for line in said.splitlines()],
                         ["02:00:00:00:00:01"] * 2, errors)
        return None

    def again_as_a_user(self):
        """tshark takes root's interfaces from its own folder alone."""
        user = ["unshare", "-U", "--map-user=1000", "--map-group=1000"]
        if subprocess.run([*user, "true"], capture_output=True, check=False).returncode != 0:
            self.skipTest("user namespaces are denied, and tshark is not asked as root")
        again = subprocess.run([*user, sys.executable, __file__, wires.PROGRAMS,
                                self.id().removeprefix("__main__.")],
                               capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual(again.returncode, 0, again.stderr)
        if "skipped" in again.stderr:
            self.skipTest(again.stderr)


class Readers(Ports):
    """What other programs make of a capture."""

    def setUp(self):
        super().setUp()
        self.file = self.path("capture.pcapng")
        capture = Capture(self, "--drops")
        self.pass_frames()
        capture.process.send_signal(signal.SIGINT)
        os.set_blocking(capture.process.stdout.fileno(), True)
        with open(self.file, "wb") as file:
            file.write(capture.read() + capture.process.communicate()[0])

    def read_with(self, program, *words):
        if not shutil.which(program):
            self.skipTest(f"there is no {program}")
        return subprocess.run([program, *words], capture_output=True, text=True, timeout=60,
                              check=True).stdout

    def test_tshark(self):
        lines = self.read_with(
            "tshark", "-r", self.file, "-T", "fields", "-e", "frame.interface_name", "-e",
            "frame.packet_flags_direction", "-e", "frame.comment").splitlines()
        self.assertEqual([line.split("\t")[0] for line in lines],
                         ["port1", "port2", "port3", "cpu", "port2", "port1", "port1"])
        self.assertIn("dropped at filter: there is no VLAN 99", lines[-1])
        self.assertEqual(sum("dropped" in line for line in lines), 1)

    def test_capinfos(self):
        said = self.read_with("capinfos", self.file)
        self.assertIn("Number of interfaces in file: 4", said)
        self.assertRegex(said, r"Number of packets: +7\b")
        self.assertIn("nanoseconds (9)", said)

    def test_tcpdump(self):
        said = self.read_with("tcpdump", "-n", "-t", "-r", self.file).splitlines()
        self.assertEqual(sum("ethertype Unknown (0x88b5)" in line for line in said), 7)


if __name__ == "__main__":
    wires.main()

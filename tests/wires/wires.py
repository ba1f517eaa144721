# SPDX-License-Identifier: MIT
"""What the tests of vchipd share: programs, frames, streams and captures."""
import json
import os
import pathlib
import shutil
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAMS = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else pathlib.Path()
BROADCAST = b"\xff" * 6
# What a vchipd tells another one about its port.
CABLE = bytes.fromhex("0180c2000001020000000000" "8808fffe")
NOTHING = 0.15  # seconds in which a frame would have come
PATIENCE = 5    # seconds until something is given up


def mac(number):
    return b"\x02\0\0\0\0" + bytes([number])


def frame(destination, source, payload=b"", kind=0x88b5):
    """An Ethernet frame of the least length, or longer."""
    return (destination + source + struct.pack(">H", kind) + payload).ljust(60, b"\0")


def tagged(untagged, vlan, priority=0):
    return untagged[:12] + struct.pack(">HH", 0x8100, priority << 13 | vlan) + untagged[12:]


def wait_until(holds, what, seconds=PATIENCE):
    end = time.monotonic() + seconds
    while not holds():
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain: {what}")
        time.sleep(0.01)


class Stream:
    """The other end of unix: or tcp:."""

    def __init__(self, address, family=socket.AF_UNIX):
        self.socket = socket.socket(family, socket.SOCK_STREAM)
        self.socket.connect(address)
        self.rest = b""

    def send(self, *frames):
        self.socket.sendall(b"".join(struct.pack(">I", len(each)) + each for each in frames))

    def receive(self, seconds=PATIENCE):
        """The next frame that is not about the cable;"""
        while True:
            got = self.receive_any(seconds)
            if got is None or not got.startswith(CABLE):
                return got

    def receive_any(self, seconds=PATIENCE):
        """The next frame; None if there is none in that time, or the stream has ended."""
        self.socket.settimeout(seconds)
        while len(self.rest) < 4 or len(self.rest) < 4 + self.length():
            try:
                more = self.socket.recv(65536)
            except TimeoutError:
                return None
            if not more:
                return None
            self.rest += more
        end = 4 + self.length()
        got, self.rest = self.rest[4:end], self.rest[end:]
        return got

    def length(self):
        return struct.unpack(">I", self.rest[:4])[0]

    def close(self):
        self.socket.close()


def write_capture(path, frames, link_type=1):
    """Frames as (nanoseconds, bytes)."""
    data = struct.pack("=IHHiIII", 0xa1b23c4d, 2, 4, 0, 0, 65535, link_type)
    for stamp, each in frames:
        data += struct.pack("=IIII", stamp // 10**9, stamp % 10**9, len(each), len(each)) + each
    pathlib.Path(path).write_bytes(data)


def read_capture(path):
    data = pathlib.Path(path).read_bytes()
    assert struct.unpack("=I", data[:4])[0] == 0xa1b23c4d, "no capture with nanoseconds"
    frames, place = [], 24
    while place < len(data):
        seconds, fraction, size, _ = struct.unpack("=IIII", data[place:place + 16])
        frames.append((seconds * 10**9 + fraction, data[place + 16:place + 16 + size]))
        place += 16 + size
    return frames


class Case(unittest.TestCase):
    """A chip in an image of its own, and the programs that use it."""

    def setUp(self):
        self.directory = tempfile.mkdtemp(prefix="wires-")
        self.image = self.path("chip.img")
        self.environment = {**os.environ, "VCHIP_IMAGE": self.image, "VCHIP_LOG": "none"}
        self.processes = []

    def tearDown(self):
        for process in self.processes:
            if process.poll() is None:
                process.kill()
            process.communicate()
        shutil.rmtree(self.directory)

    def path(self, name):
        return os.path.join(self.directory, name)

    def run_program(self, name, *words):
        return subprocess.run([PROGRAMS / name, *words], env=self.environment, text=True,
                              capture_output=True, timeout=60, check=False)

    def done(self, name, *words):
        """What a command prints that is done."""
        result = self.run_program(name, *words)
        self.assertEqual((result.returncode, result.stderr), (0, ""), words)
        return result.stdout

    def swctl(self, line):
        return self.done("swctl", *line.split())

    def vchipctl(self, *words):
        return self.done("vchipctl", *words)

    def wires(self):
        return {row["port"]: row for row in json.loads(self.vchipctl("wires", "-j"))}

    def drops(self, port):
        return json.loads(self.vchipctl("drops", "-j", str(port)))[0]["counts"]

    def launch(self, *words, within=()):
        """Within another program, if that is given."""
        process = subprocess.Popen([*within, PROGRAMS / "vchipd", *words], env=self.environment,
                                   text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.processes.append(process)
        return process

    def start(self, *ports, options=(), within=()):
        """A vchipd that answers."""
        words = [word for port in ports for word in ("--port", port)]
        process = self.launch(*words, *options, within=within)
        def answers():
            if process.poll() is not None:
                raise AssertionError(process.communicate())
            return self.run_program("vchipctl", "wires").returncode == 0
        wait_until(answers, "vchipd answers")
        return process

    def end(self, process, number=signal.SIGTERM):
        """Ends it; what it has written to standard error."""
        process.send_signal(number)
        _, errors = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 0, errors)
        return errors

    def connect(self, port, name):
        """Joins the socket of a port, and waits until the chip has seen it."""
        stream = Stream(self.path(name))
        self.addCleanup(stream.close)
        wait_until(lambda: self.wires()[port]["carrier"], f"carrier at port {port}")
        return stream


def main():
    unittest.main(argv=[sys.argv[0]] + sys.argv[2:], verbosity=1)

# SPDX-License-Identifier: MIT
"""memory_test.py PROGRAMS: what a wire takes, with every front port of a chip in use and
loaded, and nobody reading what leaves: at most 1 Mbyte a port, of the process and of
the kernel in the name of its sockets."""
import ctypes
import errno
import os
import re
import signal
import socket
import struct
import time

import interfaces_test
import wires
from wires import BROADCAST, frame, mac, wait_until

MOST = 1 << 20      # bytes a port
FEW = 2
FRAMES = 300        # to each port while vchipd does not run: more than a ring holds
PIDFD_GETFD = 438   # of every architecture that has pidfds
SO_MEMINFO = 55
# Of a sanitizer the memory that it keeps back would be counted.
SANITIZER = ("quarantine_size_mb=0:thread_local_quarantine_size_kb=0:"
             "allocator_release_to_os_interval_ms=0")


def socket_memory(process):
    """Bytes that the kernel keeps for the sockets of a process: received and not yet read,
    sent and not yet taken."""
    total = 0
    handle = os.pidfd_open(process)
    system = ctypes.CDLL(None, use_errno=True)
    for name in os.listdir(f"/proc/{process}/fd"):
        if not os.readlink(f"/proc/{process}/fd/{name}").startswith("socket:"):
            continue
        number = system.syscall(PIDFD_GETFD, handle, int(name), 0)
        if number < 0:
            raise OSError(ctypes.get_errno(), "pidfd_getfd")
        # Of whatever kind it is: the option is of them all.
        with socket.socket(socket.AF_UNIX, socket.SOCK_STREAM, fileno=number) as copy:
            received, _, sent = struct.unpack("3I", copy.getsockopt(socket.SOL_SOCKET, SO_MEMINFO,
                                                                    36)[:12])
        total += received + sent
    os.close(handle)
    return total


def process_memory(process):
    """Bytes in memory, rings that the kernel shares with it included; that of a program is
    there twice, and counts once."""
    total, kind = 0, "Rss:"
    with open(f"/proc/{process}/smaps", encoding="utf-8") as parts:
        for line in parts:
            if re.match("[0-9a-f]+-", line):
                kind = "Pss:" if "bpf-map" in line else "Rss:"
            elif line.startswith(kind):
                total += int(line.split()[1]) * 1024
    return total


class Memory(wires.Case):
    ports = 26
    seconds = 0.6

    def setUp(self):
        super().setUp()
        options = [self.environment.get("ASAN_OPTIONS", ""), SANITIZER]
        self.environment["ASAN_OPTIONS"] = ":".join(filter(None, options))

    def tearDown(self):
        super().tearDown()
        interfaces_test.remove_links()

    def memory_of(self, count, wire, prepare, send):
        """Bytes of the process and of its sockets with so many ports, once every end has been
        sent to for a time, and then while vchipd does not run, which fills what is in front
        of it."""
        process = self.start(*(f"{port}={wire(port)}" for port in range(1, count + 1)))
        ends = [prepare(port) for port in range(1, count + 1)]
        wait_until(lambda: all(row["carrier"] for row in self.wires().values()), "links", 30)
        end = time.monotonic() + self.seconds
        while time.monotonic() < end:
            for number, each in enumerate(ends, 1):
                send(each, number)
        rows = self.wires().values()
        self.assertEqual(len(rows), count)
        for row in rows:
            self.assertGreater(row["received"], 50, row)
            self.assertGreater(row["sent"] + row["lost"], 50, row)
        process.send_signal(signal.SIGSTOP)
        for _ in range(FRAMES):
            for number, each in enumerate(ends, 1):
                send(each, number)
        memory = process_memory(process.pid), socket_memory(process.pid)
        process.send_signal(signal.SIGCONT)
        for each in ends:
            each.close()
        self.end(process)
        return memory

    def measure(self, *how):
        """What each port beyond the first two takes: those bring in the programs and the chip."""
        few, many = self.memory_of(FEW, *how), self.memory_of(self.ports, *how)
        own, sockets = ((more - less) // (self.ports - FEW) for more, less in zip(many, few))
        print(f"{self.id()}: a port takes {own:,} bytes of the process and {sockets:,} of sockets",
              flush=True)
        self.assertLessEqual(own + sockets, MOST)

    def test_streams(self):
        def prepare(port):
            end = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
            end.connect(self.path(f"s{port}"))
            end.setblocking(False)
            return end

        rests = {}

        def send(end, number):
            data = frame(BROADCAST, mac(number), b"x" * 1400)
            rests.setdefault(end, (struct.pack(">I", len(data)) + data) * 10)
            try:
                rests[end] = rests[end][end.send(rests[end]):] or rests.pop(end)
            except BlockingIOError:
                pass
        self.measure(lambda port: f"unix:{self.path(f's{port}')}", prepare, send)

    def test_interfaces(self):
        """With frames that are longer than a place in the ring, too."""
        def prepare(port):
            for name in (f"sw{port}", f"sw{port}h"):
                interfaces_test.ip(f"link set {name} mtu 9000")
            interfaces_test.ip(f"link set sw{port}h up")
            end = socket.socket(socket.AF_PACKET, socket.SOCK_RAW)
            end.bind((f"sw{port}h", 0))
            return end

        def send(end, number):
            for size in (8000, 1400, 60, 60, 60):
                try:
                    end.send(frame(BROADCAST, mac(number), b"x" * size))
                except OSError as fault:
                    self.assertEqual(fault.errno, errno.ENOBUFS)
        self.measure(lambda port: f"veth:sw{port}", prepare, send)


if __name__ == "__main__":
    if interfaces_test.INSIDE not in os.environ:
        interfaces_test.enter()
    wires.main()

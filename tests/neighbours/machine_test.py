# SPDX-License-Identifier: MIT
"""machine_test.py PROGRAMS: an emulated machine with an unmodified kernel, its
network card on unix:, beside a host in a namespace."""
import os
import pathlib
import shutil
import subprocess

import neighbours
from neighbours import wait_until

KERNEL = pathlib.Path(os.environ.get("NEIGHBOUR_KERNEL", "build/kernel")).resolve()
INIT = """#!/bin/busybox sh
box=/bin/busybox
$box mount -t proc proc /proc
$box insmod /e1000.ko
$box ip link set eth0 up
$box ip addr add 10.0.0.2/24 dev eth0
echo "machine: up"
$box nc -ll -p 5001 -e /bin/busybox md5sum
"""
BOOT_SECONDS = 200


class Machine(neighbours.Case):
    def disk(self):
        """A RAM disk with busybox and the driver."""
        root = pathlib.Path(self.path("root"))
        for name in ("bin", "proc", "dev"):
            (root / name).mkdir(parents=True)
        shutil.copy(shutil.which("busybox"), root / "bin/busybox")
        shutil.copy(next(KERNEL.glob("modules/*e1000.ko")), root / "e1000.ko")
        (root / "init").write_text(INIT, encoding="ascii")
        (root / "init").chmod(0o755)
        names = "\n".join(str(path.relative_to(root)) for path in root.rglob("*"))
        disk = subprocess.run(["cpio", "-o", "-H", "newc", "--quiet"], input=names.encode(),
                              cwd=root, capture_output=True, check=True).stdout
        pathlib.Path(self.path("disk")).write_bytes(disk)
        return self.path("disk")

    def boot(self, socket):
        with open(self.path("console"), "wb") as console:
            process = subprocess.Popen(
                ["qemu-system-x86_64", "-m", "192", "-accel", "tcg", "-nographic", "-no-reboot",
                 "-kernel", KERNEL / "vmlinux", "-initrd", self.disk(),
                 "-append", "console=ttyS0 quiet panic=-1", "-nic", "none",
                 "-device", "e1000,netdev=n,mac=02:00:00:00:00:22,romfile=",
                 "-netdev", f"stream,id=n,server=off,addr.type=unix,addr.path={socket}"],
                stdin=subprocess.DEVNULL, stdout=console, stderr=subprocess.STDOUT)
        self.processes.append(process)
        return process

    def console(self):
        return pathlib.Path(self.path("console")).read_text(encoding="utf-8", errors="replace")

    def test_machine_and_host(self):
        host = neighbours.Host(self, "host")
        self.start(f"1=veth:sw1:eth0@{host.path}", f"2=unix:{self.path('sw2')}")
        host.up("eth0", "10.0.0.1/24")
        machine = self.boot(self.path("sw2"))
        wait_until(lambda: "machine: up" in self.console() or machine.poll() is not None,
                   "the machine is up", BOOT_SECONDS)
        self.assertIsNone(machine.poll(), self.console())
        self.assertTrue(self.wires()[2]["carrier"])
        wait_until(lambda: host.pings("10.0.0.2"), "the host sees the machine", 60)
        self.assertIn("02:00:00:00:00:22", self.swctl("mac show"))
        # A megabyte by TCP arrives as it was sent.
        sent = os.urandom(1 << 20)
        said = subprocess.run(host.inside("busybox", "nc", "10.0.0.2", "5001"), input=sent,
                              capture_output=True, timeout=60, check=True).stdout.decode()
        digest = subprocess.run(["md5sum"], input=sent, capture_output=True, check=True).stdout
        self.assertEqual(said.split()[:1], digest.decode().split()[:1])
        self.swctl("vlan port del 1 2")
        self.assertFalse(host.pings("10.0.0.2"))
        machine.kill()
        wait_until(lambda: not self.wires()[2]["carrier"], "its cable is pulled")


if __name__ == "__main__":
    if not (KERNEL / "vmlinux").exists() or not list(KERNEL.glob("modules/*e1000.ko")):
        neighbours.skip("there is no kernel; ./dev neighbours fetches one")
    neighbours.main("qemu-system-x86_64", "busybox", "cpio", "md5sum")

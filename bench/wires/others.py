# SPDX-License-Identifier: MIT
"""Switches of others as Debian has them, between the same two hosts: Open vSwitch with the
datapath of the kernel and with its own, and vde. Each says in `missing` why it cannot be
measured here."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import time

from switches import RULES, Veth, ip, run, time_of

PATIENCE = 10  # seconds until a program that does not answer is given up


def where(program):
    """Those of the administrator are not in everyone's path."""
    return shutil.which(program, path=f"{os.environ.get('PATH', '')}:/usr/sbin:/sbin")


def lack(package, *programs):
    """What to say where a program is missing."""
    missing = [program for program in programs if not where(program)]
    return f"there is no {missing[0]} (package {package})" if missing else None


class Pairs(Veth):
    """The hosts at veth, and a folder and programs that go with the block."""

    switch_ends = ("s1", "s2", "s3")

    def __enter__(self):
        self.directory = tempfile.mkdtemp(prefix="wires-bench-")
        self.processes = []
        self.pairs = list(zip(self.switch_ends, self.ends))
        try:
            for name, end in self.pairs:
                ip(f"link add {name} type veth peer name {end}")
                ip(f"link set {name} addrgenmode none")
                ip(f"link set {name} up")
            self.begin()
            self.quiet()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            process.terminate()
        for process in self.processes:
            try:
                process.wait(timeout=PATIENCE)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        for name, _ in self.pairs:
            run("ip", "link", "del", name, check=False)
        shutil.rmtree(self.directory)

    def path(self, name):
        return os.path.join(self.directory, name)

    def start(self, program, *words):
        """A program that goes on; its standard input stays open."""
        with open(self.path("log"), "ab") as log:
            process = subprocess.Popen([where(program), *words], stdin=subprocess.PIPE, stdout=log,
                                       stderr=log)
        self.processes.append(process)
        return process

    def wait_for(self, name):
        end = time.monotonic() + PATIENCE
        while not os.path.exists(self.path(name)):
            if time.monotonic() > end:
                raise SystemExit(pathlib.Path(self.path("log")).read_text(encoding="utf-8"))
            time.sleep(0.02)

    def own_time(self):
        return sum(time_of(process.pid) for process in self.processes)


def denial_of_tun():
    """The bridge of the datapath in user space is a tap itself."""
    return None if os.access("/dev/net/tun", os.R_OK | os.W_OK) else "no right to /dev/net/tun"


class OpenVswitch(Pairs):
    """With the ports in one VLAN, and flows that the frames do not match."""

    name = "Open vSwitch, userspace"
    datapath = "netdev"
    missing = (lack("openvswitch-switch", "ovs-vswitchd", "ovsdb-server", "ovsdb-tool", "ovs-vsctl",
                    "ovs-ofctl", "ovs-appctl")
               or denial_of_tun())
    schema = "/usr/share/openvswitch/vswitch.ovsschema"

    def control(self, *words):
        run(where("ovs-vsctl"), f"--db=unix:{self.path('db.sock')}", "-t", str(PATIENCE), *words)

    def __exit__(self, *_):
        """Its own interface stays if the daemon ends with the bridge."""
        if len(self.processes) > 1:
            self.control("--if-exists", "del-br", "br0")
        super().__exit__()

    def begin(self):
        os.environ["OVS_RUNDIR"] = self.directory
        os.environ["OVS_LOGDIR"] = self.directory
        run(where("ovsdb-tool"), "create", self.path("conf.db"), self.schema)
        self.start("ovsdb-server", self.path("conf.db"), f"--remote=punix:{self.path('db.sock')}",
                   f"--unixctl={self.path('db.ctl')}")
        self.wait_for("db.sock")
        self.control("--no-wait", "init")
        self.start("ovs-vswitchd", f"unix:{self.path('db.sock')}",
                   f"--unixctl={self.path('vs.ctl')}",
                   *(["--disable-system"] if self.datapath == "netdev" else []))
        self.control("add-br", "br0", "--", "set", "bridge", "br0",
                     f"datapath_type={self.datapath}")
        for name, _ in self.pairs:
            self.control("add-port", "br0", name, "tag=10")
        self.add_flows()

    def add_flows(self):
        flows = ["priority=0,actions=NORMAL"]
        flows += [f"priority={rule + 1},tcp,nw_dst=192.0.2.{rule},tp_dst=80,actions=drop"
                  for rule in range(RULES)]
        pathlib.Path(self.path("flows")).write_text("\n".join(flows) + "\n", encoding="ascii")
        run(where("ovs-ofctl"), "add-flows", "br0", self.path("flows"))

    def forget(self):
        run(where("ovs-appctl"), "-t", self.path("vs.ctl"), "fdb/flush", "br0")


def denial_of_kernel():
    """ovs-dpctl says whether the kernel has the datapath."""
    result = subprocess.run([where("ovs-dpctl"), "show"], capture_output=True, text=True,
                            check=False, timeout=PATIENCE)
    return None if result.returncode == 0 else "this kernel has no module openvswitch"


class OpenVswitchKernel(OpenVswitch):
    name = "Open vSwitch, kernel"
    datapath = "system"
    missing = lack("openvswitch-switch", "ovs-dpctl") or denial_of_kernel()


class Vde(Pairs):
    """vde_switch, with a vde_pcapplug between it and each interface."""

    name = "vde"
    missing = lack("vde2", "vde_switch", "vde_pcapplug")

    def begin(self):
        self.start("vde_switch", "-s", self.path("ctl"), "-M", self.path("mgmt"))
        self.wait_for("ctl/ctl")
        for name, _ in self.pairs:
            self.start("vde_pcapplug", "-s", self.path("ctl"), name)

    def forget(self):
        """A switch that has just been started knows nothing."""
        self.__exit__()
        self.__enter__()

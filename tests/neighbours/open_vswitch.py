# SPDX-License-Identifier: MIT
"""Open vSwitch with its datapath in user space, and a database of its own."""
import os

from neighbours import wait_until

SCHEMA = "/usr/share/openvswitch/vswitch.ovsschema"
PROGRAMS = ("ovs-vswitchd", "ovsdb-server", "ovsdb-tool", "ovs-vsctl", "ovs-appctl")


class OpenVswitch:
    """One in the network of `host`, whose bridge is called `bridge`."""

    def __init__(self, case, host, bridge):
        self.host, self.bridge = host, bridge
        self.folder = case.path(bridge)
        os.mkdir(self.folder)
        self.command(f"ovsdb-tool create {self.path('conf.db')} {SCHEMA}")
        self.start("ovsdb-server", self.path("conf.db"), f"--remote=punix:{self.path('db.sock')}",
                   f"--unixctl={self.path('db.ctl')}")
        wait_until(lambda: os.path.exists(self.path("db.sock")), "the database answers")
        self.control("--no-wait init")
        self.start("ovs-vswitchd", f"unix:{self.path('db.sock')}",
                   f"--unixctl={self.path('vs.ctl')}", "--disable-system")
        self.control(f"add-br {bridge} -- set bridge {bridge} datapath_type=netdev")

    def close(self):
        """The interface of the bridge would stay."""
        self.control(f"del-br {self.bridge}")

    def path(self, name):
        return os.path.join(self.folder, name)

    def inside(self, words):
        return ["env", f"OVS_RUNDIR={self.folder}", f"OVS_LOGDIR={self.folder}", *words]

    def command(self, line):
        result = self.host.ask(*self.inside(line.split()))
        if result.returncode != 0:
            raise AssertionError((line, result.stdout, result.stderr))
        return result.stdout

    def start(self, *words):
        self.host.start(*self.inside(words))

    def control(self, line):
        return self.command(f"ovs-vsctl --db=unix:{self.path('db.sock')} -t 10 {line}")

    def bundle(self, *links):
        """One port of several links, by LACP with PDUs every second."""
        self.control(f"add-bond {self.bridge} bond0 {' '.join(links)} lacp=active "
                     "bond_mode=balance-tcp other_config:lacp-time=fast")

    def lacp(self):
        """What it says of the bundle; nothing while there is none."""
        return self.host.ask(*self.inside(["ovs-appctl", "-t", self.path("vs.ctl"), "lacp/show",
                                           "bond0"])).stdout

    def attached(self):
        """How many links the bundle uses."""
        return self.lacp().count("current attached")

    def is_negotiated(self):
        return "status: active negotiated" in self.lacp()

# SPDX-License-Identifier: MIT
"""image_test.py

The container image as podman runs it, alone, in the topology of the example for
containerlab and in the pod of that for Kubernetes. Neither of these is here itself: the
topology is read, and the same containers and links are made; podman plays the manifest.
"""
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile
import time
import unittest

import podman as containers
import yaml

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"
# The least that a switch needs.
RIGHTS = ["--cap-drop=all", "--cap-add=net_admin,net_raw", "--read-only"]
SERVER = """
import hashlib, socket
with socket.create_server(("", 5001)) as server:
    print("listening", flush=True)
    caller = server.accept()[0]
    digest = hashlib.sha256()
    while got := caller.recv(65536):
        digest.update(got)
    print(digest.hexdigest(), flush=True)
"""
CLIENT = """
import socket, sys
with socket.create_connection((sys.argv[1], 5001), timeout=30) as server:
    server.sendall(sys.stdin.buffer.read())
"""
PODMAN, REASON = containers.find_podman()


def wait_until(holds, what, seconds=20):
    end = time.monotonic() + seconds
    while not holds():
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain: {what}")
        time.sleep(0.2)


class Case(unittest.TestCase):
    def container(self, name, *options, command=()):
        made = containers.Container.start(PODMAN, name, *options, command=command)
        self.addCleanup(made.remove)
        return made

    def host(self, name):
        return self.container(name, "--entrypoint=sleep", "--no-healthcheck",
                              "--cap-add=net_raw", command=["infinity"])

    def wait_for_health(self, switch):
        wait_until(lambda: switch.check_health() == (0, "healthy"), f"{switch.name} is healthy")

    def assert_pings(self, host, address, expected):
        result = host.ask("ping", "-c", "2", "-i", "0.2", "-W", "1", address)
        self.assertEqual(result.returncode == 0, expected, (host.name, address, result.stdout))


    def assert_tcp(self, host, other, address):
        """Many segments, as the hosts' interfaces leave them to be divided."""
        text = os.urandom(1 << 20) * 8
        server = subprocess.Popen(other.outside(sys.executable, "-c", SERVER),
                                  stdout=subprocess.PIPE)
        self.addCleanup(server.stdout.close)
        self.addCleanup(server.kill)
        self.assertEqual(server.stdout.readline(), b"listening\n")
        subprocess.run(host.outside(sys.executable, "-c", CLIENT, address), input=text, check=True,
                       timeout=60)
        self.assertEqual(server.stdout.readline().decode().strip(),
                         hashlib.sha256(text).hexdigest())
        self.assertEqual(server.wait(), 0)


class Switch(Case):
    def setUp(self):
        self.directory = tempfile.TemporaryDirectory()
        self.addCleanup(self.directory.cleanup)
        self.config = pathlib.Path(self.directory.name, "config")
        self.state = pathlib.Path(self.directory.name, "state")
        self.state.mkdir()

    def switch(self):
        return self.container("switch", *RIGHTS, f"--volume={self.state}:/var/lib/swctl",
                              f"--volume={self.config}:/etc/swctl/config:ro")

    def test_health_is_that_of_the_wires(self):
        self.config.write_text("")
        switch, host = self.switch(), self.host("host")
        status, health = switch.check_health()
        self.assertNotEqual((status, health), (0, "healthy"))
        containers.cable(switch, "eth1", host, "eth1")
        self.wait_for_health(switch)
        host.set_up("ip link set eth1 down")
        wait_until(lambda: switch.check_health()[0] != 0, "a check fails")
        # What fails in the first seconds of a container does not count.
        wait_until(lambda: switch.check_health()[1] == "unhealthy", "it is unhealthy", 60)
        host.set_up("ip link set eth1 up")
        self.wait_for_health(switch)

    def test_its_state_is_in_the_volume(self):
        """It ends by itself when it is told to, and the next one goes on."""
        self.config.write_text("vlan add 10\nport set 1 description north\n")
        switch = self.switch()
        wait_until(lambda: switch.ask("vchipctl", "wires").returncode == 0, "vchipd answers")
        saved = switch.do("swctl config show")
        self.assertIn("north", saved)
        switch.do("swctl config checkpoint monday")
        PODMAN.do("stop", "-t", "20", switch.name)
        self.assertEqual(switch.inspect()["State"]["ExitCode"], 0)
        switch.remove()
        self.config.write_text("vlan add 20\n")
        switch = self.switch()
        wait_until(lambda: switch.ask("vchipctl", "wires").returncode == 0, "vchipd answers")
        self.assertEqual(switch.do("swctl config show"), "vlan add 20\n")
        switch.do("swctl config rollback monday")
        self.assertEqual(switch.do("swctl config show"), saved)

    def test_a_wrong_configuration_ends_it(self):
        self.config.write_text("vlan add 10\nvlan subtract 10\n")
        switch = self.switch()
        wait_until(lambda: not switch.inspect()["State"]["Running"], "it has ended")
        self.assertEqual(switch.inspect()["State"]["ExitCode"], 2)
        said = PODMAN.ask("logs", switch.name)
        self.assertIn("/etc/swctl/config:2: vlan:", said.stdout + said.stderr)


class Topology(Case):
    """What containerlab makes of a topology, as far as the examples use it."""

    KNOWN = {"kind", "image", "binds", "entrypoint", "exec"}

    def make(self, path):
        document = yaml.safe_load(path.read_text(encoding="utf-8"))
        self.assertEqual(set(document), {"name", "topology"})
        topology = document["topology"]
        self.assertEqual(set(topology), {"defaults", "nodes", "links"})
        nodes = {name: self.node(path.parent, name, {**topology["defaults"], **(words or {})})
                 for name, words in topology["nodes"].items()}
        for link in topology["links"]:
            self.assertEqual(set(link), {"endpoints"})
            ends = [end.split(":") for end in link["endpoints"]]
            containers.cable(nodes[ends[0][0]], ends[0][1], nodes[ends[1][0]], ends[1][1])
        for name, words in topology["nodes"].items():
            for line in words.get("exec", []):
                nodes[name].set_up(line)
        return nodes

    def node(self, folder, name, words):
        """Binds are relative to the file; all nodes are privileged there."""
        self.assertLessEqual(set(words), self.KNOWN)
        self.assertEqual((words["kind"], words["image"]), ("linux", containers.IMAGE))
        options = [f"--volume={(folder / bind).resolve()}" for bind in words.get("binds", [])]
        command = []
        if "entrypoint" in words:
            entrypoint, *command = shlex.split(words["entrypoint"])
            options += [f"--entrypoint={entrypoint}", "--no-healthcheck"]
        return self.container(name, *options, "--cap-add=net_admin,net_raw", command=command)

    def test_two_switches(self):
        nodes = self.make(EXAMPLES / "containerlab/two-switches.clab.yml")
        for name in ("sw1", "sw2"):
            self.wait_for_health(nodes[name])
        self.assert_pings(nodes["host1"], "10.0.0.2", True)
        self.assert_tcp(nodes["host1"], nodes["host2"], "10.0.0.2")
        self.assert_pings(nodes["host3"], "10.0.0.2", False)
        self.assertRegex(nodes["sw1"].do("swctl mac show"), r"(?m)^10 .* 25 ")
        for line in ("vlan port del 10 1", "vlan port add 20 untagged 1", "port set 1 vlan 20"):
            nodes["sw2"].do(f"swctl {line}")
        self.assert_pings(nodes["host1"], "10.0.0.2", False)
        self.assert_pings(nodes["host3"], "10.0.0.2", True)


class Manifest(Case):
    """What Kubernetes makes of the pod, as far as podman does the same."""

    FILE = EXAMPLES / "kubernetes/switch.yaml"
    VOLUMES = ("switch-config", "switch-state")

    def setUp(self):
        for name in self.VOLUMES:
            self.assertNotEqual(PODMAN.ask("volume", "exists", name).returncode, 0,
                                f"there is a volume {name} already")
        documents = yaml.safe_load_all(self.FILE.read_text(encoding="utf-8"))
        self.documents = {each["kind"]: each for each in documents}
        self.pod = self.documents["Deployment"]["spec"]["template"]
        self.addCleanup(self.take_down)
        PODMAN.do("play", "kube", "--network=none", self.FILE)
        self.switch = containers.Container(PODMAN, "switch-pod-0-switch")

    def take_down(self):
        PODMAN.ask("play", "kube", "--down", self.FILE)
        PODMAN.ask("volume", "rm", "-f", *self.VOLUMES)

    def interfaces(self):
        """Those that Multus would make, of the networks that there are."""
        wanted = json.loads(self.pod["metadata"]["annotations"]["k8s.v1.cni.cncf.io/networks"])
        networks = (self.FILE.parent / "networks.yaml").read_text(encoding="utf-8")
        names = [each["metadata"]["name"] for each in yaml.safe_load_all(networks)]
        self.assertEqual([each["name"] for each in wanted], names)
        return [each["interface"] for each in wanted]

    def probe(self, name):
        return self.switch.ask(*self.pod["spec"]["containers"][0][name]["exec"]["command"])

    def test_the_pod(self):
        wait_until(lambda: self.probe("livenessProbe").returncode == 0, "it lives")
        self.assertNotEqual(self.probe("readinessProbe").returncode, 0)
        self.assertEqual(self.switch.do("swctl config show"),
                         "vlan add 10 untagged 1,2\nport set 1,2 vlan 10\n")
        hosts = [self.host(f"host{number}") for number in (1, 2)]
        for number, (host, interface) in enumerate(zip(hosts, self.interfaces()), 1):
            containers.cable(self.switch, interface, host, "eth1")
            host.set_up(f"ip address add 10.0.0.{number}/24 dev eth1")
        wait_until(lambda: self.probe("readinessProbe").returncode == 0, "it is ready")
        self.assert_pings(hosts[0], "10.0.0.2", True)
        self.switch.do("swctl port set 2 vlan 1")
        self.switch.do("swctl vlan port del 10 2")
        self.assert_pings(hosts[0], "10.0.0.2", False)
        self.assertEqual(PODMAN.ask("healthcheck", "run", self.switch.name).returncode, 0)


if __name__ == "__main__":
    if REASON:
        print(f"image_test: not run: {REASON}")
        sys.exit(77)
    unittest.main(verbosity=2)

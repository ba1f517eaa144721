# SPDX-License-Identifier: MIT
"""Containers of podman, with cables made by hand between them."""
import atexit
import json
import os
import shutil
import subprocess
import tempfile

IMAGE = "localhost/swctl:latest"
PREFIX = f"swctl-test-{os.getpid()}-"
# Limits that podman may set where it is in a container itself, and what this machine may
# need more: cgroups left alone, another runtime.
LIMITS = '[containers]\ndefault_ulimits = ["nofile=4096:4096", "nproc=4096:4096"]\n'
VARIANTS = ["", 'cgroups = "disabled"\n', '[engine]\nruntime = "runc"\n']


# Where an ordinary user has rights in the networks of his containers.
OUTSIDE = [] if os.getuid() == 0 else ["podman", "unshare"]


class Podman:
    def __init__(self, variant):
        with tempfile.NamedTemporaryFile("w", suffix=".conf", delete=False) as file:
            file.write(LIMITS + variant)
        atexit.register(os.unlink, file.name)
        self.environment = {**os.environ, "CONTAINERS_CONF": file.name}

    def ask(self, *words):
        return subprocess.run(["podman", *map(str, words)], capture_output=True, text=True,
                              timeout=120, check=False, env=self.environment)

    def do(self, *words):
        result = self.ask(*words)
        if result.returncode != 0:
            raise AssertionError((words, result.stdout, result.stderr))
        return result.stdout

    def run_container(self, *words):
        return self.ask("run", "--network=none", *words)


def find_podman():
    """(Podman, None), or (None, why there is none)."""
    for program in ("podman", "ip", "nsenter"):
        if not shutil.which(program):
            return None, f"there is no {program}"
    if subprocess.run(["podman", "image", "exists", IMAGE], check=False).returncode != 0:
        return None, f"there is no image {IMAGE}: ./dev image makes it"
    reasons = []
    for variant in VARIANTS:
        podman = Podman(variant)
        result = podman.run_container("--rm", "--entrypoint=true", IMAGE)
        if result.returncode == 0:
            return podman, None
        reasons += result.stderr.splitlines()[-1:]
    return None, "podman runs no container: " + "; ".join(reasons)


class Container:
    """One that runs."""

    def __init__(self, podman, name):
        self.podman, self.name = podman, name

    @classmethod
    def start(cls, podman, name, *options, command=()):
        self = cls(podman, PREFIX + name)
        result = podman.run_container("-d", f"--name={self.name}", f"--hostname={name}", *options,
                                      IMAGE, *command)
        if result.returncode != 0:
            raise AssertionError((name, result.stdout, result.stderr))
        return self

    def inspect(self):
        return json.loads(self.podman.do("inspect", self.name))[0]

    def process(self):
        return self.inspect()["State"]["Pid"]

    def ask(self, *words):
        return self.podman.ask("exec", self.name, *words)

    def do(self, line):
        return self.podman.do("exec", self.name, *line.split())

    def outside(self, *words):
        """A command in its network, with the programs and rights of outside."""
        return [*OUTSIDE, "nsenter", "-n", "-t", str(self.process()), *words]

    def set_up(self, line):
        """What an orchestrator does from outside."""
        subprocess.run(self.outside(*line.split()), check=True)

    def check_health(self):
        """The exit status of a check, and what podman makes of it: starting, healthy..."""
        status = self.podman.ask("healthcheck", "run", self.name).returncode
        return status, self.inspect()["State"]["Health"]["Status"]

    def remove(self):
        self.podman.ask("rm", "-f", "-v", "-t", "2", self.name)


def cable(one, one_interface, other, other_interface):
    one.set_up(f"ip link add {one_interface} type veth peer name {other_interface} "
               f"netns {other.process()}")
    for end, interface in ((one, one_interface), (other, other_interface)):
        end.set_up(f"ip link set {interface} up")

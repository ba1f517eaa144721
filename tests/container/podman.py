# SPDX-License-Identifier: MIT
"""Containers of podman, with cables made by hand between them."""
import json
import os
import shutil
import subprocess

IMAGE = "localhost/swctl:latest"
# What this machine's podman runs containers with: options of podman, and of its run.
VARIANTS = [([], []), ([], ["--cgroups=disabled"]), (["--runtime", "runc"], [])]
PREFIX = f"swctl-test-{os.getpid()}-"


# Less than podman gives, which is more than it may in a container itself.
LIMITS = ["--ulimit=nofile=4096:4096", "--ulimit=nproc=4096:4096"]


class Podman:
    def __init__(self, words, run_words):
        self.words, self.run_words = ["podman", *words], [*run_words, *LIMITS]

    def ask(self, *words):
        return subprocess.run([*self.words, *map(str, words)], capture_output=True, text=True,
                              timeout=120, check=False)

    def do(self, *words):
        result = self.ask(*words)
        if result.returncode != 0:
            raise AssertionError((words, result.stdout, result.stderr))
        return result.stdout

    def run_container(self, *words):
        return self.ask("run", "--network=none", *self.run_words, *words)


def find_podman():
    """(Podman, None), or (None, why there is none)."""
    if os.getuid() != 0:
        return None, "only root may put cables between containers"
    for program in ("podman", "ip", "nsenter"):
        if not shutil.which(program):
            return None, f"there is no {program}"
    if subprocess.run(["podman", "image", "exists", IMAGE], check=False).returncode != 0:
        return None, f"there is no image {IMAGE}: ./dev image makes it"
    reasons = []
    for words, run_words in VARIANTS:
        podman = Podman(words, run_words)
        result = podman.run_container("--rm", "--entrypoint=true", IMAGE)
        if result.returncode == 0:
            return podman, None
        reasons += result.stderr.splitlines()[-1:]
    return None, "podman runs no container: " + "; ".join(reasons)


class Container:
    """One that runs until it is removed."""

    def __init__(self, podman, name, *options, command=()):
        self.podman, self.name = podman, PREFIX + name
        result = podman.run_container("-d", f"--name={self.name}", f"--hostname={name}", *options,
                                      IMAGE, *command)
        if result.returncode != 0:
            raise AssertionError((name, result.stdout, result.stderr))

    def inspect(self):
        return json.loads(self.podman.do("inspect", self.name))[0]

    def process(self):
        return self.inspect()["State"]["Pid"]

    def ask(self, *words):
        return self.podman.ask("exec", self.name, *words)

    def do(self, line):
        return self.podman.do("exec", self.name, *line.split())

    def set_up(self, line):
        """With rights that the container has not: what an orchestrator does from outside."""
        subprocess.run(["nsenter", "-n", "-t", str(self.process()), *line.split()], check=True)

    def check_health(self):
        """The exit status of a check, and what podman makes of it: starting, healthy..."""
        status = self.podman.ask("healthcheck", "run", self.name).returncode
        return status, self.inspect()["State"]["Health"]["Status"]

    def remove(self):
        self.podman.ask("rm", "-f", "-t", "2", self.name)


def cable(one, one_interface, other, other_interface):
    subprocess.run(["ip", "link", "add", one_interface, "netns", str(one.process()), "type", "veth",
                    "peer", "name", other_interface, "netns", str(other.process())], check=True)
    for end, interface in ((one, one_interface), (other, other_interface)):
        end.set_up(f"ip link set {interface} up")

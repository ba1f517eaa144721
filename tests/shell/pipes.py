# SPDX-License-Identifier: MIT
"""pipes.py SCHEMA EXCHANGES

Talks to swctl over two pipes as a program would: writes a command, reads its
answer, so many times. And kills batches that answer in JSON.
"""
import json
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import time

from answers import Checker, commands_of

EXCHANGES = int(sys.argv[2])
# Commands with what is to come: an answer, none, and an error.
COMMANDS = [
    ("flood show", 0, "unknown_unicast  0-26\n", [{"unknown_unicast": list(range(27))}]),
    ("port set 3 loopback on", 0, "", []),
    ("port show 99", 1, "", {"error"}),
    ("version help", 0, None, None),
]


def start(*options, commands=None):
    return subprocess.Popen(["swctl", *options], stdin=subprocess.PIPE if commands is None else None,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)


def check(name, condition, shown):
    if not condition:
        raise AssertionError(f"{name}: {shown!r}")


def exchange(swctl, command):
    swctl.stdin.write(command + "\n")
    swctl.stdin.flush()


def end(swctl, status):
    swctl.stdin.close()
    check("the end", swctl.stdout.read() == "", "more came")
    check("the status is that of the first failure", swctl.wait() == status, swctl.returncode)


def talk_in_text():
    swctl = start("-force", "-echo-status")
    for number in range(EXCHANGES):
        command, status, answer, _ = COMMANDS[number % len(COMMANDS)]
        exchange(swctl, command)
        lines = list(iter(swctl.stdout.readline, f"status {status}\n"))
        check(command, answer is None or "".join(lines) == answer, lines)
    end(swctl, 1)
    print(f"pipes: {EXCHANGES} exchanges in text")


def talk_in_json(checker):
    swctl = start("-force", "-j")
    for number in range(EXCHANGES):
        command, status, _, answer = COMMANDS[number % len(COMMANDS)]
        exchange(swctl, command)
        element = json.loads(swctl.stdout.readline())
        output = element["output"]
        check(command, element["line"] == number + 1 and element["status"] == status, element)
        check(command, answer is None or (set(output) if status else output) == answer, output)
        if number < len(COMMANDS):
            faults = checker.check_batch([element])
            check(command, not faults, faults)
    end(swctl, 1)
    print(f"pipes: {EXCHANGES} exchanges in JSON")


def talk_in_pretty_json():
    swctl = start("-p")
    exchange(swctl, "flood show")
    lines = list(iter(swctl.stdout.readline, "}\n"))
    check("-p", json.loads("".join(lines) + "}")["status"] == 0, lines)
    end(swctl, 0)


def talk_to_pretty_batch():
    """Each element of the array is there, with its line end, before the next command."""
    swctl = start("-p", "-b", "-")
    shown = ""
    for number in range(3):
        exchange(swctl, "flood show")
        shown += "".join(iter(swctl.stdout.readline, "  }\n")) + "  }\n"
        check("-p -b", len(json.loads(shown + "]")) == number + 1, shown)
    swctl.stdin.close()
    check("the array is closed", swctl.stdout.read() == "]\n", "more came")
    check("the status", swctl.wait() == 0, swctl.returncode)


def kill_between(signal_number):
    """A batch whose commands have been answered and that waits for more."""
    swctl = start("-j", "-b", "-")
    for number in range(3):
        exchange(swctl, "flood show")
        line = swctl.stdout.readline()
        check("every answer has its line end", line.startswith("[" if number == 0 else ","), line)
    swctl.send_signal(signal_number)
    rest = swctl.stdout.read()
    check("the array is closed", rest == "]\n", rest)
    check("it died of the signal", swctl.wait() == -signal_number, swctl.returncode)
    swctl.stdin.close()


def kill_within(signal_number):
    """A batch in the middle of a command that takes long."""
    swctl = start("-j", "-b", "-")
    exchange(swctl, "flood show")
    line = swctl.stdout.readline()
    exchange(swctl, "port stats 3 period 600")
    time.sleep(0.2)
    swctl.send_signal(signal_number)
    check("what was answered is whole", len(json.loads(line + swctl.stdout.read())) == 1, line)
    check("it died of the signal", swctl.wait() == -signal_number, swctl.returncode)
    swctl.stdin.close()


def kill_anywhere(moment):
    """A batch that writes, with a reader that is slow at first."""
    commands = pathlib.Path("commands")
    commands.write_text("port show detail\n" * 500)
    swctl = start("-j", "-b", str(commands), commands=commands)
    begun = swctl.stdout.read(1)
    time.sleep(moment)
    swctl.terminate()
    answers = json.loads(begun + swctl.stdout.read())
    check("all are there or it died", len(answers) == 500 or swctl.wait() == -signal.SIGTERM,
          len(answers))
    swctl.wait()


def ignore_what_was_ignored():
    """nohup(1) ignores the signal before swctl begins."""
    with subprocess.Popen(["sh", "-c", "trap '' HUP; exec swctl -j -b -"], stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE, text=True) as swctl:
        exchange(swctl, "flood show")
        swctl.stdout.readline()
        swctl.send_signal(signal.SIGHUP)
        exchange(swctl, "flood show")
        line = swctl.stdout.readline()
        check("an ignored signal is ignored", line.startswith(","), line)
        swctl.stdin.close()
        check("and the array ends later", swctl.stdout.read() == "]\n", "")


def main():
    schema = json.loads(pathlib.Path(sys.argv[1]).read_text())
    with tempfile.TemporaryDirectory() as name:
        os.chdir(name)
        os.environ["VCHIP_IMAGE"] = f"{name}/chip.img"
        subprocess.run(["vchipctl", "reset"], check=True)
        talk_in_text()
        talk_in_json(Checker(schema, commands_of("swctl")))
        talk_in_pretty_json()
        talk_to_pretty_batch()
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            kill_between(number)
            kill_within(number)
        moments = random.Random(1)
        for _ in range(20):
            kill_anywhere(moments.uniform(0.05, 0.5))
        ignore_what_was_ignored()
    print("pipes: killed batches are whole")


main()

# SPDX-License-Identifier: MIT
"""config_faults.py EVERY

Loads a configuration of more than 500 lines, with every EVERYth call of the SDK and the
adapter failing in turn. Afterwards the chip is as before, or the message says in what it
is not; or the load has done without the call.
"""
import os
import sys
import tempfile

from config_world import R, random_text, run, state

SEED = 7
RESULT = -77


def big_configuration():
    lines = [random_text(400)]
    for number in range(300):
        lines.append(f"mac add 02:00:00:01:{number // 256:02x}:{number % 256:02x} vlan 1 port 3")
        lines.append(f"acl add {100 + number} src-ip 10.1.{number % 256}.0/24 action drop enable")
    return "\n".join(lines)


def told(message):
    return any(each in message for each in ("not put back: ", "what was put back is not known: "))


def main():
    R.seed(SEED)
    with tempfile.TemporaryDirectory() as directory:
        os.chdir(directory)
        os.environ["VCHIP_IMAGE"] = directory + "/chip.img"
        run("vchipctl", "reset")
        run("swctl", "-force", "-b", "-", text=big_configuration(), status=None)
        target = state()
        run("swctl", "config", "save", "target")
        if target[0].count("\n") < 500:
            sys.exit("the configuration is too short")
        run("vchipctl", "reset")
        run("swctl", "-force", "-b", "-", text=random_text(400), status=None)
        before = state()
        run("cp", "chip.img", "before.img")
        run("swctl", "config", "load", "target", SWPROBE="record:calls")
        with open("calls", encoding="utf-8") as recording:
            calls = sum(1 for _ in recording) - 1
        wrong = tried = not_back = 0
        for number in range(1, calls + 1, int(sys.argv[1])):
            tried += 1
            run("cp", "before.img", "chip.img")
            done = run("swctl", "config", "load", "target", status=None,
                       SWPROBE_FAIL=f"* nth {number} result {RESULT}")
            now = state()
            not_back += told(done.stderr)
            good = now == target if done.returncode == 0 else (
                done.returncode == 2 and (now == before) != told(done.stderr))
            if not good:
                wrong += 1
                print(f"call {number}: status {done.returncode}, "
                      f"{'as' if now == before else 'not as'} before: {done.stderr[-400:]}")
        print(f"config_faults: {calls} calls, {tried} failed in turn, {not_back} not put back, "
              f"{wrong} problems")
        sys.exit(bool(wrong))


main()

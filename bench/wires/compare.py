# SPDX-License-Identifier: MIT
"""vchipd beside the other switches of this machine: 60 and 1,514 bytes over veth, as fast
as the sender goes, and over streams; control calls meanwhile; and a vchipd at rest."""
import json
import os
import subprocess
import time

from others import OpenVswitch, OpenVswitchKernel, Vde
from switches import PROGRAMS, RULES, SECONDS, Bridge, Streams, Urgent, Vchipd
from tables import table


SWITCHES = (Bridge, Vchipd, Urgent, Streams, OpenVswitch, OpenVswitchKernel, Vde)


def compare():
    for kind in SWITCHES:
        if kind.missing:
            print(f"{kind.name}: not measured: {kind.missing}")
    print(f"{os.cpu_count()} processors, load {os.getloadavg()[0]:.1f}; {RULES} rules, one VLAN\n")
    for size in (60, 1514):
        rows, reference = [["", "offered/s", "received/s", "lost", "us/frame", "times the bridge"]], 0
        for kind in SWITCHES:
            if kind.missing:
                continue
            with kind() as switch:
                result = switch.measure(size)
            reference = reference or result["rate"]
            rows.append([kind.name, f"{result['offered']:,.0f}", f"{result['rate']:,.0f}",
                         f"{result['lost']:,}",
                         f"{result['busy'] / max(result['rate'] * SECONDS, 1) * 1e6:.2f}",
                         f"{result['rate'] / reference:.2f}"])
        print(f"{size} bytes")
        table(rows)
    control()
    with Vchipd() as switch:
        time.sleep(1)
        begin = switch.own_time()
        time.sleep(5)
        print(f"idle: {switch.own_time() - begin:.2f} s of processor time in 5 s\n")


def control():
    """A thousand changes of a setting a second, from another process, at full load."""
    with Streams() as switch:
        alone = switch.measure(60)["rate"]
        caller = subprocess.Popen([PROGRAMS / "swctl_wire_load", "calls", str(SECONDS + 1), "1000"],
                                  stdout=subprocess.PIPE, text=True)
        time.sleep(0.3)
        shared = switch.measure(60)["rate"]
        answer = json.loads(caller.communicate(timeout=30)[0])
    print(f"under 1,000 control calls a second: {shared:,.0f} frames/s of {alone:,.0f} "
          f"({shared / alone:.2f}); a call takes {answer['median']:.0f} us in the median, "
          f"{answer['p99']:.0f} at the 99th percentile, {answer['most']:.0f} at most\n")

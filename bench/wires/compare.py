# SPDX-License-Identifier: MIT
"""vchipd beside the other switches of this machine: 60 and 1,514 bytes over veth, as fast
as the sender goes, and over streams; vchipd and the bridge by turns; control calls meanwhile; and a vchipd at
rest."""
import json
import os
import subprocess
import time

from others import OpenVswitch, OpenVswitchKernel, Vde
from switches import PROGRAMS, RULES, SECONDS, Bridge, Streams, Urgent, Vchipd
from tables import table
from turns import by_turns

CALLS, CONTROL_SECONDS = 1000, 17
FRAMES_KEPT = 0.9   # under that many control calls a second
CALL_LIMIT = 200    # microseconds, at the 99th percentile
IDLE_LIMIT = 0.01   # seconds in five: a tick of the clock that measures it
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
    by_turns()
    exceeded = [*control(), *idle()]
    for line in exceeded:
        print(line)
    return 1 if exceeded else 0


def control():
    """A thousand changes of a setting a second, from another process, at full load: in every
    other quarter of a second, for what else the machine does changes the rate by more than
    the calls do, and from one run to the next by still more."""
    with Streams() as switch:
        with subprocess.Popen([PROGRAMS / "swctl_wire_load", "calls", str(CONTROL_SECONDS),
                               str(CALLS), "every-other"], stdout=subprocess.PIPE,
                              text=True) as caller:
            time.sleep(0.3)
            result = switch.measure(60, seconds=CONTROL_SECONDS - 1)
            waits = json.loads(caller.communicate(timeout=60)[0])
    kept = result["odd"] / result["even"]
    rate = waits["calls"] / (CONTROL_SECONDS / 2)
    print(f"under {rate:,.0f} control calls a second: {kept:.2f} of the frames (limit "
          f"{FRAMES_KEPT}); a call takes {waits['median']:.0f} us in the median, "
          f"{waits['p99']:.0f} at the 99th percentile (limit {CALL_LIMIT}), {waits['most']:.0f} at "
          "most\n")
    if rate < 0.95 * CALLS:
        yield f"no {CALLS} control calls a second, but {rate:,.0f}"
    if kept < FRAMES_KEPT:
        yield f"under control calls {kept:.2f} of the frames are left, less than {FRAMES_KEPT}"
    if waits["p99"] > CALL_LIMIT:
        yield f"a control call takes {waits['p99']:.0f} us, more than {CALL_LIMIT}"


def idle():
    with Vchipd() as switch:
        time.sleep(1)
        begin = switch.own_time()
        time.sleep(5)
        used = switch.own_time() - begin
    print(f"idle: {used:.2f} s of processor time in 5 s (limit {IDLE_LIMIT})\n")
    if used > IDLE_LIMIT:
        yield f"idle it uses {used:.2f} s in 5 s, more than {IDLE_LIMIT}"

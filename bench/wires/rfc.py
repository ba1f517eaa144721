# SPDX-License-Identifier: MIT
"""Throughput, latency and frame loss rate (RFC 2544) and forwarding (RFC 2889)."""
import os
import socket
import struct
import time

from switches import Bridge, Vchipd, Veth
from tables import table


def throughput(switch, size):
    """RFC 2544, 26.1: the highest rate at which nothing is lost, by bisection."""
    low, high = 0.0, switch.measure(size, 0, 1)["offered"]
    best = None
    for _ in range(8):
        rate = (low + high) / 2
        result = switch.measure(size, rate, 1)
        if result["lost"] == 0:
            low, best = rate, result
        else:
            high = rate
    return best["rate"] if best else 0


def latency(count=2000):
    """RFC 2544, 26.2, of one frame at a time: from before it is sent until a program has
    received it, which includes the system's part of both; microseconds, sorted."""
    sender = socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(0))
    receiver = socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(0x88b6))
    sender.bind((Veth.one, 0))
    receiver.bind((Veth.two, 0x88b6))
    receiver.settimeout(1)
    times = []
    for number in range(count):
        frame = bytes.fromhex("020000000002020000000001" "88b6") + struct.pack(">I", number)
        begin = time.perf_counter()
        sender.send(frame.ljust(60, b"\0"))
        receiver.recv(2048)
        times.append((time.perf_counter() - begin) * 1e6)
    sender.close()
    receiver.close()
    return sorted(times)


def rfc():
    print(f"{os.cpu_count()} processors, load {os.getloadavg()[0]:.1f}; frames a second\n")
    for kind in (Bridge, Vchipd):
        print(kind.name)
        with kind() as switch:
            rows = [["bytes", "throughput (RFC 2544, 26.1)", "forwarding (RFC 2889, 5.1)"]]
            for size in (60, 124, 252, 508, 1020, 1276, 1514):
                rows.append([size + 4, f"{throughput(switch, size):,.0f}",
                             f"{switch.measure(size, 0, 1)['rate']:,.0f}"])
            table(rows)
            full = switch.measure(60, 0, 1)["offered"]
            rows = [["offered/s", "frame loss rate (RFC 2544, 26.3): (offered - received) / offered"]]
            for part in range(10, 0, -2):
                result = switch.measure(60, full * part / 10, 1)
                sent = result["lost"] + result["rate"]
                rows.append([f"{result['offered']:,.0f}", f"{max(result['lost'], 0) / sent:.2%}"])
            table(rows)
            times = latency()
            print("latency, microseconds: " + ", ".join(
                f"{name} {times[min(int(len(times) * part), len(times) - 1)]:.0f}"
                for name, part in (("least", 0), ("median", 0.5), ("99 %", 0.99), ("most", 1))), "\n")

# SPDX-License-Identifier: MIT
"""The benchmarks of RFC 2544 and RFC 2889 over veth, for vchipd and the switches beside it.
Every figure is of frames that were sent and counted in this run."""
import argparse
import os
import pathlib
import shutil

import plots
import rfc2544
import rfc2889
from others import OpenVswitch, OpenVswitchKernel, Vde
from switches import Bridge, Urgent, Vchipd

SWITCHES = {"bridge": Bridge, "vchipd": Vchipd, "vchipd-rt": Urgent, "ovs": OpenVswitch,
            "ovs-kernel": OpenVswitchKernel, "vde": Vde}
SIZES = (64, 128, 256, 512, 1024, 1280, 1518)  # RFC 2544, 9.1
TABLES = (*rfc2544.TABLES, *rfc2889.TABLES)
HOSTS = ("h1", "h2", "h3")

INTRODUCTION = """{processors} processors, load {load:.1f}. Trials of {seconds:g} s where RFC 2544 (24) asks for 60, and \
{repeats} of
them where it asks for 20 or 50: --seconds and --repeats make it more. A veth has no rate of
its own, so the maximum rate is what the sender reaches with the switch in question. Frame
sizes count the 4 bytes of the FCS, which veth does not carry. Rates are frames a second.
"""


def sizes_of(text):
    """Frame sizes with commas between, without repetition."""
    sizes = []
    for word in text.split(","):
        if not word.isdecimal() or not 64 <= int(word) <= 1518:
            raise argparse.ArgumentTypeError(f"'{word}' is no frame size from 64 to 1518")
        sizes.append(int(word))
    return sorted(set(sizes))


def options_of(words):
    parser = argparse.ArgumentParser(prog="./dev bench rfc", description=__doc__)
    parser.add_argument("--plots", metavar="DIR", type=pathlib.Path,
                        help="draw the tables as SVG into this folder, which is made")
    parser.add_argument("--seconds", type=float, default=0.5, help="of a trial (%(default)s)")
    parser.add_argument("--repeats", type=int, default=3,
                        help="trials that an average is of (%(default)s)")
    parser.add_argument("--sizes", type=sizes_of, default=",".join(map(str, SIZES)),
                        help="frame sizes, with the FCS (%(default)s)")
    parser.add_argument("--switches", default="bridge,vchipd",
                        help=f"some of {','.join(SWITCHES)} (%(default)s)")
    parser.add_argument("--tables", default=",".join(TABLES), help="some of %(default)s")
    options = parser.parse_args(words)
    options.switches = options.switches.split(",")
    for name in options.switches:
        if name not in SWITCHES:
            parser.error(f"--switches: no switch '{name}', expected some of {', '.join(SWITCHES)}")
    options.switches = [SWITCHES[name] for name in options.switches]
    options.tables = set(options.tables.split(","))
    if not options.tables <= set(TABLES):
        parser.error(f"--tables: no table '{min(options.tables - set(TABLES))}', expected some of "
                     f"{', '.join(TABLES)}")
    if options.seconds <= 0 or options.repeats < 1:
        parser.error("--seconds and --repeats have to be above 0")
    if options.plots and not shutil.which("gnuplot"):
        parser.error("--plots: there is no gnuplot (package gnuplot-nox)")
    if options.plots:
        try:
            options.plots.mkdir(parents=True, exist_ok=True)
        except OSError as fault:
            parser.error(f"--plots: {fault}")
    return options


def rfc(words):
    options = options_of(words)
    print(INTRODUCTION.format(processors=os.cpu_count(), load=os.getloadavg()[0],
                              **vars(options)))
    found = {}
    for kind in options.switches:
        if kind.missing:
            print(f"{kind.name}: not measured: {kind.missing}\n")
            continue
        print(f"== {kind.name}\n")
        figures = found[kind.name] = {}
        with kind(HOSTS) as switch:
            figures.update(rfc2544.measure(switch, options))
            figures.update(rfc2889.measure(switch, options))
    if options.plots:
        for path in plots.draw(found, options.plots):
            print(f"plot: {path}")

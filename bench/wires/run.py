# SPDX-License-Identifier: MIT
"""run.py PROGRAMS [wires | rfc [OPTIONS]]

Frames through vchipd, and in the same run through the other switches of this
machine: the kernel's bridge, Open vSwitch and vde where they are installed.

wires: 60 and 1,514 bytes over veth, as fast as the sender goes, and over streams;
with each the processor time that a frame took, of sender and switch together, which
a busy machine changes less than the rate. Ends with status 1 if control calls or an idle
vchipd cost more than they may.

rfc: the benchmarks of RFC 2544 and RFC 2889 over veth; rfc --help shows the options.
"""
import os
import sys

INSIDE = "WIRES_BENCH_INSIDE"

if __name__ == "__main__":
    if INSIDE not in os.environ:
        os.environ[INSIDE] = "1"
        space = ["-n"] if os.getuid() == 0 else ["-Urn"]
        os.execvp("unshare", ["unshare", *space, sys.executable, *sys.argv])
    what, *words = sys.argv[2:] or ["wires"]
    if what == "rfc":
        from rfc import rfc
        rfc(words)
    elif words:
        sys.exit(f"unknown word \"{words[0]}\" after wires")
    else:
        from compare import compare
        sys.exit(compare())

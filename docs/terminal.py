# SPDX-License-Identifier: MIT
"""terminal.py PROGRAMS [--check] FILE

Types some commands, with the programs of a directory and a chip of their own, and
draws the terminal as an SVG file. With --check, whether the file is that drawing.
"""
import difflib
import html
import os
import pathlib
import subprocess
import sys
import tempfile

COMMANDS = [
    "export VCHIP_IMAGE=chip.img         # one virtual chip for all programs",
    "vchipctl link up 1-4                # plug in cables",
    "swctl vlan add 10 untagged 1-3 tagged 4",
    "swctl port set 1-3 vlan 10",
    "swctl port show 1-4",
    "vchipctl learn 02:00:00:00:00:04 --port 4 --vlan 10",
    "vchipctl explain 1 02000000000402000000000188b5",
    "SWPROBE=trace swctl vlan port add 10 tagged 25",
    "swctl vlan shwo",
    "swctl -j vlan show 10",
]
COLUMNS, SIZE, WIDTH, LINE, MARGIN = 96, 13, 7.83, 17, 14
PAPER, PRINTED, TYPED, PROMPT = "#16202a", "#b8c4ce", "#ffffff", "#7fd18b"


def run_commands(programs):
    """("$", command) and ("", line that it printed), in order."""
    with tempfile.TemporaryDirectory() as directory:
        environment = {"PATH": f"{programs}:{os.environ['PATH']}", "LC_ALL": "C.UTF-8"}
        shell = subprocess.Popen(["bash"], cwd=directory, env=environment, text=True,
                                 stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                 stderr=subprocess.STDOUT)
        for command in COMMANDS:
            yield "$", command
            shell.stdin.write(f"{command}\necho -- end\n")
            shell.stdin.flush()
            for line in iter(shell.stdout.readline, "-- end\n"):
                yield "", line.rstrip("\n")
        shell.stdin.close()
        shell.wait()


def in_columns(lines):
    """A terminal breaks a line where it ends."""
    for kind, text in lines:
        room = COLUMNS - 2 * len(kind)
        yield kind, text[:room]
        for start in range(room, len(text), COLUMNS):
            yield "", text[start:start + COLUMNS]


def spans(kind, text):
    if not kind:
        return f'<tspan fill="{PRINTED}">{html.escape(text)}</tspan>'
    return (f'<tspan fill="{PROMPT}">{kind}</tspan>'
            f'<tspan fill="{TYPED}"> {html.escape(text)}</tspan>')


def drawing(lines):
    width = round(COLUMNS * WIDTH + 2 * MARGIN)
    height = len(lines) * LINE + 2 * MARGIN
    yield f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}">'
    yield "<title>A virtual switch chip at a terminal</title>"
    yield f'<rect width="{width}" height="{height}" rx="6" fill="{PAPER}"/>'
    yield (f'<g font-family="DejaVu Sans Mono, Menlo, Consolas, monospace" font-size="{SIZE}"'
           ' xml:space="preserve">')
    for number, (kind, text) in enumerate(lines, 1):
        # Of the same length whatever the font, so that columns are columns.
        length = f' textLength="{(len(text) + 2 * len(kind)) * WIDTH:.2f}"' if text else ""
        yield f'<text x="{MARGIN}" y="{MARGIN - 4 + number * LINE}"{length}>{spans(kind, text)}</text>'
    yield "</g>"
    yield "</svg>"


def main():
    programs, file = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[-1])
    drawn = "\n".join(drawing(list(in_columns(run_commands(programs))))) + "\n"
    if "--check" not in sys.argv:
        file.write_text(drawn)
        return 0
    lines = difflib.unified_diff(file.read_text().splitlines(), drawn.splitlines(),
                                 str(file), "what the programs print now", lineterm="")
    changes = list(lines)
    print(*changes, sep="\n")
    return 1 if changes else 0


if __name__ == "__main__":
    sys.exit(main())

# SPDX-License-Identifier: MIT
"""The figures as pictures, by gnuplot."""
import subprocess

HEAD = """
set terminal svg size 800,480 font "sans,11" background "white"
set output "{path}"
set title "{title}"
set xlabel "{x}"
set ylabel "{y}"
set grid
set key outside top center horizontal
set format y "%.0f"
{more}
"""
SIZES_TICS = "set xrange [0:1600]\nset xtics (64, 128, 256, 512, 1024, 1280, 1518) rotate by -45"
WIDE_RANGE = "\nset logscale y\nset format y '%g'"
LINES = "with linespoints pointtype 7 pointsize 0.5"


def plot(path, title, axes, lines, more=""):
    """Lines are (name, {x: y}, how)."""
    script = HEAD.format(path=path, title=title, x=axes[0], y=axes[1], more=more)
    for number, (_, points, _) in enumerate(lines):
        data = "\n".join(f"{x} {y}" for x, y in sorted(points.items()))
        script += f"$data{number} << EOD\n{data}\nEOD\n"
    script += "plot " + ", ".join(f'$data{number} using 1:2 {how} title "{name}"'
                                  for number, (name, _, how) in enumerate(lines)) + "\n"
    subprocess.run(["gnuplot"], input=script, text=True, check=True)
    return path


def by_switch(found, key, value=lambda figure: figure):
    """A line for each switch that has the figure, against the frame size."""
    lines = [(name, {size: value(figure) for size, figure in figures[key].items()}, LINES)
             for name, figures in found.items() if figures.get(key)]
    return [line for line in lines if line[1]]


def drawings(found, folder):
    """What there is to draw: the arguments of plot()."""
    size, rate = "frame size, bytes", "frames/s"
    lines = by_switch(found, "throughput")
    if lines:
        line = next(figures["line"] for figures in found.values() if "line" in figures)
        lines.append(("theoretical, 1 Gbit/s", line, "with lines dashtype 2 linecolor 'black'"))
    yield (folder / "throughput.svg", "Throughput (RFC 2544, 26.1)", (size, rate), lines, SIZES_TICS)
    yield (folder / "latency.svg", "Latency at the throughput, mean (RFC 2544, 26.2)",
           (size, "microseconds"), by_switch(found, "latency", lambda each: each["mean"]),
           SIZES_TICS + WIDE_RANGE)
    yield (folder / "burst.svg", "Back-to-back frames (RFC 2544, 26.4)", (size, "frames"),
           by_switch(found, "burst", lambda burst: burst or "NaN"), SIZES_TICS + WIDE_RANGE)
    yield (folder / "forwarding.svg", "Maximum forwarding rate (RFC 2889, 5.6)", (size, rate),
           by_switch(found, "forwarding", lambda each: max(each["rates"].values())), SIZES_TICS)
    yield (folder / "broadcast.svg", "Broadcast forwarding rate (RFC 2889, 5.10)", (size, rate),
           by_switch(found, "broadcast", lambda each: each["rate"]), SIZES_TICS)
    for number, (name, figures) in enumerate(found.items(), 1):
        lines = [(f"{each} bytes", losses, LINES) for each, losses in figures.get("loss", {}).items()]
        yield (folder / f"loss-{number}.svg", f"Frame loss rate (RFC 2544, 26.3): {name}",
               ("% of the maximum offered rate", "% of the frames lost"), lines,
               "set xrange [0:105]\nset yrange [0:100]")


def draw(found, folder):
    return [plot(*drawing) for drawing in drawings(found, folder) if drawing[3]]

"""document.py FIGURES: puts the measurements that ./bench/run has left in that folder into docs/performance.md.

Draws docs/images/performance.svg, and writes the rows of docs/performance.md between the two comments of that name. A
measurement that is not there keeps its rows; its graph says that it is missing.
"""

import math
import pathlib
import re
import statistics
import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update({
    "svg.hashsalt": "kirolane",  # the same figures give the same file
    "font.size": 9,
    "axes.spines.top": False,
    "axes.spines.right": False,
    "axes.titlesize": 10,
    "axes.titlelocation": "left",
})

from matplotlib import pyplot  # noqa: E402

DOCS = pathlib.Path(__file__).resolve().parent.parent / "docs"
OURS, OTHERS = "#1f5f99", "#8a8a8a"
MARKED = re.compile(r"(<!-- rows of the measurements -->\n).*?(<!-- end of the rows -->\n)", re.DOTALL)
HEAD = "| Row | Median (spread) | Beside | Goal | |\n|---|---|---|---|---|\n"


class Figures:
    """The rows of all measurements, and their samples by row and series."""

    def __init__(self, folder):
        self.rows = {}
        self.samples = {}
        for path in sorted(folder.glob("*.tsv")):
            for line in path.read_text(encoding="utf-8").splitlines():
                kind, row, *rest = line.split("\t")
                if kind == "row":
                    self.rows[row] = rest
                else:
                    self.samples[row, rest[0]] = [float(value) for value in rest[2].split()]

    def of(self, row, series="measured"):
        return self.samples.get((row, series), [])


def side_by_side(axes, pairs, unit, goal):
    """Each sample a dot, each median a stroke, and the goal of the upper one as a line across both."""
    for place, (name, samples, colour) in enumerate(pairs):
        shift = [((7 * i) % 11 - 5) / 40 for i in range(len(samples))]
        axes.plot(samples, [place + s for s in shift], "o", markersize=3.5, alpha=0.5, color=colour, mew=0)
        median = statistics.median(samples)
        axes.plot([median, median], [place - 0.3, place + 0.3], color=colour, linewidth=2)
        axes.annotate(f"{median:.4g}", (median, place - 0.33), ha="center", va="bottom", fontsize=8, color=colour)
    limit = goal * statistics.median(pairs[1][1])
    axes.axvline(limit, color="black", linewidth=0.8, linestyle=":")
    axes.set_title(f"{axes.get_title('left')} (dotted: the goal, {goal:g} times)")
    axes.set_yticks(range(len(pairs)), [name for name, *_ in pairs])
    axes.set_ylim(len(pairs) - 0.4, -0.5)
    most = [sorted(samples)[math.ceil(0.95 * len(samples)) - 1] for _, samples, _ in pairs]
    axes.set_xlim(0, 1.1 * max(limit, *most))
    beyond = sum(sample > axes.get_xlim()[1] for _, samples, _ in pairs for sample in samples)
    axes.set_xlabel(unit + (f"; {beyond} of the samples beyond" if beyond else ""))


def against(row, ours, others, unit, goal):
    def draw(axes, figures):
        measured, reference = figures.of(row), figures.of(row, "reference")
        if measured and reference:
            side_by_side(axes, [(ours, measured, OURS), (others, reference, OTHERS)], unit, goal)
        return measured and reference

    return draw


def drift(axes, figures):
    read, seen = figures.of("read-out, 10 minutes"), figures.of("pictures, 10 minutes")
    if read and seen:
        axes.plot([i / 60 for i in range(len(seen))], seen, color=OTHERS, linewidth=1, label="on the screen")
        axes.plot([i / 60 for i in range(len(read))], read, color=OURS, linewidth=1, label="as read out")
        for frame in (-1000 / 30, 1000 / 30):
            axes.axhline(frame, color="black", linewidth=0.8, linestyle=":")
        axes.annotate("a frame", (0, 1000 / 30), fontsize=8, va="bottom")
        axes.set_ylim(-50, 50)
        axes.set_xlabel("minutes")
        axes.set_ylabel("ms, monitor ahead of preview")
        axes.legend(frameon=False, fontsize=8, loc="lower right")
    return read and seen


def memory(axes, figures):
    after = figures.of("memory after each opening")
    if after:
        axes.plot(range(1, len(after) + 1), after, color=OURS, linewidth=1)
        fifth = statistics.median(figures.of("memory, 300th / 5th opening", "reference"))
        axes.axhline(1.25 * fifth, color="black", linewidth=0.8, linestyle=":")
        axes.annotate("goal: 1.25 times the fifth", (len(after), 1.25 * fifth), ha="right", va="bottom", fontsize=8)
        axes.set_ylim(0, 1.15 * max(1.25 * fifth, *after))
        axes.set_xlabel("openings")
        axes.set_ylabel("MiB, all processes")
    return after


GRAPHS = [
    ("Processor, 5 s of 1080p30",
     against("processor, twin / single, per 5 s", "both windows", "one bare libmpv", "ms", 1.2)),
    ("Open to first frame",
     against("open to first frame, twin / single", "in both windows", "in one bare libmpv", "ms", 1.15)),
    ("Start to first paint",
     against("start to first paint / empty window", "console", "empty window", "ms", 2.0)),
    ("Drift of preview and monitor over ten minutes", drift),
    ("Memory over 300 openings", memory),
]


def draw(figures, path):
    shape = [["0", "0"], ["1", "1"], ["2", "2"], ["3", "4"]]
    figure, axes = pyplot.subplot_mosaic(shape, figsize=(8, 8), layout="constrained",
                                         gridspec_kw={"height_ratios": [1, 1, 1, 2.2]})
    for number, (title, graph) in enumerate(GRAPHS):
        axes[str(number)].set_title(title)
        if not graph(axes[str(number)], figures):
            axes[str(number)].annotate("not measured", (0.5, 0.5), xycoords="axes fraction", ha="center")
            axes[str(number)].set(xticks=[], yticks=[])
    figure.savefig(path, metadata={"Date": None})


def write_rows(figures, path):
    text = path.read_text(encoding="utf-8")
    rows = {line.split(" | ")[0][2:]: line for line in MARKED.search(text).group(0).splitlines() if line.startswith("| ")}
    rows = {name: line for name, line in rows.items() if name != "Row"}
    for name, (figure, reference, goal, result) in figures.rows.items():
        rows[name] = f"| {name} | {figure} | {reference} | {goal} | {result} |"
    table = HEAD + "".join(f"{line}\n" for _, line in sorted(rows.items()))
    path.write_text(MARKED.sub(lambda found: found.group(1) + table + found.group(2), text), encoding="utf-8")


def main():
    if len(sys.argv) != 2:
        sys.exit(f"usage: {sys.argv[0]} FIGURES")
    figures = Figures(pathlib.Path(sys.argv[1]))
    if not figures.rows:
        sys.exit(f"document.py: {sys.argv[1]} holds no figures; ./bench/run makes them")
    draw(figures, DOCS / "images" / "performance.svg")
    write_rows(figures, DOCS / "performance.md")


if __name__ == "__main__":
    main()

"""plot_bench.py FIGURES.json PICTURE.png: draws how costs grow with dialogs and lists.

The figures come from ControlBench: microseconds for each control of a dialog, and for a frame of
a scrolled list.
"""

import json
import pathlib
import sys

import matplotlib

matplotlib.use("Agg")
from matplotlib import pyplot  # noqa: E402: the drawing back end is chosen first

LOOKS = {"standard": "#767676", "bare": "#E0A030", "flat": "#1B76C0"}


def figures_of(path):
    """{(table, row, column): (median, first quartile, third quartile)}."""
    return {
        (each["table"], each["row"], each["column"]): (each["median"], *each["quartiles"])
        for each in json.loads(path.read_text())["figures"]
    }


def dialog_series(figures, stage, look):
    """Points (controls, figure) of a dialog that is opened, redrawn or closed."""
    return sorted(
        (int(column), figure)
        for (table, row, column), figure in figures.items()
        if table == "dialog, per control" and row == f"{look} {stage}"
    )


def list_series(figures, step, look):
    """Points (rows, figure) of a list that is scrolled by that step."""
    return sorted(
        (int(row.split()[0]), figure)
        for (table, row, column), figure in figures.items()
        if table == "list" and column == look and row.endswith(f" by {step}")
    )


def draw(axes, title, across, series_of):
    for look, colour in LOOKS.items():
        points = series_of(look)
        where = [x for x, _ in points]
        axes.plot(where, [y[0] for _, y in points], marker="o", color=colour, label=look)
        axes.fill_between(where, [y[1] for _, y in points], [y[2] for _, y in points],
                          color=colour, alpha=0.2, linewidth=0)
    axes.set_title(title, fontsize=10)
    axes.set_xlabel(across, fontsize=9)
    axes.set_xscale("log")
    axes.set_xticks(where, [f"{x:,}" for x in where])
    axes.minorticks_off()
    axes.set_ylim(bottom=0)
    axes.grid(alpha=0.3)
    axes.tick_params(labelsize=8)


def main():
    figures = figures_of(pathlib.Path(sys.argv[1]))
    picture, panels = pyplot.subplots(1, 5, figsize=(14, 3.2))
    for axes, stage, title in zip(panels, ("open", "redraw", "close"),
                                  ("Opening", "Redrawing", "Closing")):
        draw(axes, f"{title} a dialog", "controls",
             lambda look, stage=stage: dialog_series(figures, stage, look))
    for axes, step in zip(panels[3:], ("row", "page")):
        draw(axes, f"Scrolling a list by a {step}", "rows",
             lambda look, step=step: list_series(figures, step, look))
    panels[0].set_ylabel("µs for each control", fontsize=9)
    panels[3].set_ylabel("µs for each frame", fontsize=9)
    panels[0].legend(fontsize=8, loc="lower left")
    picture.tight_layout()
    picture.savefig(sys.argv[2], dpi=100)


if __name__ == "__main__":
    main()

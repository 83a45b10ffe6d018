"""A picture of a folder's sequences."""
from __future__ import annotations

from typing import Any

from .frames import FrameScan


def plot_sequences(scan: FrameScan, axes: Any = None) -> Any:
    """Draws each sequence of a scan over the frame axis, with its gaps, and returns the matplotlib axes.

    `axes` is where to draw; None: a new figure. Raises ImportError if matplotlib is missing.
    """
    from matplotlib import pyplot
    from matplotlib.ticker import MaxNLocator

    sequences = scan.sequences
    if axes is None:
        _, axes = pyplot.subplots(figsize=(8, 1 + 0.4 * max(len(sequences), 1)), layout="constrained")
    for row, sequence in enumerate(sequences):
        for ranges, colour in ((sequence.ranges, "tab:blue"), (sequence.missing, "tab:red")):
            bars = [(first - 0.5, last - first + 1) for first, last in ranges]
            height = 0.6 if colour == "tab:blue" else 0.2
            axes.broken_barh(bars, (row - height / 2, height), facecolors=colour)
    axes.set_yticks(range(len(sequences)), [sequence.pattern for sequence in sequences])
    axes.invert_yaxis()
    axes.xaxis.set_major_locator(MaxNLocator(integer=True))
    axes.set_xlabel("frame (blue: there, red: missing)")
    return axes

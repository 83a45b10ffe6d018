#!/usr/bin/env python3
"""Draws the picture of docs/python.md, the sequences of a folder with their gaps.   draw_sequences.py <PNG>"""
import sys

import matplotlib
import mrcommon as mr

matplotlib.use("Agg")
LOST = {"spray": [*range(38, 45), 90], "foam": [12, *range(101, 121)], "mesh": range(61, 64)}
names = [mr.frame_name(name, frame, "rec") for name, lost in LOST.items() for frame in {*range(1, 145)} - {*lost}]
names += [f"beach.{frame:04}.exr" for frame in range(24, 97)]
mr.plot_sequences(mr.group_frames(names)).figure.savefig(sys.argv[1], dpi=120)

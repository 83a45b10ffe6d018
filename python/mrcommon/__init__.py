"""mrcommon: properties, frames, rotations and identifiers of MRCommon, the library's own code.

    import mrcommon as mr
    gravity = mr.RFloatPpty("gravity", -9.81, minimum=-20, maximum=0)
    mr.save("scene.props", [gravity])
    mr.load("scene.props")                     # [RFloatPpty('gravity', ...)]
"""
from ._core import (ByteId, DQuat, Quat, box_volume, cross_check, intersect_volume, is_in_box, min_distance, version)
from .errors import RecordError
from .folders import Fault, FolderReport, MissingFrames, check_folder
from .frames import FrameOrder, FrameScan, FrameSequence, frame_name, group_frames, scan_frames
from .plot import plot_sequences
from .properties import *  # noqa: F403  # the twenty kinds, their base, make, kinds, load_plugin
from .properties import __all__ as _property_names
from .records import UnknownEntry, check_records, load, read_records, save, write_records

__version__ = version()
__all__ = ["ByteId", "DQuat", "Fault", "FolderReport", "FrameOrder", "FrameScan", "FrameSequence", "MissingFrames", "Quat",
           "RecordError", "UnknownEntry", "box_volume", "check_folder", "check_records", "cross_check", "frame_name",
           "group_frames", "intersect_volume", "is_in_box", "load", "min_distance", "plot_sequences", "read_records",
           "save", "scan_frames", "write_records", *_property_names]

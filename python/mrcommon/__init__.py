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
from .properties import (Ppty, PptyArrayString, PptyBool, PptyColor4D, PptyColor4F, PptyDirectory, PptyDouble,
                         PptyEnum, PptyFile, PptyFloat, PptyInt, PptyInt64, PptyString, PptyVector3D, PptyVector3F,
                         RDoublePpty, RFloatPpty, RInt64Ppty, RIntPpty, RangeVect3DPpty, RangeVect3FPpty, kinds,
                         load_plugin, make)
from .records import UnknownEntry, check_records, load, read_records, save, write_records

__version__ = version()
__all__ = ["ByteId", "DQuat", "Fault", "FolderReport", "FrameOrder", "FrameScan", "FrameSequence", "MissingFrames",
           "Ppty", "PptyArrayString", "PptyBool", "PptyColor4D", "PptyColor4F", "PptyDirectory", "PptyDouble",
           "PptyEnum", "PptyFile", "PptyFloat", "PptyInt", "PptyInt64", "PptyString", "PptyVector3D", "PptyVector3F",
           "Quat", "RDoublePpty", "RFloatPpty", "RInt64Ppty", "RIntPpty", "RangeVect3DPpty", "RangeVect3FPpty",
           "RecordError", "UnknownEntry", "box_volume", "check_folder", "check_records", "cross_check", "frame_name",
           "group_frames", "intersect_volume", "is_in_box", "kinds", "load", "load_plugin", "make", "min_distance",
           "plot_sequences", "read_records", "save", "scan_frames", "version", "write_records"]

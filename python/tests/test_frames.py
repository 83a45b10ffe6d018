"""Names of frames: single names, and the sequences of a folder."""
import os
import pickle
import threading

import mrcommon as mr
import pytest
from hypothesis import given
from hypothesis import strategies as st

NAMES = ["fluid.0001.exr", "fluid.0002.exr", "fluid.0005.exr", "notes.txt", "caf\udce9.7.exr"]


def test_group_frames_gives_sequences_that_answer_like_containers():
    scan = mr.group_frames(NAMES)
    sequence = scan.sequences[-1]
    assert (sequence.head, sequence.tail, sequence.padding) == ("fluid.", ".exr", 4)
    assert list(sequence) == [1, 2, 5] and len(sequence) == 3 and (sequence.first, sequence.last) == (1, 5)
    assert sequence.ranges == [(1, 2), (5, 5)] and sequence.missing == [(3, 4)]
    assert 2 in sequence and 3 not in sequence and "2" not in sequence and 2**70 not in sequence
    assert sequence.file_name(5) == "fluid.0005.exr" and sequence.pattern == "fluid.####.exr"
    assert str(sequence) == "fluid.####.exr 1-2 5" and eval(repr(sequence), vars(mr)) == sequence
    assert scan.sequences[0].file_name(7) == NAMES[4]  # bytes that are not UTF-8 pass through
    assert scan.others == ["notes.txt"] and scan.complete
    assert pickle.loads(pickle.dumps(scan)) == scan
    for wrong, error in (("5", TypeError), (2**63, OverflowError)):
        with pytest.raises(error):
            sequence.file_name(wrong)


@given(st.sets(st.integers(0, 10**6), min_size=1))
def test_every_name_is_found_again(frames):
    (sequence,) = mr.group_frames(f"a.{frame:05}.vdb" for frame in frames).sequences
    assert set(sequence) == frames and len(sequence) == len(frames)
    assert all(sequence.file_name(frame) == f"a.{frame:05}.vdb" for frame in frames)


def test_options_decide_what_a_frame_is():
    assert mr.group_frames(["a.-2.x", "a.3.x"], negative_frames=True).sequences[0].first == -2
    assert mr.group_frames(["smoke_v2.vdb"], versions_are_names=True).others == ["smoke_v2.vdb"]
    assert mr.group_frames(["a1.tar.gz"], compound_extensions=["tar.gz"]).sequences[0].tail == ".tar.gz"
    with pytest.raises(TypeError):
        mr.group_frames([], compound_extensions="tar.gz")


def test_scan_frames_reads_a_folder(tmp_path):
    for name in NAMES:
        (tmp_path / name).touch()
    (tmp_path / "fluid.0006.exr").mkdir()
    assert mr.scan_frames(tmp_path) == mr.scan_frames(os.fsencode(tmp_path)) == mr.group_frames(NAMES)
    with pytest.raises(NotADirectoryError):
        mr.scan_frames(tmp_path / "notes.txt")


def test_progress_cancels_or_raises():
    names = [f"a.{i}.x" for i in range(5000)]
    calls = []
    assert mr.group_frames(names, progress=calls.append).complete and calls[:2] == [1000, 2000]
    cancelled = mr.group_frames(names, progress=lambda done: done < 2000)
    assert not cancelled.complete and len(cancelled.sequences[0]) == 2000
    with pytest.raises(ZeroDivisionError):
        mr.group_frames(names, progress=lambda done: 1 // 0)
    with pytest.raises(TypeError):
        mr.group_frames(names, progress=7)


def test_other_threads_run_during_a_scan():
    main, ran = threading.get_ident(), threading.Event()
    other = threading.Thread(target=ran.set)

    def progress(done):
        assert threading.get_ident() == main
        if done == 1000:
            other.start()
        return None if done < 3000 else ran.wait(10)

    assert mr.group_frames([f"a.{i}.x" for i in range(3000)], progress=progress).complete
    other.join()


def test_made_sequences_are_checked():
    for ranges in ([(2, 1)], [(1, 2), (3, 4)], [(5, 6), (1, 2)], [(1,)], [1], ["ab"], [(1, 2**63)]):
        with pytest.raises((ValueError, TypeError)):
            mr.FrameSequence("a.", ".x", 4, ranges)
    empty = mr.FrameSequence("a.", ".x", 4, [])
    assert len(empty) == 0 and list(empty) == [] and empty.missing == []


def test_frame_name_leaves_the_process_settings_alone():
    assert mr.frame_name("fluid", 12, "bin") == "fluid00012.bin"
    assert mr.frame_name("fluid", -3, ".bin", 6, mr.FrameOrder.NAME_DOT_FRAME_DOT_EXT, "/c/") == "/c/fluid.-00003.bin"
    assert mr.frame_name("fluid", 12, "bin", order=1) == "fluid.bin.00012"
    assert mr.frame_name("fluid", 12, "bin") == "fluid00012.bin"
    for wrong, error in (({"order": 4}, ValueError), ({"padding": -1}, OverflowError), ({"frame": 2**31}, OverflowError),
                         ({"frame": "1"}, TypeError), ({"ext": None}, TypeError), ({"ext": "a\0"}, ValueError)):
        with pytest.raises(error):
            mr.frame_name(**{"name": "a", "frame": 1, "ext": "b", **wrong})

"""Files of records, and files that describe themselves: round trips, damage, the system's errors."""
import errno
import os
import stat
import subprocess
import sys
import threading

import mrcommon as mr
import pytest
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st
from samples import one_of_each, properties

FRAME = ["PptyInt", mr.PptyVector3D, ...]


def frame(count):
    return [mr.PptyInt("particles", count), *(mr.PptyVector3D(f"id{i}", (i, 0, -i)) for i in range(count))]


@settings(suppress_health_check=[HealthCheck.function_scoped_fixture])
@given(st.lists(properties()))
def test_both_kinds_of_files_give_back_what_was_written(tmp_path, made):
    path = tmp_path / "file"
    kinds = [p.kind for p in made]
    mr.write_records(path, made)
    assert mr.read_records(path, kinds) == made and mr.check_records(path, kinds) == len(made)
    mr.save(path, made)
    assert mr.load(path) == made


def test_kinds_repeat(tmp_path):
    path = tmp_path / "0001.rec"
    for count in (0, 3):
        mr.write_records(path, frame(count))
        assert mr.read_records(path, FRAME) == frame(count)
        assert mr.check_records(str(path), FRAME) == count + 1
    mr.write_records(path, [mr.PptyInt("a", 1), mr.PptyBool("b", True)] * 2, endian=True)
    assert mr.check_records(os.fsencode(path), ["PptyInt", "PptyBool"], repeat=True, endian=True) == 4
    for wrong, error in (("PptyInt", TypeError), ([7], TypeError), ([...], ValueError), (["QN_Class"], ValueError),
                         (["None"], ValueError), ([mr.Ppty], TypeError)):
        with pytest.raises(error):
            mr.read_records(path, wrong)
    with pytest.raises(ValueError):
        mr.check_records(path, FRAME, repeat=True)


def test_damage_is_named_before_anything_is_read(tmp_path):
    path = tmp_path / "0001.rec"
    mr.write_records(path, frame(2))
    good = path.read_bytes()
    size = len(frame(0)[0].to_bytes())
    cases = [(good[:-3], "value", len(good) - 24, "EndsEarly"), (b"", "name", 0, "EndsEarly"),
             (good[:size] + b"\xff\xff\xff\x7f" + good[size + 4:], "name", size, "SizeBeyondFile"),
             (good[:size + 7] + b"!" + good[size + 8:], "name", size, "Unterminated")]
    for damaged, field, offset, reason in cases:
        path.write_bytes(damaged)
        for call in mr.read_records, mr.check_records:
            with pytest.raises(mr.RecordError) as raised:
                call(path, FRAME)
            error = raised.value
            assert (error.field, error.offset, error.reason, error.path) == (field, offset, reason, str(path))
            assert str(error).startswith(f"{path}: {field} at byte {offset}: ")
    path.write_bytes(good)
    with pytest.raises(mr.RecordError, match="bytes follow") as raised:
        mr.read_records(path, ["PptyInt"])
    assert (raised.value.offset, raised.value.reason) == (size, "TrailingBytes")
    with pytest.raises(mr.RecordError, match="bytes follow"):
        mr.PptyInt.from_bytes(good)


def test_the_systems_errors_are_os_errors_with_their_number(tmp_path):
    none = tmp_path / "none"
    for call in (lambda: mr.load(none), lambda: mr.read_records(none, []), lambda: mr.check_records(none, FRAME),
                 lambda: mr.scan_frames(none), lambda: mr.check_folder(none, FRAME),
                 lambda: mr.save(none / "file", []), lambda: mr.write_records(none / "file", [])):
        with pytest.raises(FileNotFoundError) as raised:
            call()
        assert raised.value.errno == errno.ENOENT and raised.value.filename.startswith(str(none))
    for call in lambda: mr.read_records(tmp_path, []), lambda: mr.check_records(tmp_path, ["PptyInt"], repeat=True):
        with pytest.raises(IsADirectoryError):
            call()
    os.mkfifo(none)
    for call in lambda: mr.load(none), lambda: mr.save(tmp_path, []):
        with pytest.raises(OSError, match="Not a regular file|Invalid argument"):
            call()
    with pytest.raises(mr.RecordError) as raised:
        mr.check_records(none, FRAME)  # nobody writes to it, and nobody is waited for
    assert raised.value.reason == "NotSeekable"


def test_damaged_files_of_properties_are_refused(tmp_path):
    path = tmp_path / "scene.props"
    mr.save(path, one_of_each())
    good = path.read_bytes()
    path.write_bytes(good[:200] + bytes([good[200] ^ 1]) + good[201:])
    with pytest.raises(mr.RecordError, match="checksum") as raised:
        mr.load(path)
    assert raised.value.path == str(path) and str(raised.value).count(str(path)) == 1
    path.write_bytes(b"scene" * 9)
    with pytest.raises(ValueError, match="Not a property file"):
        mr.load(path)


def test_entries_of_a_missing_plug_in_are_kept(tmp_path):
    path = tmp_path / "scene.props"
    kelp = mr.UnknownEntry("KelpPpty", 3, b"\x01\x00\x00\x00\x00leaves")
    mr.save(path, [mr.PptyInt("a", 1), kelp, mr.PptyInt("b", 2)])
    saved = path.read_bytes()
    entries = mr.load(path)
    assert entries[1] == kelp and eval(repr(kelp), vars(mr)) == kelp
    mr.save(path, entries)
    assert path.read_bytes() == saved
    for wrong in ([7], [("Kelp", 1, b"")], [mr.UnknownEntry("", 1, b"")], [mr.UnknownEntry("K", -1, b"")],
                  [mr.UnknownEntry("K", 1, "text")], 7):
        with pytest.raises((TypeError, ValueError, OverflowError)):
            mr.save(path, wrong)
    assert path.read_bytes() == saved


def test_writing_keeps_the_old_file_until_the_new_one_is_complete(tmp_path):
    path, link = tmp_path / "0001.rec", tmp_path / "link"
    mr.write_records(path, frame(1))
    assert stat.S_IMODE(path.stat().st_mode) == 0o666 & ~(os.umask(0o22) | os.umask(0o22))
    path.chmod(0o640)
    link.symlink_to(path)
    mr.write_records(link, frame(2))
    assert link.is_symlink() and mr.check_records(path, FRAME) == 3 and stat.S_IMODE(path.stat().st_mode) == 0o640
    with pytest.raises(AttributeError):
        mr.write_records(path, [mr.PptyInt("a"), None])
    assert mr.check_records(path, FRAME) == 3 and len(list(tmp_path.iterdir())) == 2


def test_a_version_holds_for_its_call_alone(tmp_path):
    old = bytes.fromhex("02000000 6100 14000000 02000000 02000000 4C00 02000000 4800 02000000 0A000000 14000000")
    new = mr.PptyEnum("a", {"L": 10, "H": 20}, "H")
    path = tmp_path / "old.rec"
    path.write_bytes(old * 50)
    failures = []

    def read_with(version):
        for _ in range(50):
            try:
                if version is None:
                    assert mr.PptyEnum.from_bytes(new.to_bytes()) == new
                else:
                    assert mr.read_records(path, [mr.PptyEnum], workspace=version, repeat=True) == [new] * 50
            except Exception as error:
                failures.append(error)

    threads = [threading.Thread(target=read_with, args=[version]) for version in (5087, None, 5000, None)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert failures == []
    with pytest.raises(mr.RecordError):
        mr.PptyEnum.from_bytes(old, workspace=5088)


@pytest.mark.skipif("MRCOMMON_PLUGIN" not in os.environ, reason="the example's plug-in was not built")
def test_a_scene_passes_through_a_process_without_its_plug_in(tmp_path):
    path = str(tmp_path / "scene.props")
    plugged = ("import mrcommon as mr, os, sys; mr.load_plugin(os.environ['MRCOMMON_PLUGIN']); "
               "wind = mr.make('GustPpty', 'breeze', (1, 2, 3)); ")
    subprocess.run([sys.executable, "-c", plugged + "mr.save(sys.argv[1], [wind])", path], check=True)
    subprocess.run([sys.executable, "-c", "import mrcommon as mr, sys; scene = mr.load(sys.argv[1]); "
                    "assert scene[0].kind == 'GustPpty'; mr.save(sys.argv[1], scene)", path], check=True)
    subprocess.run([sys.executable, "-c", plugged + "assert mr.load(sys.argv[1]) == [wind]", path], check=True)

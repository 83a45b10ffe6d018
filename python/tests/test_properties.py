"""Properties: values, bounds, tables, and what Python expects of objects."""
import copy
import math
import os
import pickle

import mrcommon as mr
import numpy as np
import pytest
from hypothesis import given
from samples import KINDS, one_of_each, properties


def test_kinds_are_the_twenty_classes_below_ppty():
    assert set(KINDS) <= set(mr.kinds())
    for kind in KINDS:
        made = mr.make(kind, "p")
        assert type(made) is getattr(mr, kind) and isinstance(made, mr.Ppty)
        assert (made.kind, made.name) == (kind, "p")
    assert mr.PptyVector3D("at").value == (0, 0, 0)


@given(properties())
def test_round_trips(made):
    assert type(made).from_bytes(made.to_bytes()) == made
    assert eval(repr(made), vars(mr)) == made or "nan" in repr(made)
    for other in pickle.loads(pickle.dumps(made)), copy.copy(made), copy.deepcopy(made):
        assert other == made and type(other) is type(made) and other is not made
    assert made.with_name("other").name == "other"
    if made.kind in ("PptyEnum", "PptyArrayString"):
        assert type(made).from_bytes(made.to_bytes(endian=True), endian=True) == made


def test_records_are_those_of_the_library():
    assert mr.PptyInt("a", -2).to_bytes() == bytes.fromhex("02000000 6100 FEFFFFFF")
    assert mr.RFloatPpty("a", 1, minimum=0, maximum=2).to_bytes() == bytes.fromhex(
        "02000000 6100 0000803F 00000040 00000000")  # value, maximum, minimum
    assert mr.PptyInt("a", -2).to_bytes(endian=True) == bytes.fromhex("00000002 6100")
    assert mr.PptyEnum("a", [("L", 9)], 9).to_bytes(endian=True) == bytes.fromhex(
        "00000002 6100 00000002 00000002 4C00 00000009 00000001 00000002 4C00 00000001 09000000")


def test_repr_evaluates_back_for_numbers_without_a_literal():
    for number in (math.nan, -math.nan, math.inf, -math.inf, -0.0):
        for made in (mr.PptyDouble("p", number), mr.PptyVector3D("v", (1, number, 2)), mr.RDoublePpty("r", 0, number)):
            assert eval(repr(made), vars(mr)) == made
    stray = mr.PptyEnum("mode", [("Low", 10)], ("Lost", 99))
    assert eval(repr(stray), vars(mr)) == stray and (stray.value, stray.index) == ("Lost", 99)


@pytest.mark.parametrize("made, value, error", [
    (mr.PptyInt("p", 1), 2**31, OverflowError), (mr.PptyInt("p", 1), 1.5, TypeError),
    (mr.PptyInt("p", 1), True, TypeError), (mr.PptyInt64("p", 1), -2**63 - 1, OverflowError),
    (mr.PptyFloat("p", 1), 1e39, OverflowError), (mr.PptyFloat("p", 1), "1", TypeError),
    (mr.PptyDouble("p", 1), 10**400, OverflowError), (mr.PptyDouble("p", 1), 1j, TypeError),
    (mr.PptyBool("p", True), 0, TypeError), (mr.PptyString("p", "1"), b"2", TypeError),
    (mr.PptyString("p", "1"), "a\0b", ValueError), (mr.PptyArrayString("p", ["1"]), "ab", TypeError),
    (mr.PptyArrayString("p", ["1"]), ["a", 2], TypeError), (mr.PptyVector3F("p", (1, 2, 3)), (1, 2), ValueError),
    (mr.PptyVector3F("p", (1, 2, 3)), (1, 2, 1e39), OverflowError), (mr.PptyVector3F("p", (1, 2, 3)), 7, ValueError),
    (mr.PptyVector3D("p", (1, 2, 3)), "abc", TypeError), (mr.PptyVector3D("p", (1, 2, 3)), np.ones((1, 3)), ValueError),
    (mr.PptyColor4D("p", (1, 2, 3, 4)), (1, 2, 3), ValueError), (mr.RIntPpty("p", 1, 0, 5), 6, ValueError),
    (mr.RangeVect3DPpty("p", (1, 1, 1), (0, 0, 0), (2, 2, 2)), (1, 3, 1), ValueError),
    (mr.PptyEnum("p", {"Low": 10}, "Low"), "High", ValueError), (mr.PptyEnum("p", {"Low": 10}, 10), 11, ValueError),
    (mr.PptyEnum("p", {"Low": 10}, 10), 1.0, TypeError),
])
def test_refused_values_leave_the_property_unchanged(made, value, error):
    before = made.to_bytes()
    with pytest.raises(error) as raised:
        made.value = value
    assert type(raised.value) is error and made.to_bytes() == before


def test_numbers_and_vectors_are_whatever_numpy_gives():
    made = mr.PptyVector3F("v", np.array([1, 2, 3], np.int8))
    assert made.value == (1.0, 2.0, 3.0)
    made.value = np.arange(6.0)[::2]
    assert made.value == (0.0, 2.0, 4.0)
    made.value = [np.float32(1), 2**70, 3]
    assert made.value == (1, 2**70, 3)
    assert mr.PptyInt("i", np.int64(7)).value == 7 and mr.PptyBool("b", np.True_).value is True


def test_bounds_are_checked_when_a_value_is_set_and_at_no_other_time():
    made = mr.RIntPpty("p", 9, minimum=0, maximum=5)
    assert (made.value, made.minimum, made.maximum) == (9, 0, 5)
    made.value = 5
    made.maximum = 3
    assert made.value == 5
    with pytest.raises(AttributeError):
        mr.PptyInt("p").minimum
    with pytest.raises(OverflowError):
        made.minimum = 2**31


def test_choices_are_a_table():
    made = mr.PptyEnum("mode", {"Low": 10, "High": 20})
    assert made.value is None and made.index == -1
    made.value = 20
    assert made.value == "High" and made.choices == [("Low", 10), ("High", 20)]
    made.choices = [("Off", 0)]
    assert made.value == "High"
    made.value = None
    assert made == mr.PptyEnum("mode", [("Off", 0)])
    for wrong in ("ab", [("a",)], [("a", "b")], [(1, 2)], 7, [("a", 2**31)]):
        with pytest.raises((TypeError, OverflowError)):
            made.choices = wrong
    assert made.choices == [("Off", 0)]


def test_equality_asks_for_kind_and_record():
    assert mr.PptyFile("p", "a") != mr.PptyString("p", "a")
    assert mr.PptyInt("p", 1) != mr.PptyInt("q", 1) and mr.PptyInt("p", 1) != 1
    with pytest.raises(TypeError):
        hash(mr.PptyInt("p"))


def test_classes_can_be_derived_from():
    class Mass(mr.PptyFloat):
        """A mass in kilograms."""
    assert Mass("m", 2).kind == "PptyFloat" and Mass("m", 2) == mr.PptyFloat("m", 2)
    with pytest.raises(TypeError):
        mr.Ppty("p")
    with pytest.raises(ValueError):
        mr.make("PptyNone", "p")


@pytest.mark.skipif("MRCOMMON_PLUGIN" not in os.environ, reason="the example's plug-in was not built")
def test_kinds_of_a_plug_in_become_classes():
    (wind,) = mr.load_plugin(os.environ["MRCOMMON_PLUGIN"])
    assert wind.__name__ == "GustPpty" and issubclass(wind, mr.Ppty) and "GustPpty" in mr.kinds()
    made = mr.make("GustPpty", "sea breeze", (1, 2, 3), (0, 0, 0), (9, 9, 9))
    with pytest.raises(ValueError):
        made.value = (10, 0, 0)
    assert pickle.loads(pickle.dumps(made)) == made and type(copy.copy(made)) is wind
    assert len(made.to_bytes()) == len(one_of_each()[17].with_name("sea breeze").to_bytes()) + 8
    assert mr.load_plugin(os.environ["MRCOMMON_PLUGIN"]) == []
    with pytest.raises(ImportError, match="none.so"):
        mr.load_plugin("none.so")

"""Properties of every kind, for several tests: fixed ones, and what hypothesis makes."""
import mrcommon as mr
from hypothesis import strategies as st

INT32 = st.integers(-2**31, 2**31 - 1)
INT64 = st.integers(-2**63, 2**63 - 1)
SINGLE = st.floats(width=32)
DOUBLE = st.floats()
TEXT = st.text(st.characters(blacklist_characters="\0", blacklist_categories=["Cs"]))


def repeated(numbers, count):
    return st.tuples(*[numbers] * count)


VALUES = {
    "PptyInt": INT32, "PptyInt64": INT64, "PptyFloat": SINGLE, "PptyDouble": DOUBLE, "PptyBool": st.booleans(),
    "PptyString": TEXT, "PptyFile": TEXT, "PptyDirectory": TEXT, "PptyArrayString": st.lists(TEXT),
    "PptyVector3F": repeated(SINGLE, 3), "PptyVector3D": repeated(DOUBLE, 3),
    "PptyColor4F": repeated(SINGLE, 4), "PptyColor4D": repeated(DOUBLE, 4),
    "RIntPpty": INT32, "RInt64Ppty": INT64, "RFloatPpty": SINGLE, "RDoublePpty": DOUBLE,
    "RangeVect3FPpty": repeated(SINGLE, 3), "RangeVect3DPpty": repeated(DOUBLE, 3),
}
KINDS = [*VALUES, "PptyEnum"]


@st.composite
def properties(draw):
    kind, name = draw(st.sampled_from(KINDS)), draw(TEXT)
    if kind == "PptyEnum":
        choices = draw(st.lists(st.tuples(TEXT, INT32)))
        value = st.none() | st.tuples(TEXT, INT32)
        return mr.PptyEnum(name, choices, draw(value | st.sampled_from(choices) if choices else value))
    count = 3 if kind.startswith("R") else 1
    return mr.make(kind, name, *(draw(VALUES[kind]) for _ in range(count)))


def one_of_each():
    plain = [mr.PptyInt("count", -7), mr.PptyInt64("bytes", 2**40), mr.PptyFloat("mass", 0.5), mr.PptyDouble("pi", 3.25),
             mr.PptyBool("on", True), mr.PptyString("note", "añil \U0001f30a"), mr.PptyFile("file", "/a/b.vdb"),
             mr.PptyDirectory("folder", "/a"), mr.PptyArrayString("list", ["x", "", "y"]),
             mr.PptyVector3F("up", (0, 0, 1)), mr.PptyVector3D("at", (1, 2, 3)),
             mr.PptyColor4F("tint", (0, 0.5, 1, 1)), mr.PptyColor4D("glow", (1, 0, 0, 0.25))]
    ranged = [mr.RIntPpty("level", 3, 1, 5), mr.RInt64Ppty("size", 3, 1, 2**40), mr.RFloatPpty("g", -9.75, -20, 0),
              mr.RDoublePpty("t", 0.5, 0, 1), mr.RangeVect3FPpty("v", (1, 2, 3), (0, 0, 0), (4, 4, 4)),
              mr.RangeVect3DPpty("w", (1, 2, 3), (0, 0, 0), (4, 4, 4))]
    return [*plain, *ranged, mr.PptyEnum("mode", {"Low": 10, "High": 20}, "High")]

"""Quaternions, geometric queries and identifiers, singly and in arrays."""
import copy
import math
import pickle
import uuid

import mrcommon as mr
import numpy as np
import pytest

QUATERNIONS = [(mr.DQuat, np.float64), (mr.Quat, np.float32)]
each_precision = pytest.mark.parametrize("quat, real", QUATERNIONS)


def unit(quat, real, count, seed):
    q = np.random.default_rng(seed).normal(size=(count, 4)).astype(real)
    q /= np.sqrt((q * q).sum(axis=1, keepdims=True))
    return q


@each_precision
def test_arrays_give_bit_for_bit_what_single_calls_give(quat, real):
    n = 500
    p, a, b, q = (unit(quat, real, n, seed) for seed in range(4))
    q[:9], t = p[:9], np.linspace(-0.5, 1.5, n)
    calls = [(quat.slerp, (t, p, q)), (quat.squad, (t, p, a, b, q)), (quat.intermediate, (p, a, b)),
             (lambda *x: quat.slerp_extra_spins(*x, 3), (t, p, q))]
    for call, arrays in calls:
        single = [call(*(quat(*x) if np.ndim(x) else x for x in key)) for key in zip(*arrays)]
        result = call(*arrays)
        assert result.shape == (n, 4) and result.dtype == real
        assert result.tobytes() == b"".join(x.elements.tobytes() for x in single)
    between = quat.slerp(t[:3], quat(*p[20]), q[20])
    assert between.tobytes() == b"".join(quat.slerp(x, p[20], q[20]).elements.tobytes() for x in t[:3])
    assert quat.slerp(np.empty(0), p[0], q[0]).shape == (0, 4)
    assert quat.slerp(t[::-2], p[::-2].copy(order="F"), q[::-2]).tobytes() == quat.slerp(t, p, q)[::-2].tobytes()


@each_precision
def test_wrong_arrays_are_refused(quat, real):
    one, many = quat.IDENTITY, np.zeros((3, 4))
    for wrong in (np.zeros(3), np.zeros((4, 3)), np.zeros((1, 1, 4)), 5):
        with pytest.raises(ValueError):
            quat.slerp(0.5, wrong, one)
    for wrong in ("abcd", None, ["a"] * 4, [1j] * 4, object(), {}):
        with pytest.raises(TypeError):
            quat.slerp(0.5, one, wrong)
        with pytest.raises(TypeError):
            quat.slerp(wrong, one, one)
    for t in (np.zeros(2), np.zeros((3, 1))):
        with pytest.raises(ValueError):
            quat.slerp(t, many, one)
    with pytest.raises(OverflowError):
        quat.slerp_extra_spins(0.5, one, one, 2**31)


@each_precision
def test_conversions(quat, real):
    eps = 8 * np.finfo(real).eps
    turn = quat.from_axis_angle((0, 0, 1), math.pi / 2)
    rotated = turn.to_matrix() @ (1, 0, 0) if quat is mr.DQuat else (1, 0, 0) @ turn.to_matrix()
    assert np.allclose(rotated, (0, 1, 0), atol=eps)
    assert np.allclose((1, 0, 0, 0) @ quat(*np.roll(turn.elements, -1)).to_matrix(4), (0, 1, 0, 0), atol=eps)
    matrix = turn.to_matrix() if quat is mr.DQuat else turn.to_matrix().T  # Quat reads and writes different forms
    assert np.allclose(quat.from_matrix(matrix.tolist()).elements, turn.elements, atol=eps)
    last = quat(*np.roll(turn.elements, -1))
    assert np.allclose(quat.from_matrix(last.to_matrix(4)).elements, last.elements, atol=eps)
    axis, angle = turn.to_axis_angle()
    assert np.allclose((*axis, angle), (0, 0, 1, math.pi / 2), atol=eps)
    assert np.allclose((turn * turn.inverse()).elements, quat.IDENTITY.elements, atol=eps)
    assert np.allclose(turn.log().exp().elements, turn.elements, atol=eps)
    for wrong in (np.zeros((3, 4)), np.zeros(9), 5):
        with pytest.raises(ValueError):
            quat.from_matrix(wrong)
    with pytest.raises(ValueError):
        turn.to_matrix(5)
    with pytest.raises(TypeError):
        quat.from_axis_angle("abc", 1)


@each_precision
def test_elements_are_a_view_that_keeps_its_quaternion(quat, real):
    view = quat(1, 2, 3, 4).elements
    assert view.dtype == real and view.tolist() == [1, 2, 3, 4]
    q = quat(1, 2, 3, 4)
    q.elements[1] = 7
    q[-1] = 9
    assert list(q) == [1, 7, 3, 9] and q == quat(1, 7, 3, 9) and q != quat() and q != 7
    assert eval(repr(q), vars(mr)) == q and all(pickle.loads(pickle.dumps(q, p)) == q for p in range(6)) and copy.copy(q) is not q
    assert np.isnan(eval(repr(quat(math.nan, 0, math.inf, 0)), vars(mr))[0])
    quat.IDENTITY[0] = 5
    assert quat.IDENTITY == quat(1, 0, 0, 0)
    assert np.float64(2) * q == q * 2 == q + q and q / 2 == q * 0.5 and -q + q == quat.ZERO
    for wrong in (lambda: q[4], lambda: quat(1, 2, 3), lambda: q * "a", lambda: hash(q), lambda: q + 1):
        with pytest.raises((IndexError, TypeError)):
            wrong()


def test_distances_to_many_points():
    points = np.random.default_rng(1).normal(size=(100, 3))
    a, b = (0, 0, 0), (1, 0, 0)
    distance, t, closest = mr.min_distance(points, a, b)
    for i, point in enumerate(points):
        assert mr.min_distance(point, a, b) == (distance[i], t[i], tuple(closest[i]))
    assert np.allclose(closest, np.clip(points[:, :1], 0, 1) * b)
    assert mr.min_distance((2, 1, 0), a, b, clamp_to_segment=False) == (1, 2, (2, 0, 0))
    for wrong, error in ((np.zeros((3, 4)), ValueError), ("abc", TypeError), (None, TypeError)):
        with pytest.raises(error):
            mr.min_distance(wrong, a, b)
        with pytest.raises(error):
            mr.min_distance(points, a, wrong)


def test_boxes_and_triangles():
    box = np.array([(x, y, z) for x in (0, 2) for y in (0, 3) for z in (0, 4)])
    assert mr.box_volume(box) == 24 and mr.intersect_volume(box, box + 1) == 6
    points = [(1, 1, 1), (1, 1, 5), (0, 1, 1)]
    inside = mr.is_in_box(points, (0, 0, 0), (2, 3, 4), np.eye(4), (0, 0, 0, 1))
    assert inside.dtype == bool and inside.tolist() == [True, False, False]
    assert mr.is_in_box(points[0], (0, 0, 0), (2, 3, 4), np.eye(4), (0, 0, 0, 1)) is True
    assert mr.cross_check((1, 2, 3), [2, 3, 4]) == (1, 4) and mr.cross_check((1, 2, 3), (1, 2, 3)) is None
    for wrong in (box[:7], np.zeros((3, 3)), np.zeros(3)):
        with pytest.raises(ValueError):
            mr.box_volume(wrong)
        with pytest.raises(ValueError):
            mr.is_in_box(points, (0, 0, 0), (2, 3, 4), wrong, (0, 0, 0, 1))
    for wrong in ((1, 2), (1, 2, "3"), 5, None, (1, 2, 2**31)):
        with pytest.raises((TypeError, OverflowError)):
            mr.cross_check(wrong, (1, 2, 3))


def test_identifiers_are_uuids():
    known = uuid.UUID("00112233-4455-6677-8899-aabbccddeeff")
    made = mr.ByteId(known)
    assert made == mr.ByteId(str(known)) == mr.ByteId(known.bytes) and made.uuid == known and bytes(made) == made.bytes
    assert str(made) == str(known).upper() and eval(repr(made), vars(mr)) == made
    assert made.index == int.from_bytes(known.bytes[8:], "big") & (2**63 - 1) and made.next().index == made.index + 1
    assert hash(made) == hash(mr.ByteId(known)) and made in {made.uuid: 1, made: 2}
    assert not mr.ByteId() and mr.ByteId("00-00") == mr.ByteId() and pickle.loads(pickle.dumps(made, 0)) == made
    ids = [mr.ByteId(uuid.UUID(int=i << 64 | 2**64 - i)) for i in (3, 200, 1)] + [mr.ByteId(bytes(16))]
    assert [i.uuid for i in sorted(ids)] == sorted(i.uuid for i in ids)
    assert made != known and ids[3].next() > ids[3] >= ids[3]
    for wrong, error in (("0g", ValueError), (b"15 bytes or so", ValueError), (7, TypeError), (None, TypeError)):
        with pytest.raises(error):
            mr.ByteId(wrong)
    with pytest.raises(TypeError):
        made < str(made)

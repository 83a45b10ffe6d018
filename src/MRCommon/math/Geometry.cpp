#include <MRCommon/math/Geometry.h>

#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/math/detail/QuatMatrix.h>

#include <algorithm>

using namespace quarn;

namespace {

template <class T>
T distanceToLine(Vector3<T> const& p, Vector3<T> const& a, Vector3<T> const& b, bool clampToSegment, T* t,
                 Vector3<T>* closest) {
    Vector3<T> const d = b - a;
    T u = (p - a).dot(d) / d.dot(d);
    if (clampToSegment) { // both comparisons are false for NaN, which stays
        if (0 > u)
            u = 0;
        else if (u > 1)
            u = 1;
    }
    *t = u;
    Vector3<T> const c = a + d * u;
    if (closest) *closest = c;
    return (p - c).length();
}

struct Bounds {
    Vector3<float> low{1.0e9f, 1.0e9f, 1.0e9f}, high{-1.0e9f, -1.0e9f, -1.0e9f};
};

Bounds boundsOf(Vector3<float> const* corners) {
    Bounds box;
    for (int i = 0; i < 8; ++i)
        for (int axis = 0; axis < 3; ++axis) {
            float const v = corners[i][axis];
            if (v > box.high[axis]) box.high[axis] = v;
            if (v < box.low[axis]) box.low[axis] = v;
        }
    return box;
}

float volume(Bounds const& box) {
    Vector3<float> const extent = box.high - box.low;
    return extent.z * (extent.y * extent.x);
}

Vector3<float> transformPoint(Vector3<float> const& c, Matrix4<float> const& m) {
    auto const column = [&](int j) { return c.x * m(0, j) + c.y * m(1, j) + c.z * m(2, j) + m(3, j); };
    return {column(0), column(1), column(2)};
}

/// Returns the matrix of q for column vectors, calculated in double and narrowed.
Matrix3<float> rotationOf(Quaternion<float> const& q) {
    Matrix3<double> wide;
    detail::writeRotation<detail::Stored::ForColumns>(wide, q.x, q.y, q.z, q.w);
    Matrix3<float> narrow;
    std::transform(wide.data(), wide.data() + 9, narrow.data(),
                   [](double e) { return static_cast<float>(e); });
    return narrow;
}

Vector3<float> rotate(Matrix3<float> const& r, Vector3<float> const& v) {
    auto const row = [&](int i) { return r(i, 0) * v.x + r(i, 1) * v.y + r(i, 2) * v.z; };
    return {row(0), row(1), row(2)};
}

/// Returns whether p is inside all three faces that meet in `corner`, from which the edges lead inwards.
bool isInsideCorner(Vector3<float> const& p, Vector3<float> const& corner, Vector3<float> const& extent,
                    Matrix3<float> const& r) {
    Vector3<float> const d = p - corner;
    bool const outside = d.dot(rotate(r, {extent.x, 0, 0})) <= 0 || d.dot(rotate(r, {0, extent.y, 0})) <= 0 ||
                         d.dot(rotate(r, {0, 0, extent.z})) <= 0;
    return !outside; // Intentional: NaN is not outside.
}

} // namespace

float minDist(Vector3<float> p, Vector3<float> a, Vector3<float> b, bool clampToSegment, float* t,
              Vector3<float>* closest) {
    return distanceToLine(p, a, b, clampToSegment, t, closest);
}

double D_minDist(Vector3<double> p, Vector3<double> a, Vector3<double> b, bool clampToSegment, double* t,
                 Vector3<double>* closest) {
    return distanceToLine(p, a, b, clampToSegment, t, closest);
}

float computeBoxVolume(Vector3<float> const* corners) { return volume(boundsOf(corners)); }

float intersectVolume(Vector3<float> const* a, Vector3<float> const* b) {
    Bounds const first = boundsOf(a), second = boundsOf(b);
    Bounds common;
    for (int axis = 0; axis < 3; ++axis) {
        common.low[axis] = std::max(first.low[axis], second.low[axis]);
        common.high[axis] = std::min(first.high[axis], second.high[axis]);
        if (!(common.high[axis] > common.low[axis])) return 0;
    }
    return volume(common);
}

bool IsInBox(Vector3<float> const& p, Vector3<float> const& lo, Vector3<float> const& hi,
             Matrix4<float> const& m, Quaternion<float> const& q) {
    Matrix3<float> const r = rotationOf(q);
    return isInsideCorner(p, transformPoint(lo, m), hi - lo, r) &&
           isInsideCorner(p, transformPoint(hi, m), lo - hi, r);
}

bool CrossCheck(int a0, int a1, int a2, int b0, int b1, int b2, int* opposite, int* own) {
    int const a[3] = {a0, a1, a2}, b[3] = {b0, b1, b2};
    auto const isIn = [](int const* triangle, int vertex) {
        return std::find(triangle, triangle + 3, vertex) != triangle + 3;
    };
    if (isIn(b, a0) + isIn(b, a1) + isIn(b, a2) != 2) return false;
    *own = !isIn(b, a0) ? a0 : !isIn(b, a1) ? a1 : a2;
    // A vertex of the second triangle that the first also has is one of the two shared ones.
    auto const found = std::find_if(b, b + 3, [&](int vertex) { return !isIn(a, vertex); });
    if (found != b + 3) *opposite = *found;
    return true;
}

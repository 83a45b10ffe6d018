// Numbers of any kind: infinite, not a number, tiny, huge. Rotations survive their forms; rounding, distances and
// shared edges agree with naive versions; nothing is undefined.
//     numbers of 4 and 8 bytes, as they come
#include "Input.h"

#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/math/DQuat.h>
#include <MRCommon/math/EulerAngles.h>
#include <MRCommon/math/Geometry.h>
#include <MRCommon/math/Quat.h>
#include <MRCommon/math/RotationMatrix.h>
#include <MRCommon/math/Rounding.h>

#include <cmath>
#include <limits>
#include <set>

using namespace quarn;

namespace {

void requireRounding(double value) {
    int const rounded = Redondea(value);
    bool const fits = value > -2147483000.0 && value < 2147483000.0;
    if (!fits) return;
    double const expected = value >= 0 ? std::floor(value + 0.5) : std::trunc(value);
    bool const isBelow = value < 0 && std::abs(value - expected) >= 0.5; // then the next above counts
    // Where the sum with one half is rounded, the two ways may differ by one.
    require(std::abs(rounded - (isBelow ? std::trunc(value + 1) : expected)) <= 1, "rounding stays near");
}

template <class Quaternion4> bool isModest(Quaternion4 const& q) {
    for (int i = 0; i < 4; ++i)
        if (!(std::abs(q[i]) > 1e-3 && std::abs(q[i]) < 1e3)) return false;
    return true;
}

/// A rotation comes back from its matrix, up to its sign.
void requireRotation(DQuat q) {
    DQuat const inverse = q.getInverse();
    static_cast<void>(DQuat::Slerp(0.25, q, inverse));
    static_cast<void>(q.Exp());
    static_cast<void>(q.Log());
    Vector3<double> axis;
    double angle = 0;
    q.ToAxisAngle(axis, angle);
    if (!isModest(q)) return;
    DQuat const unit = q / std::sqrt(q.Dot(q));
    DQuat const one = unit * unit.getInverse();
    require(std::abs(one[0] - 1) < 1e-9 && std::abs(one.Dot(one) - 1) < 1e-9, "a rotation and its inverse");
    Matrix3<double> m;
    unit.QuatToMatrix(&m);
    Matrix3<double> transposed;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) transposed(row, column) = m(column, row);
    Quaternion<double> back;
    matrix3tools::getQuaternion_VERSION3(transposed, back);
    double const product = back.w * unit[0] + back.x * unit[1] + back.y * unit[2] + back.z * unit[3];
    require(std::abs(std::abs(product) - 1) < 1e-9, "a rotation comes back from its matrix");
    require(back.w >= 0, "with a scalar part that is not negative");
}

void requireAngles(Quaternion<double> const& q) {
    for (int order = 0; order < 6; ++order) {
        Tuple3<double, double, double> angles;
        q.getAngles(static_cast<QN_PERMUTATION_XYZ>(order), angles);
        double const length = q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
        for (int i = 0; std::abs(length - 1) < 1e-9 && i < 3; ++i)
            require(std::abs(angles[i]) < 6.3, "the angles of a rotation are at most a full turn");
    }
}

void requireDistance(Vector3<double> p, Vector3<double> a, Vector3<double> b) {
    double t = 0;
    Vector3<double> closest(0, 0, 0);
    double const distance = D_minDist(p, a, b, true, &t, &closest);
    require(std::isnan(distance) || distance >= 0, "no distance is negative");
    require(std::isnan(t) || (t >= 0 && t <= 1), "the closest point is on the segment");
    double sum = 0;
    for (Vector3<double> const* v : {&p, &a, &b})
        for (double const c : {v->x, v->y, v->z}) sum += std::abs(c);
    if (!(sum < 1e6) || std::isnan(t)) return;
    auto const away = [&](Vector3<double> const& q) { return std::hypot(p.x - q.x, p.y - q.y, p.z - q.z); };
    require(distance <= std::min(away(a), away(b)) + 1e-6, "no end is nearer");
}

void requireEdges(int const (&v)[6]) {
    int opposite = -1, own = -1;
    std::set<int> const first{v[0], v[1], v[2]}, second{v[3], v[4], v[5]};
    bool const found = CrossCheck(v[0], v[1], v[2], v[3], v[4], v[5], &opposite, &own);
    if (first.size() < 3 || second.size() < 3) return;
    std::set<int> all(first);
    all.insert(second.begin(), second.end());
    require(found == (all.size() == 4), "two shared of six are an edge");
    if (!found) return;
    require(first.count(own) == 1 && second.count(own) == 0 && second.count(opposite) == 1 &&
                first.count(opposite) == 0,
            "the vertices that are not shared");
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    int vertices[6];
    for (int& vertex : vertices) vertex = input.number<unsigned char>() % 8;
    requireEdges(vertices);
    double d[12];
    for (double& value : d) value = input.number<double>();
    requireRounding(d[0]);
    static_cast<void>(Redondea(static_cast<float>(d[1])));
    requireRotation(DQuat(d[0], d[1], d[2], d[3]));
    requireAngles(Quaternion<double>(d[4], d[5], d[6], d[7]));
    requireDistance({d[0], d[1], d[2]}, {d[3], d[4], d[5]}, {d[6], d[7], d[8]});

    float f[24];
    for (float& value : f) value = input.number<float>();
    Vector3<float> from(f[0], f[1], f[2]);
    static_cast<void>(
        getEulerAngles(&from, {f[3], f[4], f[5]}, static_cast<int>(f[6] == f[6]) + vertices[0]));
    static_cast<void>(Quat::Slerp(f[0], Quat(f[1], f[2], f[3], f[4]), Quat(f[5], f[6], f[7], f[8])));
    Vector3<float> corners[8];
    for (unsigned int i = 0; i < 8; ++i) corners[i] = {f[3 * i], f[3 * i + 1], f[3 * i + 2]};
    float const volume = computeBoxVolume(corners);
    float const shared = intersectVolume(corners, corners);
    bool const isBounded = std::all_of(f, f + 24, [](float c) { return std::abs(c) <= 1e9f; });
    require(!isBounded || (volume >= 0 && shared >= 0), "no volume is negative");
    return 0;
}

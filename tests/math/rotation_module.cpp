// A plug-in that uses the inline rotations, of which ProcessorOptions_test loads two builds: every operation of both
// quaternions on a few hundred inputs, with all results in the order in which they were calculated.
#include <MRCommon/math/DQuat.h>
#include <MRCommon/math/Quat.h>

#include <vector>

namespace {

std::vector<double> results;

template <class... Numbers> void keep(double first, Numbers... numbers) {
    results.push_back(first);
    (results.push_back(numbers), ...);
}
void keep(DQuat const& q) { keep(q[0], q[1], q[2], q[3]); }
void keep(Quat const& q) { keep(q[0], q[1], q[2], q[3]); }

template <class M> void keepRotation(M const& m) {
    for (int i = 0; i < 9; ++i) results.push_back(m(i / 3, i % 3));
}

template <class Q, class T> void calculate(T x) {
    Q const a(x, T(0.3), T(0.7) * x, T(-0.4)), b(T(0.2), x * x, T(0.6), T(0.1) - x);
    Q const p = a / std::sqrt(a.Dot(a)), q = b / std::sqrt(b.Dot(b));
    keep(a * b), keep(a.getInverse()), keep(a.Dot(b)), keep(a + b * x), keep(a.Exp()), keep(p.Log());
    keep(Q::Slerp(x, p, q)), keep(Q::SlerpExtraSpins(x, p, q, 3)), keep(Q::GetIntermediate(p, q, p));
    keep(Q::Squad(x, p, q, p * q, q)), keep(Q(quarn::Vector3<T>(x, 1, 2), x));
    quarn::Vector3<T> axis;
    T angle;
    a.ToAxisAngle(axis, angle);
    keep(angle, axis.x, axis.y, axis.z);
    quarn::Matrix3<double> m;
    quarn::Matrix4<T> placement;
    a.QuatToMatrix(&m), a.QuatToMatrix(&placement);
    keepRotation(m), keepRotation(placement);
    keep(Q(&m)), keep(Q(&placement));
}

} // namespace

extern "C" __attribute__((visibility("default"))) double const* calculateRotations(unsigned int* count) {
    results.clear();
    for (int i = 1; i < 300; ++i) {
        calculate<DQuat>(i / 301.0);
        calculate<Quat>(static_cast<float>(i) / 301.0f);
        quarn::Vector3<double> const v = DQuat(0.3, i, 0.7, 1.1) * quarn::Vector3<double>(0.1, 0.2, i / 7.0);
        keep(v.x, v.y, v.z);
    }
    *count = static_cast<unsigned int>(results.size());
    return results.data();
}

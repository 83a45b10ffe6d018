// The conventions of all rotation functions, shown with one quarter turn about z.
// Each line is a row of docs/rotations.md; the program fails if one of them is not true.
#include <MRCommon/math/DQuat.h>
#include <MRCommon/math/EulerAngles.h>
#include <MRCommon/math/Geometry.h>
#include <MRCommon/math/Quat.h>
#include <MRCommon/math/RotationMatrix.h>

#include <cmath>
#include <cstdio>

using namespace quarn;

namespace {

double const r = std::sqrt(0.5); // cosine and sine of half a quarter turn
float const rf = static_cast<float>(r);

bool allHold = true;

void row(char const* claim, bool holds) {
    std::printf("%-4s %s\n", holds ? "ok" : "NO", claim);
    allHold = allHold && holds;
}

/// The rotation takes x to y. Which element is 1 depends on the vectors that the matrix multiplies.
template <class M> bool isForColumns(M const& m) { return std::abs(m(1, 0) - 1) < 1e-6 && m(0, 1) < 0; }
template <class M> bool isForRows(M const& m) { return std::abs(m(0, 1) - 1) < 1e-6 && m(1, 0) < 0; }

Matrix3<double> forColumns() {
    Matrix3<double> m;
    DQuat(r, 0, 0, r).QuatToMatrix(&m);
    return m;
}

template <class T> Matrix4<T> forRows() {
    T const e[16] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1};
    Matrix4<T> m;
    for (int i = 0; i < 16; ++i) m.data()[i] = e[i];
    return m;
}

template <class Q> bool near(Q const& q, double e0, double e1, double e2, double e3) {
    double const e[4] = {e0, e1, e2, e3};
    for (int i = 0; i < 4; ++i)
        if (std::abs(q[i] - e[i]) > 1e-6) return false;
    return true;
}

template <class T> bool near(Vector3<T> const& v, double x, double y, double z) {
    return std::abs(v.x - x) < 1e-5 && std::abs(v.y - y) < 1e-5 && std::abs(v.z - z) < 1e-5;
}

void writing() {
    Matrix3<double> m;
    Matrix4<double> placement = forRows<double>();
    Matrix4<float> narrow = forRows<float>();
    DQuat(r, 0, 0, r).QuatToMatrix(&m);
    row("DQuat(r,0,0,r).QuatToMatrix(Matrix3<double>*)   element 0, for columns: m(1,0) = 1",
        isForColumns(m));
    Quat(rf, 0, 0, rf).QuatToMatrix(&m);
    row("Quat(r,0,0,r).QuatToMatrix(Matrix3<double>*)    element 0, for rows: m(0,1) = 1", isForRows(m));
    DQuat(0, 0, r, r).QuatToMatrix(&placement);
    row("DQuat(0,0,r,r).QuatToMatrix(Matrix4<double>*)   element 3, for rows: m(0,1) = 1, m(3,0) kept",
        isForRows(placement) && placement(3, 0) == 7);
    Quat(0, 0, rf, rf).QuatToMatrix(&narrow);
    row("Quat(0,0,r,r).QuatToMatrix(Matrix4<float>*)     element 3, for rows: m(0,1) = 1, m(3,0) kept",
        isForRows(narrow) && narrow(3, 0) == 7);
}

void reading() {
    Matrix3<double> columns = forColumns(), rows;
    Matrix3<float> narrow;
    Matrix4<double> placement = forRows<double>();
    Matrix4<float> narrowPlacement = forRows<float>();
    for (int i = 0; i < 9; ++i) {
        narrow.data()[i] = static_cast<float>(columns.data()[i]);
        rows(i / 3, i % 3) = columns(i % 3, i / 3);
    }
    DQuat q;
    q.FromRotationMatrix(columns);
    row("DQuat(Matrix3<double>*), FromRotationMatrix     element 0, for columns: (r,0,0,r)",
        near(DQuat(&columns), r, 0, 0, r) && near(q, r, 0, 0, r));
    Quat f;
    f.FromRotationMatrix(narrow);
    row("Quat(Matrix3<double>*), FromRotationMatrix      element 0, for columns: (r,0,0,r)",
        near(Quat(&columns), r, 0, 0, r) && near(f, r, 0, 0, r));
    Matrix3<double> written;
    Quat(rf, 0, 0, rf).QuatToMatrix(&written);
    row("Quat to its own Matrix3<double> and back        the rotation is inverted: (r,0,0,-r)",
        near(Quat(&written), r, 0, 0, -r));
    row("DQuat(Matrix4<double>*)                         element 3, for rows: (0,0,r,r)",
        near(DQuat(&placement), 0, 0, r, r));
    row("Quat(Matrix4<float>*)                           element 3, for rows: (0,0,r,r)",
        near(Quat(&narrowPlacement), 0, 0, r, r));
    Quaternion<double> last;
    matrix3tools::getQuaternion_VERSION3(rows, last);
    row("getQuaternion_VERSION3(Matrix3<double>)         w, for rows: z = w = r",
        std::abs(last.z - r) < 1e-12 && std::abs(last.w - r) < 1e-12);
}

void algebra() {
    Vector3<double> axis;
    double angle;
    DQuat const q(Vector3<double>(0, 0, 1), std::acos(0.0));
    q.ToAxisAngle(axis, angle);
    row("axis and angle, product, Log, Exp, Slerp        element 0: z by 90 degrees is (r,0,0,r)",
        near(q, r, 0, 0, r) && axis.z > 0.999 && std::abs(angle - std::acos(0.0)) < 1e-12 &&
            near(DQuat::Slerp(0.5, DQuat::IDENTITY, q * q), r, 0, 0, r));
    row("X() Y() Z() W()                                 elements 0 1 2 3: W() of (r,0,0,-r) is -r",
        DQuat(r, 0, 0, -r).W() == -r);
    row("DQuat(r,0,0,r) * (1,0,0)                        the inverse rotation: (0,-1,0)",
        near(q * Vector3<double>(1, 0, 0), 0, -1, 0));
}

void vectors() {
    row("TransformaEje(Matrix4, (1,0,0))                 for rows, no translation: (0,1,0)",
        near(TransformaEje(forRows<float>(), Vector3<float>(1, 0, 0)), 0, 1, 0));
    Tuple3<double, double, double> angles;
    Quaternion<double>(0, 0, r, r).getAngles(PERMUTATION_XYZ_012, angles);
    row("Quaternion<double>(0,0,r,r).getAngles           w: in order 0 the angles (0,0,90)",
        angles[0] == 0 && angles[1] == 0 && std::abs(angles[2] - std::acos(0.0)) < 1e-12);
    // Order 3 begins with z, although its images say x.
    Quaternion<double>(0, 0, r, r).getAngles(PERMUTATION_XYZ_021, angles);
    row("the same in order 3, and its images             the quarter turn is angle 0; the images name angle "
        "1",
        std::abs(angles[0] - std::acos(0.0)) < 1e-12 && PERMUTATION_XYZ_IMAGES[3][2] == 1);
    Vector3<float> from(1, 0, 0);
    row("getEulerAngles(x, y, 1)                         the rotation itself: (0,0,90)",
        near(getEulerAngles(&from, {0, 1, 0}, 1), 0, 0, 90));
    row("getEulerAngles(x, y, 2), and 3                  the inverse rotation: (0,0,-90)",
        near(getEulerAngles(&from, {0, 1, 0}, 2), 0, 0, -90) &&
            near(getEulerAngles(&from, {0, 1, 0}, 3), 0, 0, -90));
    // The box extends from (0,0,0) to (1,2,3) in its frame: 2 units to -x, 1 to y, 3 to z, translated by (7,8,9).
    row("IsInBox(p, lo, hi, Matrix4, Quaternion)         matrix for rows, w: (6,8.5,10) is inside",
        IsInBox({6, 8.5f, 10}, {0, 0, 0}, {1, 2, 3}, forRows<float>(), {0, 0, rf, rf}));
}

} // namespace

int main() {
    writing();
    reading();
    algebra();
    vectors();
    return allHold ? 0 : 1;
}

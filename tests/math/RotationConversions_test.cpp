// Axes through matrices, quaternions out of matrices, Euler angles out of quaternions and of two directions:
// held against figures worked out by hand and against products of elementary turns.
#include "ReferenceRotations.h"

#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/math/EulerAngles.h>
#include <MRCommon/math/RotationMatrix.h>

#include <gtest/gtest.h>

#include <limits>

using namespace quarn;
using Angles = Tuple3<double, double, double>;

namespace {

constexpr double pi = 3.14159265358979323846, degree = pi / 180;

/// On column vectors the first angle's turn comes first. `axes` names them, as in "zxy".
Plain turnBy(Angles const& angles, char const* axes) {
    return turnAbout(axes[2] - 'x', angles[2]) * turnAbout(axes[1] - 'x', angles[1]) *
           turnAbout(axes[0] - 'x', angles[0]);
}

char const* const AXES[6] = {"xyz", "yzx", "zxy", "zyx", "xzy", "yxz"}; // by order, from the six formulas

template <class T> Matrix4<T> rows(Vector3<T> const& r0, Vector3<T> const& r1, Vector3<T> const& r2) {
    Matrix4<T> m;
    for (int j = 0; j < 4; ++j) m(3, j) = m(j, 3) = 5; // translation and last column, which do not count
    for (int j = 0; j < 3; ++j) m(0, j) = r0[j], m(1, j) = r1[j], m(2, j) = r2[j];
    return m;
}

/// From this squared length on, to the last bit, a row is brought to length 1.
template <class T> void expectRowsNormalisedFrom(T squaredLength) {
    T const eps = std::numeric_limits<T>::epsilon();
    auto const turned = [&](T squared) { // y, and what it lacks to the squared length in z
        T const y = std::sqrt(squared) * (1 - 4 * eps), z = std::sqrt(squared - y * y);
        EXPECT_EQ(y * y + z * z, squared);
        return TransformaEje(rows<T>({0, 0, 0}, {0, y, z}, {0, 0, 0}), Vector3<T>(1, 1, 1)).y;
    };
    EXPECT_NEAR(turned(squaredLength), 1, 8 * eps);
    EXPECT_LT(turned(std::nextafter(squaredLength, T(0))), T(1e-13));
}

void expectQuaternion(Plain const& r, double x, double y, double z, double w) {
    Quaternion<double> q(9, 9, 9, 9);
    matrix3tools::getQuaternion_VERSION3(filled<Matrix3<double>>(r, true), q);
    double const difference =
        worse(worse(std::abs(q.x - x), std::abs(q.y - y)), worse(std::abs(q.z - z), std::abs(q.w - w)));
    EXPECT_LE(difference, 4e-15); // two roots and two products of numbers up to 1
    EXPECT_GE(q.w, 0);
}

Vector3<float> euler(Vector3<float> from, Vector3<float> const& to, int mode) {
    Vector3<float> const before = from;
    Vector3<float> const angles = getEulerAngles(&from, to, mode);
    EXPECT_TRUE(from == before || std::isnan(before.x));
    return angles;
}

bool isNaN(Vector3<float> const& v) { return std::isnan(v.x) && std::isnan(v.y) && std::isnan(v.z); }

} // namespace

TEST(TransformaEje, TakesDirectionsWithoutScaleOrTranslation) {
    // x goes to y and y to -x; the scale of each row is its own.
    Vector3<float> const turned(-2, 1, 3);
    EXPECT_EQ(TransformaEje(rows<float>({0, 2, 0}, {-2, 0, 0}, {0, 0, 2}), Vector3<float>(1, 2, 3)), turned);
    EXPECT_EQ(TransformaEje(rows<float>({0, 0.5f, 0}, {-8, 0, 0}, {0, 0, 1}), Vector3<float>(1, 2, 3)),
              turned);
    EXPECT_EQ(TransformaEje(rows<double>({0, 2, 0}, {-4, 0, 0}, {0, 0, 0}), Vector3<double>(1, 2, 3)),
              Vector3<double>(-2, 1, 0));
}

TEST(TransformaEje, LeavesVanishingRowsAlone) {
    expectRowsNormalisedFrom(1e-28f);
    expectRowsNormalisedFrom(1e-56);
}

TEST(GetQuaternion, ReadsMatricesForRowVectors) {
    double const r = std::sqrt(0.5);
    expectQuaternion(turnAbout(0, 0), 0, 0, 0, 1);
    expectQuaternion(turnAbout(2, pi / 2), 0, 0, r, r);
    expectQuaternion(turnAbout(0, -pi / 2), -r, 0, 0, r);
    // Half turns with two equal diagonal elements: the pivot is the later one and comes out positive.
    expectQuaternion({{{0, -1, 0}, {-1, 0, 0}, {0, 0, -1}}}, -r, r, 0, 0);
    expectQuaternion({{{0, 0, -1}, {0, -1, 0}, {-1, 0, 0}}}, -r, 0, r, 0);
    expectQuaternion({{{-1, 0, 0}, {0, 0, -1}, {0, -1, 0}}}, 0, -r, r, 0);
    everyTurn([](Plain const& turn, std::array<double, 4> const& e) {
        double const sign = e[0] < 0 ? -1 : 1;
        expectQuaternion(turn, sign * e[1], sign * e[2], sign * e[3], sign * e[0]);
    });
}

TEST(GetAngles, RebuildTheTurnInEveryOrder) {
    everyTurn([](Plain const& r, std::array<double, 4> const& e) {
        Quaternion<double> const q(3 * e[1], 3 * e[2], 3 * e[3], 3 * e[0]); // the length does not matter
        for (int order = 0; order < 6; ++order) {
            Angles angles;
            q.getAngles(QN_PERMUTATION_XYZ(order), angles);
            // Near the poles the arc sine loses half the digits.
            bool const isNearPole = std::abs(angles[1]) > pi / 2 - 0.01;
            ASSERT_LE(distance(filled<Matrix3<double>>(turnBy(angles, AXES[order]), false), r, false),
                      isNearPole ? 1e-7 : 2e-13)
                << order;
        }
    });
    Angles kept(1, 2, 3);
    Quaternion<double>(0, 0, 0, 1).getAngles(QN_PERMUTATION_XYZ(6), kept);
    Quaternion<double>(0, 0, 0, 1).getAngles(QN_PERMUTATION_XYZ(-1), kept);
    EXPECT_TRUE(kept[0] == 1 && kept[1] == 2 && kept[2] == 3);
}

TEST(GetAngles, KnowThePoles) {
    Angles angles;
    // s = 2 (a d - b c) / n is 1 exactly, then beyond 1 and -1 through rounding alone.
    Quaternion<double>::getAngles_ZXY(1, 0, 0, 1, angles);
    EXPECT_TRUE(angles[0] == 0 && angles[1] == pi / 2 && angles[2] == 0);
    Quaternion<double>::getAngles_ZXY(1.1, -0.8, 0.8, 1.1, angles);
    EXPECT_TRUE(angles[0] == 0 && angles[1] == pi / 2);
    EXPECT_NEAR(angles[2], -2 * std::atan(8.0 / 11), 1e-15);
    Quaternion<double>::getAngles_ZXY(-1.1, 0.8, 0.8, 1.1, angles);
    EXPECT_TRUE(angles[0] == 0 && angles[1] == -pi / 2);
    EXPECT_NEAR(angles[2], 2 * std::atan(8.0 / 11), 1e-15);
}

TEST(AxisOrders, ArePublished) {
    EXPECT_TRUE(AX == 0 && AY == 1 && AZ == 2);
    for (int order = 0; order < 6; ++order)
        for (int angle = 0; angle < 3; ++angle) {
            int const shown = order == 3 ? 4 : order == 4 ? 3 : order; // these two rows are each other's
            EXPECT_EQ(PERMUTATION_XYZ_IMAGES[shown][AXES[order][angle] - 'x'], angle);
        }
}

TEST(EulerAngles, OfQuarterTurns) {
    auto const expect = [](Vector3<float> const& got, float x, float y, float z) {
        EXPECT_LE((got - Vector3<float>(x, y, z)).length(), 2e-5f) << x << y << z; // 90 degrees, two epsilon
    };
    expect(euler({5, 0, 0}, {0, 1, 0}, 1), 0, 0, 90);
    expect(euler({1, 0, 0}, {0, 1, 0}, 2), 0, 0, -90);
    expect(euler({0, 0, 1}, {1, 0, 0}, 3), 0, -90, 0);
    expect(euler({0, 0, 2}, {0, -1, 0}, 1), 90, 0, 0);
}

TEST(EulerAngles, TurnTheFirstDirectionOntoTheSecond) {
    Uniform uniform;
    for (int i = 0; i < 10000; ++i) {
        auto const direction = [&] {
            double const z = uniform(-1, 1), a = uniform(-pi, pi), r = std::sqrt(1 - z * z);
            return Vector3<float>(float(r * std::cos(a)), float(r * std::sin(a)), float(z));
        };
        Vector3<float> const n = direction(), to = direction();
        if (std::abs(n.dot(to)) > 0.9f) continue; // the arc cosine loses digits there
        for (int mode = 1; mode <= 3; ++mode) {
            Vector3<float> const v = euler(n * 3, to, mode);
            double const x = v.x * degree, y = v.y * degree, z = v.z * degree;
            Plain const r = mode == 1   ? turnBy({y, x, z}, "yxz")
                            : mode == 2 ? turnBy({-z, -x, -y}, "zxy")
                                        : turnBy({-y, -z, -x}, "yzx");
            // Axis and angle are narrowed to float, and the angle's error grows by 1 / sqrt(1 - 0.81).
            for (int k = 0; k < 3; ++k)
                ASSERT_NEAR(r.e[k][0] * n.x + r.e[k][1] * n.y + r.e[k][2] * n.z, to[k], 2e-6) << mode;
        }
    }
}

TEST(EulerAngles, OfLikeDirectionsAreZeroAndOfOppositeOnesNaN) {
    float const eps = std::numeric_limits<float>::epsilon();
    Vector3<float> const none(0, 0, 0);
    int beyond = 0;
    everyTurn([&](Plain const& r, std::array<double, 4> const&) {
        Vector3<float> const v(float(r.e[0][0]), float(r.e[1][0]), float(r.e[2][0]));
        Vector3<float> const n = v * (1 / v.length());
        beyond += n.dot(n) > 1;
        ASSERT_EQ(euler(n, n, 1), none);
    });
    EXPECT_GT(beyond, 1000);
    EXPECT_EQ(euler({1, 0, 0}, {0.5f, 0, 0}, 2), none);
    EXPECT_EQ(euler({1, 0, 0}, {1, 1, 0}, 3), none) << "a product of 1 is an angle of 0";
    EXPECT_EQ(euler({1, 0, 0}, {1 + 4 * eps, 0, 0}, 1), none);
    EXPECT_TRUE(isNaN(euler({1, 0, 0}, {1 + 5 * eps, 0, 0}, 1)));
    // What cannot be turned, and modes that do not exist.
    EXPECT_TRUE(isNaN(euler({1, 0, 0}, {-1, 0, 0}, 1)));
    EXPECT_TRUE(isNaN(euler({0, 0, 0}, {1, 0, 0}, 2)));
    EXPECT_TRUE(isNaN(euler({1, 0, 0}, {2, 1, 0}, 3)));
    for (int mode : {-1, 0, 4}) EXPECT_EQ(euler({1, 0, 0}, {0, 1, 0}, mode), none);
}

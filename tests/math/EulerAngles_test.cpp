// Euler angles of quaternions and between two directions, compared with figures worked out by hand and with products of
// rotations about the axes.
#include "ReferenceRotations.h"

#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/math/EulerAngles.h>

#include <gtest/gtest.h>

#include <limits>

using namespace quarn;
using Angles = Tuple3<double, double, double>;

namespace {

constexpr double pi = 3.14159265358979323846, degree = pi / 180;

/// Returns the rotation for column vectors, the first angle first. `axes` names the axes, as in "zxy".
Plain rotationBy(Angles const& angles, char const* axes) {
    return rotationAbout(axes[2] - 'x', angles[2]) * rotationAbout(axes[1] - 'x', angles[1]) *
           rotationAbout(axes[0] - 'x', angles[0]);
}

char const* const AXES[6] = {"xyz", "yzx", "zxy", "zyx", "xzy", "yxz"}; // by order

Vector3<float> euler(Vector3<float> from, Vector3<float> const& to, int mode) {
    Vector3<float> const before = from;
    Vector3<float> const angles = getEulerAngles(&from, to, mode);
    EXPECT_TRUE(from == before || std::isnan(before.x));
    return angles;
}

bool isNaN(Vector3<float> const& v) { return std::isnan(v.x) && std::isnan(v.y) && std::isnan(v.z); }

} // namespace

TEST(GetAngles, RebuildsTheRotationInEveryOrder) {
    forEachRotation([](Plain const& r, std::array<double, 4> const& e) {
        Quaternion<double> const q(3 * e[1], 3 * e[2], 3 * e[3], 3 * e[0]); // the length does not matter
        for (int order = 0; order < 6; ++order) {
            Angles angles;
            q.getAngles(QN_PERMUTATION_XYZ(order), angles);
            // Near the poles the arc sine loses half the digits.
            bool const isNearPole = std::abs(angles[1]) > pi / 2 - 0.01;
            ASSERT_LE(distance(filled<Matrix3<double>>(rotationBy(angles, AXES[order]), false), r, false),
                      isNearPole ? 1e-7 : 2e-13)
                << order;
        }
    });
    Angles kept(1, 2, 3);
    Quaternion<double>(0, 0, 0, 1).getAngles(QN_PERMUTATION_XYZ(6), kept);
    Quaternion<double>(0, 0, 0, 1).getAngles(QN_PERMUTATION_XYZ(-1), kept);
    EXPECT_TRUE(kept[0] == 1 && kept[1] == 2 && kept[2] == 3);
}

TEST(GetAngles, LeavesTheArcSineOnlyBeyondThePoles) {
    Angles angles;
    // s = 2 (a d - b c) / n is exactly 1 and -1: angle 2 would be -90 and 90 degrees in the other branch.
    Quaternion<double>::getAngles_ZXY(1, -1, 1, 1, angles);
    EXPECT_TRUE(angles[0] == 0 && angles[1] == pi / 2 && angles[2] == 0);
    Quaternion<double>::getAngles_ZXY(-1, 1, 1, 1, angles);
    EXPECT_TRUE(angles[0] == 0 && angles[1] == -pi / 2 && angles[2] == 0);
    // Rounding takes s beyond 1 and -1.
    Quaternion<double>::getAngles_ZXY(1.1, -0.8, 0.8, 1.1, angles);
    EXPECT_TRUE(angles[0] == 0 && angles[1] == pi / 2);
    EXPECT_NEAR(angles[2], -2 * std::atan(8.0 / 11), 1e-15);
    Quaternion<double>::getAngles_ZXY(-1.1, 0.8, 0.8, 1.1, angles);
    EXPECT_TRUE(angles[0] == 0 && angles[1] == -pi / 2);
    EXPECT_NEAR(angles[2], 2 * std::atan(8.0 / 11), 1e-15);
}

TEST(PermutationXyzImages, NameTheAngleAboutEachAxis) {
    EXPECT_TRUE(AX == 0 && AY == 1 && AZ == 2);
    for (int order = 0; order < 6; ++order)
        for (int angle = 0; angle < 3; ++angle) {
            int const shown = order == 3 ? 4 : order == 4 ? 3 : order; // these two rows are exchanged
            EXPECT_EQ(PERMUTATION_XYZ_IMAGES[shown][AXES[order][angle] - 'x'], angle);
        }
}

TEST(GetEulerAngles, ReturnsQuarterTurnsInDegrees) {
    auto const expect = [](Vector3<float> const& got, float x, float y, float z) {
        EXPECT_LE((got - Vector3<float>(x, y, z)).length(), 2e-5f) << x << y << z; // 90 degrees, two epsilon
    };
    expect(euler({5, 0, 0}, {0, 1, 0}, 1), 0, 0, 90);
    expect(euler({1, 0, 0}, {0, 1, 0}, 2), 0, 0, -90);
    expect(euler({0, 0, 1}, {1, 0, 0}, 3), 0, -90, 0);
    expect(euler({0, 0, 2}, {0, -1, 0}, 1), 90, 0, 0);
}

TEST(GetEulerAngles, TakesTheFirstDirectionToTheSecond) {
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
            Plain const r = mode == 1   ? rotationBy({y, x, z}, "yxz")
                            : mode == 2 ? rotationBy({-z, -x, -y}, "zxy")
                                        : rotationBy({-y, -z, -x}, "yzx");
            // Axis and angle are narrowed to float, and the angle's error grows by 1 / sqrt(1 - 0.81).
            for (int k = 0; k < 3; ++k)
                ASSERT_NEAR(r.e[k][0] * n.x + r.e[k][1] * n.y + r.e[k][2] * n.z, to[k], 2e-6) << mode;
        }
    }
}

TEST(GetEulerAngles, ReturnsZerosForEqualAndNaNForOppositeDirections) {
    float const eps = std::numeric_limits<float>::epsilon();
    Vector3<float> const none(0, 0, 0);
    int beyond = 0;
    forEachRotation([&](Plain const& r, std::array<double, 4> const&) {
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
    // Opposite directions, whatever the length of the second, no direction, and modes that do not exist.
    for (float length : {1.0f, 0.5f, 0.9999999f}) EXPECT_TRUE(isNaN(euler({1, 0, 0}, {-length, 0, 0}, 1)));
    EXPECT_TRUE(isNaN(euler({0, 0, 0}, {1, 0, 0}, 2)));
    EXPECT_TRUE(isNaN(euler({1, 0, 0}, {2, 1, 0}, 3)));
    for (int mode : {-1, 0, 4}) EXPECT_EQ(euler({1, 0, 0}, {0, 1, 0}, mode), none);
}

TEST(GetEulerAngles, NormalisesTheAxisInDouble) {
    // A length in single precision gives other last bits in all three angles.
    EXPECT_EQ(euler({5, 4, -7}, {0, 1, 0}, 1),
              Vector3<float>(0x1.7c6614p+5f, -0x1.7e8c9p+4f, 0x1.9ab8b6p+5f));
}

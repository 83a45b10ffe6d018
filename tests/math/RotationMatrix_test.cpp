// Axes rotated by matrices and quaternions of matrices, compared with figures worked out by hand and with products of
// rotations about the axes.
#include "ReferenceRotations.h"

#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/math/RotationMatrix.h>

#include <gtest/gtest.h>

#include <limits>

using namespace quarn;

namespace {

constexpr double pi = 3.14159265358979323846;

template <class T> Matrix4<T> rows(Vector3<T> const& r0, Vector3<T> const& r1, Vector3<T> const& r2) {
    Matrix4<T> m;
    for (int j = 0; j < 4; ++j) m(3, j) = m(j, 3) = 5; // translation and last column, which have no effect
    for (int j = 0; j < 3; ++j) m(0, j) = r0[j], m(1, j) = r1[j], m(2, j) = r2[j];
    return m;
}

/// Expects rows to be normalised from this squared length on, to the last bit.
template <class T> void expectRowsNormalisedFrom(T squaredLength) {
    T const eps = std::numeric_limits<T>::epsilon();
    auto const middle = [&](T squared) { // y, and in z what is missing from the squared length
        T const y = std::sqrt(squared) * (1 - 4 * eps), z = std::sqrt(squared - y * y);
        EXPECT_EQ(y * y + z * z, squared);
        return TransformaEje(rows<T>({0, 0, 0}, {0, y, z}, {0, 0, 0}), Vector3<T>(1, 1, 1)).y;
    };
    EXPECT_NEAR(middle(squaredLength), 1, 8 * eps);
    EXPECT_LT(middle(std::nextafter(squaredLength, T(0))), T(1e-13));
}

void expectQuaternion(Plain const& r, double x, double y, double z, double w) {
    Quaternion<double> q(9, 9, 9, 9);
    matrix3tools::getQuaternion_VERSION3(filled<Matrix3<double>>(r, true), q);
    double const difference =
        worse(worse(std::abs(q.x - x), std::abs(q.y - y)), worse(std::abs(q.z - z), std::abs(q.w - w)));
    EXPECT_LE(difference, 4e-15); // two roots and two products of numbers up to 1
    EXPECT_GE(q.w, 0);
}

} // namespace

TEST(TransformaEje, IgnoresScaleAndTranslation) {
    // x goes to y and y to -x; the scale of each row is its own.
    Vector3<float> const turned(-2, 1, 3);
    EXPECT_EQ(TransformaEje(rows<float>({0, 2, 0}, {-2, 0, 0}, {0, 0, 2}), Vector3<float>(1, 2, 3)), turned);
    EXPECT_EQ(TransformaEje(rows<float>({0, 0.5f, 0}, {-8, 0, 0}, {0, 0, 1}), Vector3<float>(1, 2, 3)),
              turned);
    EXPECT_EQ(TransformaEje(rows<double>({0, 2, 0}, {-4, 0, 0}, {0, 0, 0}), Vector3<double>(1, 2, 3)),
              Vector3<double>(-2, 1, 0));
}

TEST(TransformaEje, DoesNotNormaliseVanishingRows) {
    expectRowsNormalisedFrom(1e-28f);
    expectRowsNormalisedFrom(1e-56);
}

TEST(TransformaEje, MultipliesByTheReciprocalOfTheLength) {
    // Three divisions by the root of 11 would round the first component differently.
    EXPECT_EQ(TransformaEje(rows<float>({1, 3, 1}, {0, 0, 0}, {0, 0, 0}), Vector3<float>(1, 0, 0)),
              Vector3<float>(0x1.34bf64p-2f, 0x1.cf1f16p-1f, 0x1.34bf64p-2f));
}

TEST(GetQuaternion, ReadsMatricesForRowVectors) {
    double const r = std::sqrt(0.5);
    expectQuaternion(rotationAbout(0, 0), 0, 0, 0, 1);
    expectQuaternion(rotationAbout(2, pi / 2), 0, 0, r, r);
    expectQuaternion(rotationAbout(0, -pi / 2), -r, 0, 0, r);
    // Half turns with two equal diagonal elements: the pivot is the later one, and its component is positive.
    expectQuaternion({{{0, -1, 0}, {-1, 0, 0}, {0, 0, -1}}}, -r, r, 0, 0);
    expectQuaternion({{{0, 0, -1}, {0, -1, 0}, {-1, 0, 0}}}, -r, 0, r, 0);
    expectQuaternion({{{-1, 0, 0}, {0, 0, -1}, {0, -1, 0}}}, 0, -r, r, 0);
    expectQuaternion({{{-0.28, 0, -0.96}, {0, -1, 0}, {-0.96, 0, 0.28}}}, -0.6, 0, 0.8,
                     0); // the last is the largest
    forEachRotation([](Plain const& rotation, std::array<double, 4> const& e) {
        double const sign = e[0] < 0 ? -1 : 1;
        expectQuaternion(rotation, sign * e[1], sign * e[2], sign * e[3], sign * e[0]);
    });
}

TEST(GetQuaternion, NormalisesMatricesThatAreNoRotation) {
    forEachRotation([](Plain r, std::array<double, 4> const&) {
        for (auto& row : r.e)
            for (double& element : row) element *= 3;
        Quaternion<double> q;
        matrix3tools::getQuaternion_VERSION3(filled<Matrix3<double>>(r, true), q);
        ASSERT_NEAR(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w, 1, 1e-15);
    });
}

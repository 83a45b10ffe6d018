// DQuat and Quat: every operation compared with figures worked out by hand, both sides of every threshold that an input
// can reach, and ten thousand rotations compared with plain matrix products.
#include "ReferenceRotations.h"

#include <MRCommon/math/DQuat.h>
#include <MRCommon/math/Quat.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>

using namespace quarn;

namespace {

constexpr double pi = 3.14159265358979323846;

/// What the tests need in either precision.
template <class Q> struct Kit {
    using T = std::decay_t<decltype(std::declval<Q const&>()[0])>;
    static constexpr bool isFloat = std::is_same_v<T, float>;
    static constexpr T eps = std::numeric_limits<T>::epsilon();
    static constexpr T nan = std::numeric_limits<T>::quiet_NaN();

    static Q make(double e0, double e1, double e2, double e3) { return {T(e0), T(e1), T(e2), T(e3)}; }
    static Q make(std::array<double, 4> const& e) { return make(e[0], e[1], e[2], e[3]); }
    /// On the great circle through IDENTITY and the half turn about z, at an angle of `arc`.
    static Q onCircle(double arc) { return make(std::cos(arc), 0, 0, std::sin(arc)); }
    static T above(T v) { return std::nextafter(v, T(9e9)); }
    static T below(T v) { return std::nextafter(v, T(-9e9)); }

    /// The largest difference of two elements.
    static double apart(Q const& a, Q const& b) {
        double worst = 0;
        for (int i = 0; i < 4; ++i) worst = worse(worst, std::abs(double(a[i]) - double(b[i])));
        return worst;
    }
    static bool isNaN(Q const& a) { return std::isnan(a[0]) && std::isnan(a[3]); }
    static Q fromColumns(Plain const& r) {
        Matrix3<double> m = filled<Matrix3<double>>(r, false);
        return Q(&m);
    }
};

/// Writes and reads element 2 through an index of another type than int.
template <class Index, class Q> void expectIndex() {
    Q q(5, 6, 7, 8);
    Q const& read = q;
    q[Index(2)] = 9;
    EXPECT_EQ(read[Index(2)], 9);
    EXPECT_EQ(q, Q(5, 6, 9, 8));
}

template <class> class AnyQuat : public testing::Test {};

struct Names {
    template <class Q> static std::string GetName(int) { return std::is_same_v<Q, Quat> ? "Quat" : "DQuat"; }
};

} // namespace

using Both = testing::Types<DQuat, Quat>;
TYPED_TEST_SUITE(AnyQuat, Both, Names);

TYPED_TEST(AnyQuat, KeepsItsElementsInOrder) {
    using Q = TypeParam;
    Q quat;
    EXPECT_EQ(quat, Q(0, 0, 1, 0));
    EXPECT_TRUE(quat.Z() == 1 && quat.W() == 0);
    EXPECT_TRUE(Q::IDENTITY == Q(1, 0, 0, 0) && Q::ZERO == Q(0, 0, 0, 0) && quat != Q::IDENTITY);
    EXPECT_TRUE(Q::ms_iNext[0] == 1 && Q::ms_iNext[1] == 2 && Q::ms_iNext[2] == 0);
    quat.X() = 5, quat.Y() = 6, quat[2] = 7, quat.W() = 8;
    Q const q = quat;
    typename Kit<Q>::T const* const elements = q;
    EXPECT_TRUE(elements[0] == 5 && elements[1] == 6 && elements[2] == 7 && elements[3] == 8);
    EXPECT_TRUE(q.X() == 5 && q.Y() == 6 && q.Z() == 7 && q.W() == 8 && q[3] == 8);
    EXPECT_FALSE(Q(1, 2, 3, Kit<Q>::nan) == Q(1, 2, 3, Kit<Q>::nan));
    for (int i = 0; i < 4; ++i) {
        Q other = q;
        other[i] = 9;
        EXPECT_NE(q, other) << "every element counts";
    }
}

TYPED_TEST(AnyQuat, TakesEveryTypeOfIntegerAsIndex) {
    using Q = TypeParam;
    enum Element { THIRD = 2 };
    expectIndex<int, Q>();
    expectIndex<Element, Q>();
    expectIndex<unsigned char, Q>();
    expectIndex<unsigned int, Q>();
    expectIndex<std::size_t, Q>();
    expectIndex<long long, Q>();
}

TYPED_TEST(AnyQuat, CalculatesAtCompileTime) {
    using Q = TypeParam;
    constexpr Q q = Q(1, 2, 3, 4) * Q(0, 1, 0, 0) + (Q(1, 1, 1, 1) - -Q().Conjugate() * 2) / 4;
    static_assert(q == Q(-1.75, 1.25, 3.75, -2.75) && q != q.getInverse());
    static_assert(noexcept(Q::Slerp(1, q, q))&& noexcept(Q(q))&& noexcept(q < q));
    EXPECT_EQ(q.Dot(q), 26.25f);
}

TYPED_TEST(AnyQuat, CalculatesElementByElement) {
    using Q = TypeParam;
    using T = typename Kit<Q>::T;
    Q q(1, 2, 3, 4);
    EXPECT_EQ(q + Q(5, 6, 7, 9), Q(6, 8, 10, 13));
    EXPECT_EQ(q - Q(5, 6, 7, 9), Q(-4, -4, -4, -5));
    EXPECT_EQ(T(2) * q, Q(2, 4, 6, 8));
    EXPECT_TRUE(std::signbit((-Q::ZERO)[0]) && std::signbit((-Q::ZERO)[3]));
    (((q += q) *= 3) -= Q(2, 4, 6, 8)) /= 2;
    EXPECT_EQ(q, Q(2, 4, 6, 8));
    // 1/49 in double and 1/41 in float are rounded down so far that the product misses 1 by half an epsilon.
    T const missing = Kit<Q>::isFloat ? T(41) : T(49);
    EXPECT_EQ((Q(missing, 0, 0, 0) / missing)[0], 1 - Kit<Q>::eps / 2);
    Q const filled(100000000, 100000000, 100000000, 100000000);
    EXPECT_EQ(Q(1, Kit<Q>::nan, -3, 0) / -0.0f, filled);
    EXPECT_EQ(q /= 0, filled);
    EXPECT_NE(Q::IDENTITY / std::numeric_limits<T>::min(), filled);
}

TYPED_TEST(AnyQuat, MultipliesAndInverts) {
    using Q = TypeParam;
    EXPECT_EQ(Q(1, 2, 3, 4) * Q(5, 6, 7, 8), Q(-60, 12, 30, 24));
    EXPECT_EQ(Q(0, 1, 0, 0) * Q(0, 0, 1, 0), Q(0, 0, 0, 1));
    EXPECT_EQ(Q(1, 2, 3, 4).Dot(Q(5, 6, 7, 8)), 70);
    EXPECT_EQ(Q(1, 2, 3, 4).Conjugate(), Q(1, -2, -3, -4));
    // Beside B a single 1 is lost to rounding, so these sums show the order in which they are formed.
    typename Kit<Q>::T const B = Kit<Q>::isFloat ? 33554432.0f : 18014398509481984.0f; // 2^25, 2^54
    EXPECT_EQ(Q(B, -B, 1, 1) * Q(1, 1, -1, 1), Q(2 * B, 2, 0, 2 * B));
    EXPECT_EQ(Q(B, -B, 1, 1).Dot(Q(1, 1, 1, 1)), 2);
    EXPECT_EQ(Q(1, 1, B, -B).Dot(Q(1, 1, 1, 1)), 0);
    EXPECT_FALSE(std::signbit(Q::ZERO.Dot(Q(-1, -1, -1, -1)))) << "sums start from 0";
    // All but what squares to zero has an inverse.
    Q const half = Q(2, 0, 0, 0).getInverse();
    EXPECT_EQ(half, Q(0.5, 0, 0, 0));
    EXPECT_TRUE(std::signbit(half[1]) && std::signbit(half[2]) && std::signbit(half[3]));
    EXPECT_EQ(Q(1, -1, 1, -1).getInverse(), Q(0.25, 0.25, -0.25, 0.25));
    for (double tiny : {1e-5, 1e-17}) {
        auto const size = typename Kit<Q>::T(tiny);
        EXPECT_NEAR(Q(0, size, 0, 0).getInverse()[1] * size, -1, 2 * Kit<Q>::eps) << "no length is too small";
    }
    EXPECT_EQ(Q::ZERO.getInverse(), Q::ZERO);
    EXPECT_FALSE(std::signbit(Q::ZERO.getInverse()[1]));
    EXPECT_EQ(Kit<Q>::make(Kit<Q>::isFloat ? 1e-30 : 1e-200, 0, 0, 0).getInverse(), Q::ZERO)
        << "the square vanishes";
    EXPECT_EQ(Q(1, 0, 0, Kit<Q>::nan).getInverse(), Q::ZERO);
}

TYPED_TEST(AnyQuat, DoesNotNormaliseTheAxis) {
    using Q = TypeParam;
    using T = typename Kit<Q>::T;
    T const halfTurn = T(pi);
    Q const q(Vector3<T>(0, 0, 2), halfTurn);
    // The cosine of half the angle is not 0 because pi is rounded.
    EXPECT_EQ(q[0], Kit<Q>::isFloat ? T(-4.3711388e-8) : T(6.123233995736766e-17));
    EXPECT_EQ(q[3], 2);
    Q r;
    r.FromAxisAngle(Vector3<T>(1, 2, -3), halfTurn / 3); // 30 degrees
    EXPECT_LE(Kit<Q>::apart(r, Kit<Q>::make(std::sqrt(0.75), 0.5, 1, -1.5)), 2 * Kit<Q>::eps);
}

TYPED_TEST(AnyQuat, ReturnsAxisAndAngle) {
    using Q = TypeParam;
    using T = typename Kit<Q>::T;
    Vector3<T> axis(9, 9, 9);
    T angle = 9;
    Q::IDENTITY.ToAxisAngle(axis, angle);
    EXPECT_TRUE(angle == 0 && axis == Vector3<T>(1, 0, 0));
    Q(0.5, 0, 3, -4).ToAxisAngle(axis, angle); // the angle depends on the scalar part only
    EXPECT_NEAR(angle, 2 * pi / 3, 2 * Kit<Q>::eps);
    EXPECT_NEAR(axis.y, 0.6, Kit<Q>::eps);
    EXPECT_NEAR(axis.z, -0.8, Kit<Q>::eps);
    // The largest vector part that counts as none, and the next one.
    T y = T(1e-4);
    while (double(y * y) > 1.0e-8) y = Kit<Q>::below(y);
    while (double(Kit<Q>::above(y) * Kit<Q>::above(y)) <= 1.0e-8) y = Kit<Q>::above(y);
    Q(1, 0, y, 0).ToAxisAngle(axis, angle);
    EXPECT_EQ(axis, Vector3<T>(1, 0, 0));
    Q(1, 0, Kit<Q>::above(y), 0).ToAxisAngle(axis, angle);
    EXPECT_NEAR(axis.y, 1, Kit<Q>::eps);
    Q(Kit<Q>::above(1), 1, 0, 0).ToAxisAngle(axis, angle);
    EXPECT_TRUE(std::isnan(angle)) << "the arc cosine is not clamped";
}

TYPED_TEST(AnyQuat, HasLogarithmAndExponential) {
    using Q = TypeParam;
    using T = typename Kit<Q>::T;
    // exp(a n) = cos a + n sin a; element 0 is not looked at. Two functions and two products: 4 epsilon.
    EXPECT_LE(Kit<Q>::apart(Kit<Q>::make(7, 0, 0, pi / 6).Exp(), Kit<Q>::onCircle(pi / 6)), 4 * Kit<Q>::eps);
    EXPECT_LE(Kit<Q>::apart(Kit<Q>::onCircle(pi / 6).Log(), Kit<Q>::make(0, 0, 0, pi / 6)), 4 * Kit<Q>::eps);
    EXPECT_EQ(Q(5, 0, 0, 0).Exp(), Q(1, 0, 0, 0));
    // A scalar part of 1 or more keeps the vector part; half an epsilon above -1, the angle is nearly pi.
    EXPECT_EQ(Q(1, 2, 3, 4).Log(), Q(0, 2, 3, 4));
    EXPECT_EQ(Q(-1, 2, 3, 4).Log(), Q(0, 2, 3, 4));
    EXPECT_EQ(Q(Kit<Q>::nan, 2, 3, 4).Log(), Q(0, 2, 3, 4));
    T const nearly = 1 - Kit<Q>::eps / 2;
    double const sine = std::sqrt(double(Kit<Q>::eps)); // of the angle whose cosine is 1 - eps / 2
    EXPECT_NEAR(Q(-nearly, 0, 0, 1).Log()[3] * sine / pi, 1, 2 * sine); // of an angle rounded near pi
    EXPECT_NEAR(Q(nearly, 0, 0, 1).Log()[3], 1, sine);
}

TEST(Exp, DoesNotDivideATinySine) {
    // At the double nearest to pi the sine is 1.2e-16. Then at both sides of 1e-8.
    EXPECT_EQ(DQuat(0, 0, pi, 0).Exp()[2], pi);
    EXPECT_EQ(DQuat(0, 0, pi - 0.99e-8, 0).Exp()[2], pi - 0.99e-8);
    EXPECT_NEAR(DQuat(0, 0, pi - 1.01e-8, 0).Exp()[2], 1.01e-8, 1e-15); // pi - 1e-8 is known to 4e-16
    // No float comes as near to pi as 1e-8.
    EXPECT_NEAR(Quat(0, 0, 3.1415927f, 0).Exp()[2], -8.7422777e-8, 1e-14);
}

TYPED_TEST(AnyQuat, InterpolatesAlongTheArc) {
    using Q = TypeParam;
    using T = typename Kit<Q>::T;
    double const degree = pi / 180;
    auto const at = [&](double degrees) { return Kit<Q>::onCircle(degrees * degree); };
    // All points lie on one great circle, at angles in proportion to t. The sine of the arc divides what the
    // arc cosine and two sines have rounded: 8 epsilon.
    T const few = 8 * Kit<Q>::eps;
    EXPECT_LE(Kit<Q>::apart(Q::Slerp(T(0.25), at(0), at(60)), at(15)), few);
    EXPECT_LE(Kit<Q>::apart(Q::Slerp(1, at(0), at(60)), at(60)), few);
    EXPECT_LE(Kit<Q>::apart(Q::Slerp(2, at(10), at(60)), at(110)), few);
    // The sign is never flipped: -q is reached the long way, here backwards through -82.5 degrees.
    EXPECT_LE(Kit<Q>::apart(Q::Slerp(T(0.5), at(0), -at(15)), at(-82.5)), 4 * few);
    // Half turns on the way, forwards and backwards.
    EXPECT_LE(Kit<Q>::apart(Q::SlerpExtraSpins(T(0.5), at(0), at(45), 0), at(22.5)), few);
    EXPECT_LE(Kit<Q>::apart(Q::SlerpExtraSpins(T(0.5), at(0), at(45), 1), at(112.5)), few);
    EXPECT_LE(Kit<Q>::apart(Q::SlerpExtraSpins(T(0.25), at(0), at(45), -2), at(11.25 - 90)), few);
}

TYPED_TEST(AnyQuat, InterpolatesBetweenEqualsAndBeyondOne) {
    using Q = TypeParam;
    using T = typename Kit<Q>::T;
    T const eps = Kit<Q>::eps, tiny = T(1e-9), t = T(0.25);
    // A unit quaternion and itself, however its product is rounded; and both sides of the tolerance.
    int beyond = 0;
    forEachRotation([&](Plain const&, std::array<double, 4> const& e) {
        Q const q = Kit<Q>::make(e);
        beyond += q.Dot(q) > 1;
        ASSERT_TRUE(Q::Slerp(t, q, q) == q && Q::SlerpExtraSpins(t, q, q, 3) == q);
    });
    EXPECT_GT(beyond, 100);
    EXPECT_EQ(Q::Slerp(t, Q(1 + 2 * eps, 0, 0, 0), Q(1 + 2 * eps, 0, 0, 0))[0], 1 + 2 * eps);
    EXPECT_TRUE(Kit<Q>::isNaN(Q::Slerp(t, Q(1 + 3 * eps, 0, 0, 0), Q(1 + 3 * eps, 0, 0, 0))));
    // Two that differ: a product of 1 gives p, just below it the angle counts, just above it is NaN.
    EXPECT_EQ(Q::Slerp(1, Q(1, 0, 0, 0), Q(1, tiny, 0, 0)), Q(1, 0, 0, 0));
    EXPECT_EQ(Q::SlerpExtraSpins(1, Q(1, 0, 0, 0), Q(1, tiny, 0, 0), 1), Q(1, 0, 0, 0));
    EXPECT_NEAR(Q::Slerp(1, Q(1, 0, 0, 0), Q(1 - eps / 2, tiny, 0, 0))[1] / tiny, 1, 2 * eps);
    EXPECT_TRUE(Kit<Q>::isNaN(Q::Slerp(t, Q(1, 0, 0, 0), Q(1 + eps, 0, 0, 0))));
    EXPECT_TRUE(Kit<Q>::isNaN(Q::SlerpExtraSpins(t, Q(1, 0, 0, 0), Q(-1 - eps, 0, 0, 0), 0)));
}

TYPED_TEST(AnyQuat, InterpolatesWithControlPoints) {
    using Q = TypeParam;
    using T = typename Kit<Q>::T;
    // b = k, a = b exp(0.6 i), c = b exp(0.8 j): the inner point is k exp(-0.15 i - 0.2 j), 0.25 away.
    Q const b(0, 0, 0, 1);
    Q const a = b * Kit<Q>::make(std::cos(0.6), std::sin(0.6), 0, 0);
    Q const c = b * Kit<Q>::make(std::cos(0.8), 0, std::sin(0.8), 0);
    Q const inner = Kit<Q>::make(0, 0.8 * std::sin(0.25), -0.6 * std::sin(0.25), std::cos(0.25));
    EXPECT_LE(Kit<Q>::apart(Q::GetIntermediate(a, b, c), inner), 4 * Kit<Q>::eps);
    // On one circle arcs are numbers: 2 t (1 - t) = 3/8 of the way from between p and q to between a and b.
    auto const at = [](double arc) { return Kit<Q>::onCircle(arc); };
    double const outer = 0.1 + 0.25 * 0.6, other = 0.5 + 0.25 * 0.8;
    EXPECT_LE(Kit<Q>::apart(Q::Squad(T(0.25), at(0.1), at(0.5), at(1.3), at(0.7)),
                            at(outer + 0.375 * (other - outer))),
              16 * Kit<Q>::eps); // three interpolations
}

TEST(CompareArrays, FollowsBitPatterns) {
    EXPECT_GT(Quat(-1, 0, 0, 0), Quat(1, 0, 0, 0));
    EXPECT_GT(Quat(-0.0f, 0, 0, 0), Quat(9, 0, 0, 0));
    EXPECT_EQ(Quat(1, 2, 3, 4).CompareArrays(Quat(1, 2, 4, 3)), -1);
    EXPECT_EQ(Quat(1, 2, 3, 5).CompareArrays(Quat(1, 2, 3, 4)), 1);
    EXPECT_EQ(Quat(std::nanf(""), 0, 0, 0).CompareArrays(Quat(std::nanf(""), 0, 0, 0)), 0);
    // DQuat compares only the low halves.
    double const next = std::nextafter(1.0, 2.0); // its low half is 1, that of any small integer 0
    EXPECT_EQ(DQuat(1, 2, -3, 4).CompareArrays(DQuat(5, 6, 7, 8)), 0);
    EXPECT_GT(DQuat(next, 0, 0, 0), DQuat(1024, 0, 0, 0));
    EXPECT_GT(DQuat(std::nextafter(1.0, 0.0), 0, 0, 0), DQuat(next, 0, 0, 0)); // 0xFFFFFFFF, unsigned
    EXPECT_EQ(DQuat(0, next, 0, 0).CompareArrays(DQuat(0, 1, next, next)), 1)
        << "the first difference counts";
}

TYPED_TEST(AnyQuat, ComparesWithSixOperators) {
    using Q = TypeParam;
    Q const low(1, 0, 0, 0), high(Kit<Q>::above(1), 0, 0, 0), like(1, 0, 0, 0);
    EXPECT_TRUE(low < high && low <= high && !(low > high) && !(low >= high));
    EXPECT_TRUE(!(high < low) && !(high <= low) && high > low && high >= low);
    EXPECT_TRUE(!(low < like) && low <= like && !(low > like) && low >= like && low == like && low != high);
}

TEST(QuatToMatrix, WritesOnlyTheRotation) {
    Matrix3<double> m;
    Matrix4<double> placement;
    std::fill_n(placement.data(), 16, 7);
    DQuat(0, 0, 1, 0).QuatToMatrix(&placement);
    for (int kept : {3, 7, 11, 12, 13, 14, 15}) EXPECT_EQ(placement.data()[kept], 7);
    Quat(0.7f, 0, 0, 0.7f).QuatToMatrix(&m);
    EXPECT_NE(m(0, 1), double(float(m(0, 1)))) << "calculated in double from the float elements";
    // A quarter turn takes x to y; the row vector x times its matrix comes out at -y.
    double const r = std::sqrt(0.5);
    Vector3<double> const v = DQuat(r, 0, 0, r) * Vector3<double>(1, 2, 5);
    EXPECT_LE((v - Vector3<double>(2, -1, 5)).length(), 1e-15);
}

TYPED_TEST(AnyQuat, RotatesLikePlainMatrices) {
    using Q = TypeParam;
    using T = typename Kit<Q>::T;
    // Elements up to 1, each of three products of rounded elements: 8 epsilon; back through a root, 16.
    T const few = 8 * Kit<Q>::eps, more = 16 * Kit<Q>::eps;
    Plain before = rotationAbout(0, 0);
    Q product = Q::IDENTITY;
    forEachRotation([&](Plain const& r, std::array<double, 4> const& e) {
        Q const first = Kit<Q>::make(e), last = Kit<Q>::make(e[1], e[2], e[3], e[0]);
        Q const sign = first * T(first[0] < 0 ? -1 : 1);
        Matrix4<T> placement;
        Matrix3<double> m, columns = filled<Matrix3<double>>(r, false);
        last.QuatToMatrix(&placement);
        first.QuatToMatrix(&m);
        ASSERT_LE(distance(placement, r, true), few);
        ASSERT_LE(distance(m, r, Kit<Q>::isFloat), few);
        Q const back(&placement), read(&columns);
        ASSERT_LE(std::fmin(Kit<Q>::apart(back, last), Kit<Q>::apart(-back, last)), more);
        ASSERT_LE(std::fmin(Kit<Q>::apart(read, first), Kit<Q>::apart(-read, first)), more);
        Q again;
        again.FromRotationMatrix(filled<Matrix3<T>>(r, false));
        ASSERT_LE(Kit<Q>::apart(again, read), more);
        // The product of two rotations is the product of their matrices.
        (first * product).QuatToMatrix(&m);
        ASSERT_LE(distance(m, r * before, Kit<Q>::isFloat), 2 * more);
        product = first, before = r;
        // Log and Exp are inverse, as are the two conversions of axis and angle; near a half turn the sine is small.
        if (sign[0] > T(0.01) && sign[0] < T(0.9)) {
            Vector3<T> axis;
            T angle;
            sign.ToAxisAngle(axis, angle);
            ASSERT_LE(Kit<Q>::apart(sign.Log().Exp(), sign), more);
            ASSERT_LE(Kit<Q>::apart(Q(axis, angle), sign), more);
        }
    });
}

TYPED_TEST(AnyQuat, TakesTheLowestOfEqualPivots) {
    using Q = TypeParam;
    using M = Matrix4<typename Kit<Q>::T>;
    // Half turns about diagonals between two axes: the component of the lower axis is positive.
    double const s = std::sqrt(0.5);
    auto const expect = [](Plain const& r, double x, double y, double z) {
        EXPECT_LE(Kit<Q>::apart(Kit<Q>::fromColumns(r), Kit<Q>::make(0, x, y, z)), Kit<Q>::eps) << x << y;
        M placement = filled<M>(r, true);
        EXPECT_LE(Kit<Q>::apart(Q(&placement), Kit<Q>::make(x, y, z, 0)), Kit<Q>::eps) << x << y;
    };
    expect({{{0, -1, 0}, {-1, 0, 0}, {0, 0, -1}}}, s, -s, 0);
    expect({{{0, 0, -1}, {0, -1, 0}, {-1, 0, 0}}}, s, 0, -s);
    expect({{{-1, 0, 0}, {0, 0, -1}, {0, -1, 0}}}, 0, s, -s);
}

TYPED_TEST(AnyQuat, BranchesWhereTheTraceIsZero) {
    using Q = TypeParam;
    // A third of a turn backwards about (1, 1, 1): with a trace of 0 the pivot x is positive, above it w is.
    Plain r = {{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}};
    auto const read = [&](double corner) {
        r.e[0][0] = corner;
        return Kit<Q>::fromColumns(r);
    };
    EXPECT_EQ(read(0), Q(-0.5, 0.5, 0.5, 0.5));
    EXPECT_LE(Kit<Q>::apart(read(1e-30), Q(0.5, -0.5, -0.5, -0.5)), Kit<Q>::eps);
    // The trace is narrowed before it is compared: one too small for a float is 0.
    EXPECT_GT(read(1e-50)[0] * (Kit<Q>::isFloat ? -1 : 1), 0);
}

TEST(Quat, ComparesDiagonalsInDouble) {
    // The second diagonal element is larger by less than a float can hold, and still the pivot.
    Quat const q = Kit<Quat>::fromColumns({{{-0.25, -1, 0}, {-1, -0.25 + 1e-12, 0}, {0, 0, -0.5}}});
    EXPECT_TRUE(q[2] > 0 && q[1] < 0);
}

TYPED_TEST(AnyQuat, NeverDividesByZeroInAMatrix) {
    using Q = TypeParam;
    using T = typename Kit<Q>::T;
    // Diagonals of every sign with ties: the root is at least 1 for the largest element of a trace up to 0.
    double const values[] = {-1e6, -2, -1, -0.5, -1e-30, 0, 1e-30, 0.5, 1, 2, 1e6};
    for (double x : values)
        for (double y : values)
            for (double z : values) {
                Plain const r = {{{x, 0.5, 0.25}, {-0.5, y, 0.125}, {-0.25, 1, z}}};
                Matrix4<T> placement = filled<Matrix4<T>>(r, true);
                for (Q const& q : {Kit<Q>::fromColumns(r), Q(&placement)})
                    for (int i = 0; i < 4; ++i) ASSERT_LE(std::abs(q[i]), 1000) << x << ' ' << y << ' ' << z;
            }
}

// Last bits, which saved scenes depend on. Every figure differs when the step is calculated in the other precision, or
// with divisions in place of one reciprocal.
TEST(Quat, KeepsItsLastBits) {
    float volatile const forSine = 0x1.f5ap-7f, forCosine = 0x1.ec6p-7f,
                         forArc = -0.75f; // not for the compiler to fold
    EXPECT_EQ(Quat({1, 0, 0}, forSine)[1], 0x1.f59ebep-8f) << "sine in double";
    EXPECT_EQ(Quat({1, 0, 0}, forCosine)[0], 0x1.fffc4cp-1f) << "cosine in double";
    Vector3<float> axis;
    float angle;
    Quat(forArc, 1, 3, 1).ToAxisAngle(axis, angle);
    EXPECT_EQ(angle, 2 * 0x1.359d26p+1f) << "arc cosine in double";
    EXPECT_EQ(axis, Vector3<float>(0x1.34bf64p-2f, 0x1.cf1f16p-1f, 0x1.34bf64p-2f)) << "one reciprocal";
    EXPECT_EQ(Quat(1, 2, 3, 0).getInverse(), Quat(0x1.24924ap-4f, -0x1.24924ap-3f, -0x1.b6db7p-3f, 0));
    EXPECT_EQ(Quat::Slerp(0.5f, Quat(1, 0, 0, 0), Quat(0.05f, 0x1.ff5c0ep-1f, 0, 0)),
              Quat(0x1.72fab2p-1f, 0x1.60df26p-1f, 0, 0));
    // With a positive trace the root is taken in float, otherwise in double.
    EXPECT_EQ(Kit<Quat>::fromColumns({{{0.8, 0, 0}, {0, 0, 0}, {0, 1, 0}}}),
              Quat(0x1.5775c4p-1f, 0x1.7d9f4ep-2f, 0, 0));
    EXPECT_EQ(Kit<Quat>::fromColumns({{{0.4, 0, 0}, {1, -0.8, 0}, {0, 1, 0}}}),
              Quat(0x1.5930bap-2f, 0x1.7bb598p-1f, 0x1.5930bap-2f, 0));
}

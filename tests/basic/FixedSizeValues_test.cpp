// The fixed-size values: where their components are, and what vectors compute.
#include <MRCommon/basic/Color4.h>
#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/basic/Vector3.h>

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

using namespace quarn;

TEST(Matrices, AreStoredRowByRow) {
    Matrix3<double> m3;
    m3(1, 2) = 5;
    EXPECT_EQ(m3.data()[5], 5);
    EXPECT_EQ(std::as_const(m3).data(), m3.data());
    EXPECT_EQ(&std::as_const(m3)(1, 2), m3.data() + 5);
    Matrix4<float> m4;
    m4(3, 0) = 7;
    EXPECT_EQ(m4.data()[12], 7);
    EXPECT_EQ(std::as_const(m4).data(), m4.data());
    EXPECT_EQ(&std::as_const(m4)(3, 0), m4.data() + 12);
}

TEST(Color4, IsOpaqueBlackByDefault) {
    float c[4];
    Color4<float> const black;
    std::memcpy(c, &black, sizeof c);
    EXPECT_TRUE(c[0] == 0 && c[1] == 0 && c[2] == 0 && c[3] == 1);
    EXPECT_EQ(black, Color4<float>(0, 0, 0, 1));
    Color4<float> const others[] = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}, {0, 0, 0, 0}};
    for (Color4<float> const& other : others) EXPECT_NE(black, other) << "every component counts";
}

TEST(Quaternion, HasTheScalarLast) {
    float q[4];
    Quaternion<float> const quaternion(1, 2, 3, 4);
    std::memcpy(q, &quaternion, sizeof q);
    EXPECT_TRUE(q[0] == 1 && q[1] == 2 && q[2] == 3 && q[3] == 4);
}

TEST(Tuples, HoldTheirElementsInOrder) {
    Tuple3<double, double, double> t(1, 2, 3);
    t[1] = 9;
    EXPECT_TRUE(t[0] == 1 && t.second == 9 && std::as_const(t)[2] == 3);
    Tuple3<double, double, double> copy;
    copy = Tuple3<double, double, double>(t);
    EXPECT_TRUE((Tuple2<int, double>(0, copy.third) != Tuple2<int, double>(0, 2)));
    TupleN<3, int> n{{4, 5, 6}};
    EXPECT_EQ(n.data()[2], 6);
    EXPECT_EQ(std::as_const(n).data(), n.data());
    EXPECT_EQ(std::as_const(n)[1], 5);
    static_assert(Tuple2<int, char>(3, 'c') == Tuple2<int, char>(3, 'c') && Tuple2<int, int>().second == 0);
    Tuple2<int, int> const pair(1, 2), other(1, 3), another(0, 2);
    EXPECT_TRUE(pair != other && pair != another);
}

TEST(Tuples, AreEmptyAndUsableAfterAMove) {
    Tuple2<QN_String, int> pair("label", 3);
    Tuple2<QN_String, int> const taken(std::move(pair));
    EXPECT_TRUE(taken.first == "label" && taken.second == 3);
    EXPECT_TRUE(pair.first.empty()); // NOLINT(bugprone-use-after-move): moved-from strings are specified
    pair = taken;
    EXPECT_EQ(pair, taken);
}

TEST(Vector3, Calculates) {
    Vector3<double> const a(1, 2, 3), b(4, 5, 6);
    EXPECT_EQ(a + b, Vector3<double>(5, 7, 9));
    EXPECT_EQ(b - a * 2, Vector3<double>(2, 1, 0));
    EXPECT_EQ(2.0 * a, Vector3<double>(2, 4, 6));
    EXPECT_EQ(-a, Vector3<double>(-1, -2, -3));
    EXPECT_EQ(a.dot(b), 32);
    EXPECT_EQ(a.cross(b), Vector3<double>(-3, 6, -3));
    EXPECT_EQ(Vector3<float>(2, 3, 6).length(), 7);
    Vector3<double> c(a);
    c += b;
    EXPECT_EQ(c, Vector3<double>(5, 7, 9));
    c -= a;
    EXPECT_EQ(c, b);
    c *= 3;
    EXPECT_EQ(c, Vector3<double>(12, 15, 18));
    EXPECT_TRUE(a != Vector3<double>(1, 2, 4) && a != Vector3<double>(1, 0, 3) &&
                a != Vector3<double>(0, 2, 3));
}

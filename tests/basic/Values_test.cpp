// Fixed-size values and header constants, against figures worked out by hand.
#include <MRCommon/basic/ArrayFlags.h>
#include <MRCommon/basic/Color4.h>
#include <MRCommon/basic/ErrorItem.h>
#include <MRCommon/basic/GridConnections.h>
#include <MRCommon/basic/Limits.h>
#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/basic/TriangleFlags.h>
#include <MRCommon/basic/Vector3.h>

#include <gtest/gtest.h>

#include <cstring>

using namespace quarn;

TEST(Values, LieInMemoryInTheOrderOfTheirNames) {
    Matrix3<double> m3;
    m3(1, 2) = 5;
    EXPECT_EQ(m3.data()[5], 5);
    Matrix4<float> m4;
    m4(3, 0) = 7;
    EXPECT_EQ(m4.data()[12], 7);
    float q[4], c[4];
    Quaternion<float> const quaternion(1, 2, 3, 4);
    Color4<float> const fresh;
    std::memcpy(q, &quaternion, sizeof q);
    std::memcpy(c, &fresh, sizeof c);
    EXPECT_TRUE(q[0] == 1 && q[1] == 2 && q[2] == 3 && q[3] == 4);
    EXPECT_TRUE(c[0] == 0 && c[1] == 0 && c[2] == 0 && c[3] == 1);
    Tuple3<double, double, double> t(1, 2, 3);
    t[1] = 9;
    EXPECT_TRUE(t[0] == 1 && t.second == 9 && t[2] == 3);
    EXPECT_EQ((Tuple2<QN_String, int>().second), 0);
}

TEST(Values, VectorsCalculate) {
    Vector3<double> const a(1, 2, 3), b(4, 5, 6);
    EXPECT_EQ(a + b, Vector3<double>(5, 7, 9));
    EXPECT_EQ(b - a * 2, Vector3<double>(2, 1, 0));
    EXPECT_EQ(a.dot(b), 32);
    EXPECT_EQ(a.cross(b), Vector3<double>(-3, 6, -3));
    EXPECT_EQ(Vector3<float>(2, 3, 6).length(), 7);
    EXPECT_EQ(-a[2], -3);
}

TEST(Constants, OfErrorsAndArrays) {
    EXPECT_EQ(ERROR_TOO_OLD.classFlags, 1u);
    EXPECT_EQ(ERROR_TOO_OLD.listFlags, 1u);
    EXPECT_EQ(ERROR_TOO_OLD.code, 0u);
    EXPECT_EQ(ERROR_TOO_OLD.message.size(), 34u);
    EXPECT_STREQ(ERROR_TOO_OLD.message.c_str(), "Error not in list because too old");
    EXPECT_EQ(EICF_INFO | EICF_WARNING | EICF_RECOVERABLE_ERROR | EICF_CRITICAL_ERROR, 30u);
    EXPECT_EQ(EILF_BASICLIB | EILF_MARELLE, 10u);
    EXPECT_EQ(ARRAY_TYPEABLE_COPY_MASK, 1u);
    EXPECT_EQ(ARRAY_TYPEABLE_MODIFIED_CONTROL_MASK, 3840u);
    EXPECT_EQ(ARRAY_TYPEABLE_IS_LOCKED_BECAUSE_We + ARRAY_TYPEABLE_IS_LOCKED_BECAUSE_Wa, 6u);
    EXPECT_EQ(triangleFlags_OBTUSE + 2 * triangleFlags_2SIDED, 5u);
}

TEST(Constants, OfTheGridFollowTheRule) {
    static_assert(GRID3_CONNECTION_Xn_Yn_Zn == 1 && GRID3_CONNECTION_Xo_Yo_Zo == 8192);
    static_assert(GRID3_CONNECTION_Xn_Yn_Zp == 4 && GRID3_CONNECTION_Xn_Yp_Zn == 64);
    static_assert(GRID3_CONNECTION_Xp_Yn_Zn == 0x40000 && GRID3_CONNECTION_Xp_Yp_Zp == 0x4000000);
    static_assert(GRID3_CONNECTION_MASK_Xn == 0x1FF && GRID3_CONNECTION_MASK_Xo == 0x3FE00);
    static_assert(GRID3_CONNECTION_MASK_Xp == 0x7FC0000 && GRID3_CONNECTION_MASK_Yn == 0x1C0E07);
    static_assert(GRID3_CONNECTION_MASK_Zn == 0x1249249 && GRID3_CONNECTION_MASK == 0x7FFFFFF);
    static_assert(GRID3_CONNECTION_MASK_BOX_CORNER[0] == 0x6C36000);
    static_assert(GRID3_CONNECTION_MASK_BOX_CORNER[7] == 0x361B);
    for (unsigned int x = 0; x < 2; ++x)
        for (unsigned int z = 0; z < 2; ++z) {
            // A corner keeps its own cell and the neighbour diagonally across the box, and loses the one
            // outside.
            unsigned int const corner = GRID3_CONNECTION_MASK_BOX_CORNER[x + 4 * z];
            EXPECT_TRUE(corner & GRID3_CONNECTION_Xo_Yo_Zo);
            EXPECT_EQ((corner & GRID3_CONNECTION_Xn_Yp_Zo) != 0, x == 1);
            EXPECT_EQ((corner & GRID3_CONNECTION_Xo_Yp_Zn) != 0, z == 1);
            EXPECT_FALSE(corner & GRID3_CONNECTION_Xo_Yn_Zo);
        }
}

TEST(Constants, OfLimitsAreTheWidestFiniteBounds) {
    unsigned int bits = 0;
    std::memcpy(&bits, &constants::f::MN_MN_MN_MN[3], 4);
    EXPECT_EQ(bits, 0xFF7FFFFFu);
    unsigned long long wide = 0;
    std::memcpy(&wide, &constants::d::MX_MX_MX_MX[2], 8);
    EXPECT_EQ(wide, 0x7FEFFFFFFFFFFFFFull);
    EXPECT_EQ(constants::f::MX_MX_MX_MX[0], -constants::f::MN_MN_MN_MN[1]);
    EXPECT_EQ(constants::d::MX_MX_MX_MX[0], -constants::d::MN_MN_MN_MN[1]);
    EXPECT_EQ(GAUSSIAN_NUM_INDEP_UNIF_VAR_D, 30.0);
}

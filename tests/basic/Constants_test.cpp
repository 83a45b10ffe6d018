// The header constants, against figures worked out by hand.
#include <MRCommon/basic/ArrayFlags.h>
#include <MRCommon/basic/ErrorItem.h>
#include <MRCommon/basic/GridConnections.h>
#include <MRCommon/basic/Limits.h>
#include <MRCommon/basic/TriangleFlags.h>

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

using namespace quarn;

TEST(ErrorItem, HasItsConstants) {
    EXPECT_EQ(ERROR_TOO_OLD.classFlags, 1u);
    EXPECT_EQ(ERROR_TOO_OLD.listFlags, 1u);
    EXPECT_EQ(ERROR_TOO_OLD.code, 0u);
    EXPECT_EQ(ERROR_TOO_OLD.message.size(), 34u);
    EXPECT_STREQ(ERROR_TOO_OLD.message.c_str(), "Error not in list because too old");
    static_assert(EICF_TOO_OLD == 1 && EICF_INFO == 2 && EICF_WARNING == 4);
    static_assert(EICF_RECOVERABLE_ERROR == 8 && EICF_CRITICAL_ERROR == 16);
    static_assert(EILF_TOO_OLD == 1 && EILF_BASICLIB == 2 && EILF_MARELLE == 8);
}

TEST(ErrorItem, IsEmptyAndUsableAfterAMove) {
    ErrorItem item{EICF_INFO, EILF_BASICLIB, 7, "text"};
    ErrorItem const taken(std::move(item));
    EXPECT_STREQ(taken.message.c_str(), "text");
    EXPECT_TRUE(item.message.empty()); // NOLINT(bugprone-use-after-move): moved-from strings are specified
    item = taken;
    EXPECT_STREQ(item.message.c_str(), "text");
}

TEST(ArrayFlags, HaveTheirValues) {
    static_assert(ARRAY_TYPEABLE_IS_LOCKED_TYPE == 1 && ARRAY_TYPEABLE_COPY_MASK == 1);
    static_assert(ARRAY_TYPEABLE_IS_LOCKED_BECAUSE_We == 2 && ARRAY_TYPEABLE_IS_LOCKED_BECAUSE_Wa == 4);
    static_assert(ARRAY_TYPEABLE_MODIFIED_CONTROL_0 == 0x100 && ARRAY_TYPEABLE_MODIFIED_CONTROL_1 == 0x200);
    static_assert(ARRAY_TYPEABLE_MODIFIED_CONTROL_2 == 0x400 && ARRAY_TYPEABLE_MODIFIED_CONTROL_3 == 0x800);
    static_assert(ARRAY_TYPEABLE_MODIFIED_CONTROL_MASK == 0xF00);
    static_assert(triangleFlags_OBTUSE == 1 && triangleFlags_2SIDED == 2);
}

TEST(GridConnections, FollowTheRule) {
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
            // A corner is connected to its own cell and to the neighbours inside the box, not to those outside.
            unsigned int const corner = GRID3_CONNECTION_MASK_BOX_CORNER[x + 4 * z];
            EXPECT_TRUE(corner & GRID3_CONNECTION_Xo_Yo_Zo);
            EXPECT_EQ((corner & GRID3_CONNECTION_Xn_Yp_Zo) != 0, x == 1);
            EXPECT_EQ((corner & GRID3_CONNECTION_Xo_Yp_Zn) != 0, z == 1);
            EXPECT_FALSE(corner & GRID3_CONNECTION_Xo_Yn_Zo);
        }
}

TEST(Limits, AreTheWidestFiniteBounds) {
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

// Rounding, compared with figures worked out by hand.
#include <MRCommon/math/Rounding.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(Redondea, RoundsHalvesUpAndIsNotToNearestBelowZero) {
    struct {
        double v;
        int rounded;
    } const cases[] = {{2.5, 3},  {2.4, 2},   {2.7, 3},   {0.5, 1},   {0, 0},   {-0.5, 0},
                       {-0.4, 0}, {-2.4, -2}, {-2.5, -1}, {-2.7, -1}, {-3, -3}, {7, 7}};
    for (auto const& c : cases) {
        EXPECT_EQ(Redondea(c.v), c.rounded) << c.v;
        EXPECT_EQ(Redondea(static_cast<float>(c.v)), c.rounded) << c.v;
    }
    // The largest numbers below a half, and the largest half that a float can hold.
    EXPECT_EQ(Redondea(0.49999997f), 0);
    EXPECT_EQ(Redondea(0.49999999999999994), 0);
    EXPECT_EQ(Redondea(8388607.5f), 8388608);
}

TEST(Redondea, ReturnsTheSmallestIntForWhatDoesNotFit) {
    int const smallest = std::numeric_limits<int>::min();
    double const infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Redondea(2147483647.0), 2147483647);
    EXPECT_EQ(Redondea(2147483647.25), 2147483647);
    EXPECT_EQ(Redondea(2147483647.5), smallest) << "the second truncation does not fit";
    EXPECT_EQ(Redondea(-2147483648.25), smallest);
    EXPECT_EQ(Redondea(-2147483648.75), -2147483647) << "truncated after one was added";
    EXPECT_EQ(Redondea(2147483520.0f), 2147483520);
    EXPECT_EQ(Redondea(2147483648.0f), smallest);
    EXPECT_EQ(Redondea(-2147483648.0f), smallest);
    for (double v : {3e9, -3e9, infinity, -infinity, std::nan("")}) {
        EXPECT_EQ(Redondea(v), smallest) << v;
        EXPECT_EQ(Redondea(static_cast<float>(v)), smallest) << v;
    }
}

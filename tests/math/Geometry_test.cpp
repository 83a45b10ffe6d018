// Distances, boxes and shared edges, compared with figures worked out by hand.
#include <MRCommon/math/Geometry.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace quarn;
using Point = Vector3<float>;

namespace {

using Corners = std::array<Point, 8>;

Corners box(Point const& lo, Point const& hi) {
    Corners corners;
    for (unsigned i = 0; i < 8; ++i) // from the far corner on: the order must not matter
        corners[7 - i] = {i & 1 ? hi.x : lo.x, i & 2 ? hi.y : lo.y, i & 4 ? hi.z : lo.z};
    return corners;
}

Matrix4<float> placement(Point const& r0, Point const& r1, Point const& r2, Point const& translation) {
    Matrix4<float> m;
    for (int j = 0; j < 3; ++j) m(0, j) = r0[j], m(1, j) = r1[j], m(2, j) = r2[j], m(3, j) = translation[j];
    for (int i = 0; i < 4; ++i) m(i, 3) = 7; // has no effect
    return m;
}

} // namespace

TEST(MinDist, MeasuresToTheSegmentOrToItsLine) {
    Point const a(1, 1, 0), b(5, 1, 0);
    struct {
        Point p;
        bool clamp;
        float distance, t, x;
    } const cases[] = {
        {{2, 4, 4}, true, 5, 0.25f, 2}, {{8, 5, 0}, true, 5, 1, 5},     {{8, 5, 0}, false, 4, 1.75f, 8},
        {{-2, 5, 0}, true, 5, 0, 1},    {{-3, 5, 0}, false, 4, -1, -3}, {{5, 2, 0}, true, 1, 1, 5},
    };
    for (auto const& c : cases) {
        float t = 9;
        double wideT = 9;
        Point closest;
        Vector3<double> wideClosest;
        EXPECT_EQ(minDist(c.p, a, b, c.clamp, &t, &closest), c.distance);
        EXPECT_EQ(D_minDist({c.p.x, c.p.y, c.p.z}, {1, 1, 0}, {5, 1, 0}, c.clamp, &wideT, &wideClosest),
                  c.distance);
        EXPECT_TRUE(t == c.t && wideT == c.t && closest == Point(c.x, 1, 0) && wideClosest.x == c.x);
    }
    float t = 9;
    EXPECT_EQ(minDist({2, 4, 4}, a, b, true, &t, nullptr), 5);
    EXPECT_EQ(t, 0.25f);
    double thirdOfTheWay = 9;
    D_minDist({1, 5, 0}, {0, 0, 0}, {3, 0, 0}, true, &thirdOfTheWay, nullptr);
    EXPECT_EQ(thirdOfTheWay, 1.0 / 3) << "in double precision";
    for (bool clamp : {true, false}) { // no segment at all
        Point closest;
        EXPECT_TRUE(std::isnan(minDist({1, 2, 3}, a, a, clamp, &t, &closest)));
        EXPECT_TRUE(std::isnan(t) && std::isnan(closest.x) && std::isnan(closest.z));
    }
}

TEST(ComputeBoxVolume, EnclosesAllCorners) {
    EXPECT_EQ(computeBoxVolume(box({1, 2, 3}, {1, 2, 3}).data()), 0);
    Corners const tilted = {Point(0, 0, 1), Point(2, 0, 0), Point(1, 3, 0), Point(0, 1, 0),
                            Point(1, 0, 4), Point(1, 1, 1), Point(1, 1, 1), Point(1, 1, 1)};
    EXPECT_EQ(computeBoxVolume(tilted.data()), 24);
}

TEST(IntersectVolume, IsZeroForBoxesThatOnlyTouch) {
    Corners const a = box({0, 0, 0}, {4, 4, 4});
    EXPECT_EQ(intersectVolume(a.data(), a.data()), 64);
    EXPECT_EQ(intersectVolume(a.data(), box({3, 2, -1}, {9, 9, 3}).data()), 6);
    EXPECT_EQ(intersectVolume(a.data(), box({1, 1, 1}, {2, 3, 2}).data()), 2);
    for (int axis = 0; axis < 3; ++axis) { // touching, and apart, along one axis only
        Point lo(1, 1, 1), hi(9, 9, 9);
        lo[axis] = 4;
        EXPECT_EQ(intersectVolume(a.data(), box(lo, hi).data()), 0);
        lo[axis] = 5;
        EXPECT_EQ(intersectVolume(a.data(), box(lo, hi).data()), 0);
    }
}

TEST(IsInBox, IsTrueStrictlyInside) {
    Matrix4<float> const straight = placement({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0});
    Quaternion<float> const none(0, 0, 0, 1);
    Point const lo(-1, 0, 1), hi(1, 4, 3), middle(0, 2, 2);
    auto const isIn = [&](Point const& p) { return IsInBox(p, lo, hi, straight, none); };
    EXPECT_TRUE(isIn(middle));
    for (int axis = 0; axis < 3; ++axis)
        for (Point const& corner : {lo, hi}) {
            Point p = middle;
            p[axis] = corner[axis];
            EXPECT_FALSE(isIn(p)) << "on a face";
            p[axis] = std::nextafter(corner[axis], middle[axis]);
            EXPECT_TRUE(isIn(p));
            p[axis] = 2 * corner[axis] - middle[axis];
            EXPECT_FALSE(isIn(p));
        }
    EXPECT_FALSE(IsInBox(middle, {-1, 2, 1}, {1, 2, 3}, straight, none)) << "a box without thickness";
    EXPECT_TRUE(isIn({0, std::nanf(""), 2})) << "NaN is not outside";
}

TEST(IsInBox, FollowsThePlacement) {
    // A quarter turn about z, x to y and y to -x, then moved: corner (1, 2, 3) goes to (8, 11, 13).
    float const r = std::sqrt(0.5f);
    Matrix4<float> const m = placement({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {10, 10, 10});
    Quaternion<float> const q(0, 0, r, r);
    EXPECT_TRUE(IsInBox({8.5f, 10.5f, 12.5f}, {0, 0, 0}, {1, 2, 3}, m, q));
    EXPECT_TRUE(IsInBox({9.5f, 10.5f, 10.5f}, {0, 0, 0}, {1, 2, 3}, m, q));
    EXPECT_FALSE(IsInBox({8.5f, 11.5f, 12.5f}, {0, 0, 0}, {1, 2, 3}, m, q));
    EXPECT_FALSE(IsInBox({10.5f, 10.5f, 11}, {0, 0, 0}, {1, 2, 3}, m, q));
    // The same about x, y to z and z to -y: corner (1, 2, 3) goes to (1, -3, 2).
    Matrix4<float> const aboutX = placement({1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {0, 0, 0});
    EXPECT_TRUE(IsInBox({0.5f, -2.5f, 1.5f}, {0, 0, 0}, {1, 2, 3}, aboutX, {r, 0, 0, r}));
    EXPECT_FALSE(IsInBox({0.5f, 0.5f, 1.5f}, {0, 0, 0}, {1, 2, 3}, aboutX, {r, 0, 0, r}));
}

TEST(IsInBox, NarrowsTheRotationThatItCalculatesInDouble) {
    // The point is exactly on a face of the narrowed rotation, and inside for any other rounding of it.
    Matrix4<float> const straight = placement({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0});
    Quaternion<float> const q(0, 0, 0x1.320cap-3f, 0x1.fa4034p-1f);
    EXPECT_FALSE(IsInBox({-0x1.08c93ep+1f, 0x1.abfda2p+2f, 0.5f}, {0, 0, 0}, {7, 40, 1}, straight, q));
}

TEST(CrossCheck, FindsTheVerticesFacingTheCommonEdge) {
    auto const expect = [](bool shared, int own, int opposite, auto... vertices) {
        int foundOwn = -1, foundOpposite = -1;
        EXPECT_EQ(CrossCheck(vertices..., &foundOpposite, &foundOwn), shared);
        EXPECT_TRUE(foundOwn == own && foundOpposite == opposite) << foundOwn << foundOpposite;
    };
    expect(true, 1, 4, 1, 2, 3, 2, 3, 4);
    expect(true, 2, 4, 1, 2, 3, 3, 4, 1);
    expect(true, 6, 9, 7, 5, 6, 9, 5, 7);
    expect(false, -1, -1, 1, 2, 3, 1, 2, 3);
    expect(false, -1, -1, 1, 2, 3, 3, 4, 5);
    expect(true, 5, 2, 1, 1, 5, 1, 2, 3);  // a vertex may count twice
    expect(true, 2, -1, 1, 1, 2, 1, 1, 1); // nothing faces the edge
}

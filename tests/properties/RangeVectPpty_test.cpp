// The two ranged vectors, in both precisions: bounds for each component, defaults, records.
#include <MRCommon/properties/RangeVectPpty.h>

#include "properties/Records.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <type_traits>

using namespace quarn;

namespace {

template <class Kind> class RangeVectPptyKind : public testing::Test {};
using Kinds = testing::Types<RangeVect3FPpty, RangeVect3DPpty>;

template <class Kind> using VectorOf = std::remove_pointer_t<decltype(Kind().getRefToValue())>;
template <class Kind> using LimitsOf = std::numeric_limits<decltype(VectorOf<Kind>().x)>;

} // namespace

TYPED_TEST_SUITE(RangeVectPptyKind, Kinds, );

TYPED_TEST(RangeVectPptyKind, TakesAllComponentsOrNone) {
    using Vector = VectorOf<TypeParam>;
    auto const nan = LimitsOf<TypeParam>::quiet_NaN();
    // Bounds that differ in every component: x in [0, 1], y in [2, 3], z in [4, 5].
    Vector const low(0, 2, 4), middle(0.5, 2.5, 4.5), high(1, 3, 5);
    TypeParam p("v", middle, low, high);
    for (Vector const& bad : {Vector(1.5, 2.5, 4.5), Vector(-0.5, 2.5, 4.5), Vector(nan, 2.5, 4.5),
                              Vector(0.5, 3.5, 4.5), Vector(0.5, 1.5, 4.5), Vector(0.5, nan, 4.5),
                              Vector(0.5, 2.5, 5.5), Vector(0.5, 2.5, 3.5), Vector(0.5, 2.5, nan)}) {
        EXPECT_FALSE(p.setValue(bad)) << bad.x << " " << bad.y << " " << bad.z;
        EXPECT_EQ(*p.getRefToValue(), middle);
    }
    EXPECT_TRUE(p.setValue(low) && p.setValue(high));
    p.setMin({2, 2, 4});
    EXPECT_FALSE(p.setValue(middle));
}

TYPED_TEST(RangeVectPptyKind, TestsItsBoundsInTheTypedSetterOnly) {
    using Vector = VectorOf<TypeParam>;
    TypeParam p("v", {9, 9, 9}, {0, 0, 0}, {1, 1, 1});
    EXPECT_EQ(*p.getRefToValue(), Vector(9, 9, 9)) << "construction";
    EXPECT_TRUE(p.setValue(ItemVariant(Vector(5, 5, 5))));
    EXPECT_EQ(*p.getRefToValue(), Vector(5, 5, 5)) << "a variant";
    EXPECT_STREQ(p.toStr().c_str(), "");
    std::unique_ptr<Ppty> const copy(p.cloneWithNewName("w"));
    EXPECT_EQ(*static_cast<TypeParam&>(*copy).getRefToValue(), Vector(5, 5, 5));
    EXPECT_EQ(static_cast<TypeParam&>(*copy).getMax(), Vector(1, 1, 1));
}

TYPED_TEST(RangeVectPptyKind, HasTheWidestBoundsByDefault) {
    using Vector = VectorOf<TypeParam>;
    auto const most = LimitsOf<TypeParam>::max();
    TypeParam const valued("v", Vector(1, 2, 3));
    TypeParam p("v");
    EXPECT_EQ(*valued.getVariantValue().template as<Vector>(), Vector(1, 2, 3));
    for (TypeParam const* const ppty : {&valued, static_cast<TypeParam const*>(&p)}) {
        EXPECT_EQ(ppty->getMin(), Vector(-most, -most, -most));
        EXPECT_EQ(ppty->getMax(), Vector(most, most, most));
    }
    EXPECT_TRUE(p.setValue(Vector(most, -most, 0)));
    EXPECT_FALSE(p.setValue(Vector(0, 0, LimitsOf<TypeParam>::infinity())));
}

TEST(RangeVectPpty, HasItsTypeTagAndRecord) {
    RangeVect3FPpty const f("v", {1, 2, 3}, {0, 0, 0}, {4, 4, 4});
    RangeVect3DPpty const d("v", {1, 2, 3});
    EXPECT_TRUE(f.getType() == 16 && f.getVariantValue().tag() == 7);
    EXPECT_TRUE(d.getType() == 17 && d.getVariantValue().tag() == 8);
    EXPECT_EQ(recordOf(f), hex("02000000 7600 0000803F 00000040 00004040 00008040 00008040 00008040 "
                               "00000000 00000000 00000000"));
    EXPECT_EQ(recordOf(d).size(), 6u + 72u);
}

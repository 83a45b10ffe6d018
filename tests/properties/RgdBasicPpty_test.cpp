// The four ranged numbers: bounds, the typed setter, records, defaults.
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/RgdBasicPpty.h>

#include "properties/Records.h"
#include "support/Allocations.h"
#include "support/Slots.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>

using namespace quarn;

namespace {

template <class Kind> class RgdBasicPptyKind : public testing::Test {};
using Kinds = testing::Types<RIntPpty, RInt64Ppty, RFloatPpty, RDoublePpty>;

/// Bounds that differ from the stored ones.
class Capped : public RIntPpty {
public:
    using RIntPpty::RIntPpty;
    int getMax() const override { return 7; }
    int getMin() const override { return 3; }
};

} // namespace

TYPED_TEST_SUITE(RgdBasicPptyKind, Kinds, );

TYPED_TEST(RgdBasicPptyKind, RefusesValuesOutsideItsBounds) {
    TypeParam p("n", 5, 0, 10);
    EXPECT_TRUE(p.setValue(0) && *p.getRefToValue() == 0);
    EXPECT_TRUE(p.setValue(10) && *p.getRefToValue() == 10);
    EXPECT_FALSE(p.setValue(11));
    EXPECT_FALSE(p.setValue(-1));
    EXPECT_EQ(*p.getRefToValue(), 10);
    p.setMax(3);
    EXPECT_EQ(*p.getRefToValue(), 10) << "a new bound does not change the value";
    p.setMin(5);
    EXPECT_FALSE(p.setValue(4)) << "minimum 5, maximum 3: no value fits";
    EXPECT_EQ(p.getMax(), 3);
    EXPECT_EQ(p.getMin(), 5);
}

TYPED_TEST(RgdBasicPptyKind, TestsItsBoundsInTheTypedSetterOnly) {
    using T = std::remove_pointer_t<decltype(TypeParam().getRefToValue())>;
    TypeParam p("n", 100, 0, 10);
    EXPECT_EQ(*p.getRefToValue(), 100) << "construction";
    EXPECT_TRUE(p.setValue(ItemVariant(T(77))) && *p.getRefToValue() == 77) << "a variant";
    *p.getRefToValue() = 55;
    EXPECT_STREQ(p.toStr().c_str(), "") << "ranged kinds have no string";
    std::unique_ptr<Ppty> const copy(p.cloneWithNewName("m"));
    auto const& ranged = static_cast<TypeParam&>(*copy);
    EXPECT_TRUE(ranged.getMin() == 0 && ranged.getMax() == 10);
    EXPECT_EQ(*ranged.getVariantValue().template as<T>(), 55);
    EXPECT_STREQ(copy->getName().c_str(), "m");
    EXPECT_EQ(recordOf<FileStreamEndian>(p), hex("00000002 6E00")) << "neither value nor bounds";
}

TEST(RgdBasicPpty, HasTheWidestSymmetricBoundsByDefault) {
    RIntPpty i;
    EXPECT_TRUE(i.setValue(2147483647) && i.setValue(-2147483647));
    EXPECT_FALSE(i.setValue(std::numeric_limits<int>::min()));
    EXPECT_EQ(RInt64Ppty("n", 3).getMin(), -9223372036854775807ll);
    RFloatPpty f;
    EXPECT_TRUE(f.setValue(std::numeric_limits<float>::max()) &&
                f.setValue(-std::numeric_limits<float>::max()));
    EXPECT_FALSE(f.setValue(std::numeric_limits<float>::infinity()));
    EXPECT_FALSE(f.setValue(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ(*f.getRefToValue(), -std::numeric_limits<float>::max());
    RDoublePpty d;
    EXPECT_FALSE(d.setValue(std::numeric_limits<double>::quiet_NaN()));
    double const minimum = d.getMin();
    unsigned long long bits = 0;
    std::memcpy(&bits, &minimum, 8);
    EXPECT_EQ(bits, 0xFFEFFFFFFFFFFFFFull);
    EXPECT_EQ(*d.getRefToValue(), 0);
}

TEST(RgdBasicPpty, HasTheTagOfThePlainKindAndTakesIndices) {
    RIntPpty i;
    EXPECT_TRUE(i.getType() == 12 && i.getVariantValue().tag() == 1);
    EXPECT_TRUE(i.setValue(ItemVariant(Tuple2<QN_String, int>("label", 20))) && *i.getRefToValue() == 20);
    EXPECT_TRUE(RInt64Ppty().getType() == 13 && RInt64Ppty().getVariantValue().tag() == 2);
    EXPECT_TRUE(RFloatPpty().getType() == 14 && RFloatPpty().getVariantValue().tag() == 3);
    EXPECT_TRUE(RDoublePpty().getType() == 15 && RDoublePpty().getVariantValue().tag() == 4);
}

TEST(RgdBasicPpty, WritesValueMaximumMinimum) {
    EXPECT_EQ(recordOf(RFloatPpty("r", 1, 0, 2)), hex("02000000 7200 0000803F 00000040 00000000"));
    RIntPpty i("i", 1, 0, 2);
    EXPECT_TRUE(read(i, hex("02000000 6A00 09000000 01000000 05000000")));
    EXPECT_TRUE(*i.getRefToValue() == 9 && i.getMax() == 1 && i.getMin() == 5) << "stored without a test";
}

TEST(RgdBasicPpty, IsCopiedWithTheBoundsThatTheOriginalReturns) {
    std::unique_ptr<Ppty> const copy(Capped("n", 1, 0, 10).clone());
    EXPECT_EQ(static_cast<RIntPpty&>(*copy).getMax(), 7);
    EXPECT_EQ(static_cast<RIntPpty&>(*copy).getMin(), 3);
}

TEST(RgdBasicPpty, TestsTheStoredBounds) {
    Capped p("n", 5, 0, 10);
    EXPECT_TRUE(p.setValue(9) && p.setValue(1));
    EXPECT_FALSE(p.setValue(11));
}

TEST(RgdBasicPpty, IsDeletedThroughAnyOfItsBases) {
    AllocationCounter count;
    std::unique_ptr<RangePpty<float, Ppty::TYPE_RANGE_FLOAT>>(new RFloatPpty("opacity")).reset();
    std::unique_ptr<BasePpty<int, Ppty::TYPE_RANGE_INT>>(new RIntPpty("steps")).reset();
    std::unique_ptr<BasePpty<QN_String, Ppty::TYPE_STRING>>(new PptyString("name", "value")).reset();
    EXPECT_EQ(count.alive(), 0);
}

TEST(RgdBasicPpty, KeepsItsSlots) {
    EXPECT_EQ(slotOf(&RFloatPpty::getMax), 20u);
    EXPECT_EQ(slotOf(&RFloatPpty::getMin), 21u);
    EXPECT_EQ(slotOf(&RFloatPpty::setMax), 22u);
    EXPECT_EQ(slotOf(&RFloatPpty::setMin), 23u);
    RIntPpty p("n", 1, 2, 3);
    EXPECT_EQ(entry<int (*)(Ppty*)>(p, 20)(&p), 3);
    EXPECT_EQ(entry<int (*)(Ppty*)>(p, 21)(&p), 2);
}

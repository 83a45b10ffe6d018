// Ranged numbers and vectors: bounds, the checked setter, the ways around it, records, defaults.
#include <MRCommon/properties/RangeVectPpty.h>
#include <MRCommon/properties/RgdBasicPpty.h>

#include "support/Slots.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <memory>

using namespace quarn;

namespace {

template <class Stream> Bytes recordOf(Ppty const& ppty) {
    TempFile file;
    Stream stream(file);
    ppty.writeTo(stream);
    return file.bytes();
}

template <class Kind> class RangedNumber : public testing::Test {};
using RangedNumbers = testing::Types<RIntPpty, RInt64Ppty, RFloatPpty, RDoublePpty>;

} // namespace

TYPED_TEST_SUITE(RangedNumber, RangedNumbers, );

TYPED_TEST(RangedNumber, RefusesWhatLiesOutsideItsBounds) {
    TypeParam p("n", 5, 0, 10);
    EXPECT_TRUE(p.setValue(0) && *p.getRefToValue() == 0);
    EXPECT_TRUE(p.setValue(10) && *p.getRefToValue() == 10);
    EXPECT_FALSE(p.setValue(11));
    EXPECT_FALSE(p.setValue(-1));
    EXPECT_EQ(*p.getRefToValue(), 10);
    p.setMax(3);
    EXPECT_EQ(*p.getRefToValue(), 10) << "a new bound moves no value";
    p.setMin(5);
    EXPECT_FALSE(p.setValue(4)) << "minimum 5, maximum 3: nothing fits";
    EXPECT_EQ(p.getMax(), 3);
    EXPECT_EQ(p.getMin(), 5);
}

TYPED_TEST(RangedNumber, HasItsDeliberateWaysAround) {
    using T = std::remove_pointer_t<decltype(TypeParam().getRefToValue())>;
    TypeParam p("n", 100, 0, 10);
    EXPECT_EQ(*p.getRefToValue(), 100) << "construction";
    EXPECT_TRUE(p.setValue(ItemVariant(T(77))) && *p.getRefToValue() == 77) << "a variant";
    *p.getRefToValue() = 55;
    EXPECT_STREQ(p.toStr().c_str(), "") << "no text of its own";
    std::unique_ptr<Ppty> const copy(p.cloneWithNewName("m"));
    auto const& ranged = static_cast<TypeParam&>(*copy);
    EXPECT_TRUE(ranged.getMin() == 0 && ranged.getMax() == 10);
    EXPECT_EQ(*ranged.getVariantValue().template as<T>(), 55);
    EXPECT_STREQ(copy->getName().c_str(), "m");
    EXPECT_EQ(recordOf<FileStreamEndian>(p), hex("00000002 6E00")) << "neither value nor bounds";
}

TEST(RangedNumbers, HaveTheWidestSymmetricBounds) {
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

TEST(RangedNumbers, CarryTheTagOfThePlainKindAndTakeIndices) {
    RIntPpty i;
    EXPECT_TRUE(i.getType() == 12 && i.getVariantValue().tag() == 1);
    EXPECT_TRUE(i.setValue(ItemVariant(Tuple2<QN_String, int>("label", 20))) && *i.getRefToValue() == 20);
    EXPECT_TRUE(RInt64Ppty().getType() == 13 && RInt64Ppty().getVariantValue().tag() == 2);
    EXPECT_TRUE(RFloatPpty().getType() == 14 && RFloatPpty().getVariantValue().tag() == 3);
    EXPECT_TRUE(RDoublePpty().getType() == 15 && RDoublePpty().getVariantValue().tag() == 4);
}

TEST(RangedNumbers, WriteValueMaximumMinimum) {
    EXPECT_EQ(recordOf<FileStreamRaw>(RFloatPpty("r", 1, 0, 2)),
              hex("02000000 7200 0000803F 00000040 00000000"));
    RIntPpty i("i", 1, 0, 2);
    TempFile file(hex("02000000 6A00 09000000 01000000 05000000"));
    FileStreamRaw stream(file);
    i.readFrom(stream);
    EXPECT_TRUE(*i.getRefToValue() == 9 && i.getMax() == 1 && i.getMin() == 5) << "stored as read, untested";
}

TEST(RangedNumbers, AreCopiedWithTheBoundsTheyAnswer) {
    class Capped : public RIntPpty {
    public:
        using RIntPpty::RIntPpty;
        int getMax() const override { return 7; }
    };
    std::unique_ptr<Ppty> const copy(Capped("n", 1, 0, 10).clone());
    EXPECT_EQ(static_cast<RIntPpty&>(*copy).getMax(), 7);
}

TEST(RangedVectors, TakeAllOrNothing) {
    float const nan = std::numeric_limits<float>::quiet_NaN();
    RangeVect3FPpty p("v", {0.25f, 0.25f, 0.25f}, {0, 0, 0}, {1, 1, 1});
    for (Vector3<float> const& bad : {Vector3<float>(0.5f, 2, 0.5f), Vector3<float>(-1, 0, 0),
                                      Vector3<float>(0, 0, 1.5f), Vector3<float>(0, nan, 0)}) {
        EXPECT_FALSE(p.setValue(bad));
        EXPECT_EQ(*p.getRefToValue(), Vector3<float>(0.25f, 0.25f, 0.25f));
    }
    EXPECT_TRUE(p.setValue(Vector3<float>(1, 1, 1)) && p.setValue(Vector3<float>(0, 0, 0)));
    EXPECT_TRUE(p.setValue(ItemVariant(Vector3<float>(5, 5, 5))));
    EXPECT_EQ(*p.getRefToValue(), Vector3<float>(5, 5, 5));
    EXPECT_TRUE(p.getType() == 16 && p.getVariantValue().tag() == 7);
    EXPECT_STREQ(p.toStr().c_str(), "");
    p.setMin({2, 0, 0});
    EXPECT_FALSE(p.setValue(Vector3<float>(1, 1, 1)));
}

TEST(RangedVectors, StartWithTheWidestBounds) {
    RangeVect3DPpty p("v");
    double const most = std::numeric_limits<double>::max();
    EXPECT_TRUE(p.setValue(Vector3<double>(most, -most, 0)));
    EXPECT_FALSE(p.setValue(Vector3<double>(0, 0, std::numeric_limits<double>::infinity())));
    EXPECT_EQ(p.getMin(), Vector3<double>(-most, -most, -most));
    EXPECT_TRUE(p.getType() == 17 && p.getVariantValue().tag() == 8);
    EXPECT_EQ(recordOf<FileStreamRaw>(p).size(), 6u + 72u);
    EXPECT_EQ(RangeVect3FPpty("v", {1, 2, 3}).getMax().x, std::numeric_limits<float>::max());
}

TEST(Slots, OfRangedProperties) {
    EXPECT_EQ(slotOf(&RFloatPpty::getMax), 20u);
    EXPECT_EQ(slotOf(&RFloatPpty::getMin), 21u);
    EXPECT_EQ(slotOf(&RangeVect3DPpty::setMax), 22u);
    EXPECT_EQ(slotOf(&RangeVect3DPpty::setMin), 23u);
    RIntPpty p("n", 1, 2, 3);
    EXPECT_EQ(entry<int (*)(Ppty*)>(p, 20)(&p), 3);
    EXPECT_EQ(entry<int (*)(Ppty*)>(p, 21)(&p), 2);
}

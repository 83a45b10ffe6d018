// The twelve plain kinds and what they share: records on both stream kinds, strings, copies, values from
// variants.
#include <MRCommon/properties/MetaClasses.h>

#include "properties/Records.h"
#include "support/Allocations.h"
#include "support/Slots.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace quarn;

namespace {

using Owned = std::unique_ptr<Ppty>;

struct Sample {
    std::shared_ptr<Ppty> ppty; ///< named a
    unsigned int type, tag;
    char const *className, *text, *value; ///< `value` as a raw record holds it
};

std::vector<Sample> samples() {
    auto const made = [](Ppty const& p) { return std::shared_ptr<Ppty>(p.clone()); };
    char const* const colour = "r: 0.100000 \n, g: 0.000000 \n, b: 1.000000 \n, a: 0.500000 \n";
    return {
        {made(PptyInt("a", -3)), 1, 1, "PptyInt", " -3 ", "FDFFFFFF"},
        {made(PptyInt64("a", 5)), 2, 2, "PptyInt64", " 564 ", "05000000 00000000"},
        {made(PptyFloat("a", 1.5f)), 3, 3, "PptyFloat", " 1.500000 ", "0000C03F"},
        {made(PptyDouble("a", -9.81)), 4, 4, "PptyDouble", " -9.810000 ", "1F85EB51B89E23C0"},
        {made(PptyBool("a", true)), 5, 5, "PptyBool", "True", "01"},
        {made(PptyString("a", "hi")), 6, 6, "PptyString", "hi", "03000000 686900"},
        {made(PptyVector3F("a", {1, 2, 3})), 7, 7, "PptyVector3F",
         "x: 1.000000 \n, y: 2.000000 \n, z: 3.000000 \n", "0000803F 00000040 00004040"},
        {made(PptyVector3D("a", {1, 0, 2})), 8, 8, "PptyVector3D",
         "x: 1.000000 \n, y: 0.000000 \n, z: 2.000000 \n",
         "000000000000F03F 0000000000000000 0000000000000040"},
        {made(PptyColor4F("a", {0.1f, 0, 1, 0.5f})), 9, 9, "PptyColor4F", colour,
         "CDCCCC3D 00000000 0000803F 0000003F"},
        {made(PptyColor4D("a", {0.1, 0, 1, 0.5})), 10, 10, "PptyColor4D", colour,
         "9A9999999999B93F 0000000000000000 000000000000F03F 000000000000E03F"},
        {made(PptyFile("a", "m.obj")), 19, 6, "PptyFile", "m.obj", "06000000 6D2E6F626A00"},
        {made(PptyDirectory("a", "")), 20, 6, "PptyDirectory", "", "01000000 00"},
    };
}

template <class Kind, class Value, class = void> struct CanSet : std::false_type {};
template <class Kind, class Value>
struct CanSet<Kind, Value, std::void_t<decltype(std::declval<Kind&>().setValue(std::declval<Value>()))>>
    : std::true_type {};

template <class Kind> class AnyKind : public testing::Test {};
using Kinds = testing::Types<PptyFloat, PptyString, PptyArrayString, PptyEnum, RIntPpty, RangeVect3FPpty>;

template <class Kind> class Derived : public Kind {
public:
    using Kind::Kind;
    Ppty* clone() const override { return new Derived(*this); }
    unsigned int getType() const override { return Ppty::getType(); }
};

} // namespace

TYPED_TEST_SUITE(AnyKind, Kinds, );

TEST(BasicPpty, HasItsTypeTagTextAndRecord) {
    for (Sample const& s : samples()) {
        EXPECT_EQ(s.ppty->getType(), s.type);
        EXPECT_EQ(s.ppty->getVariantValue().tag(), s.tag);
        EXPECT_STREQ(s.ppty->getClassName().c_str(), s.className);
        EXPECT_EQ(s.ppty->getClassSchema(), 1u);
        EXPECT_STREQ(s.ppty->toStr().c_str(), s.text);
        EXPECT_EQ(recordOf(*s.ppty), hex(std::string("02000000 6100") + s.value)) << s.className;
        EXPECT_EQ(recordOf<FileStreamEndian>(*s.ppty), hex("00000002 6100")) << "the name alone";
    }
}

TEST(BasicPpty, TextOfInt64KeepsItsLowBitsAnd64) {
    EXPECT_STREQ(PptyInt64("n", 4294967297).toStr().c_str(), " 164 ");
    EXPECT_STREQ(PptyInt64("n", 2147483648).toStr().c_str(), " -214748364864 ");
}

TEST(BasicPpty, StartsWithItsDefault) {
    EXPECT_EQ(*PptyInt().getRefToValue(), 0);
    EXPECT_EQ(*PptyInt64("n").getRefToValue(), 0);
    EXPECT_EQ(*PptyDouble().getRefToValue(), 0);
    EXPECT_STREQ(PptyBool().toStr().c_str(), "False");
    EXPECT_EQ(PptyFile().getRefToValue()->size(), 1u);
    EXPECT_EQ(*PptyColor4D().getRefToValue(), Color4<double>(0, 0, 0, 1));
    EXPECT_NE(PptyVector3F().getRefToValue(), nullptr);
    EXPECT_EQ(PptyInt().getName().size(), 1u);
}

TEST(BasicPpty, WritesHeadAndValueWithTheStatedCalls) {
    TempFile file;
    RecordingStream<FileStreamRaw> raw(file);
    PptyVector3D("abc", {1, 2, 3}).writeTo(raw);
    PptyString("n", "xy").writeTo(raw);
    EXPECT_EQ(raw.calls, (std::vector<std::size_t>{4, 4, 24, 4, 2, 4, 3}));
}

TEST(BasicPpty, ReadsNamesIntoTheirBuffers) {
    PptyInt p("a name of twenty...");
    ASSERT_EQ(p.getName().capacity(), 20u);
    EXPECT_TRUE(read(p, hex("06000000 616263646500 07000000")));
    EXPECT_EQ(p.getName().capacity(), 20u);
    EXPECT_EQ(p.getName().size(), 6u);
    EXPECT_EQ(*p.getRefToValue(), 7);
    PptyFloat f("f", 2.5f);
    EXPECT_TRUE(read<FileStreamEndian>(f, hex("00000002 6700")));
    EXPECT_STREQ(f.getName().c_str(), "g");
    EXPECT_EQ(*f.getRefToValue(), 2.5f) << "no value on this stream kind";
    PptyBool b;
    EXPECT_TRUE(read(b, hex("01000000 00 07")));
    EXPECT_STREQ(b.toStr().c_str(), "True");
    EXPECT_TRUE(read(b, hex("01000000 00 00")));
    EXPECT_STREQ(b.toStr().c_str(), "False");
    EXPECT_EQ(recordOf(b), hex("01000000 00 00"));
}

TEST(BasicPpty, KeepsWhatAFileThatEndsEarlyDoesNotDeliver) {
    PptyColor4F cut("c", {0.25f, 0.5f, 0.75f, 1});
    EXPECT_FALSE(read(cut, hex("01000000 00 00000040")));
    EXPECT_EQ(*cut.getRefToValue(), Color4<float>(2, 0.5f, 0.75f, 1));
    for (bool const value : {true, false}) {
        PptyBool flag("b", value);
        EXPECT_FALSE(read(flag, hex("01000000 00")));
        EXPECT_EQ(*flag.getRefToValue(), value);
    }
}

TEST(BasicPpty, IsClonedWithItsOwnOrANewName) {
    for (Sample const& s : samples()) {
        Owned const copy(s.ppty->clone()), renamed(s.ppty->cloneWithNewName("b"));
        EXPECT_EQ(recordOf(*copy), recordOf(*s.ppty));
        EXPECT_EQ(copy->getClassId(), s.ppty->getClassId());
        EXPECT_STREQ(renamed->getName().c_str(), "b");
        EXPECT_STREQ(renamed->toStr().c_str(), s.text);
        EXPECT_STREQ(s.ppty->getName().c_str(), "a");
        EXPECT_NE(&copy->getVariantValue(), &s.ppty->getVariantValue());
    }
}

TYPED_TEST(AnyKind, RenamesThroughTheCloneOfADerivedKind) {
    Owned const renamed(Derived<TypeParam>("a").cloneWithNewName("b"));
    EXPECT_NE(dynamic_cast<Derived<TypeParam>*>(renamed.get()), nullptr);
    EXPECT_EQ(renamed->getType(), static_cast<unsigned int>(Ppty::TYPE_NONE))
        << "the type code of the base class";
    EXPECT_STREQ(renamed->getName().c_str(), "b");
}

// A pointer, "False" among them, would be the bool true.
TEST(BasicPpty, IsNotSetFromPointers) {
    EXPECT_TRUE((std::is_constructible_v<PptyBool, char const*, bool>));
    EXPECT_FALSE((std::is_constructible_v<PptyBool, char const*, char const*>));
    EXPECT_FALSE((std::is_constructible_v<PptyBool, char const*, int*>));
    EXPECT_TRUE((CanSet<PptyBool, bool>::value && CanSet<PptyBool, ItemVariant>::value));
    EXPECT_TRUE((CanSet<PptyString, char const(&)[6]>::value));
    EXPECT_FALSE((CanSet<PptyBool, char const(&)[6]>::value || CanSet<PptyBool, void (&)()>::value));
    EXPECT_FALSE((CanSet<PptyBool, std::nullptr_t>::value));
}

TEST(BasicPpty, TakesValuesFromVariantsWithoutConversion) {
    Tuple2<QN_String, int> const pair("label", 20);
    PptyInt i;
    EXPECT_TRUE(i.setValue(ItemVariant(7)) && *i.getRefToValue() == 7);
    EXPECT_TRUE(i.setValue(ItemVariant(pair)) && *i.getRefToValue() == 20);
    EXPECT_TRUE(i.setValue(ItemVariant(1.5f)) && *i.getRefToValue() == 20) << "not an int: the value stays";
    PptyString s("s", "old");
    EXPECT_TRUE(s.setValue(ItemVariant(5)) && *s.getRefToValue() == "old");
    EXPECT_TRUE(s.setValue(ItemVariant(pair)) && *s.getRefToValue() == "label");
    EXPECT_TRUE(s.setValue(ItemVariant(Array<QN_String>{"x", "y"})));
    EXPECT_EQ(s.getRefToValue()->size(), 2u) << "the list object taken as a string, size for size";
    PptyFloat f("f", 2.5f);
    EXPECT_TRUE(f.setValue(ItemVariant(0x3FC00000)) && *f.getRefToValue() == 1.5f) << "bytes, not numbers";
    EXPECT_TRUE(f.setValue(ItemVariant("text")) && *f.getRefToValue() == 1.5f);
    PptyDouble d("d", 1.5);
    EXPECT_TRUE(d.setValue(ItemVariant(0)) && *d.getRefToValue() == 1.5)
        << "the low four bytes were 0 before";
    PptyColor4F c;
    EXPECT_TRUE(c.setValue(ItemVariant(Vector3<float>(1, 2, 3))));
    EXPECT_EQ(*c.getRefToValue(), Color4<float>(1, 2, 3, 1)) << "never past the payload's own size";
    PptyBool b;
    EXPECT_TRUE(b.setValue(ItemVariant(512)) && !*b.getRefToValue()) << "the first byte decides";
    EXPECT_TRUE(b.setValue(ItemVariant(514)) && *b.getRefToValue());
    ItemVariant gone(7);
    gone.deleteValue();
    EXPECT_TRUE(i.setValue(gone) && *i.getRefToValue() == 20);
    EXPECT_TRUE(s.setValue(s.getVariantValue()));
}

TEST(Ppty, KeepsItsSlots) {
    using C = QN_Class;
    EXPECT_EQ(slotOf(&C::getClassId), 0u);
    EXPECT_EQ(slotOf(&C::getClassName), 1u);
    EXPECT_EQ(slotOf(&C::getClassSchema), 2u);
    EXPECT_EQ(slotOf<bool (C::*)(unsigned long long const&) const>(&C::hasAncestor), 3u);
    EXPECT_EQ(slotOf<bool (C::*)(QN_String const&) const>(&C::hasAncestor), 4u);
    EXPECT_EQ(slotOf(&C::printfMeta), 5u);
    EXPECT_EQ(slotOf(&Ppty::clone), 8u);
    EXPECT_EQ(slotOf(&Ppty::cloneWithNewName), 9u);
    EXPECT_EQ(slotOf(&Ppty::toStr), 10u);
    EXPECT_EQ(slotOf(&Ppty::getVariantValue), 11u);
    EXPECT_EQ(slotOf<bool (Ppty::*)(ItemVariant const&)>(&Ppty::setValue), 12u);
    EXPECT_EQ(slotOf(&Ppty::getType), 13u);
    EXPECT_EQ(slotOf<void (Ppty::*)(FileStreamRaw&)>(&Ppty::readFrom), 14u);
    EXPECT_EQ(slotOf<void (Ppty::*)(FileStreamRaw&) const>(&Ppty::writeTo), 15u);
    EXPECT_EQ(slotOf<void (Ppty::*)(FileStreamEndian&)>(&Ppty::readFrom), 16u);
    EXPECT_EQ(slotOf<void (Ppty::*)(FileStreamEndian&) const>(&Ppty::writeTo), 17u);
    EXPECT_EQ(slotOf(&PptyFloat::getRefToValue), 18u);
    EXPECT_EQ(slotOf<bool (PptyFloat::*)(float const&)>(&PptyFloat::setValue), 19u);
}

TEST(Ppty, HasItsSlotsInTheTablesOfTheLibrary) {
    PptyFloat p("n", 2.5f);
    EXPECT_EQ(entry<QN_String const* (*)(Ppty*)>(p, 1)(&p), &p.getClassName());
    EXPECT_EQ(entry<ItemVariant const* (*)(Ppty*)>(p, 11)(&p), &p.getVariantValue());
    EXPECT_EQ(entry<unsigned int (*)(Ppty*)>(p, 13)(&p), 3u);
    EXPECT_EQ(entry<float* (*)(Ppty*)>(p, 18)(&p), p.getRefToValue());
    float const four = 4;
    EXPECT_TRUE(entry<bool (*)(Ppty*, float const*)>(p, 19)(&p, &four));
    EXPECT_EQ(*p.getRefToValue(), 4);
    Owned const copy(entry<Ppty* (*)(Ppty*)>(p, 8)(&p));
    auto const deleting = entry<void (*)(Ppty*)>(*copy, 7);
    AllocationCounter count;
    deleting(copy->clone());
    EXPECT_EQ(count.alive(), 0) << "slot 7 destroys and frees";
}

// Tags, ownership, typed access, and the record byte by byte.
#include <MRCommon/properties/ItemVariant.h>

#include <MRCommon/streams/FileStreamEndian.h>

#include "properties/Records.h"
#include "support/Allocations.h"
#include "support/Slots.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <vector>

using namespace quarn;

namespace {

using Pair = Tuple2<QN_String, int>;
using List = Array<QN_String>;

struct Sample {
    ItemVariant variant;
    unsigned int tag;
    char const* record;
};

std::vector<Sample> samples() {
    return {
        {ItemVariant(), 0, "00000000"},
        {ItemVariant(-2), 1, "01000000 FEFFFFFF"},
        {ItemVariant(1ll << 32), 2, "02000000 00000000 01000000"},
        {ItemVariant(3l), 2, "02000000 03000000 00000000"},
        {ItemVariant(1.5f), 3, "03000000 0000C03F"},
        {ItemVariant(1.5), 4, "04000000 00000000 0000F83F"},
        {ItemVariant(true), 5, "05000000 01"},
        {ItemVariant(""), 6, "06000000 01000000 00"},
        {ItemVariant(Vector3<float>(1, 2, 3)), 7, "07000000 0000803F 00000040 00004040"},
        {ItemVariant(Vector3<double>(1, 0, 2)), 8,
         "08000000 000000000000F03F 0000000000000000 0000000000000040"},
        {ItemVariant(Color4<float>()), 9, "09000000 00000000 00000000 00000000 0000803F"},
        {ItemVariant(Color4<double>()), 10,
         "0A000000 0000000000000000 0000000000000000 0000000000000000 000000000000F03F"},
        {ItemVariant(List{"a", "bc"}), 11, "0B000000 02000000 02000000 6100 03000000 626300"},
        {ItemVariant(Pair("b", -1)), 12, "0C000000 02000000 6200 FFFFFFFF"},
    };
}

template <class... Arguments> constexpr bool isMadeFrom = std::is_constructible_v<ItemVariant, Arguments...>;

} // namespace

TEST(ItemVariant, WritesAndReadsEveryKind) {
    for (Sample const& sample : samples()) {
        Bytes const record = hex(sample.record);
        EXPECT_EQ(sample.variant.tag(), sample.tag);
        EXPECT_EQ(recordOf(sample.variant), record) << sample.tag;
        ItemVariant back;
        read(back, record);
        EXPECT_EQ(recordOf(back), record) << sample.tag;
        ItemVariant const copy(sample.variant);
        EXPECT_EQ(recordOf(copy), record) << sample.tag;
    }
}

// A pointer would become the bool true; only C strings are meant.
TEST(ItemVariant, IsNotMadeFromPointers) {
    struct Struct;
    EXPECT_TRUE(
        (isMadeFrom<char const*>)&&(isMadeFrom<char*>)&&(isMadeFrom<char const(&)[4]>)&&(isMadeFrom<bool>));
    EXPECT_FALSE(isMadeFrom<int*> || isMadeFrom<void const*> || isMadeFrom<int(&)[3]>);
    EXPECT_FALSE(isMadeFrom<std::nullptr_t> || isMadeFrom<void (&)()> || isMadeFrom<int Struct::*>);
    EXPECT_FALSE(isMadeFrom<QN_String*> || isMadeFrom<wchar_t const*> || isMadeFrom<unsigned char*>);
    QN_String changeable("text");
    EXPECT_EQ(*ItemVariant(changeable.data()).as<QN_String>(), "text");
}

TEST(ItemVariant, GivesItsValueToTheTypesThatFit) {
    for (Sample& sample : samples()) {
        ItemVariant& v = sample.variant;
        unsigned int const t = sample.tag;
        EXPECT_EQ(v.as<int>() != nullptr, t == 1 || t == 12) << t;
        EXPECT_EQ(v.as<long long>() != nullptr, t == 2) << t;
        EXPECT_EQ(v.as<float>() != nullptr, t == 3) << t;
        EXPECT_EQ(v.as<double>() != nullptr, t == 4) << t;
        EXPECT_EQ(v.as<bool>() != nullptr, t == 5) << t;
        EXPECT_EQ(v.as<QN_String>() != nullptr, t == 6 || t == 11 || t == 12) << t;
        EXPECT_EQ(v.as<Vector3<float>>() != nullptr, t == 7) << t;
        EXPECT_EQ(v.as<Vector3<double>>() != nullptr, t == 8) << t;
        EXPECT_EQ(v.as<Color4<float>>() != nullptr, t == 9) << t;
        EXPECT_EQ(v.as<Color4<double>>() != nullptr, t == 10) << t;
        EXPECT_EQ(v.as<List>() != nullptr, t == 11) << t;
        EXPECT_EQ(v.as<Pair>() != nullptr, t == 12) << t;
    }
    ItemVariant pair(Pair("label", 20));
    EXPECT_EQ(*pair.as<int>(), 20);
    EXPECT_STREQ(pair.as<QN_String>()->c_str(), "label");
}

TEST(ItemVariant, KeepsItsTagWhenTheValueIsDeleted) {
    for (Sample& sample : samples()) {
        sample.variant.deleteValue();
        sample.variant.deleteValue();
        EXPECT_EQ(sample.variant.tag(), sample.tag);
        EXPECT_EQ(sample.variant.as<int>(), nullptr);
        EXPECT_EQ(recordOf(sample.variant), hex("00000000")) << "no tag without its value";
        EXPECT_EQ(ItemVariant(sample.variant).tag(), sample.tag);
    }
}

TEST(ItemVariant, CarriesUnknownTagsThrough) {
    ItemVariant v;
    read(v, hex("0D000000 55555555"));
    EXPECT_EQ(v.tag(), 13u);
    EXPECT_EQ(recordOf(v), hex("0D000000"));
    EXPECT_EQ(recordOf(ItemVariant(v)), hex("0D000000"));
    EXPECT_EQ(ItemVariant::ItemVariant_Invalid->tag(), 0u);
}

TEST(ItemVariant, ReadsWhatTheFileDelivers) {
    ItemVariant v, no, missing;
    read(v, hex("05000000 07"));
    EXPECT_TRUE(*v.as<bool>());
    read(no, hex("05000000 00"));
    EXPECT_FALSE(*no.as<bool>());
    EXPECT_EQ(recordOf(no), hex("05000000 00"));
    EXPECT_FALSE(read(missing, hex("05000000")));
    EXPECT_FALSE(*missing.as<bool>());
    ItemVariant colour;
    read(colour, hex("09000000 0000003F 0000"));
    EXPECT_EQ(colour.as<Color4<float>>()->r, 0.5f);
    EXPECT_EQ(colour.as<Color4<float>>()->b, 0.0f);
    EXPECT_EQ(colour.as<Color4<float>>()->a, 1.0f) << "not delivered: the default";
    ItemVariant cut;
    read(cut, hex("0C000000 02000000 6200"));
    EXPECT_TRUE(*cut.as<Pair>() == Pair("b", 0));
}

TEST(ItemVariant, ReadingDoesNotFreeTheOldValue) {
    ItemVariant v(7);
    std::unique_ptr<int> const old(v.as<int>());
    read(v, hex("01000000 09000000"));
    EXPECT_EQ(*v.as<int>(), 9);
    EXPECT_NE(v.as<int>(), old.get());
    EXPECT_EQ(*old, 7) << "intentional: the caller frees it";
}

TEST(ItemVariant, CopiesDeepAndMoves) {
    ItemVariant const list(List{"a"});
    ItemVariant copy(list);
    (*copy.as<List>())[0] = "changed";
    EXPECT_STREQ((*list.as<List>())[0].c_str(), "a");
    ItemVariant moved(std::move(copy));
    EXPECT_EQ(copy.tag(), 0u); // NOLINT(bugprone-use-after-move): the moved-from state is documented
    ItemVariant& same = moved;
    moved = same;
    EXPECT_STREQ((*moved.as<List>())[0].c_str(), "changed");
    moved = ItemVariant(5);
    EXPECT_EQ(*moved.as<int>(), 5);
    copy = std::move(moved);
    EXPECT_EQ(*copy.as<int>(), 5);
    EXPECT_EQ(moved.tag(), 0u); // NOLINT(bugprone-use-after-move): the moved-from state is documented
    QN_String none;
    none.reserve(0, false);
    EXPECT_EQ(ItemVariant(none).as<QN_String>()->data(), nullptr);
}

TEST(ItemVariant, HasNoValueAfterAReadThatRanOutOfMemory) {
    for (char const* record :
         {"06000000 02000000 6200", "0B000000 01000000 02000000 6200", "03000000 0000C03F"}) {
        ItemVariant v(7);
        std::unique_ptr<int> const old(v.as<int>());
        TempFile file(hex(record));
        FileStreamRaw stream(file);
        FailingAllocation failing(0);
        EXPECT_THROW(v.readFrom(stream), std::bad_alloc);
        EXPECT_NE(v.tag(), 1u);
        EXPECT_TRUE(v.as<QN_String>() == nullptr && v.as<float>() == nullptr) << "the int under another tag";
    }
}

TEST(ItemVariant, KeepsItsSlots) {
    EXPECT_EQ(slotOf(&ItemVariant::readFrom), 2u);
    EXPECT_EQ(slotOf(&ItemVariant::writeTo), 3u);
    TempFile file;
    FileStreamRaw stream(file);
    ItemVariant const v(true);
    entry<void (*)(ItemVariant const*, FileStreamRaw*)>(v, 3)(&v, &stream);
    EXPECT_EQ(file.bytes(), hex("05000000 01"));
    EXPECT_EQ(slotOf(&FileStreamRaw::read), 2u);
    EXPECT_EQ(slotOf(&FileStreamEndian::write), 3u);
}

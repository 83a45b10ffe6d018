// ByteId: text both ways, order, and the two index views.
#include <MRCommon/system/ByteId.h>

#include "support/Allocations.h"
#include "support/Cases.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

using namespace quarn;

namespace {

std::string hexOf(char const* text) { return ByteId(QN_String(text)).toString().c_str(); }

ByteId withByte(unsigned int index, unsigned char value) {
    ByteId id;
    id.array()[index] = value;
    return id;
}

/// Whether `Id(0)` compiles: in a template, so that a refusal is no error.
template <class Id, class = void> struct AcceptsZero : std::false_type {};
template <class Id> struct AcceptsZero<Id, std::void_t<decltype(Id(0))>> : std::true_type {};

// 0 and nullptr would convert to a null `char const*`.
static_assert(!AcceptsZero<ByteId>::value && !std::is_constructible_v<ByteId, std::nullptr_t>);
static_assert(std::is_constructible_v<ByteId, char const*> &&
              std::is_constructible_v<ByteId, ByteId::Variant>);
static_assert(std::is_constructible_v<ByteId, QN_String> && std::is_constructible_v<ByteId, ByteId::Bytes>);
static_assert(!std::is_convertible_v<QN_String, ByteId> && !std::is_convertible_v<ByteId::Variant, ByteId>);

} // namespace

TEST(ByteId, PrintsBothTextForms) {
    ByteId const id(QN_String("00112233-4455-6677-8899-AABBCCDDEEFF"));
    EXPECT_STREQ(id.toString().c_str(), "00112233445566778899AABBCCDDEEFF");
    EXPECT_STREQ(id.toUuidString().c_str(), "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(id.toString().size(), 33u);
    EXPECT_EQ(id.toString().capacity(), 33u);
    EXPECT_EQ(id.toUuidString().size(), 37u);
    AllocationCounter count;
    EXPECT_EQ(id.toUuidString().capacity(), 37u);
    EXPECT_EQ(count.made(), 1);
    QN_String out("a text with much more room than is needed");
    EXPECT_TRUE(id.arrToHexStr(out, id.getTuple()));
    EXPECT_EQ(out.capacity(), 33u);
    EXPECT_STREQ(out.c_str(), "00112233445566778899AABBCCDDEEFF");
    EXPECT_EQ(id.size(), 16u);
}

TEST(ByteId, ReadsPairsOfDigits) {
    std::string const zeros(32, '0');
    for (Case const& c : casesOf("ReadsPairsOfDigits"))
        EXPECT_EQ(hexOf(c.c_str(0)), c[1] + zeros.substr(c[1].size())) << c.place;
    QN_String none;
    none.reserve(0, false);
    EXPECT_TRUE(ByteId(none).isZero());
}

TEST(ByteId, ConvertsSingleDigits) {
    ByteId const id;
    for (int c = -128; c < 128; ++c) {
        unsigned char value = 99;
        bool const digit = id.charToByte(value, static_cast<char>(c));
        std::string_view const digits = "0123456789ABCDEFabcdef";
        std::size_t const place = digits.find(static_cast<char>(c));
        EXPECT_EQ(digit, place != digits.npos) << c;
        EXPECT_EQ(value, !digit ? 99u : place < 16 ? place : place - 6) << c;
    }
    char out = '?';
    EXPECT_TRUE(id.byteToChar(out, 15));
    EXPECT_EQ(out, 'F');
    EXPECT_FALSE(id.byteToChar(out, 16));
    EXPECT_EQ(out, 'F');
}

TEST(ByteId, ComparesUnsignedBytesFromTheFirstOn) {
    ByteId const rising[] = {ByteId(), withByte(15, 0xFF), withByte(1, 1), withByte(0, 0x7F),
                             withByte(0, 0x80)};
    for (ByteId const& a : rising)
        for (ByteId const& b : rising) {
            EXPECT_EQ(a == b, &a == &b);
            EXPECT_EQ(a != b, &a != &b);
            EXPECT_EQ(a < b, &a < &b);
            EXPECT_EQ(a <= b, &a <= &b);
            EXPECT_EQ(a > b, &a > &b);
            EXPECT_EQ(a >= b, &a >= &b);
        }
}

TEST(ByteId, HasCoarseVariants) {
    int const read[] = {-1, 0, 2, 2, 2, 2, 6, 6, -1}; // 8 has no bit among the low three
    for (unsigned int made = 0; made < 9; ++made) {
        ByteId const id(static_cast<ByteId::Variant>(made));
        EXPECT_EQ(static_cast<int>(id.variant()), read[made]) << made;
        EXPECT_TRUE(id == withByte(7, static_cast<unsigned char>(made << 5)));
    }
    for (auto const& [byte, variant] : {std::pair(0x1F, -1), {0x3F, 0}, {0xBF, 2}, {0xFF, 6}})
        EXPECT_EQ(static_cast<int>(withByte(7, static_cast<unsigned char>(byte)).variant()), variant) << byte;
}

TEST(ByteId, CountsInItsLastEightBytes) {
    ByteId id(QN_String("0102030405060708 FEDCBA9876543210"));
    EXPECT_TRUE(id.isZero()) << "a blank is no digit";
    id = ByteId(QN_String("0102030405060708FEDCBA9876543210"));
    EXPECT_EQ(id.last8BytesToUint64(), 0xFEDCBA9876543210u);
    EXPECT_EQ(id.toQN_INDEX64(), 0x7EDCBA9876543210u);
    EXPECT_EQ(id.last8BytesToIdx64(), 0x7EDCBA9876543210u);
    EXPECT_EQ(id.last4BytesToUint32(), 0x76543210u);
    EXPECT_EQ(withByte(12, 0xFF).last4BytesToUint32(), 0xFF000000u);
    EXPECT_EQ(withByte(12, 0xFF).last4BytesToIdx32(), 0x7F000000u);
    EXPECT_EQ(id.toUINT64(), 0u);
    EXPECT_EQ(id.incIdFromLast8BytesAsIdx64(), 0x7EDCBA9876543211u);
    EXPECT_STREQ(id.toString().c_str(), "01020304050607087EDCBA9876543211") << "the top bit is lost";
    id.setLast8BytesFromIdx64(0xFFFFFFFFFFFFFFFF);
    EXPECT_EQ(id.toQN_INDEX64(), 0x7FFFFFFFFFFFFFFFu);
    EXPECT_EQ(id.incIdFromLast8BytesAsIdx64(), 0x8000000000000000u);
    EXPECT_STREQ(id.toString().c_str(), "01020304050607088000000000000000");
}

// Values as strings.
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/properties/PptyText.h>

#include <gtest/gtest.h>

#include <string>

using namespace quarn;

namespace {

std::string text(Array<QN_String> const& list) {
    QN_String out("a longer text from before");
    qn_basicppty::QN_set(out, list);
    EXPECT_EQ(out.capacity(), out.length() + 1);
    return out.c_str();
}

QN_String withNul(char first, char last) {
    QN_String text("   ");
    text[0] = first;
    text[1] = '\0';
    text[2] = last;
    return text;
}

} // namespace

TEST(PptyText, JoinsLists) {
    EXPECT_EQ(text({}), "");
    EXPECT_EQ(text({"a"}), "[ a ]");
    EXPECT_EQ(text({"a", "b", "c"}), "[ a, b, c ]");
    EXPECT_EQ(text({"", ""}), "[ ,  ]");
}

TEST(PptyText, NamesBools) {
    QN_String flag("longer");
    qn_basicppty::QN_set(flag, true);
    EXPECT_TRUE(flag == "True" && flag.size() == 5);
}

TEST(PptyText, DescribesEnumerations) {
    QN_String out;
    qn_basicppty::QN_set(out, PptyEnum("mode", {"Fast", -2147483647 - 1}));
    EXPECT_STREQ(out.c_str(), " PptyEnum : mode( Fast, -2147483648 )\n");
    EXPECT_EQ(out.capacity(), out.length() + 1);
}

TEST(PptyText, EndsNamesLabelsAndElementsAtTheirFirstNul) {
    EXPECT_EQ(text({withNul('a', 'x'), "b"}), "[ a, b ]");
    QN_String out;
    qn_basicppty::QN_set(out, PptyEnum(withNul('n', 'x'), {withNul('l', 'y'), 1}));
    EXPECT_STREQ(out.c_str(), " PptyEnum : n( l, 1 )\n");
}

// QN_String: sizes and capacities, comparison, printing, splitting.
#include <MRCommon/basic/QN_String.h>

#include "support/Allocations.h"
#include "support/Shape.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cwchar>
#include <string>
#include <utility>

using namespace quarn;

TEST(QN_String, CountsItsTerminator) {
    EXPECT_EQ(shape(QN_String()), (Shape{1, 1}));
    EXPECT_EQ(shape(QN_String("")), (Shape{1, 1}));
    EXPECT_EQ(shape(QN_String("abc")), (Shape{4, 4}));
    EXPECT_EQ(QN_String("abc").length(), 3u);
}

TEST(QN_String, IsEmptyWithoutABuffer) {
    QN_String moved("abc");
    QN_String const taken(std::move(moved));
    QN_String none(moved); // NOLINT(bugprone-use-after-move): moved-from strings are specified
    EXPECT_EQ(shape(none), (Shape{0, 0}));
    EXPECT_EQ(none.data(), nullptr);
    EXPECT_STREQ(none.c_str(), "");
    EXPECT_TRUE(none == QN_String());
    EXPECT_FALSE(none < QN_String());
    QN_String full("abc");
    full = none;
    EXPECT_EQ(shape(full), (Shape{0, 0}));
    EXPECT_STREQ(full.format("%d", 5).c_str(), "5");
    EXPECT_STREQ(taken.c_str(), "abc");
}

TEST(QN_String, ComparesBytesUpToTheFirstNul) {
    QN_String longer("ab\0cd");
    longer.reserve(6, true);
    longer.setSize(6);
    longer[3] = 'x', longer[4] = 'y', longer[5] = '\0'; // "ab", NUL, "xy", NUL
    EXPECT_TRUE(longer == QN_String("ab") && longer == "ab");
    EXPECT_TRUE(longer != "abc" && longer != QN_String("abc") && !(longer != "ab"));
    EXPECT_EQ(longer.view(), "ab");
    EXPECT_TRUE(QN_String("a") < QN_String("ab"));
    EXPECT_TRUE(QN_String("z") < QN_String("\x80")) << "bytes are unsigned";
    EXPECT_TRUE(QN_String("a") != QN_String("b"));
}

TEST(QN_String, IsNeverReadPastItsSizeWithoutATerminator) {
    QN_String s("abc");
    s.setSize(3);
    EXPECT_EQ(s.length(), 3u);
    EXPECT_STREQ(s.c_str(), "");
    EXPECT_FALSE(s == QN_String("ab"));
}

TEST(QN_String, FormatGrowsOnlyIfItMust) {
    QN_String s = withCapacity("x", 20000);
    char const* const buffer = s.data();
    s.format("%d-%s", 12, "ab");
    EXPECT_STREQ(s.c_str(), "12-ab");
    EXPECT_EQ(shape(s), (Shape{6, 20000}));
    s.format("%010000d", 7);
    EXPECT_EQ(s.data(), buffer);
    EXPECT_EQ(shape(s), (Shape{10001, 20000}));
    EXPECT_EQ(s.view(), std::string(9999, '0') + "7") << "printed beside the kept buffer and copied into it";
    s.format("%030000d", 7);
    EXPECT_EQ(shape(s), (Shape{30001, 30001}));
    EXPECT_EQ(s.length(), 30000u);
    QN_String fresh;
    EXPECT_EQ(shape(fresh.format("ab")), (Shape{3, 3}));
}

TEST(QN_String, FormatMayReadItsOwnText) {
    QN_String s("ab");
    s.format("%s-%s", s.c_str(), s.c_str());
    EXPECT_STREQ(s.c_str(), "ab-ab");
    s.format("%09000d", 1);
    s.format("%s%s", s.c_str(), s.c_str());
    EXPECT_EQ(s.length(), 18000u);
}

TEST(QN_String, TokenizeSplitsAtEverySeparator) {
    struct {
        char const *text, *tokens;
    } const cases[] = {
        {"a,b", "a:2 b:2 "}, {"a,", "a:2 :1 "}, {",a", ":1 a:2 "}, {"a,,b", "a:2 :1 b:2 "},
        {"", ":1 "},         {"ab", "ab:3 "},   {",", ":1 :1 "},   {",,", ":1 :1 :1 "},
    };
    Array<QN_String> out{"left", "over", "from", "before"};
    for (auto const& c : cases) {
        unsigned int const count = QN_String(c.text).tokenize(',', out);
        EXPECT_EQ(joined(out), c.tokens) << c.text;
        EXPECT_EQ(count, out.size());
    }
}

TEST(QN_String, TokenizeToleratesUnusualSources) {
    Array<QN_String> out;
    QN_String none;
    none.reserve(0, false);
    EXPECT_EQ(none.tokenize(',', out), 1u);
    EXPECT_EQ(out[0].size(), 0u);
    EXPECT_EQ(QN_String("a,b").tokenize('\0', out), 1u);
    EXPECT_EQ(joined(out), "a,b:4 ");
    Array<QN_String> own{"x y z"};
    EXPECT_EQ(own[0].tokenize(' ', own), 3u) << "the list may hold the string that is split";
    EXPECT_EQ(joined(own), "x:2 y:2 z:2 ");
}

TEST(QN_String, IsEmptyAndUsableAfterAMove) {
    QN_String const long_("a text that was there before");
    QN_String source("abc"), target(long_);
    target = std::move(source);
    EXPECT_STREQ(target.c_str(), "abc");
    EXPECT_EQ(shape(source), (Shape{0, 0}))
        << "the old text of the target is not left in the source"; // NOLINT
    EXPECT_EQ(source.view(), "");
    source.push_back('x');
    EXPECT_EQ(source.view(), "x");
    QN_String printed(std::move(source));
    EXPECT_STREQ(source.format("%s!", "again").c_str(), "again!"); // NOLINT
}

TEST(QN_String, FormatIsEmptyIfTheArgumentsCannotBePrinted) {
    QN_String s("before");
    errno = ENOMEM; // left behind by somebody else
    s.format("%s%lc", "some", static_cast<wint_t>(0x7FFFFFFF));
    EXPECT_EQ(shape(s), (Shape{1, 7}));
    EXPECT_EQ(s[0], '\0');
    EXPECT_STREQ(s.c_str(), "");
    EXPECT_NO_THROW(s.format("%s", ""));
    EXPECT_EQ(s.size(), 1u);
    EXPECT_EQ(errno, ENOMEM) << "format keeps errno";
    errno = 0;
}

TEST(QN_String, FormatToleratesALengthThatChangesMeanwhile) {
    // Printing writes into the text that it prints: the first pass sees 20000 characters, later ones 30000.
    std::string text(30000, 'x');
    text[20000] = '\0';
    QN_String s;
    s.format("%s%hhn", text.c_str(), reinterpret_cast<signed char*>(&text[20000]));
    EXPECT_EQ(s.length(), 30000u);
    EXPECT_EQ(s.size(), 30001u);
}

TEST(QN_String, TokenizeLeavesWhatFollowsTheFirstNulToTheLastToken) {
    QN_String s("a,b;c,d");
    s[3] = '\0'; // "a,b", NUL, "c,d"
    Array<QN_String> out;
    EXPECT_EQ(s.tokenize(',', out), 2u);
    EXPECT_EQ(joined(out), "a:2 b:6 ");
    EXPECT_EQ(std::string(out[1].data(), 6), std::string("b\0c,d\0", 6));
    s.setSize(3); // "a,b" without a terminator
    EXPECT_EQ(s.tokenize(';', out), 1u);
    EXPECT_EQ(joined(out), "a,b:3 ");
}

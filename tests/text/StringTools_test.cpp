// StringTools: tables of texts and what becomes of them; results worked out by hand.
#include <MRCommon/text/StringTools.h>

#include "support/Allocations.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace std::string_literals;
using Tokens = std::vector<std::string>;

TEST(Format, PrintsTextsOnBothSidesOfItsBuffer) {
    for (int const length : {0, 1, 8190, 8191, 8192, 8193, 100000}) {
        std::string const text = StringTools::format("%*d", length, 7);
        EXPECT_EQ(text, length == 0 ? "7" : std::string(static_cast<std::size_t>(length) - 1, ' ') + "7");
    }
    EXPECT_EQ(StringTools::format("%s_%03d%c%%", "dunes", 7, '\0'), "dunes_007\0%"s);
}

TEST(Format, OfAShortTextAllocatesNothingButTheResult) {
    AllocationCounter count;
    EXPECT_EQ(StringTools::format("%.3f", 0.5), "0.500");
    EXPECT_EQ(count.made(), 0);
}

TEST(Format, OfWhatCannotBePrintedIsEmpty) {
    wchar_t const outsideTheLocale[] = {0x7FFFFFFF, 0};
    EXPECT_EQ(StringTools::format("a%ls", outsideTheLocale), "");
}

TEST(Format, PassesMemoryExhaustionOn) {
    EXPECT_GT(failEveryAllocation([] { StringTools::format("%9000d", 1); }), 0);
}

TEST(ReplaceAll, GoesLeftToRightOnce) {
    // clang-format off
    std::tuple<std::string, std::string, std::string, std::string> const cases[] = {
        {"aaa", "aa", "b", "ba"}, {"a-b", "-", "--", "a--b"}, {"-a-", "-", "", "a"},
        {"abc", "", "x", "abc"}, {"abc", "abcd", "x", "abc"}, {"", "a", "x", ""},
        {"aba", "aba", "aba", "aba"}, {"x\0y\0"s, "\0"s, "0", "x0y0"}};
    // clang-format on
    for (auto const& [text, from, to, result] : cases)
        EXPECT_EQ(StringTools::replace_all(text, from, to), result) << text;
}

TEST(Filters, KeepWhatTheyAreNamedFor) {
    std::string const text = " a\tB\n9\v\f\r\xA0\xFF.\0_"s;
    EXPECT_EQ(StringTools::no_whitespace(text), "aB9\xA0\xFF.\0_"s);
    EXPECT_EQ(StringTools::removeNonAlphanumeric(text), "aB9");
    EXPECT_EQ(StringTools::removeNonAlphanumeric("/0:9@A[Z`a{z"), "09AZaz") << "the neighbours of each range";
    EXPECT_EQ(StringTools::no_whitespace("\b\x0E\x1F!"), "\b\x0E\x1F!");
}

TEST(Tokenize, SplitsAtAnyDelimiterUpToTheLimit) {
    // clang-format off
    std::tuple<std::string, std::string, int, Tokens> const cases[] = {
        {"a  b c", " ", 0, {"a", "b", "c"}}, {"a  b c", " ", 2, {"a", " b c"}},
        {"a  b c", " ", 1, {"a  b c"}}, {"  a b", " ", -7, {"a b"}}, {",a,,b,", ",", 0, {"a", "b"}},
        {",a,,b,", ",", 2, {"a", ",b,"}}, {"a,", ",", 2, {"a"}}, {"a,b", ",", 2, {"a", "b"}},
        {"a b,c", ", ", 3, {"a", "b", "c"}}, {"a,b", ",", 2147483647, {"a", "b"}}, {"a,b", "", 0, {"a,b"}},
        {"a\xFF,b", ",", 0, {"a\xFF", "b"}}, {"a\\\"b c\"", " ", 0, {"a\\\"b", "c\""}}};
    // clang-format on
    for (auto const& [text, delimiters, limit, tokens] : cases)
        EXPECT_EQ(StringTools::tokenize(text, delimiters, limit, false), tokens) << text << " " << limit;
    for (int const limit : {-1, 0, 1, 2})
        for (std::string const text : {"", ",,,"})
            EXPECT_EQ(StringTools::tokenize(text, ",", limit, limit % 2 == 0), Tokens{});
}

// Texts use ' for the double quote and / for the backslash, which are hard to read in C++.
TEST(Tokenize, KnowsQuotesAndBackslashes) {
    auto const readable = [](std::string text) {
        for (char& c : text) c = c == '\'' ? '"' : c == '/' ? '\\' : c;
        return text;
    };
    // clang-format off
    std::tuple<std::string, int, Tokens> const cases[] = {
        {"x 'y z' w", 0, {"x", "y z", "w"}}, {"ab'cd ef'", 0, {"ab", "cd ef"}}, {"a/'b", 0, {"a'b"}},
        {"a//b", 0, {"a/b"}}, {"a/b", 0, {"a/b"}}, {"a/ b", 0, {"a", "b"}}, {"a/", 0, {"a"}},
        {"'a/ b'", 0, {"a/ b"}}, {"'  a '", 0, {"a "}}, {"''", 0, {}}, {"a '' b", 0, {"a", "b"}},
        {"'a'  b", 2, {"a", " b"}}, {"'a'b", 0, {"a", "b"}}, {"'a b", 0, {"a b"}},
        {"'a' 'b c", 2, {"a", "'b c"}}, {"a 'b c' d", 3, {"a", "b c", "d"}},
        {"x'y z' w", 2, {"x", "y z' w"}}};
    // clang-format on
    for (auto const& [text, limit, tokens] : cases) {
        Tokens expected = tokens;
        for (std::string& token : expected) token = readable(token);
        EXPECT_EQ(StringTools::tokenize(readable(text), " ", limit, true), expected) << text;
    }
    EXPECT_EQ(StringTools::tokenize("a\"b\\c", "\"\\", 0, true), (Tokens{"a", "b", "c"}))
        << "a quote or backslash among the delimiters is a delimiter first";
}

TEST(ParseDuration, AddsUnits) {
    // clang-format off
    std::tuple<char const*, unsigned int> const cases[] = {
        {"", 0}, {"abc", 0}, {"5", 5}, {"2h", 120}, {"1d 30", 1470}, {"1w", 10080}, {"1W", 1}, {"90m", 90},
        {"1h30m", 90}, {"1w2d3h30", 13170}, {"1D1H", 1500}, {"-1 2", 12}, {"4294967297", 1},
        {"\xB2" "3", 3}};
    // clang-format on
    for (auto const& [text, minutes] : cases) EXPECT_EQ(StringTools::parseDuration(text), minutes) << text;
}

TEST(Escaping, OfTexts) {
    EXPECT_EQ(StringTools::url_encode("az AZ\t09/\x80\xFF%-\0"s), "az+AZ+09%2F%80%FF%25%2D%00");
    EXPECT_EQ(StringTools::url_encode(""), "");
    EXPECT_EQ(StringTools::escape("a.b c\\", '\\'), "a\\.b\\ c\\\\");
    EXPECT_EQ(StringTools::escape("", '\\'), "");
    EXPECT_EQ(StringTools::escape("a.", 'x'), "ax.");
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    EXPECT_EQ(StringTools::unescape(StringTools::escape(all, '%'), '%'), all);
}

TEST(Unescape, TellsOfAnEscapeCharacterAtTheEnd) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(StringTools::unescape("a\\\\b\\c", '\\'), "a\\bc");
    EXPECT_EQ(StringTools::unescape("", '\\'), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    EXPECT_EQ(StringTools::unescape("abc\\", '\\'), "abc");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Found escape character at end of string\n");
}

TEST(UnescapeLookup, SkipsWhatIsEscaped) {
    EXPECT_EQ(StringTools::unescape_lookup("a\\,b,c", '\\', ','), 4);
    EXPECT_EQ(StringTools::unescape_lookup("\\\\,", '\\', ','), 2);
    EXPECT_EQ(StringTools::unescape_lookup("a\\\\", '\\', '\\'), 1) << "wanted comes before escape";
    EXPECT_EQ(StringTools::unescape_lookup("a\\", '\\', ','), -1);
    EXPECT_EQ(StringTools::unescape_lookup("a\\,", '\\', ','), -1);
    EXPECT_EQ(StringTools::unescape_lookup("", '\\', ','), -1);
}

// StringTools: tables of inputs and results; the results were worked out by hand.
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/text/StringTools.h>

#include "support/Allocations.h"
#include "support/Cases.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <vector>

using namespace std::string_literals;
using Tokens = std::vector<std::string>;

namespace {

/// While it lives, printing fails as on a platform that reports nothing but the failure, or with this code.
struct FailingPrinter {
    explicit FailingPrinter(int code = 0) { errorCode = code, active = true; }
    ~FailingPrinter() { active = false; }
    static inline bool active = false;
    static inline int errorCode = 0;
};

} // namespace

/// Replaces the C library's function for the library under test too.
extern "C" int vsnprintf(char* out, std::size_t size, char const* format, std::va_list arguments) noexcept {
    using Printer = int (*)(char*, std::size_t, char const*, std::va_list);
    static auto const original = reinterpret_cast<Printer>(dlsym(RTLD_NEXT, "vsnprintf"));
    if (!FailingPrinter::active) return original(out, size, format, arguments);
    if (FailingPrinter::errorCode != 0) errno = FailingPrinter::errorCode;
    return -1;
}

TEST(Format, PrintsTextsShorterAndLongerThanItsBuffer) {
    for (int const length : {0, 1, 8190, 8191, 8192, 8193, 100000}) {
        std::string const text = StringTools::format("%*d", length, 7);
        EXPECT_EQ(text, length == 0 ? "7" : std::string(static_cast<std::size_t>(length) - 1, ' ') + "7");
    }
    EXPECT_EQ(StringTools::format("%s_%03d%c%%", "dunes", 7, '\0'), "dunes_007\0%"s);
}

TEST(Format, AllocatesOnlyTheResultOfAShortText) {
    AllocationCounter count;
    EXPECT_EQ(StringTools::format("%.3f", 0.5), "0.500");
    EXPECT_EQ(count.made(), 0);
}

TEST(Format, IsEmptyIfTheTextCannotBePrinted) {
    wchar_t const outsideTheLocale[] = {0x7FFFFFFF, 0};
    EXPECT_EQ(StringTools::format("a%ls", outsideTheLocale), "");
    errno = ENOMEM; // of an earlier call, and no reason to report exhausted memory
    FailingPrinter const failing;
    EXPECT_EQ(StringTools::format("%d", 1), "");
}

TEST(Format, ThrowsIfMemoryIsExhausted) {
    FailingPrinter const failing(ENOMEM);
    EXPECT_THROW(static_cast<void>(StringTools::format("%d", 1)), std::bad_alloc);
    EXPECT_THROW(quarn::QN_String().format("%d", 1), std::bad_alloc);
}

#ifdef __linux__
TEST(Format, KeepsTheErrorCodeThatItIsToPrint) {
    std::string const reason =
        "%m %d"; // an extension of the platform's, which the compilers warn of in literals
    errno = ENOENT;
    EXPECT_EQ(StringTools::format(reason.c_str(), 1), "No such file or directory 1");
}
#endif

// An argument that another thread changes meanwhile, simulated by one that the printing itself changes.
TEST(Format, ToleratesALengthThatChangesBetweenItsPasses) {
    signed char text[] = "abc";
    EXPECT_EQ(StringTools::format("%s%9213d%hhn", reinterpret_cast<char*>(text), 1, text + 1),
              "a" + std::string(9212, ' ') + "1")
        << "the first pass printed 9216 characters and wrote the low 8 bits of that, a NUL, into the text";
    signed char growing[] = "a\0c";
    EXPECT_EQ(StringTools::format("%s%9000d%hhn", reinterpret_cast<char*>(growing), 1, growing + 1),
              "a+c" + std::string(8999, ' ') + "1")
        << "9001 wrote a parenthesis, 9003 a plus";
}

TEST(ReplaceAll, GoesLeftToRightOnce) {
    for (Case const& c : casesOf("ReplaceAll"))
        EXPECT_EQ(StringTools::replace_all(c[0], c[1], c[2]), c[3]) << c.place;
}

TEST(NoWhitespace, KeepsEverythingElse) {
    EXPECT_EQ(StringTools::no_whitespace(" a\tB\n9\v\f\r\xA0\xFF.\0_"s), "aB9\xA0\xFF.\0_"s);
    EXPECT_EQ(StringTools::no_whitespace("\b\x0E\x1F!"), "\b\x0E\x1F!") << "the neighbours of each range";
}

TEST(RemoveNonAlphanumeric, KeepsAsciiLettersAndDigits) {
    EXPECT_EQ(StringTools::removeNonAlphanumeric(" a\tB\n9\v\f\r\xA0\xFF.\0_"s), "aB9");
    EXPECT_EQ(StringTools::removeNonAlphanumeric("/0:9@A[Z`a{z"), "09AZaz") << "the neighbours of each range";
}

TEST(Tokenize, SplitsAtAnyDelimiterUpToTheLimit) {
    for (Case const& c : casesOf("Tokenize"))
        EXPECT_EQ(StringTools::tokenize(c[0], c[1], c.integer(2), false), c.from(3)) << c.place;
    for (int const limit : {-1, 0, 1, 2})
        for (std::string const text : {"", ",,,"})
            EXPECT_EQ(StringTools::tokenize(text, ",", limit, limit % 2 == 0), Tokens{});
}

TEST(Tokenize, InterpretsQuotesAndBackslashes) {
    for (Case const& c : casesOf("TokenizeQuoted"))
        EXPECT_EQ(StringTools::tokenize(c[0], " ", c.integer(1), true), c.from(2)) << c.place;
    EXPECT_EQ(StringTools::tokenize("a\"b\\c", "\"\\", 0, true), (Tokens{"a", "b", "c"}))
        << "a quote or backslash among the delimiters is a delimiter first";
}

TEST(ParseDuration, AddsUnits) {
    for (Case const& c : casesOf("ParseDuration"))
        EXPECT_EQ(StringTools::parseDuration(c[0]), c.count(1)) << c.place;
}

TEST(UrlEncode, WritesTwoDigitsForOtherBytes) {
    EXPECT_EQ(StringTools::url_encode("az AZ\t09/\x80\xFF%-\0"s), "az+AZ+09%2F%80%FF%25%2D%00");
    EXPECT_EQ(StringTools::url_encode(""), "");
}

TEST(UrlEncode, EncodesTextsOfAnyLength) {
    for (std::size_t const size : {255u, 256u, 257u, 512u, 2000u}) {
        std::string text(size, 'a'), expected;
        for (std::size_t i = 0; i < size; i += 3) text[i] = '/';
        for (char const c : text) expected += c == '/' ? "%2F" : "a";
        AllocationCounter count;
        EXPECT_EQ(StringTools::url_encode(text).size(), expected.size());
        EXPECT_EQ(count.made(), 1);
        EXPECT_EQ(StringTools::url_encode(text), expected);
    }
}

TEST(Escape, PrecedesEveryOtherCharacter) {
    EXPECT_EQ(StringTools::escape("a.b c\\", '\\'), "a\\.b\\ c\\\\");
    EXPECT_EQ(StringTools::escape("", '\\'), "");
    EXPECT_EQ(StringTools::escape("a.", 'x'), "ax.");
}

TEST(Unescape, UndoesEscapeUnlessTheEscapeCharacterIsALetterOrDigit) {
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    EXPECT_EQ(StringTools::unescape(StringTools::escape(all, '%'), '%'), all);
    EXPECT_EQ(StringTools::unescape(StringTools::escape("ax", 'a'), 'a'), "x");
    EXPECT_EQ(StringTools::unescape(StringTools::escape("7x", '7'), '7'), "x");
}

TEST(Unescape, ReportsAnEscapeCharacterAtTheEnd) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(StringTools::unescape("a\\\\b\\c", '\\'), "a\\bc");
    EXPECT_EQ(StringTools::unescape("", '\\'), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    EXPECT_EQ(StringTools::unescape("abc\\", '\\'), "abc");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Found escape character at end of string\n");
}

TEST(UnescapeLookup, SkipsEscapedCharacters) {
    EXPECT_EQ(StringTools::unescape_lookup("a\\,b,c", '\\', ','), 4);
    EXPECT_EQ(StringTools::unescape_lookup("\\\\,", '\\', ','), 2);
    EXPECT_EQ(StringTools::unescape_lookup("a\\\\", '\\', '\\'), 1) << "wanted comes before escape";
    EXPECT_EQ(StringTools::unescape_lookup("a\\", '\\', ','), -1);
    EXPECT_EQ(StringTools::unescape_lookup("a\\,", '\\', ','), -1);
    EXPECT_EQ(StringTools::unescape_lookup("", '\\', ','), -1);
}

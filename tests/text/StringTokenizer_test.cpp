// StringTokenizer: the tokens and the rest after each of them.
#include <MRCommon/text/StringTokenizer.h>

#include "support/Cases.h"

#include <gtest/gtest.h>

#include <utility>

using StringTools::StringTokenizer;

TEST(StringTokenizer, StoresItsTextWithoutEmptyTokens) {
    for (Case const& c : casesOf("Stores")) {
        StringTokenizer t(c[0], c[1]);
        EXPECT_EQ(t.remainingString(), c[2]) << c.place;
        EXPECT_EQ(t.countTokens(), c.count(3)) << c.place;
        EXPECT_EQ(t.hasMoreTokens(), c.count(3) > 0) << c.place;
    }
}

TEST(StringTokenizer, HandsOutPieceByPiece) {
    StringTokenizer t("a,b::,c", ",");
    EXPECT_EQ(t.nextToken(), "a");
    EXPECT_EQ(t.remainingString(), "b::,c");
    StringTokenizer other = t;
    EXPECT_EQ(t.nextToken(), "b::");
    EXPECT_EQ(t.countTokens(), 1u);
    EXPECT_EQ(t.nextToken(), "c");
    EXPECT_FALSE(t.hasMoreTokens());
    EXPECT_EQ(t.nextToken() + t.nextToken(",") + t.nextTokenWithLimit("") + t.remainingString(), "");
    EXPECT_EQ(t.countTokens(), 0u);
    EXPECT_EQ(other.nextToken(":"), "b") << "another delimiter, for one call";
    EXPECT_EQ(other.nextToken(":"), "") << "its runs count singly";
    EXPECT_EQ(other.countTokens(), 2u) << "the comma is at the front now";
    EXPECT_EQ(other.nextToken(), "");
    EXPECT_EQ(other.nextToken(""), "c");
}

TEST(StringTokenizer, ReadsNumbers) {
    StringTokenizer t("12abc; -7;x;99999999999999999999;4294967298;1.5e2z;.25", ";");
    EXPECT_EQ(t.nextIntToken(), 12);
    EXPECT_EQ(t.nextIntToken(), -7);
    EXPECT_EQ(t.nextIntToken(), 0);
    EXPECT_EQ(t.nextIntToken(), -1) << "the low half of the largest 64-bit number";
    EXPECT_EQ(t.nextIntToken(), 2);
    EXPECT_EQ(t.nextFloatToken(), 150.0);
    EXPECT_EQ(t.nextFloatToken(), 0.25);
    EXPECT_EQ(t.nextFloatToken(), 0.0);
    EXPECT_EQ(t.nextIntToken(), 0);
}

TEST(StringTokenizer, CutsAtALimit) {
    for (Case const& c : casesOf("CutsAtALimit")) {
        StringTokenizer t(c[0], ";");
        EXPECT_EQ(StringTokenizer(t).filterNextTokenWithLimit("=", ""), c[1]) << c.place;
        EXPECT_EQ(t.nextTokenWithLimit("="), c[1]) << c.place;
        EXPECT_EQ(t.remainingString(), c[2]) << c.place;
    }
    StringTokenizer t("5=6;7", ";");
    EXPECT_EQ(t.nextIntTokenWithLimit("="), 5);
    EXPECT_EQ(t.nextIntTokenWithLimit("="), 7);
}

TEST(StringTokenizer, FiltersTokens) {
    StringTokenizer t("aabb,xabyab,ab;c=,d;d=e;,last", ",");
    EXPECT_EQ(t.filterNextToken("ab"), "ab") << "what closes up is not searched again";
    EXPECT_EQ(t.filterNextToken("ab"), "xy");
    EXPECT_EQ(t.filterNextTokenWithLimit("=", ";"), "abc");
    EXPECT_EQ(t.filterNextToken(""), "d;d=e;") << "an empty filter removes nothing";
    EXPECT_EQ(t.filterNextTokenWithLimit("=", "a"), "lst");
}

TEST(StringTokenizer, IsEmptyAndUsableAfterAMove) {
    auto const expectEmpty = [](StringTokenizer& t) {
        EXPECT_FALSE(t.hasMoreTokens());
        EXPECT_EQ(t.countTokens(), 0u);
        EXPECT_EQ(t.remainingString() + t.nextToken() + t.nextTokenWithLimit("=") + t.nextToken(";"), "");
        EXPECT_EQ(t.nextIntToken(), 0);
    };
    for (std::string const text :
         {"a,b,c,d", "a,a text that is far too long for the string's own buffer,c"}) {
        StringTokenizer from(text, ",");
        EXPECT_EQ(from.nextToken(), "a");
        std::string const rest = from.remainingString();
        StringTokenizer to(std::move(from));
        EXPECT_EQ(to.remainingString(), rest);
        expectEmpty(from);
        StringTokenizer assigned("x;y", ";");
        assigned = std::move(to);
        EXPECT_EQ(assigned.remainingString(), rest);
        EXPECT_EQ(assigned.countTokens(), text.size() == 7 ? 3u : 2u);
        expectEmpty(to);
        to = assigned;
        EXPECT_EQ(to.remainingString(), rest);
    }
}

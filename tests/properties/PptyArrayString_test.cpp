// The property with a list of strings.
#include <MRCommon/properties/PptyArrayString.h>

#include "properties/Records.h"
#include "support/Allocations.h"

#include <gtest/gtest.h>

#include <memory>

using namespace quarn;

TEST(PptyArrayString, MakesItsStringWithoutOneForEachElement) {
    PptyArrayString p("n");
    for (int i = 0; i < 50; ++i) p.getRefToValue()->push_back("a text too long to stand in a small buffer");
    AllocationCounter count;
    EXPECT_EQ(p.toStr().length(), 50 * 44u + 2);
    EXPECT_LT(count.made(), 20);
}

TEST(PptyArrayString, TakesListsOnly) {
    PptyArrayString p("n", {"a", "b"});
    EXPECT_STREQ(p.toStr().c_str(), "[ a, b ]");
    EXPECT_EQ(recordOf(PptyArrayString("n", {"a"})), hex("02000000 6E00 01000000 02000000 6100"));
    EXPECT_TRUE(p.setValue(ItemVariant("text")) && p.getRefToValue()->size() == 2);
    EXPECT_TRUE(p.setValue(ItemVariant(Array<QN_String>{"c"})) && p.getRefToValue()->size() == 1);
    EXPECT_TRUE(p.setValue(Array<QN_String>{"d", "e", "f"}));
    std::unique_ptr<Ppty> const copy(p.cloneWithNewName("m"));
    p.getRefToValue()->reserve(0, false);
    EXPECT_STREQ(copy->toStr().c_str(), "[ d, e, f ]");
    EXPECT_TRUE(copy->getType() == 11 && copy->getVariantValue().tag() == 11);
    EXPECT_EQ(recordOf(p), hex("02000000 6E00 00000000"));
}

// Strings and lists: growth, copy and reserve rules with their capacities, and what happens when memory runs
// out.
#include <MRCommon/basic/QN_String.h>

#include "support/Allocations.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

using namespace quarn;

namespace {

struct Shape {
    unsigned int size, capacity;
    friend bool operator==(Shape a, Shape b) { return a.size == b.size && a.capacity == b.capacity; }
    friend std::ostream& operator<<(std::ostream& out, Shape s) { return out << s.size << "/" << s.capacity; }
};

template <class Container> Shape shape(Container const& c) { return {c.size(), c.capacity()}; }

QN_String withCapacity(char const* text, unsigned int capacity) {
    QN_String s(text);
    s.reserve(capacity, true);
    return s;
}

std::string joined(Array<QN_String> const& list) {
    std::string text;
    for (QN_String const& s : list) text += std::string(s.c_str()) + ":" + std::to_string(s.size()) + " ";
    return text;
}

} // namespace

TEST(QN_String, CountsItsTerminator) {
    EXPECT_EQ(shape(QN_String()), (Shape{1, 1}));
    EXPECT_EQ(shape(QN_String("")), (Shape{1, 1}));
    EXPECT_EQ(shape(QN_String("abc")), (Shape{4, 4}));
    EXPECT_EQ(QN_String("abc").length(), 3u);
}

TEST(QN_String, WithoutABufferIsAnEmptyText) {
    QN_String moved("abc");
    QN_String const taken(std::move(moved));
    QN_String none(moved); // NOLINT(bugprone-use-after-move): the state behind a move is stated
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
    EXPECT_TRUE(longer == QN_String("ab"));
    EXPECT_TRUE(QN_String("a") < QN_String("ab"));
    EXPECT_TRUE(QN_String("z") < QN_String("\x80")) << "bytes are unsigned";
    EXPECT_TRUE(QN_String("a") != QN_String("b"));
}

TEST(QN_String, WithoutATerminatorIsNeverReadPastItsSize) {
    QN_String s("abc");
    s.setSize(3);
    EXPECT_EQ(s.length(), 3u);
    EXPECT_STREQ(s.c_str(), "");
    EXPECT_FALSE(s == QN_String("ab"));
}

TEST(Append, GrowsByAnEighthPlusFour) {
    QN_String s;
    std::vector<unsigned int> capacities;
    while (s.size() < 17) {
        s.push_back('x');
        if (capacities.empty() || capacities.back() != s.capacity()) capacities.push_back(s.capacity());
    }
    EXPECT_EQ(capacities, (std::vector<unsigned int>{5, 9, 14, 19}));
    Array<int> list{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    list.push_back(17);
    EXPECT_EQ(shape(list), (Shape{17, 22}));
    EXPECT_EQ(list[16], 17);
}

TEST(Append, OfOneOfItsOwnElementsIsSafeWhileItGrows) {
    Array<QN_String> list{"first", "second"};
    for (int i = 0; i < 20; ++i) list.push_back(list[0]);
    EXPECT_EQ(list.size(), 22u);
    for (unsigned int i = 2; i < list.size(); ++i) EXPECT_STREQ(list[i].c_str(), "first");
}

TEST(Append, CarriesStringsOverWithoutCopyingThem) {
    Array<QN_String> list{"a", "b"};
    char const* const text = list[1].data();
    list.push_back("c");
    EXPECT_EQ(list[1].data(), text);
}

TEST(Reserve, FollowsItsRules) {
    Array<int> list{1, 2, 3};
    list.reserve(3, false);
    EXPECT_EQ(list[2], 3) << "the same capacity touches nothing";
    list.reserve(2, true);
    EXPECT_EQ(shape(list), (Shape{2, 2})) << "the size is clamped";
    EXPECT_EQ(list[1], 2);
    list.reserve(9, false);
    EXPECT_EQ(shape(list), (Shape{2, 9})) << "meant: the size stays although nothing was carried";
    list.reserve(list.size(), true); // the argument is a field of the list itself
    EXPECT_EQ(shape(list), (Shape{2, 2}));
    list.reserve(0, true);
    EXPECT_EQ(shape(list), (Shape{0, 0}));
    EXPECT_EQ(list.data(), nullptr);
}

TEST(Reserve, MakesEverySlotOfAStringListALiveEmptyString) {
    AllocationCounter count;
    {
        Array<QN_String> list{"a"};
        list.reserve(4, true);
        for (unsigned int i = 1; i < 4; ++i) EXPECT_EQ(shape(list.data()[i]), (Shape{1, 1}));
        EXPECT_STREQ(list[0].c_str(), "a");
        list.reserve(0, true);
        EXPECT_EQ(count.alive(), 0) << "the strings are freed with the list";
    }
    EXPECT_EQ(count.alive(), 0);
}

TEST(Copy, SizesExactly) {
    QN_String destination = withCapacity("", 40);
    QN_String const source("nine char");
    destination = source;
    EXPECT_EQ(shape(destination), (Shape{10, 10}));
    QN_String const copy(withCapacity("abc", 30));
    EXPECT_EQ(shape(copy), (Shape{4, 30})) << "moved, not copied";
    QN_String const exact(static_cast<QN_String const&>(copy));
    EXPECT_EQ(shape(exact), (Shape{4, 4}));

    Array<QN_String> list{"a", "bc"}, other;
    list.push_back("d");
    other.assign(list);
    EXPECT_EQ(shape(other), (Shape{3, 3}));
    EXPECT_EQ(joined(other), "a:2 bc:3 d:2 ");
    char const* const kept = other[1].data();
    other.assign(list);
    EXPECT_EQ(other[1].data(), kept) << "a string of the right capacity keeps its buffer";
}

TEST(Copy, OntoItselfChangesNothing) {
    QN_String s = withCapacity("abc", 9);
    QN_String& same = s;
    s = same;
    EXPECT_EQ(shape(s), (Shape{4, 9}));
    Array<QN_String> list{"a"};
    list.assign(list);
    EXPECT_EQ(joined(list), "a:2 ");
}

TEST(Format, GrowsOnlyWhenItMust) {
    QN_String s = withCapacity("x", 3000);
    char const* const buffer = s.data();
    s.format("%d-%s", 12, "ab");
    EXPECT_STREQ(s.c_str(), "12-ab");
    EXPECT_EQ(shape(s), (Shape{6, 3000}));
    s.format("%02000d", 7);
    EXPECT_EQ(s.data(), buffer);
    EXPECT_EQ(shape(s), (Shape{2001, 3000}));
    s.format("%04000d", 7);
    EXPECT_EQ(shape(s), (Shape{4001, 4001}));
    EXPECT_EQ(s.length(), 4000u);
    QN_String fresh;
    EXPECT_EQ(shape(fresh.format("ab")), (Shape{3, 3}));
}

TEST(Format, MayReadItsOwnText) {
    QN_String s("ab");
    s.format("%s-%s", s.c_str(), s.c_str());
    EXPECT_STREQ(s.c_str(), "ab-ab");
    s.format("%0900d", 1);
    s.format("%s%s", s.c_str(), s.c_str());
    EXPECT_EQ(s.length(), 1800u);
}

TEST(Tokenize, SplitsAtEverySeparator) {
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

TEST(Tokenize, ToleratesUnusualSources) {
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

TEST(Memory, RunningOutLeaksNothingAndLeavesEverythingDestructible) {
    static_assert(std::is_nothrow_move_constructible_v<QN_String> &&
                  std::is_nothrow_move_assignable_v<Array<QN_String>>);
    AllocationCounter count;
    long const failures = failEveryAllocation([] {
        Array<QN_String> list{"one", "two"};
        list.push_back(list[1]);
        Array<QN_String> copy(list);
        copy.reserve(9, true);
        copy = list;
        QN_String text("a b");
        text.tokenize(' ', copy);
        text.format("%05000d", 3);
    });
    EXPECT_GT(failures, 20);
    EXPECT_EQ(count.alive(), 0);
}

TEST(Memory, AFailedCopyKeepsTheOldText) {
    QN_String s("abc");
    QN_String const other("something longer");
    FailingAllocation failing(0);
    EXPECT_THROW(s = other, std::bad_alloc);
    EXPECT_STREQ(s.c_str(), "abc");
}

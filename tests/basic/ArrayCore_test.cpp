// ArrayCore and Array: growth, copy and reserve rules with their capacities, and what happens without memory.
#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/QN_String.h>

#include "support/Allocations.h"
#include "support/Shape.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace quarn;

static_assert(std::is_nothrow_move_constructible_v<QN_String> &&
              std::is_nothrow_move_assignable_v<Array<QN_String>>);

TEST(ArrayCore, AppendGrowsByAnEighthPlusFour) {
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

TEST(ArrayCore, AppendsItsOwnElementsWhileItGrows) {
    Array<QN_String> list{"first", "second"};
    for (int i = 0; i < 20; ++i) list.push_back(list[0]);
    EXPECT_EQ(list.size(), 22u);
    for (unsigned int i = 2; i < list.size(); ++i) EXPECT_STREQ(list[i].c_str(), "first");
}

TEST(ArrayCore, MovesStringsWhenItGrows) {
    Array<QN_String> list{"a", "b"};
    char const* const text = list[1].data();
    list.push_back("c");
    EXPECT_EQ(list[1].data(), text);
}

TEST(ArrayCore, ReserveFollowsItsRules) {
    Array<int> list{1, 2, 3};
    list.reserve(3, false);
    EXPECT_EQ(list[2], 3) << "the same capacity touches nothing";
    list.reserve(2, true);
    EXPECT_EQ(shape(list), (Shape{2, 2})) << "the size is clamped";
    EXPECT_EQ(list[1], 2);
    list.reserve(9, false);
    EXPECT_EQ(shape(list), (Shape{2, 9})) << "intentional: the size stays although no element was kept";
    list.reserve(list.size(), true); // the argument is a field of the list itself
    EXPECT_EQ(shape(list), (Shape{2, 2}));
    list.reserve(0, true);
    EXPECT_EQ(shape(list), (Shape{0, 0}));
    EXPECT_EQ(list.data(), nullptr);
}

TEST(ArrayCore, ReserveConstructsEverySlot) {
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

TEST(ArrayCore, CopiesAreSizedExactly) {
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

TEST(ArrayCore, CopyOntoItselfChangesNothing) {
    QN_String s = withCapacity("abc", 9);
    QN_String& same = s;
    s = same;
    EXPECT_EQ(shape(s), (Shape{4, 9}));
    Array<QN_String> list{"a"};
    list.assign(list);
    EXPECT_EQ(joined(list), "a:2 ");
}

TEST(ArrayCore, IsEmptyAndUsableAfterAMove) {
    Array<QN_String> source{"a", "b"}, target{"old"};
    target = std::move(source);
    EXPECT_EQ(joined(target), "a:2 b:2 ");
    EXPECT_EQ(shape(source),
              (Shape{0, 0})); // NOLINT(bugprone-use-after-move): moved-from lists are specified
    EXPECT_EQ(source.data(), nullptr);
    source.push_back("new");
    Array<QN_String> const taken(std::move(source));
    EXPECT_EQ(joined(taken), "new:4 ");
    EXPECT_TRUE(source.empty() && source.begin() == source.end()); // NOLINT
    source.assign(taken);
    EXPECT_EQ(joined(source), "new:4 ");
}

TEST(ArrayCore, AFailedListCopyLeavesTheListAsDocumented) {
    Array<QN_String> const source{"first", "second"};
    auto const copyFailingAt = [&](Array<QN_String>& target, long nth) {
        FailingAllocation failing(nth);
        EXPECT_THROW(target = source, std::bad_alloc);
    };
    Array<QN_String> other{"x", "y", "z"};
    copyFailingAt(other, 0);
    EXPECT_EQ(joined(other), "x:2 y:2 z:2 ") << "no buffer, nothing changes";
    copyFailingAt(other, 4); // the buffer and its two strings, then "first"
    EXPECT_EQ(joined(other), "first:6 :1 ");
    Array<QN_String> same{"x", "y"};
    copyFailingAt(same, 1);
    EXPECT_EQ(joined(same), "first:6 y:2 ") << "of the same capacity: the others are the old ones";
}

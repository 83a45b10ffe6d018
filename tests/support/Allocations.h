// Allocations: every operator new of a test program is counted, and any one of them can be made to fail.
//     AllocationCounter count;
//     list.push_back(7);
//     EXPECT_EQ(count.made(), 1);       // allocations since `count` was made
//     EXPECT_EQ(count.alive(), 1);      // of them, not yet freed
#ifndef MRCOMMON_TESTS_SUPPORT_ALLOCATIONS_H
#define MRCOMMON_TESTS_SUPPORT_ALLOCATIONS_H

#include <cstddef>
#include <new>

class AllocationCounter {
public:
    AllocationCounter();
    long made() const;
    long alive() const;

private:
    long made_, alive_;
};

/// During its life, allocation number `nth` (from 0) throws std::bad_alloc, by itself or with all later ones.
class FailingAllocation {
public:
    enum class Later { Succeeds, Fails };
    explicit FailingAllocation(long nth, Later later = Later::Succeeds);
    ~FailingAllocation();
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;
    bool struck() const; ///< whether the allocation was reached and failed
};

/// During its life, an allocation of more than `most` bytes throws std::bad_alloc.
class AllocationLimit {
public:
    explicit AllocationLimit(std::size_t most);
    ~AllocationLimit();
    AllocationLimit(AllocationLimit const&) = delete;
    AllocationLimit& operator=(AllocationLimit const&) = delete;
};

/// Runs `action` again and again with its first, second, ... allocation failing until it gets through, and
/// returns how many runs failed. Whatever else `action` throws, or swallows, shows as a lower count.
template <class Action> long failEveryAllocation(Action const& action) {
    for (long nth = 0;; ++nth) {
        FailingAllocation failing(nth);
        try {
            action();
        } catch (std::bad_alloc const&) {
            continue;
        }
        return failing.struck() ? -1 : nth;
    }
}

#endif

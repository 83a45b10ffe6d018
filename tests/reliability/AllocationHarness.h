// AllocationHarness: runs an operation with its first, second, ... allocation failing, until it passes.
//     unchanged("push_back", [] { return Array<int>{1}; }, [](Array<int>& list) { list.push_back(2); });
// Each allocation fails once by itself and once with every later one. After each failure the arguments are as promised,
// a retry on the same arguments gives what an undisturbed run gives, and nothing has leaked.
#ifndef MRCOMMON_TESTS_RELIABILITY_ALLOCATIONHARNESS_H
#define MRCOMMON_TESTS_RELIABILITY_ALLOCATIONHARNESS_H

#include "reliability/Describe.h"
#include "support/Allocations.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

/// What an operation promises about its arguments if memory runs out.
enum class Promise {
    Unchanged, ///< they are as before
    Usable     ///< they may have changed; a retry gives the same result all the same
};

/// How much was tried; printed at the end of the program.
struct Tried {
    long operations = 0;
    long failurePoints = 0;
};
inline Tried tried;

inline std::string describe(TempFile const&) { return {}; } // an argument to read from

/// What an operation returns, or 0.
template <class Run, class Arguments> auto resultOf(Run const& run, Arguments& arguments) {
    if constexpr (std::is_void_v<decltype(run(arguments))>) {
        run(arguments);
        return 0;
    } else {
        return run(arguments);
    }
}

/// Runs `run` on what `make` returns, as described above. Its result is compared too.
template <class Make, class Run>
void failInTurn(std::string const& name, Promise promise, Make const& make, Run const& run) {
    SCOPED_TRACE(name);
    using Arguments = decltype(make());
    using Result = std::decay_t<decltype(resultOf(run, std::declval<Arguments&>()))>;
    std::string before, expected;
    {
        Arguments arguments = make();
        before = describe(arguments);
        Result const result = resultOf(run, arguments);
        expected = describe(result) + " | " + describe(arguments);
    }
    ++tried.operations;
    for (auto const later : {FailingAllocation::Later::Succeeds, FailingAllocation::Later::Fails}) {
        for (long nth = 0;; ++nth) {
            AllocationCounter const count;
            bool struck = false;
            {
                Arguments arguments = make();
                std::optional<Result> result;
                {
                    FailingAllocation const failing(nth, later);
                    try {
                        result = resultOf(run, arguments);
                    } catch (std::bad_alloc const&) {
                    }
                    struck = failing.struck();
                }
                if (!result.has_value()) {
                    if (promise == Promise::Unchanged) {
                        EXPECT_EQ(describe(arguments), before) << nth;
                    }
                    result = resultOf(run, arguments);
                }
                EXPECT_EQ(describe(*result) + " | " + describe(arguments), expected) << nth;
            }
            EXPECT_EQ(count.alive(), 0) << "leaked after failure " << nth;
            if (!struck) {
                EXPECT_GT(nth, 0) << "does not allocate";
                break;
            }
            ++tried.failurePoints;
            ASSERT_LT(nth, 10000);
        }
    }
}

///@{
/// An operation that leaves its arguments unchanged if memory runs out; without arguments; one that may change them.
template <class Make, class Run> void unchanged(std::string const& name, Make const& make, Run const& run) {
    failInTurn(name, Promise::Unchanged, make, run);
}
template <class Run> void unchanged(std::string const& name, Run const& run) {
    failInTurn(
        name, Promise::Unchanged, [] { return 0; }, [&run](int) { return run(); });
}
template <class Make, class Run> void usable(std::string const& name, Make const& make, Run const& run) {
    failInTurn(name, Promise::Usable, make, run);
}
///@}

#endif

#include "support/Allocations.h"

#include <cstdlib>
#include <limits>

namespace {

constexpr long never = -1;

long allocationsMade = 0;
long allocationsAlive = 0;
long failsIn = never;
bool failsLater = false;
bool hasStruck = false;
constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();
std::size_t largestAllowed = unlimited;

} // namespace

void* operator new(std::size_t size) {
    if (failsIn == 0) {
        if (!failsLater) failsIn = never;
        hasStruck = true;
        throw std::bad_alloc();
    }
    if (failsIn > 0) --failsIn;
    if (size > largestAllowed) throw std::bad_alloc();
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    ++allocationsMade;
    ++allocationsAlive;
    return memory;
}

void* operator new[](std::size_t size) { return operator new(size); }

// As the standard's own do; those of a sanitizer would not come here.
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    try {
        return operator new(size);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, std::nothrow_t const& tag) noexcept { return operator new(size, tag); }

void operator delete(void* memory) noexcept {
    if (memory == nullptr) return;
    --allocationsAlive;
    std::free(memory);
}

void operator delete[](void* memory) noexcept { operator delete(memory); }
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }

AllocationCounter::AllocationCounter() : made_(allocationsMade), alive_(allocationsAlive) {}

long AllocationCounter::made() const { return allocationsMade - made_; }

long AllocationCounter::alive() const { return allocationsAlive - alive_; }

FailingAllocation::FailingAllocation(long nth, Later later) {
    failsIn = nth;
    failsLater = later == Later::Fails;
    hasStruck = false;
}

FailingAllocation::~FailingAllocation() { failsIn = never; }

bool FailingAllocation::struck() const { return hasStruck; }

AllocationLimit::AllocationLimit(std::size_t most) { largestAllowed = most; }

AllocationLimit::~AllocationLimit() { largestAllowed = unlimited; }

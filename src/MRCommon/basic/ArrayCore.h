// ArrayCore: the storage of strings and lists: one owned array, a size and a capacity.
//     Array<int> a;
//     a.push_back(7);           // size 1, capacity 4: an append grows by one eighth plus four
//     Array<int> b = a;         // size 1, capacity 1: a copy is sized exactly
// Every element up to the capacity is a constructed object. Precondition: nothing past the size is read.
#ifndef MRCOMMON_BASIC_ARRAYCORE_H
#define MRCOMMON_BASIC_ARRAYCORE_H

#include <MRCommon/Export.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace quarn {

struct MRCOMMON_API QN_NO {}; ///< policy tag: this feature is off
struct MRCOMMON_API _Wa {};   ///< policy tag: writable by anyone

/// `T` is the element type; `Stored` and `Pointer` say how it is stored (always `T` and `T*`); the rest are policy tags.
template <class T, class Stored, class Pointer, class LockPolicy, class SharePolicy, class W>
class MRCOMMON_API ArrayCore {
public:
    MRCOMMON_HIDDEN ArrayCore() noexcept = default; ///< no buffer, size 0, capacity 0
    ///@{
    /// Copies are sized exactly; a moved-from array has no buffer. If memory runs out while copying, an array of
    /// plain elements is unchanged. So is a list of strings if its buffer cannot be allocated; if a string in it
    /// cannot be copied, the list has the new size, the strings before that one are copied, and the others
    /// are empty, or the old ones if the capacity did not change.
    MRCOMMON_HIDDEN ArrayCore(ArrayCore const& other) : ArrayCore() { assign(other); }
    MRCOMMON_HIDDEN ArrayCore(ArrayCore&& other) noexcept { swap(other); }
    MRCOMMON_HIDDEN ArrayCore& operator=(ArrayCore const& other);
    MRCOMMON_HIDDEN ArrayCore& operator=(ArrayCore&& other) noexcept;
    ///@}
    MRCOMMON_HIDDEN ~ArrayCore() { delete[] data_; }

    /// Returns how many elements are in use.
    MRCOMMON_HIDDEN unsigned int size() const noexcept { return size_; }
    /// Returns how many elements are allocated, all of them constructed.
    MRCOMMON_HIDDEN unsigned int capacity() const noexcept { return capacity_; }
    [[nodiscard]] MRCOMMON_HIDDEN bool empty() const noexcept {
        return size_ == 0;
    } ///< whether the size is 0
    ///@{
    /// Returns the first element; null if the capacity is 0.
    MRCOMMON_HIDDEN Pointer data() noexcept { return data_; }
    MRCOMMON_HIDDEN T const* data() const noexcept { return data_; }
    ///@}
    ///@{
    /// Returns element `index`, which is not range-checked.
    MRCOMMON_HIDDEN T& operator[](unsigned int index) noexcept { return data_[index]; }
    MRCOMMON_HIDDEN T const& operator[](unsigned int index) const noexcept { return data_[index]; }
    ///@}
    ///@{
    /// Delimit the elements in use.
    MRCOMMON_HIDDEN Pointer begin() noexcept { return data_; }
    MRCOMMON_HIDDEN Pointer end() noexcept { return data_ + size_; }
    MRCOMMON_HIDDEN T const* begin() const noexcept { return data_; }
    MRCOMMON_HIDDEN T const* end() const noexcept { return data_ + size_; }
    ///@}

    /// Replaces the buffer by one of exactly `newCapacity` elements; every buffer is allocated here. If `keep`,
    /// the elements are moved into it. Does nothing if the capacity is `newCapacity` already. 0 frees the
    /// buffer. Throws std::bad_alloc, changing nothing, if memory runs out.
    /// Intentional: the size is clamped to the new capacity but not reset, even if no element was kept. Callers
    /// that do not keep them set the size. Tested by ArrayCore.ReserveFollowsItsRules.
    MRCOMMON_HIDDEN void reserve(unsigned int const& newCapacity, bool const& keep);

    /// Appends a copy; a full array grows to size + size / 8 + 4. `element` may be one of this array's own.
    MRCOMMON_HIDDEN void push_back(T const& element);

    /// Makes room for one more element as `push_back` does, and returns the slot after the last element with
    /// what it holds; `setSize(size() + 1)` makes it an element.
    MRCOMMON_HIDDEN T& slotForAppend();

    /// Sets the size, at most the capacity, and touches no element.
    MRCOMMON_HIDDEN void setSize(unsigned int newSize) noexcept { size_ = newSize; }

    /// Copies another array; the capacity becomes exactly its size, even if that is less.
    MRCOMMON_HIDDEN void assign(ArrayCore const& other);

private:
    MRCOMMON_HIDDEN void swap(ArrayCore& other) noexcept;

    Pointer data_ = nullptr;
    unsigned int size_ = 0;
    unsigned int capacity_ = 0;
};

namespace detail {

/// Returns `count` as the containers store it; throws as if memory ran out if 32 bits cannot hold it.
MRCOMMON_HIDDEN inline unsigned int containerSize(std::size_t count) {
    if (count > std::numeric_limits<unsigned int>::max()) throw std::bad_array_new_length();
    return static_cast<unsigned int>(count);
}

/// Returns whether `element` is one of the `count` elements from `begin` on. Pointers into different arrays can be ordered as
/// numbers, or by std::less, whose header takes callers half as long again to compile.
template <class T>
MRCOMMON_HIDDEN bool isAmong(T const* element, T const* begin, unsigned int count) noexcept {
    auto const address = [](T const* place) { return reinterpret_cast<std::uintptr_t>(place); };
    return address(element) >= address(begin) && address(element) < address(begin + count);
}

} // namespace detail

// ---------------------------------------------------------------------------

template <class T, class S, class P, class L, class H, class W>
ArrayCore<T, S, P, L, H, W>& ArrayCore<T, S, P, L, H, W>::operator=(ArrayCore const& other) {
    assign(other);
    return *this;
}

template <class T, class S, class P, class L, class H, class W>
ArrayCore<T, S, P, L, H, W>& ArrayCore<T, S, P, L, H, W>::operator=(ArrayCore&& other) noexcept {
    ArrayCore taken(std::move(other));
    swap(taken);
    return *this;
}

template <class T, class S, class P, class L, class H, class W>
void ArrayCore<T, S, P, L, H, W>::reserve(unsigned int const& newCapacity, bool const& keep) {
    unsigned int const wanted = newCapacity; // the argument may be a field of this very object
    if (wanted == capacity_) return;
    std::unique_ptr<S[]> replacement;
    unsigned int const kept = std::min(size_, wanted);
    if (wanted != 0) {
        replacement.reset(new S[wanted]);
        if (keep) std::move(data_, data_ + kept, replacement.get());
    }
    delete[] std::exchange(data_, replacement.release());
    size_ = kept;
    capacity_ = wanted;
}

template <class T, class S, class P, class L, class H, class W>
T& ArrayCore<T, S, P, L, H, W>::slotForAppend() {
    if (size_ == capacity_) {
        std::size_t const size = size_;
        reserve(detail::containerSize(size + (size >> 3) + 4), true);
    }
    return data_[size_];
}

template <class T, class S, class P, class L, class H, class W>
void ArrayCore<T, S, P, L, H, W>::push_back(T const& element) {
    // A reference into the old buffer would dangle once the array has grown; its index does not.
    bool const own = detail::isAmong(&element, data_, size_);
    std::ptrdiff_t const index = own ? &element - data_ : 0;
    T& slot = slotForAppend();
    slot = own ? data_[index] : element;
    ++size_;
}

template <class T, class S, class P, class L, class H, class W>
void ArrayCore<T, S, P, L, H, W>::assign(ArrayCore const& other) {
    if (this == &other) return;
    reserve(other.size(), false);
    size_ = other.size();
    std::copy(other.begin(), other.end(), data_);
}

template <class T, class S, class P, class L, class H, class W>
void ArrayCore<T, S, P, L, H, W>::swap(ArrayCore& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
}

} // namespace quarn

#endif

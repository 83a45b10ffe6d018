// ArrayCore: the storage behind strings and lists: one owned array, a size and a capacity.
//     Array<int> a;
//     a.push_back(7);           // size 1, capacity 4: an append grows by one eighth plus four
//     Array<int> b = a;         // size 1, capacity 1: a copy is sized exactly
// Every element up to the capacity is a constructed object. Reading past the size is a caller's error.
#ifndef MRCOMMON_BASIC_ARRAYCORE_H
#define MRCOMMON_BASIC_ARRAYCORE_H

#include <MRCommon/Export.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace quarn {

struct MRCOMMON_API QN_NO {}; ///< policy tag: the feature in this place is off
struct MRCOMMON_API _Wa {};   ///< policy tag: writable by anyone

/// `T` the element, `Stored` and `Pointer` how it is kept (always `T` and `T*`), the rest policy tags.
template <class T, class Stored, class Pointer, class LockPolicy, class SharePolicy, class W>
class MRCOMMON_API ArrayCore {
public:
    MRCOMMON_HIDDEN ArrayCore() noexcept = default; ///< no buffer, size 0, capacity 0
    ///@{
    /// A copy is sized exactly. What was moved from holds nothing. When memory runs out a target of plain
    /// elements is left as it was; one of strings may hold some of the new ones.
    MRCOMMON_HIDDEN ArrayCore(ArrayCore const& other) : ArrayCore() { assign(other); }
    MRCOMMON_HIDDEN ArrayCore(ArrayCore&& other) noexcept { swap(other); }
    MRCOMMON_HIDDEN ArrayCore& operator=(ArrayCore const& other);
    MRCOMMON_HIDDEN ArrayCore& operator=(ArrayCore&& other) noexcept;
    ///@}
    MRCOMMON_HIDDEN ~ArrayCore() { delete[] data_; }

    MRCOMMON_HIDDEN unsigned int size() const { return size_; } ///< elements in use
    MRCOMMON_HIDDEN unsigned int capacity() const {
        return capacity_;
    }                                                         ///< elements allocated, all of them constructed
    MRCOMMON_HIDDEN bool empty() const { return size_ == 0; } ///< whether the size is 0
    ///@{
    /// The first element; null when the capacity is 0.
    MRCOMMON_HIDDEN Pointer data() { return data_; }
    MRCOMMON_HIDDEN T const* data() const { return data_; }
    ///@}
    ///@{
    /// Element `index`, which is not tested.
    MRCOMMON_HIDDEN T& operator[](unsigned int index) { return data_[index]; }
    MRCOMMON_HIDDEN T const& operator[](unsigned int index) const { return data_[index]; }
    ///@}
    ///@{
    /// For loops over the elements in use.
    MRCOMMON_HIDDEN Pointer begin() { return data_; }
    MRCOMMON_HIDDEN Pointer end() { return data_ + size_; }
    MRCOMMON_HIDDEN T const* begin() const { return data_; }
    MRCOMMON_HIDDEN T const* end() const { return data_ + size_; }
    ///@}

    /// The one step through which every buffer is allocated: afterwards the capacity is exactly
    /// `newCapacity`. `keep` carries the elements over (moved, where they own something). The size is clamped
    /// to the new capacity even when nothing is carried: callers that do not keep set the size themselves.
    /// The same capacity as before: nothing happens. 0: the buffer is freed, size and capacity are 0.
    /// Memory exhaustion throws std::bad_alloc and leaves everything as it was.
    MRCOMMON_HIDDEN void reserve(unsigned int const& newCapacity, bool const& keep);

    /// Appends a copy; a full array grows to size + size / 8 + 4. `element` may be one of this array's own.
    MRCOMMON_HIDDEN void push_back(T const& element);

    /// Room for one more by the rule of `push_back`, and the slot behind the last element as it stands;
    /// `setSize(size() + 1)` takes it in.
    MRCOMMON_HIDDEN T& slotForAppend();

    /// Sets the size, at most the capacity, and touches no element.
    MRCOMMON_HIDDEN void setSize(unsigned int newSize) { size_ = newSize; }

    /// Copies another array of the same elements; the capacity becomes exactly its size, shrinking included.
    MRCOMMON_HIDDEN void assign(ArrayCore const& other);

private:
    MRCOMMON_HIDDEN void swap(ArrayCore& other) noexcept;
    MRCOMMON_HIDDEN bool owns(T const* element) const;

    Pointer data_ = nullptr;
    unsigned int size_ = 0;
    unsigned int capacity_ = 0;
};

namespace detail {

/// A count as the containers keep it; what 32 bits cannot hold is reported like exhausted memory.
MRCOMMON_HIDDEN inline unsigned int containerSize(std::size_t count) {
    if (count > std::numeric_limits<unsigned int>::max()) throw std::bad_array_new_length();
    return static_cast<unsigned int>(count);
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
    std::unique_ptr<S[]> fresh(wanted == 0 ? nullptr : new S[wanted]);
    unsigned int const kept = std::min(size_, wanted);
    if (keep) std::move(data_, data_ + kept, fresh.get());
    delete[] std::exchange(data_, fresh.release());
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
    bool const own = owns(&element);
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

template <class T, class S, class P, class L, class H, class W>
bool ArrayCore<T, S, P, L, H, W>::owns(T const* element) const {
    std::less<T const*> const before;
    return !before(element, data_) && before(element, data_ + size_);
}

} // namespace quarn

#endif

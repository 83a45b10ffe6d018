// Array: a list whose copies are sized exactly and which grows by an eighth when it is appended to.
//     Array<int> values{10, 20};        // size 2, capacity 2
//     values.push_back(30);             // size 3, capacity 2 + 0 + 4 = 6
// In a list of strings every slot past the size is a constructed string: an empty one, or, if the size was
// reduced, one that keeps its buffer for reuse.
#ifndef MRCOMMON_BASIC_ARRAY_H
#define MRCOMMON_BASIC_ARRAY_H

#include <MRCommon/basic/ArrayCore.h>
#include <MRCommon/Export.h>

#include <algorithm>
#include <initializer_list>

namespace quarn {

template <class T, class W = _Wa> class MRCOMMON_API Array : public ArrayCore<T, T, T*, QN_NO, QN_NO, W> {
public:
    MRCOMMON_HIDDEN Array() noexcept = default;
    MRCOMMON_HIDDEN Array(std::initializer_list<T> elements); ///< copies them, sized exactly
    MRCOMMON_HIDDEN_COPIES(Array)
};

// ---------------------------------------------------------------------------

template <class T, class W> Array<T, W>::Array(std::initializer_list<T> elements) {
    this->reserve(detail::containerSize(elements.size()), false);
    std::copy(elements.begin(), elements.end(), this->data());
    this->setSize(this->capacity());
}

static_assert(sizeof(Array<int>) == 16, "a buffer pointer and two 32-bit counts, nothing else");

} // namespace quarn

#endif

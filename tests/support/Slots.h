// Slots: where a virtual operation stands, and what really stands there.
//     EXPECT_EQ(slotOf(&Ppty::getType), 13u);            // by declaration
//     auto getType = entry<unsigned (*)(Ppty const*)>(property, 13);
//     EXPECT_EQ(getType(&property), 3u);                 // by the table in the library
// Itanium C++ ABI on x86-64: the first word of a pointer to a virtual member is the table offset plus one.
#ifndef MRCOMMON_TESTS_SUPPORT_SLOTS_H
#define MRCOMMON_TESTS_SUPPORT_SLOTS_H

#include <cstddef>
#include <cstring>

template <class MemberFunction> std::size_t slotOf(MemberFunction function) {
    static_assert(sizeof function == 2 * sizeof(std::size_t));
    std::size_t words[2];
    std::memcpy(words, &function, sizeof words);
    return words[0] % 2 == 1 ? (words[0] - 1) / sizeof(void*) : static_cast<std::size_t>(-1);
}

/// The function in slot `slot` of an object's table, to be called with the object as its first argument.
template <class Function, class Object> Function entry(Object const& object, std::size_t slot) {
    void** table = nullptr;
    std::memcpy(&table, static_cast<void const*>(&object), sizeof table);
    Function function = nullptr;
    std::memcpy(&function, &table[slot], sizeof function);
    return function;
}

#endif

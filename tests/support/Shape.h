// Shape: sizes and capacities of containers and of their strings.
//     EXPECT_EQ(shape(list), (Shape{3, 4}));
//     EXPECT_EQ(joined({"a", "bc"}), "a:2 bc:3 ");
#ifndef MRCOMMON_TESTS_SUPPORT_SHAPE_H
#define MRCOMMON_TESTS_SUPPORT_SHAPE_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/QN_String.h>

#include <ostream>
#include <string>

struct Shape {
    unsigned int size, capacity;
    friend bool operator==(Shape a, Shape b) { return a.size == b.size && a.capacity == b.capacity; }
    friend std::ostream& operator<<(std::ostream& out, Shape s) { return out << s.size << "/" << s.capacity; }
};

template <class Container> Shape shape(Container const& c) { return {c.size(), c.capacity()}; }

inline quarn::QN_String withCapacity(char const* text, unsigned int capacity) {
    quarn::QN_String s(text);
    s.reserve(capacity, true);
    return s;
}

/// Returns the strings of a list with their sizes.
inline std::string joined(quarn::Array<quarn::QN_String> const& list) {
    std::string text;
    for (auto const& s : list) text += std::string(s.view()) + ":" + std::to_string(s.size()) + " ";
    return text;
}

#endif

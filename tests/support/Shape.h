// Shape: size and capacity of a container in one comparison.
//     EXPECT_EQ(shape(list), (Shape{3, 4}));
#ifndef MRCOMMON_TESTS_SUPPORT_SHAPE_H
#define MRCOMMON_TESTS_SUPPORT_SHAPE_H

#include <ostream>

struct Shape {
    unsigned int size, capacity;
    friend bool operator==(Shape a, Shape b) { return a.size == b.size && a.capacity == b.capacity; }
    friend std::ostream& operator<<(std::ostream& out, Shape s) { return out << s.size << "/" << s.capacity; }
};

template <class Container> Shape shape(Container const& c) { return {c.size(), c.capacity()}; }

#endif

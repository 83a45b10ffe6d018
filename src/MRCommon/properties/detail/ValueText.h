// The strings that toStr() returns for plain values.
#ifndef MRCOMMON_PROPERTIES_DETAIL_VALUETEXT_H
#define MRCOMMON_PROPERTIES_DETAIL_VALUETEXT_H

#include <MRCommon/basic/Color4.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/properties/PptyText.h>

namespace quarn::detail {

inline QN_String textOf(int value) {
    QN_String text;
    return text.format(" %i ", value);
}

// Intentional: the low 32 bits, then the characters 64. Tested by BasicPpty.TextOfInt64KeepsItsLowBitsAnd64.
inline QN_String textOf(long long value) {
    QN_String text;
    return text.format(" %i64 ", static_cast<int>(value));
}

inline QN_String textOf(double value) {
    QN_String text;
    return text.format(" %f ", value);
}

inline QN_String textOf(float value) { return textOf(static_cast<double>(value)); }

inline QN_String textOf(bool value) {
    QN_String text;
    qn_basicppty::QN_set(text, value);
    return text;
}

inline QN_String textOf(QN_String const& value) { return value; }

template <class T> QN_String textOf(Vector3<T> const& v) {
    QN_String text;
    return text.format("x: %f \n, y: %f \n, z: %f \n", double(v.x), double(v.y), double(v.z));
}

template <class T> QN_String textOf(Color4<T> const& c) {
    QN_String text;
    return text.format("r: %f \n, g: %f \n, b: %f \n, a: %f \n", double(c.r), double(c.g), double(c.b),
                       double(c.a));
}

} // namespace quarn::detail

#endif

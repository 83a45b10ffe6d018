// SceneValue: values of all property kinds as people write and read them in scene files.
//     setFromText(property, "0.5  0 1", {0, 10});   // a ranged float: value, minimum, maximum
//     valueText(property)                           // "0.5 in 0 .. 1"
#ifndef FOUNTAIN_SCENEVALUE_H
#define FOUNTAIN_SCENEVALUE_H

#include <MRCommon/properties/Ppty.h>

#include <string>
#include <string_view>

/// What every number of a property must lie within, both ends included.
struct Bounds {
    double lowest, highest;
};

/// Sets value, bounds and table from text. Throws std::invalid_argument, which says what is wrong with the text.
void setFromText(quarn::Ppty& property, std::string_view text, Bounds const& bounds);

/// Throws std::invalid_argument unless every number of the property is finite and within the bounds.
void checkNumbers(quarn::Ppty const& property, Bounds const& bounds);

/// Returns the value with the fewest digits that identify it, and with its bounds for ranged kinds.
std::string valueText(quarn::Ppty const& property);

/// Returns the library's own text form, toStr(), on one line. It is empty for ranged kinds.
std::string libraryText(quarn::Ppty const& property);

#endif

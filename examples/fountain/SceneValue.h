// SceneValue: values of all property kinds as a person writes and reads them in scene files.
//     setFromText(property, "0.5  0 1");        // a ranged float: value, minimum, maximum
//     oneLine(property)                         // "0.5 in 0 .. 1"
#ifndef FOUNTAIN_SCENEVALUE_H
#define FOUNTAIN_SCENEVALUE_H

#include <MRCommon/properties/Ppty.h>

#include <string>
#include <string_view>

/// Sets value, bounds and table from text. std::invalid_argument tells what is wrong with it.
void setFromText(quarn::Ppty& property, std::string_view text);

/// The property's own text form on one line; value and bounds for ranged kinds, which have none.
std::string oneLine(quarn::Ppty const& property);

#endif

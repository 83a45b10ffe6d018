// The process's enumeration definitions by name.
#include <MRCommon/properties/QN_System_Enum.h>

#include "claim.h"

class Quality : public quarn::QN_Enum {};

int main() {
    auto& enums = quarn::QN_System_Enum::instance().enums;
    claim(enums.empty(), "it is empty at first");
    enums["quality"] = new Quality; // owned by the registry from now on
    claim(dynamic_cast<Quality*>(quarn::QN_System_Enum::instance().enums.at("quality")) != nullptr,
          "any part of the process finds it");
}

#include <MRCommon/properties/QN_System_Enum.h>

#include <utility>

namespace quarn {

QN_System_Enum& QN_System_Enum::instance() {
    static QN_System_Enum registry;
    return registry;
}

QN_System_Enum::~QN_System_Enum() {
    for (auto& entry : enums) delete std::exchange(entry.second, nullptr);
}

} // namespace quarn

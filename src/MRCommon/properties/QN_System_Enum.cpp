#include <MRCommon/properties/QN_System_Enum.h>

#include <utility>

namespace quarn {

namespace {

void deleteDefinitions(std::map<QN_String, QN_Enum*>& enums) {
    for (auto& entry : enums) delete std::exchange(entry.second, nullptr);
}

/// Keeps the registry usable for late callers: at exit only what it holds is destroyed.
struct Teardown {
    QN_System_Enum& registry = *new QN_System_Enum();

    Teardown() = default;
    Teardown(Teardown const&) = delete;
    Teardown& operator=(Teardown const&) = delete;
    ~Teardown() {
        deleteDefinitions(registry.enums);
        registry.enums.clear();
    }
};

} // namespace

QN_System_Enum& QN_System_Enum::instance() {
    static Teardown const teardown;
    return teardown.registry;
}

QN_System_Enum::~QN_System_Enum() { deleteDefinitions(enums); }

} // namespace quarn

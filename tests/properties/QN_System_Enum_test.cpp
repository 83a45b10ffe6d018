// The registry of enumeration definitions.
#include <MRCommon/properties/QN_System_Enum.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

using namespace quarn;

namespace {

/// Notes its name when it is deleted, after an exclamation mark if its entry in the registry is not null.
struct Definition : QN_Enum {
    Definition(QN_System_Enum& registry_, char const* name_) : registry(registry_), name(name_) {
        registry.enums[name] = this;
    }
    ~Definition() override {
        if (registry.enums[name] != nullptr) deleted += "!";
        deleted += name;
    }
    QN_System_Enum& registry;
    char const* name;
    static std::string deleted;
};

std::string Definition::deleted;

} // namespace

TEST(QN_System_Enum, DeletesItsDefinitionsInTheOrderOfTheirNames) {
    Definition::deleted.clear();
    {
        QN_System_Enum registry;
        new Definition(registry, "beta");
        new Definition(registry, "alpha");
        registry.enums["none"] = nullptr;
    }
    EXPECT_EQ(Definition::deleted, "alphabeta");
}

TEST(QN_System_Enum, HasOneInstanceThatStartsEmpty) {
    EXPECT_EQ(&QN_System_Enum::instance(), &QN_System_Enum::instance());
    EXPECT_TRUE(QN_System_Enum::instance().enums.empty());
    EXPECT_FALSE(std::is_copy_constructible_v<QN_System_Enum> || std::is_copy_assignable_v<QN_System_Enum>);
}

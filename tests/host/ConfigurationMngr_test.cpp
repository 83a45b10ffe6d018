// ConfigurationMngr: the one manager, and the host that it gives access to.
#include <MRCommon/host/ConfigurationMngr.h>

#include <gtest/gtest.h>

#include <type_traits>

using quarn::ConfigurationMngr;

TEST(ConfigurationMngr, IsOneAndCannotBeCopied) {
    static_assert(!std::is_copy_constructible_v<ConfigurationMngr> &&
                  !std::is_copy_assignable_v<ConfigurationMngr>);
    static_assert(!std::is_move_constructible_v<ConfigurationMngr> &&
                  !std::is_move_assignable_v<ConfigurationMngr>);
    ConfigurationMngr& manager = ConfigurationMngr::instance();
    EXPECT_EQ(manager.host, nullptr);
    EXPECT_EQ(manager.userData, nullptr);
    manager.userData = &manager;
    EXPECT_EQ(ConfigurationMngr::instance().userData, &manager);
    manager.userData = nullptr;
}

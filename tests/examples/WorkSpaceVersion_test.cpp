// The scoped host that the examples, the tools and the tests install.
#include "examples/WorkSpaceVersion.h"

#include <gtest/gtest.h>

using namespace quarn;

namespace {

unsigned int currentVersion() {
    return ConfigurationMngr::instance().host->getObject("WorkSpace")->getVersion();
}

} // namespace

TEST(WorkSpaceVersion, RestoresThePreviousHost) {
    {
        WorkSpaceVersion const outer(5088);
        {
            WorkSpaceVersion const inner(5087);
            EXPECT_EQ(currentVersion(), 5087u);
        }
        EXPECT_EQ(currentVersion(), 5088u);
        EXPECT_EQ(ConfigurationMngr::instance().host->getObject("Weather"), nullptr);
    }
    EXPECT_EQ(ConfigurationMngr::instance().host, nullptr);
}

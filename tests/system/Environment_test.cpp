// Environment: variables with and without a value.
#include <MRCommon/system/Environment.h>

#include <gtest/gtest.h>

#include <cstdlib>

TEST(IsEnvironmentVariableDefined, AcceptsAnEmptyValue) {
    setenv("MRCOMMON_TEST_EMPTY", "", 1);
    EXPECT_TRUE(isEnvironmentVariableDefined("MRCOMMON_TEST_EMPTY"));
    unsetenv("MRCOMMON_TEST_EMPTY");
    EXPECT_FALSE(isEnvironmentVariableDefined("MRCOMMON_TEST_EMPTY"));
}

// MessageNames: stored data contains these names.
#include <MRCommon/host/MessageNames.h>

#include <gtest/gtest.h>

using namespace quarn::mr_mesgs;

TEST(MessageNames, AreAsStored) {
    EXPECT_STREQ(DAEMON_TYPE_CAP_NAME, "Daemon");
    EXPECT_STREQ(DAEMON_TYPE_LRW_NAME, "daemon");
    EXPECT_STREQ(WAVE_TYPE_CAP_NAME, "Wave");
    EXPECT_STREQ(WAVE_TYPE_LRW_NAME, "wave");
    EXPECT_STREQ(PARTICLES_TYPE_CAP_NAME, "Particles");
    EXPECT_STREQ(PARTICLES_TYPE_LWR_NAME, "particles");
    EXPECT_STREQ(OBJECT_TYPE_CAP_NAME, "Object");
    EXPECT_STREQ(OBJECT_TYPE_LRW_NAME, "object");
    EXPECT_STREQ(CMD_TYPE_CAP_NAME, "Command");
    EXPECT_STREQ(CMD_TYPE_LRW_NAME, "Command") << "intentional: capitalised";
}

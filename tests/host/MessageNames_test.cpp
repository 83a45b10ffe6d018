// MessageNames and WorkSpace: fixed names and numbers, as other modules know them.
#include <MRCommon/host/MessageNames.h>
#include <MRCommon/host/WorkSpace.h>

#include <gtest/gtest.h>

TEST(MessageNames, KeepTheirTexts) {
    using namespace quarn::mr_mesgs;
    EXPECT_STREQ(DAEMON_TYPE_CAP_NAME, "Daemon");
    EXPECT_STREQ(DAEMON_TYPE_LRW_NAME, "daemon");
    EXPECT_STREQ(WAVE_TYPE_CAP_NAME, "Wave");
    EXPECT_STREQ(WAVE_TYPE_LRW_NAME, "wave");
    EXPECT_STREQ(PARTICLES_TYPE_CAP_NAME, "Particles");
    EXPECT_STREQ(PARTICLES_TYPE_LWR_NAME, "particles");
    EXPECT_STREQ(OBJECT_TYPE_CAP_NAME, "Object");
    EXPECT_STREQ(OBJECT_TYPE_LRW_NAME, "object");
    EXPECT_STREQ(CMD_TYPE_CAP_NAME, "Command");
    EXPECT_EQ(CMD_TYPE_LRW_NAME, CMD_TYPE_CAP_NAME);
}

TEST(WorkSpace, HasNoToolBarsOfTheUser) { static_assert(quarn::marelle::WorkSpace::NUM_USR_TOOLBARS == 0); }

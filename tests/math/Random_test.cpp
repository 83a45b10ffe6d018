// The random sequence, with a std::rand of this program's own that returns what a test asks for.
#include <MRCommon/math/Random.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

namespace {

unsigned int lastSeed = 0;
int nextNumber = 0;

} // namespace

// The program's definitions come before those of the C library, for libMRCommon too.
extern "C" int rand() noexcept { return nextNumber; }
extern "C" void srand(unsigned int seed) noexcept { lastSeed = seed; }

TEST(ResetRandomSequence, AlwaysSeedsAlike) {
    resetRandomSequence();
    EXPECT_EQ(lastSeed, 1970u);
}

TEST(DameRandom, MapsTheRangeOfRandToZeroToOne) {
    struct {
        int drawn;
        float from0, from11;
    } const cases[] = {
        {0, 0, -1},
        {1610612736, 0.75f, 0.5f},
        {2147483583, 0x1.fffffep-1f, 0x1.fffffcp-1f}, // the largest that rounds down as a float
        {2147483584, 1, 1},
        {2147483647, 1, 1},
        {1073741825, 0.5f, 0}, // narrowed to a float before a half is subtracted
    };
    for (auto const& c : cases) {
        nextNumber = c.drawn;
        EXPECT_EQ(DameRandom(), c.from0) << c.drawn;
        EXPECT_EQ(DameRandom11(), c.from11) << c.drawn;
    }
}

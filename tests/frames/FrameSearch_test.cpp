// FrameSearch: the questions that are asked and the frames that are found, without a disk.
#include <MRCommon/frames/detail/FrameSearch.h>

#include "support/Cases.h"

#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <string>
#include <vector>

using quarn::detail::firstFrame;
using quarn::detail::lastFrame;

TEST(FirstFrame, IsFoundByBisection) {
    for (Case const& c : casesOf("FirstFrame")) {
        std::vector<std::string> asked;
        EXPECT_EQ(firstFrame(c.count(1),
                             [&](unsigned int frame) {
                                 asked.push_back(std::to_string(frame));
                                 return frame >= c.count(0);
                             }),
                  c.count(2))
            << c.place;
        EXPECT_EQ(asked, c.from(3)) << c.place;
    }
    for (unsigned int known = 0; known < 70; ++known)
        for (unsigned int first = 0; first <= known; ++first)
            EXPECT_EQ(firstFrame(known, [&](unsigned int frame) { return frame >= first; }), first);
    int questions = 0;
    EXPECT_EQ(firstFrame(UINT_MAX, [&](unsigned int f) { return ++questions, f >= 4000000000u; }),
              4000000000u);
    EXPECT_LE(questions, 33);
}

TEST(LastFrame, IsTheOneBeforeTheFirstGap) {
    std::set<unsigned int> const frames{7, 8, 10, 95, 96, 97, 98, 99, UINT_MAX - 1, UINT_MAX};
    for (Case const& c : casesOf("LastFrame"))
        EXPECT_EQ(lastFrame(c.count(0), c.count(1), [&](unsigned int f) { return frames.count(f) != 0; }),
                  c.count(2))
            << c.place;
}

// FrameSearch: the questions that are asked and the frames that are found, without a disk.
#include <MRCommon/frames/detail/FrameSearch.h>

#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <tuple>
#include <vector>

using quarn::detail::firstFrame;
using quarn::detail::lastFrame;

TEST(FirstFrame, IsFoundByBisection) {
    struct Case {
        unsigned int first, known, result;
        std::vector<unsigned int> asked;
    };
    // clang-format off
    Case const cases[] = {
        {0, 0, 0, {}}, {1, 1, 1, {0}}, {0, 1, 0, {0}}, {10, 12, 10, {6, 9, 10}}, {9, 12, 9, {6, 9, 7, 8}},
        {0, 4, 0, {2, 1, 0}}, {1, 4, 1, {2, 1, 0}}, {2, 2, 2, {1}}, {99, 2, 2, {1}}};
    // clang-format on
    for (Case const& c : cases) {
        std::vector<unsigned int> asked;
        unsigned int const result = firstFrame(c.known, [&](unsigned int frame) {
            asked.push_back(frame);
            return frame >= c.first;
        });
        EXPECT_EQ(result, c.result) << c.known;
        EXPECT_EQ(asked, c.asked) << c.known;
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
    // clang-format off
    std::tuple<unsigned int, unsigned int, unsigned int> const cases[] = {
        {7, 5, 8}, {8, 2, 8}, {10, 5, 10}, {9, 5, 8}, {0, 5, UINT_MAX}, {95, 3, 99}, {95, 2, 95},
        {99, 2, 99}, {100, 2, 100}, {7, 0, 7}, {0, 0, UINT_MAX}, {1410065408, 10, 1410065408}, {7, 32, 7},
        {7, UINT_MAX, 7}, {UINT_MAX - 1, 40, UINT_MAX - 1}, {UINT_MAX, 3, UINT_MAX},
        {7, 11, 8}, {11, 11, 10}, {100, 1, 100}, {11, 1, 11}};
    // clang-format on
    for (auto const& [known, padding, result] : cases)
        EXPECT_EQ(lastFrame(known, padding, [&](unsigned int f) { return frames.count(f) != 0; }), result)
            << known << " " << padding;
}

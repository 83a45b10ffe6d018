// FrameSearch: finds the first and the last frame of a sequence by asking whether single frames exist.
//     lastFrame(7, 5, [](unsigned int frame) { return frame < 10; })      // 9
// The question is an argument. For files it is an access to the disk, so it is asked as rarely as possible.
#ifndef MRCOMMON_FRAMES_DETAIL_FRAMESEARCH_H
#define MRCOMMON_FRAMES_DETAIL_FRAMESEARCH_H

namespace quarn::detail {

/// Returns the first frame, by bisection below `known`: about log2(known) questions, never one about `known`
/// itself. Assumes that every frame between the first and `known` exists; a gap may be taken for the
/// beginning.
template <class Exists> unsigned int firstFrame(unsigned int known, Exists const& exists) {
    if (known == 0) return 0;
    unsigned int low = 0;      // the highest frame found missing; 0 until there is one
    unsigned int high = known; // the lowest one found
    for (unsigned int middle = known / 2; middle != 0; middle = low + (high - low) / 2) {
        if (exists(middle))
            high = middle;
        else
            low = middle;
        if (high - low == 1 && high != 1) return high;
    }
    return exists(0u) ? 0 : high;
}

/// Returns 10 to the power `padding` in 32-bit arithmetic: the first frame that does not fit, for a padding
/// up to 9. Beyond 9 the limit has no meaning, but callers rely on where it falls.
inline unsigned int frameLimit(unsigned int padding) noexcept {
    if (padding >= 32) return 0; // a multiple of 2 to the power 32
    unsigned int limit = 1;
    for (unsigned int digit = 0; digit < padding; ++digit) limit *= 10;
    return limit;
}

/// Returns the last frame, by walking up from `known` to the first gap: one question for each frame on the
/// way. If `known` is missing, that is known - 1 (for 0, 4294967295). Intentional: returns `known` if all
/// frames up to the largest that fits the padding exist, and, without a question, if `known` does not fit the
/// padding itself. Tested by LastFrame.IsTheOneBeforeTheFirstGap.
template <class Exists>
unsigned int lastFrame(unsigned int known, unsigned int padding, Exists const& exists) {
    unsigned int const limit = frameLimit(padding);
    if (static_cast<int>(known) >= static_cast<int>(limit)) return known;
    for (unsigned int frame = known;; ++frame) {
        if (!exists(frame)) return frame - 1;
        if (frame + 1 == limit) return known;
    }
}

} // namespace quarn::detail

#endif

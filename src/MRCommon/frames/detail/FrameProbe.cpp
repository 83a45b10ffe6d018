#include <MRCommon/frames/detail/FrameProbe.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace quarn::detail {

namespace {

constexpr unsigned int framesBeforeOpening = 64;
constexpr unsigned int entriesPerQuestion = 3; // reading so many costs no more than asking for one file
constexpr unsigned int entriesReadAtOnce = 64;
constexpr unsigned int framesWorthReading = 256; // the system itself reads about a thousand entries at once

/// Returns the non-negative frame that is printed with `padding` as `digits`, or nothing.
std::optional<unsigned int> frameOf(std::string_view digits, unsigned int padding) noexcept {
    std::size_t const width = std::max(padding, 1u);
    bool const isPadded = digits.size() == width;
    bool const isWider = digits.size() > width && digits.front() != '0';
    if (!isPadded && !isWider) return {};
    unsigned long long number = 0;
    for (char const c : digits) {
        if (c < '0' || c > '9') return {};
        number = number * 10 + static_cast<unsigned int>(c - '0');
        if (number > std::numeric_limits<int>::max()) return {}; // printed with a minus
    }
    return static_cast<unsigned int>(number);
}

} // namespace

FrameFolder::FrameFolder(DIR* stream, std::string_view head, std::string_view tail, unsigned int padding,
                         unsigned int first) noexcept
    : stream_(stream), head_(text_.data(), head.size()), tail_(text_.data() + head.size(), tail.size()),
      padding_(padding), first_(first) {
    char* const end = std::copy(head.begin(), head.end(), text_.data());
    std::copy(tail.begin(), tail.end(), end);
}

bool FrameFolder::read(unsigned int count) noexcept {
    for (; count != 0; --count) {
        dirent const* const entry = readdir(stream_.get());
        if (entry == nullptr) return false;
        if (entry->d_type == DT_REG) note(entry->d_name); // a link may be dangling
    }
    return true;
}

void FrameFolder::note(std::string_view name) noexcept {
    if (name.size() <= head_.size() + tail_.size() || name.substr(0, head_.size()) != head_) return;
    name.remove_prefix(head_.size());
    std::string_view const digits = name.substr(0, name.size() - tail_.size());
    if (name.substr(digits.size()) != tail_) return;
    std::optional<unsigned int> const frame = frameOf(digits, padding_);
    if (frame && *frame - first_ < mostFrames) frames_.set(*frame - first_);
}

bool FrameProbe::exists(unsigned int frame) noexcept {
    if (folder_ && folder_->contains(frame)) return true;
    bool const found = ask(frame);
    if (found && ++found_ == framesBeforeOpening) openFolder(frame);
    // Read between the questions, so that a gap ends the reading too.
    unsigned int const count = std::min(worthReading_, entriesReadAtOnce);
    if (count != 0) worthReading_ = folder_->read(count) ? worthReading_ - count : 0;
    return found;
}

bool FrameProbe::ask(unsigned int frame) noexcept {
    if (layout_ == nullptr) return false;
    PrintedFrame const printed(static_cast<int>(frame), padding_);
    FrameNameParts const parts{"", name_, printed.field(), ext_};
    std::size_t const size = parts.sizeIn(*layout_);
    if (size >= path_.size()) return false;
    parts.writeTo(path_.data(), *layout_);
    path_[size] = '\0';
    return folder_ ? faccessat(folder_->descriptor(), path_.data() + folderSize_, F_OK, 0) == 0
                   : access(path_.data(), F_OK) == 0;
}

/// Opens the folder of the frame that was asked for last. If it cannot be opened, whole paths remain in use.
void FrameProbe::openFolder(unsigned int frame) noexcept {
    std::string_view const path = path_.data();
    std::size_t const tailSize = layout_->frameLast ? 0 : 1 + ext_.size();
    std::size_t const headSize = FrameNameParts{"", name_, {}, ext_}.sizeIn(*layout_) - tailSize;
    std::size_t const folderSize = path.substr(0, headSize).rfind('/') + 1; // 0 without a folder

    char const next = std::exchange(path_[folderSize], '\0');
    DIR* const stream = opendir(folderSize == 0 ? "." : path_.data());
    path_[folderSize] = next;
    if (stream == nullptr) return;
    folder_.emplace(stream, path.substr(folderSize, headSize - folderSize),
                    path.substr(path.size() - tailSize), padding_, frame);
    folderSize_ = folderSize;
    unsigned int const ahead = framesAhead(frame);
    if (ahead >= framesWorthReading) worthReading_ = entriesPerQuestion * ahead;
}

/// Guesses how many frames follow: the distance doubles up to the first frame that is missing.
unsigned int FrameProbe::framesAhead(unsigned int frame) noexcept {
    unsigned int distance = framesBeforeOpening;
    while (distance < FrameFolder::mostFrames && ask(frame + distance)) distance *= 2;
    return distance / 2;
}

} // namespace quarn::detail

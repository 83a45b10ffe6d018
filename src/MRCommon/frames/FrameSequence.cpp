#include <MRCommon/frames/FrameSequence.h>

#include <dirent.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace quarn {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

std::size_t countOfLastDigits(std::string_view text) {
    std::size_t count = 0;
    while (count < text.size() && isDigit(text[text.size() - 1 - count])) ++count;
    return count;
}

/// A name taken apart. Without a frame, `frame` is empty.
struct NameParts {
    std::string_view head, frame, tail;

    bool hasFrame() const { return !frame.empty(); }
    bool isNegative() const { return frame.front() == '-'; }
    std::string_view digits() const { return frame.substr(isNegative() ? 1 : 0); }
    bool hasLeadingZero() const {
        return digits().front() == '0';
    } // 0 by itself fixes no more than the least
    long long number() const {
        long long number = 0;
        for (char const digit : digits()) number = 10 * number + (digit - '0');
        return isNegative() ? -number : number;
    }
};

/// Returns the number of characters of the extension, its dot included, in a name that is not hidden.
std::size_t sizeOfExtension(std::string_view name, std::vector<std::string> const& compoundExtensions) {
    std::size_t size = 0;
    for (std::string const& extension : compoundExtensions) {
        bool const fits = !extension.empty() && name.size() > extension.size() && endsWith(name, extension) &&
                          name[name.size() - extension.size() - 1] == '.';
        if (fits) size = std::max(size, extension.size() + 1);
    }
    if (size != 0) return size;
    std::size_t const dot = name.rfind('.');
    return dot == std::string_view::npos ? 0 : name.size() - dot;
}

/// Whether the text ends with the mark of a version, a "v" of its own.
bool endsWithVersionMark(std::string_view text) {
    if (text.empty() || (text.back() != 'v' && text.back() != 'V')) return false;
    return text.size() == 1 || !isLetter(text[text.size() - 2]);
}

/// Whether the text ends with a minus that is a sign rather than a hyphen.
bool endsWithSign(std::string_view text) {
    if (text.empty() || text.back() != '-') return false;
    char const before = text.size() == 1 ? '.' : text[text.size() - 2];
    return before == '.' || before == '_';
}

NameParts partsOf(std::string_view path, FrameScanOptions const& options) {
    constexpr std::size_t mostDigits = 18; // such numbers fit a long long

    std::size_t const folder = path.rfind('/') + 1; // 0 without one
    std::string_view const name = path.substr(folder);
    if (name.empty() || name.front() == '.') return {};

    std::size_t const lastDigits = countOfLastDigits(name);
    bool const isLastPiece = lastDigits != 0 && endsWith(name.substr(0, name.size() - lastDigits), ".");
    std::size_t const tail = isLastPiece ? 0 : sizeOfExtension(name, options.compoundExtensions);
    std::string_view stem = name.substr(0, name.size() - tail);
    std::size_t width = countOfLastDigits(stem);
    if (width == 0 || width > mostDigits) return {};

    std::string_view const digits = stem.substr(stem.size() - width);
    stem.remove_suffix(width);
    if (options.versionsAreNames && endsWithVersionMark(stem)) return {};
    bool const isZero = digits.find_first_not_of('0') == std::string_view::npos;
    if (options.negativeFrames && !isZero && endsWithSign(stem)) {
        stem.remove_suffix(1);
        ++width;
    }
    std::size_t const head = folder + stem.size();
    return {path.substr(0, head), path.substr(head, width), path.substr(head + width)};
}

/// What a list of frames is found by; the views look into a name or into the list.
struct ListKey {
    std::string_view head, tail;
    std::size_t width;

    bool operator==(ListKey const& other) const {
        return width == other.width && head == other.head && tail == other.tail;
    }
    bool operator<(ListKey const& other) const {
        if (int const order = head.compare(other.head); order != 0) return order < 0;
        if (int const order = tail.compare(other.tail); order != 0) return order < 0;
        return width < other.width;
    }
};

/// The frames of one head, tail and width, in the order in which they were found.
struct FrameList {
    explicit FrameList(NameParts const& parts)
        : head(parts.head), tail(parts.tail), width(parts.frame.size()) {}

    ListKey key() const { return {head, tail, width}; }

    std::string head, tail;
    std::size_t width;
    bool fixesPadding = false; ///< some frame has a leading zero
    std::vector<long long> frames;
};

struct ListHash {
    std::size_t operator()(ListKey const& key) const {
        std::hash<std::string_view> const hash;
        return (hash(key.head) * 31 + hash(key.tail)) * 31 + key.width;
    }
};

std::vector<FrameRange> rangesOf(std::vector<long long> const& ascending) {
    std::size_t count = 1;
    for (std::size_t i = 1; i < ascending.size(); ++i)
        if (ascending[i] > ascending[i - 1] + 1) ++count;
    std::vector<FrameRange> ranges;
    ranges.reserve(count); // growing would take three times the room
    for (long long const frame : ascending)
        if (ranges.empty() || frame > ranges.back().last + 1)
            ranges.push_back({frame, frame});
        else
            ranges.back().last = frame;
    return ranges;
}

/// Gathers names and sorts them into sequences. A frame costs the 8 bytes of its number until then, 24 while
/// its list grows.
class FrameGrouping {
public:
    explicit FrameGrouping(FrameScanOptions const& options) : options_(options) {}

    /// Returns false if the caller's progress function cancels.
    bool add(std::string_view name) {
        NameParts const parts = partsOf(name, options_);
        if (!parts.hasFrame())
            scan_.others.emplace_back(name);
        else
            addFrame(parts);
        ++count_;
        scan_.complete = count_ % 1000 != 0 || !options_.progress || options_.progress(count_);
        return scan_.complete;
    }

    FrameScan takeScan() {
        std::sort(scan_.others.begin(), scan_.others.end());
        std::vector<ListEntry> sorted;
        sorted.reserve(lists_.size());
        for (FrameList& list : lists_) sorted.emplace_back(list.key(), &list);
        std::sort(sorted.begin(), sorted.end(),
                  [](ListEntry const& a, ListEntry const& b) { return a.first < b.first; });
        scan_.sequences.reserve(sorted.size());
        for (auto begin = sorted.begin(); begin != sorted.end();) {
            auto const end = std::find_if(begin + 1, sorted.end(), [&](ListEntry const& entry) {
                return entry.second->fixesPadding || entry.first.head != begin->first.head ||
                       entry.first.tail != begin->first.tail;
            });
            scan_.sequences.push_back(sequenceOf(begin, end));
            begin = end;
        }
        return std::move(scan_);
    }

private:
    using ListEntry = std::pair<ListKey, FrameList*>;
    using ListIterator = std::vector<ListEntry>::const_iterator;

    void addFrame(NameParts const& parts) {
        FrameList& list = listOf(parts);
        list.fixesPadding = list.fixesPadding || parts.hasLeadingZero();
        list.frames.push_back(parts.number());
    }

    FrameList& listOf(NameParts const& parts) {
        auto const known = index_.find({parts.head, parts.tail, parts.frame.size()});
        if (known != index_.end()) return *known->second;
        FrameList& list = lists_.emplace_back(parts);
        index_.emplace(list.key(), &list);
        return list;
    }

    /// Joins lists of ascending width, of which the first gives the padding.
    static FrameSequence sequenceOf(ListIterator begin, ListIterator end) {
        FrameList& first = *begin->second;
        std::vector<long long> frames = std::move(first.frames);
        std::size_t count = frames.size();
        for (auto entry = begin + 1; entry != end; ++entry) count += entry->second->frames.size();
        frames.reserve(count);
        for (auto entry = begin + 1; entry != end; ++entry) {
            std::vector<long long> const more = std::move(entry->second->frames);
            frames.insert(frames.end(), more.begin(), more.end());
        }
        std::sort(frames.begin(), frames.end());
        return {std::move(first.head), std::move(first.tail), static_cast<unsigned int>(first.width),
                rangesOf(frames)};
    }

    FrameScanOptions const& options_;
    FrameScan scan_;
    std::size_t count_ = 0;
    std::deque<FrameList> lists_; // whose elements keep their addresses
    std::unordered_map<ListKey, FrameList*, ListHash> index_;
};

/// The names in a folder, in its own order.
class FolderReader {
public:
    explicit FolderReader(std::string const& folder) : folder_(folder), stream_(opendir(folder.c_str())) {
        if (stream_ == nullptr) fail();
    }

    /// Returns null at the end.
    dirent const* next() {
        errno = 0; // since null may also mean that reading failed
        dirent const* const entry = readdir(stream_.get());
        if (entry == nullptr && errno != 0) fail();
        return entry;
    }

private:
    struct Close {
        void operator()(DIR* stream) const { closedir(stream); }
    };

    [[noreturn]] void fail() const {
        std::error_code const reason(errno, std::generic_category());
        throw std::filesystem::filesystem_error("cannot read the folder", folder_, reason);
    }

    std::string const& folder_;
    std::unique_ptr<DIR, Close> stream_;
};

bool isDirectory(dirent const& entry) {
    std::string_view const name = entry.d_name;
    return entry.d_type == DT_DIR || name == "." || name == ".."; // these two also without a type
}

} // namespace

long long FrameSequence::first() const { return ranges.empty() ? 0 : ranges.front().first; }

long long FrameSequence::last() const { return ranges.empty() ? 0 : ranges.back().last; }

unsigned long long FrameSequence::count() const {
    unsigned long long count = 0;
    for (FrameRange const& range : ranges)
        count += static_cast<unsigned long long>(range.last - range.first) + 1;
    return count;
}

bool FrameSequence::contains(long long frame) const {
    auto const range =
        std::lower_bound(ranges.begin(), ranges.end(), frame,
                         [](FrameRange const& before, long long value) { return before.last < value; });
    return range != ranges.end() && range->first <= frame;
}

std::vector<FrameRange> FrameSequence::missing() const {
    std::vector<FrameRange> gaps;
    for (std::size_t i = 1; i < ranges.size(); ++i)
        gaps.push_back({ranges[i - 1].last + 1, ranges[i].first - 1});
    return gaps;
}

std::string FrameSequence::fileName(long long frame) const {
    std::array<char, 21> buffer; // "-9223372036854775808"
    int const size = std::snprintf(buffer.data(), buffer.size(), "%lld", frame);
    std::string_view const number(buffer.data(), static_cast<std::size_t>(size));
    std::size_t const sign = frame < 0 ? 1 : 0;
    std::string name = head;
    name += number.substr(0, sign);
    if (padding > number.size()) name.append(padding - number.size(), '0');
    name += number.substr(sign);
    name += tail;
    return name;
}

FrameScan groupFrames(std::vector<std::string> const& names, FrameScanOptions const& options) {
    FrameGrouping grouping(options);
    for (std::string const& name : names)
        if (!grouping.add(name)) break;
    return grouping.takeScan();
}

FrameScan scanFrames(std::string const& folder, FrameScanOptions const& options) {
    FrameGrouping grouping(options);
    FolderReader reader(folder);
    while (dirent const* const entry = reader.next())
        if (!isDirectory(*entry) && !grouping.add(entry->d_name)) break;
    return grouping.takeScan();
}

} // namespace quarn

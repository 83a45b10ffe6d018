// Sequences: grouping agrees with a version that follows the rules one name at a time, and loses no name.
//     byte 0      bit 0: negative frames; bit 1: versions are names
//     a piece     compound extensions, separated by '|'
//     the rest    names, one a line
#include "Input.h"

#include <MRCommon/frames/FrameSequence.h>

#include <cctype>
#include <map>
#include <set>
#include <tuple>
#include <vector>

using namespace quarn;

namespace {

std::vector<std::string> pieces(std::string const& text, char mark) {
    std::vector<std::string> all(1);
    for (char const c : text)
        if (c == mark)
            all.emplace_back();
        else
            all.back() += c;
    return all;
}

/// What precedes the frame, its characters, and what follows. Without a frame, the characters are empty.
struct Split {
    std::string head, frame, tail;
};

bool isDot(char c) { return c == '.'; }

/// Removes the digits at the end of `text` and returns them.
std::string takeDigits(std::string& text) {
    std::string digits;
    for (; !text.empty() && isDigit(text.back()); text.pop_back()) digits.insert(digits.begin(), text.back());
    return digits;
}

std::string extensionOf(std::string const& name, std::vector<std::string> const& compound) {
    std::string longest;
    for (std::string const& extension : compound) {
        std::string const end = "." + extension;
        bool const fits = !extension.empty() && name.size() >= end.size() &&
                          name.compare(name.size() - end.size(), end.size(), end) == 0;
        if (fits && end.size() > longest.size()) longest = end;
    }
    if (!longest.empty()) return longest;
    std::string const last = pieces(name, '.').back();
    return last.size() == name.size() ? "" : "." + last;
}

Split split(std::string const& path, FrameScanOptions const& options) {
    std::string const name = pieces(path, '/').back();
    if (name.empty() || isDot(name[0])) return {};
    Split parts;
    std::string stem = name;
    std::string digits = takeDigits(stem);
    if (digits.empty() || stem.empty() || !isDot(stem.back())) {
        parts.tail = extensionOf(name, options.compoundExtensions);
        stem = name.substr(0, name.size() - parts.tail.size());
        digits = takeDigits(stem);
    }
    if (digits.empty() || digits.size() > 18) return {};
    auto const before = [&](std::size_t places) {
        return places < stem.size() ? stem[stem.size() - 1 - places] : '\0';
    };
    bool const isVersion = std::toupper(static_cast<unsigned char>(before(0))) == 'V' &&
                           (!isAlphanumeric(before(1)) || isDigit(before(1)));
    if (options.versionsAreNames && isVersion) return {};
    bool const isSign = before(0) == '-' && (stem.size() == 1 || before(1) == '.' || before(1) == '_');
    if (options.negativeFrames && isSign && std::stoll(digits) != 0) {
        stem.pop_back();
        digits.insert(0, 1, '-');
    }
    return {path.substr(0, path.size() - name.size()) + stem, digits, parts.tail};
}

using Key = std::tuple<std::string, std::string, std::size_t>; // head, tail, padding
using Groups = std::map<Key, std::set<long long>>;

Groups naiveGroups(std::vector<std::string> const& names, FrameScanOptions const& options,
                   std::multiset<std::string>& others) {
    std::map<std::pair<std::string, std::string>, std::set<std::string>> frames;
    for (std::string const& name : names) {
        Split const parts = split(name, options);
        if (parts.frame.empty())
            others.insert(name);
        else
            frames[{parts.head, parts.tail}].insert(parts.frame);
    }
    Groups groups;
    for (auto const& [ends, texts] : frames) {
        std::set<std::size_t> fixed;
        std::size_t least = 20;
        for (std::string const& text : texts)
            if (text[text[0] == '-' ? 1 : 0] == '0') fixed.insert(text.size());
        for (std::string const& text : texts)
            if (fixed.empty() || text.size() < *fixed.begin()) least = std::min(least, text.size());
        for (std::string const& text : texts) {
            auto const above = fixed.upper_bound(text.size());
            std::size_t const padding = above == fixed.begin() ? least : *std::prev(above);
            groups[{ends.first, ends.second, padding}].insert(std::stoll(text));
        }
    }
    return groups;
}

void requireRanges(FrameSequence const& sequence) {
    FrameRange const* before = nullptr;
    for (FrameRange const& range : sequence.ranges) {
        require(range.first <= range.last, "a range has a frame");
        require(before == nullptr || before->last + 1 < range.first, "ranges ascend and do not touch");
        before = &range;
    }
    unsigned long long missing = 0;
    for (FrameRange const& gap : sequence.missing()) {
        missing += static_cast<unsigned long long>(gap.last - gap.first) + 1;
        require(!sequence.contains(gap.first) && !sequence.contains(gap.last), "a gap has no frame");
    }
    require(missing + sequence.count() ==
                static_cast<unsigned long long>(sequence.last() - sequence.first()) + 1,
            "frames and gaps fill the sequence");
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    FrameScanOptions options;
    unsigned int const flags = input.number<unsigned char>();
    options.negativeFrames = flags % 2 != 0;
    options.versionsAreNames = flags / 2 % 2 != 0;
    options.compoundExtensions = pieces(input.piece(), '|');
    std::vector<std::string> const names = pieces(std::string(input.rest()), '\n');

    FrameScan const scan = groupFrames(names, options);
    std::multiset<std::string> others;
    Groups const expected = naiveGroups(names, options, others);
    require(scan.complete && scan.others == std::vector<std::string>(others.begin(), others.end()),
            "the names without a frame, sorted");
    require(scan.sequences.size() == expected.size(), "as many sequences");
    std::set<std::string> const given(names.begin(), names.end());
    auto group = expected.begin(); // a map is in the order that the sequences must have
    for (FrameSequence const& sequence : scan.sequences) {
        auto const& [key, frames] = *group++;
        require(key == Key(sequence.head, sequence.tail, sequence.padding),
                "head, tail and padding, in order");
        requireRanges(sequence);
        require(sequence.count() == frames.size(), "as many frames");
        for (long long const frame : frames) {
            require(sequence.contains(frame), "every frame");
            require(given.count(sequence.fileName(frame)) == 1, "exactly the name that was found");
        }
    }
    return 0;
}

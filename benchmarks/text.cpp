// Text tools and frame names, compared with the peers that are installed.
#include "Comparison.h"

#include <MRCommon/frames/detail/FrameSearch.h>
#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/text/StringTokenizer.h>
#include <MRCommon/text/StringTools.h>

#include <functional>
#include <numeric>

#ifdef BENCH_ABSEIL
#include <absl/strings/str_cat.h>
#include <absl/strings/str_format.h>
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>
#endif
#ifdef BENCH_BOOST
#include <boost/algorithm/string.hpp>
#include <boost/format.hpp>
#endif
#ifdef BENCH_FMT
#include <fmt/format.h>
#include <fmt/printf.h>
#endif

using quarn::QN_String;

namespace quarn {

static std::string shown(QN_String const& text) { return text.c_str(); }

} // namespace quarn

namespace {

/// Returns tokens of eight or nine characters with the delimiter between them.
std::string tokens(std::size_t count, std::string const& delimiter) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        if (i != 0) text += delimiter;
        text += "tok" + std::to_string(10000 + i);
    }
    return text;
}

std::string const name = "fluid";
std::string const ext = "bin";

[[maybe_unused]] bool isPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

void format() {
    Comparison c("format", [] { return StringTools::format("%s_%05d.%s", name.c_str(), 12, ext.c_str()); });
#ifdef BENCH_ABSEIL
    c.against("Abseil", [] { return absl::StrFormat("%s_%05d.%s", name, 12, ext); });
#endif
#ifdef BENCH_BOOST
    c.against("Boost", [] { return (boost::format("%s_%05d.%s") % name % 12 % ext).str(); });
#endif
#ifdef BENCH_FMT
    c.against("fmt_printf", [] { return fmt::sprintf("%s_%05d.%s", name, 12, ext); });
    c.against("fmt", [] { return fmt::format("{}_{:05d}.{}", name, 12, ext); });
#endif
}

/// Ten kilobytes, more than any first buffer.
void formatLong() {
    static std::string const text(10000, 'x');
    Comparison c("format_10kB", [] {
        QN_String out;
        out.format("%s_%05d", text.c_str(), 12);
        return out;
    });
#ifdef BENCH_ABSEIL
    c.against("Abseil", [] { return absl::StrFormat("%s_%05d", text, 12); });
#endif
#ifdef BENCH_FMT
    c.against("fmt_printf", [] { return fmt::sprintf("%s_%05d", text, 12); });
    c.against("fmt", [] { return fmt::format("{}_{:05d}", text, 12); });
#endif
}

void replaceAll(std::string const& row, std::string const& given, std::size_t count) {
    auto const ours = [given] { return StringTools::replace_all(given, "::", "; "); };
    Comparison c(row, ours, count);
#ifdef BENCH_ABSEIL
    c.against("Abseil", [given] { return absl::StrReplaceAll(given, {{"::", "; "}}); });
#endif
#ifdef BENCH_BOOST
    c.against("Boost", [given] { return boost::replace_all_copy(given, "::", "; "); });
#endif
}

void urlEncode() {
    static std::string const text = "/cache/a scene/fluid 00012.bin?first=1&last=20";
    Comparison c("url_encode", [] { return StringTools::url_encode(text); });
#ifdef BENCH_ABSEIL
    c.against("Abseil", [] {
        std::string out;
        for (char const ch : text)
            if (isPlain(ch))
                out += ch;
            else if (ch == ' ')
                out += '+';
            else
                absl::StrAppend(&out, "%", absl::Hex(static_cast<unsigned char>(ch), absl::kZeroPad2));
        return out;
    });
#endif
#ifdef BENCH_FMT
    c.against("fmt", [] {
        fmt::memory_buffer out;
        for (char const ch : text)
            if (isPlain(ch))
                out.push_back(ch);
            else if (ch == ' ')
                out.push_back('+');
            else
                fmt::format_to(std::back_inserter(out), "%{:02X}", static_cast<unsigned char>(ch));
        return fmt::to_string(out);
    });
#endif
}

void tokenize(std::string const& row, std::size_t count) {
    std::string const text = tokens(count, ",");
    auto const ours = [text] { return StringTools::tokenize(text, ",;", 0, false); };
    Comparison c(row, ours, count);
#ifdef BENCH_ABSEIL
    c.against("Abseil", [text] {
        return std::vector<std::string>(absl::StrSplit(text, absl::ByAnyChar(",;"), absl::SkipEmpty()));
    });
#endif
#ifdef BENCH_BOOST
    c.against("Boost", [text] {
        std::vector<std::string> parts;
        boost::split(parts, text, boost::is_any_of(",;"), boost::token_compress_on);
        return parts;
    });
#endif
}

/// What a caller does who takes tokens one by one.
unsigned long weigh(unsigned long sum, std::string const& token) {
    return sum * 31 + token.size() + token.size();
}

void tokenizer(std::string const& row, std::size_t count) {
    std::string const text = tokens(count, "::");
    auto const ours = [text] {
        unsigned long sum = 0;
        for (StringTools::StringTokenizer t(text, "::"); t.hasMoreTokens();) sum = weigh(sum, t.nextToken());
        return sum;
    };
    Comparison c(row, ours, count);
#ifdef BENCH_ABSEIL
    c.against("Abseil", [text] {
        unsigned long sum = 0;
        for (auto const token : absl::StrSplit(text, "::", absl::SkipEmpty()))
            sum = weigh(sum, std::string(token));
        return sum;
    });
#endif
#ifdef BENCH_BOOST
    c.against("Boost", [text] {
        unsigned long sum = 0;
        auto const finder = boost::first_finder("::");
        for (auto it = boost::make_split_iterator(text, finder); !it.eof(); ++it)
            if (!it->empty()) sum = weigh(sum, std::string(it->begin(), it->end()));
        return sum;
    });
#endif
}

void buildName() {
    static FileNameStitcher& stitcher = FileNameStitcher::instance();
    stitcher.prefix = "/cache/a scene/";
    [[maybe_unused]] static int const frame = 12;
    Comparison c("frame_name", [] { return stitcher.doIt(name, frame, ext); });
#ifdef BENCH_ABSEIL
    c.against("Abseil", [] {
        return absl::StrFormat("%s%s%0*d.%s", stitcher.prefix, name, static_cast<int>(stitcher.padding),
                               frame, ext);
    });
    c.against("Abseil_StrCat", [] {
        auto const padding = static_cast<absl::PadSpec>(absl::kZeroPad2 + stitcher.padding - 2);
        return absl::StrCat(stitcher.prefix, name, absl::Dec(frame, padding), ".", ext);
    });
#endif
#ifdef BENCH_BOOST
    c.against("Boost",
              [] { return (boost::format("%s%s%05d.%s") % stitcher.prefix % name % frame % ext).str(); });
#endif
#ifdef BENCH_FMT
    c.against("fmt", [] {
        return fmt::format("{}{}{:0{}d}.{}", stitcher.prefix, name, frame, stitcher.padding, ext);
    });
#endif
}

void rangeSearch() {
    static std::vector<char> const onDisk = [] {
        std::vector<char> frames(20000);
        std::fill(frames.begin() + 5000, frames.begin() + 15000, char(1));
        return frames;
    }();
    static auto const exists = [](unsigned int frame) { return onDisk[frame] != 0; };
    static unsigned int known = 10000;
    Comparison c("range_search", [] {
        return quarn::detail::firstFrame(known, exists) * 100000ul +
               quarn::detail::lastFrame(known, 5, exists);
    });
    c.against("std", [] {
        std::vector<unsigned int> frames(onDisk.size());
        std::iota(frames.begin(), frames.end(), 0u);
        auto const at = frames.begin() + known;
        unsigned int const first = *std::partition_point(frames.begin(), at, std::not_fn(exists));
        unsigned int const last = *std::find_if_not(at, frames.end(), exists) - 1;
        return first * 100000ul + last;
    });
}

} // namespace

int main(int argc, char** argv) {
    format();
    formatLong();
    replaceAll("replace_all_short", "a::b::c::d", 1);
    urlEncode();
    for (std::size_t const count :
         {1000, 10000, 100000}) { // the time of one token should not depend on their number
        std::string const size = std::to_string(count);
        replaceAll("replace_all_" + size, tokens(count, "::"), count);
        tokenize("tokenize_" + size, count);
        tokenizer("tokenizer_" + size, count);
    }
    buildName();
    rangeSearch();
    return Report::run("text", argc, argv);
}

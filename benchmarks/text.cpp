// Text tools, frame names and identifiers beside the peers that are installed.
#include "Comparison.h"

#include <MRCommon/frames/detail/FrameSearch.h>
#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/system/ByteId.h>
#include <MRCommon/text/StringTokenizer.h>
#include <MRCommon/text/StringTools.h>

#include <numeric>

#ifdef BENCH_ABSEIL
#include <absl/strings/escaping.h>
#include <absl/strings/str_cat.h>
#include <absl/strings/str_format.h>
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>
#endif
#ifdef BENCH_BOOST
#include <boost/algorithm/string.hpp>
#include <boost/format.hpp>
#include <boost/uuid/string_generator.hpp>
#include <boost/uuid/uuid.hpp>
#include <boost/uuid/uuid_io.hpp>
#endif
#ifdef BENCH_FMT
#include <fmt/format.h>
#include <fmt/printf.h>
#endif
#ifdef BENCH_UUID
#include <uuid/uuid.h>
#endif

using quarn::ByteId;
using quarn::QN_String;

namespace quarn {

static std::string shown(QN_String const& text) { return text.c_str(); }
static std::string shown(ByteId const& id) { return id.toString().c_str(); }

} // namespace quarn

namespace {

/// A megabyte: a hundred thousand tokens of eight characters, or nine, behind one another.
std::string manyTokens(std::string const& delimiter) {
    std::string text;
    for (unsigned int i = 0; i < 100000; ++i) {
        if (i != 0) text += delimiter;
        text += "tok" + std::to_string(10000 + i);
    }
    return text;
}

std::string const commaText = manyTokens(",");
std::string const colonText = manyTokens("::");
std::string const name = "fluid";
std::string const ext = "bin";
constexpr char const* uuidText = "00112233-4455-6677-8899-AABBCCDDEEFF";
constexpr char const* hexText = "00112233445566778899AABBCCDDEEFF";

[[maybe_unused]] bool isPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

void format() {
    Contest c("format", [] { return StringTools::format("%s_%05d.%s", name.c_str(), 12, ext.c_str()); });
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

void replaceAll() {
    Contest c("replace_all", [] { return StringTools::replace_all(colonText, "::", "; "); });
#ifdef BENCH_ABSEIL
    c.against("Abseil", [] { return absl::StrReplaceAll(colonText, {{"::", "; "}}); });
#endif
#ifdef BENCH_BOOST
    c.against("Boost", [] { return boost::replace_all_copy(colonText, "::", "; "); });
#endif
}

void urlEncode() {
    static std::string const text = "/cache/a scene/fluid 00012.bin?first=1&last=20";
    Contest c("url_encode", [] { return StringTools::url_encode(text); });
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

void tokenize() {
    Contest c("tokenize", [] { return StringTools::tokenize(commaText, ",;", 0, false); });
#ifdef BENCH_ABSEIL
    c.against("Abseil", [] {
        return std::vector<std::string>(absl::StrSplit(commaText, absl::ByAnyChar(",;"), absl::SkipEmpty()));
    });
#endif
#ifdef BENCH_BOOST
    c.against("Boost", [] {
        std::vector<std::string> tokens;
        boost::split(tokens, commaText, boost::is_any_of(",;"), boost::token_compress_on);
        return tokens;
    });
#endif
}

/// The work of somebody who takes tokens one by one.
unsigned long weigh(unsigned long sum, std::string const& token) {
    return sum * 31 + token.size() + token.size();
}

void tokenizer() {
    Contest c("tokenizer", [] {
        unsigned long sum = 0;
        for (StringTools::StringTokenizer t(colonText, "::"); t.hasMoreTokens();)
            sum = weigh(sum, t.nextToken());
        return sum;
    });
#ifdef BENCH_ABSEIL
    c.against("Abseil", [] {
        unsigned long sum = 0;
        for (auto const token : absl::StrSplit(colonText, "::", absl::SkipEmpty()))
            sum = weigh(sum, std::string(token));
        return sum;
    });
#endif
#ifdef BENCH_BOOST
    c.against("Boost", [] {
        unsigned long sum = 0;
        auto const finder = boost::first_finder("::");
        for (auto it = boost::make_split_iterator(colonText, finder); !it.eof(); ++it)
            if (!it->empty()) sum = weigh(sum, std::string(it->begin(), it->end()));
        return sum;
    });
#endif
}

void buildName() {
    static FileNameStitcher& stitcher = FileNameStitcher::instance();
    stitcher.prefix = "/cache/a scene/";
    [[maybe_unused]] static int const frame = 12;
    Contest c("frame_name", [] { return stitcher.doIt(name, frame, ext); });
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
    Contest c("range_search", [] {
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

void parseIdentifier() {
    static QN_String const text(uuidText);
    Contest c("id_parse", [] { return ByteId(text); });
    [[maybe_unused]] static auto const fromBytes = [](void const* bytes) {
        ByteId id;
        std::memcpy(id.array().data(), bytes, ByteId::BYTE_LENGTH);
        return id;
    };
#ifdef BENCH_BOOST
    c.against("Boost", [] { return fromBytes(boost::uuids::string_generator()(text.c_str()).data); });
#endif
#ifdef BENCH_UUID
    c.against("libuuid", [] {
        uuid_t id;
        return uuid_parse(text.c_str(), id) == 0 ? fromBytes(id) : ByteId();
    });
#endif
    static QN_String const digits(hexText);
    Contest plain("id_parse_plain", [] { return ByteId(digits); });
#ifdef BENCH_ABSEIL
    plain.against("Abseil", [] { return fromBytes(absl::HexStringToBytes(digits.c_str()).data()); });
#endif
#ifdef BENCH_BOOST
    plain.against("Boost", [] { return fromBytes(boost::uuids::string_generator()(digits.c_str()).data); });
#endif
}

void printIdentifier() {
    static ByteId const id((QN_String(uuidText)));
    Contest c("id_print", [] { return id.toUuidString(); });
#ifdef BENCH_BOOST
    static boost::uuids::uuid const boosted = boost::uuids::string_generator()(uuidText);
    c.against("Boost", [] { return boost::uuids::to_string(boosted); });
#endif
#ifdef BENCH_UUID
    c.against("libuuid", [] {
        char text[37];
        uuid_unparse_upper(id.getTuple().data(), text);
        return std::string(text);
    });
#endif
    Contest plain("id_print_plain", [] { return id.toString(); });
#ifdef BENCH_ABSEIL
    plain.against("Abseil", [] {
        auto const* const bytes = reinterpret_cast<char const*>(id.getTuple().data());
        return absl::BytesToHexString({bytes, ByteId::BYTE_LENGTH});
    });
#endif
#ifdef BENCH_FMT
    plain.against("fmt", [] {
        unsigned char const* const bytes = id.getTuple().data();
        return fmt::format("{:02X}", fmt::join(bytes, bytes + ByteId::BYTE_LENGTH, ""));
    });
#endif
}

} // namespace

int main(int argc, char** argv) {
    format();
    replaceAll();
    urlEncode();
    tokenize();
    tokenizer();
    buildName();
    rangeSearch();
    parseIdentifier();
    printIdentifier();
    return runContests(argc, argv);
}

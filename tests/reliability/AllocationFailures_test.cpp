// Every public operation of containers, streams, texts, frames and system services that allocates, with every allocation
// failing in turn.
#include "reliability/AllocationHarness.h"
#include "support/TempDir.h"
#include "support/TempFile.h"

#include <tuple>

using namespace quarn;
using std::string;
using Strings = Array<QN_String>;

namespace {

QN_String const longText("a text that is too long for any buffer inside an object");
string const longString(longText.c_str());
Strings const threeTexts{"a", longText, "c"};

template <class Value> auto copyOf(Value const& value) {
    return [value] { return value; };
}

} // namespace

TEST(AllocationFailures, OfContainers) {
    Array<int> const numbers{1, 2, 3};
    auto const pair = [] { return std::make_tuple(Strings{"old", "older", "oldest"}, Strings(threeTexts)); };
    unchanged("Array of a list", [] { return Array<int>{1, 2}; });
    unchanged("Array of texts", [] { return Strings{"a", "b"}; });
    unchanged("copy of numbers", copyOf(numbers), [](auto& a) { return Array<int>(a); });
    unchanged("copy of texts", copyOf(threeTexts), [](auto& a) { return Strings(a); });
    unchanged("assign numbers", copyOf(numbers), [](auto& a) { a = Array<int>{9}; });
    usable("assign texts", pair, [](auto& a) { std::get<0>(a) = std::get<1>(a); });
    usable("assign a shorter list", pair,
           [](auto& a) { std::get<0>(a).assign(Strings{"only one, but too long for a buffer"}); });
    unchanged("reserve", copyOf(threeTexts), [](Strings& a) {
        a.reserve(100, true);
        return a.capacity();
    });
    unchanged("push_back a number", copyOf(numbers), [](Array<int>& a) {
        a.push_back(a[0]);
        return a.capacity();
    });
    unchanged("push_back a text", copyOf(threeTexts), [](Strings& a) { a.push_back(longText); });
    unchanged("push_back an element of its own", copyOf(threeTexts), [](Strings& a) { a.push_back(a[1]); });
    unchanged("slotForAppend", copyOf(numbers), [](Array<int>& a) {
        a.slotForAppend() = 7;
        return a.capacity();
    });
}

TEST(AllocationFailures, OfStrings) {
    unchanged("QN_String", [] { return QN_String(); });
    unchanged("QN_String of a text", [] { return QN_String("abc"); });
    unchanged("copy", copyOf(longText), [](QN_String& s) { return QN_String(s); });
    unchanged(
        "assign", [] { return QN_String("old"); }, [](QN_String& s) { s = longText; });
    for (char const* const text : {"%d of %d, and some room", "%2000d %d"}) {
        unchanged(
            string("format ") + text, [] { return QN_String("old"); },
            [text](QN_String& s) { return s.format(text, 1, 2).size(); });
        unchanged(string("StringTools::format ") + text,
                  [text] { return StringTools::format(text, 1, 9000); });
    }
    unchanged("StringTools::format of 9000", [] { return StringTools::format("%9000d", 1); });
    unchanged(
        "format with its own text", [] { return QN_String("old"); },
        [](QN_String& s) { return s.format("%s, %1500s", s.c_str(), s.c_str()).size(); });
}

TEST(AllocationFailures, OfTokenize) {
    QN_String const text("one,two, a third one that is longer,,five,six,seven");
    usable(
        "tokenize",
        [&] {
            return std::make_tuple(QN_String(text), Strings{"old", "older"});
        },
        [](auto& a) { return std::get<0>(a).tokenize(',', std::get<1>(a)); });
    for (unsigned int at : {0u, 2u})
        unchanged(
            "tokenize into the list that holds the string",
            [&] {
                Strings list{"a", "b", "c"};
                list[at] = text;
                return list;
            },
            // What was one text is seven afterwards.
            [at](Strings& list) { return list[at].tokenize(',', list); });
}

TEST(AllocationFailures, OfStreams) {
    // Two texts, on either kind of stream.
    Bytes const raw = hex("02000000 03000000 616200 14000000 6162636465666768696A6B6C6D6E6F7071727300");
    Bytes const endian = hex("00000002 00000003 616200 00000014 6162636465666768696A6B6C6D6E6F7071727300");
    auto const into = [](Bytes const& record) {
        return [&record] { return std::make_tuple(TempFile(record), Strings{"old"}); };
    };
    usable("raw list", into(raw), [&](auto& a) {
        FileStreamRaw stream(std::get<0>(a).fromStart());
        stream >> std::get<1>(a);
        return stream.failed();
    });
    usable("endian list", into(endian), [&](auto& a) {
        FileStreamEndian stream(std::get<0>(a).fromStart());
        stream >> std::get<1>(a);
        return stream.failed();
    });
}

TEST(AllocationFailures, OfStringTools) {
    using namespace StringTools;
    string const text = longString + ", \"quoted, and escaped\\\" once\"";
    auto const tool = [&](char const* name, auto const& run) {
        unchanged(name, copyOf(text), [&](string& s) { return run(s); });
    };
    tool("replace_all", [](string const& s) { return replace_all(s, "o", "a longer text than before"); });
    tool("replace_all of nothing", [](string const& s) { return replace_all(s, "#", ""); });
    tool("no_whitespace", [](string const& s) { return no_whitespace(s); });
    tool("removeNonAlphanumeric", [](string const& s) { return removeNonAlphanumeric(s); });
    tool("tokenize", [](string const& s) { return StringTools::tokenize(s, "t", 0, false); });
    tool("tokenize with a limit", [](string const& s) { return StringTools::tokenize(s, " ", 3, false); });
    tool("tokenize with quotes", [](string const& s) { return StringTools::tokenize(s, ",", 0, true); });
    tool("url_encode", [](string const& s) { return url_encode(s); });
    tool("escape", [](string const& s) { return escape(s, '#'); });
    tool("unescape", [](string const& s) { return unescape(s, 'e'); });
}

TEST(AllocationFailures, OfTokenizers) {
    using StringTools::StringTokenizer;
    string const text =
        "first of the long tokens=value;second of the long tokens=value;;12345678901234567890;last";
    StringTokenizer const tokenizer(text, ";");
    unchanged("StringTokenizer", copyOf(text), [](string& s) { return StringTokenizer(s, ";"); });
    unchanged("StringTokenizer with a long delimiter", copyOf(text),
              [](string& s) { return StringTokenizer(s, "of the long tokens=value;"); });
    usable(
        "assign", [&] { return std::make_pair(StringTokenizer("a;b", ";"), StringTokenizer(text, ";")); },
        [](auto& pair) { pair.first = pair.second; });
    auto const take = [&](char const* name, auto const& run) { unchanged(name, copyOf(tokenizer), run); };
    take("copy", [](StringTokenizer& t) { return StringTokenizer(t); });
    take("remainingString", [](StringTokenizer& t) { return t.remainingString(); });
    take("nextToken", [](StringTokenizer& t) { return t.nextToken(); });
    take("nextToken with a delimiter", [](StringTokenizer& t) { return t.nextToken(" tokens"); });
    take("nextIntToken", [](StringTokenizer& t) { return t.nextIntToken(); });
    take("nextFloatToken", [](StringTokenizer& t) { return t.nextFloatToken(); });
    take("nextTokenWithLimit", [](StringTokenizer& t) { return t.nextTokenWithLimit("="); });
    take("nextTokenWithLimit without it", [](StringTokenizer& t) { return t.nextTokenWithLimit("#"); });
    take("nextIntTokenWithLimit", [](StringTokenizer& t) { return t.nextIntTokenWithLimit("="); });
    for (string const filter : {"o", "#", "first of the long tokens=value"}) {
        take("filterNextToken", [&](StringTokenizer& t) { return t.filterNextToken(filter); });
        take("filterNextTokenWithLimit",
             [&](StringTokenizer& t) { return t.filterNextTokenWithLimit("=", filter); });
    }
}

namespace {

/// The settings of the one stitcher, put back at the end of a scope.
class KeptSettings {
public:
    KeptSettings()
        : prefix_(stitcher().prefix), scene_(stitcher().sceneName), padding_(stitcher().padding),
          order_(stitcher().order) {}
    ~KeptSettings() { restore(); }
    KeptSettings(KeptSettings const&) = delete;
    KeptSettings& operator=(KeptSettings const&) = delete;

    static FileNameStitcher& stitcher() { return FileNameStitcher::instance(); }
    static string described() {
        return describe(
            std::make_tuple(stitcher().prefix, stitcher().sceneName, stitcher().padding, stitcher().order));
    }
    void restore() const {
        stitcher().prefix = prefix_;
        stitcher().prefix.shrink_to_fit();
        stitcher().sceneName = scene_;
        stitcher().sceneName.shrink_to_fit();
        stitcher().padding = padding_;
        stitcher().order = order_;
    }

private:
    string prefix_, scene_;
    unsigned int padding_;
    FrameExtensionOrder order_;
};
string describe(std::shared_ptr<KeptSettings> const&) { return KeptSettings::described(); }

} // namespace

TEST(AllocationFailures, OfTheStitcher) {
    FileNameStitcher& stitcher = FileNameStitcher::instance();
    auto const settings = [] { return std::make_shared<KeptSettings>(); };
    unchanged("setSceneName", settings, [&](auto&) { stitcher.setSceneName(longString + ".scn"); });
    unchanged(
        "doIt",
        [&] {
            auto kept = settings();
            stitcher.prefix = "/cache/of/the/department/$(SCENENAME)/";
            stitcher.sceneName = longString;
            return kept;
        },
        [&](auto&) { return stitcher.doIt("fluid", 12, "an.extension.with.dots"); });
    Bytes record = hex("00000020");
    record.insert(record.end(), 32, 'p');
    for (unsigned char const byte : hex("00000007 00000001")) record.push_back(byte);
    TempFile const file(record);
    for (bool const checked : {false, true})
        unchanged(checked ? "loadChecked" : "load", settings, [&](auto&) {
            SetCurrentStream(file.fromStart());
            return checked ? stitcher.loadChecked() : (stitcher.load(), true);
        });
    SetCurrentStream(nullptr);
}

TEST(AllocationFailures, OfFrameNames) {
    TempDir const folder;
    for (char const* const frame : {"fluid_00011.bin", "fluid_00012.bin"}) folder.touch(frame);
    string const path = folder.path("fluid_00012.bin");
    using Range = std::tuple<QN_String, QN_String, unsigned int, unsigned int, unsigned int>;
    unchanged(
        "frameExtensionFromPath", [&] { return Range("old name", "old ext", 1u, 2u, 3u); },
        [&](Range& r) {
            FrameExtensionOrder order;
            return FileNameStitcher::frameExtensionFromPath(path.c_str(), std::get<0>(r), std::get<1>(r),
                                                            std::get<2>(r), std::get<3>(r), std::get<4>(r),
                                                            order);
        });
    for (bool const asName : {true, false})
        unchanged(
            "frameExtensionFromPath into the path", [&] { return Range(path.c_str(), "", 1u, 2u, 3u); },
            [&](Range& r) {
                FrameExtensionOrder order;
                QN_String other;
                QN_String& taken = std::get<0>(r);
                return FileNameStitcher::frameExtensionFromPath(taken, asName ? taken : other,
                                                                asName ? other : taken, std::get<2>(r),
                                                                std::get<3>(r), std::get<4>(r), order);
            });
    unchanged("frameExtensionFromPath without name", copyOf(QN_String(path.c_str())), [](QN_String& taken) {
        unsigned int first = 0, last = 0, padding = 0;
        FrameExtensionOrder order;
        FileNameStitcher::frameExtensionFromPath(taken, first, last, padding, order);
        return first + last + padding;
    });
    QN_String const manyDigits("fluid.bin.000000000000000000000000012");
    unchanged("frameExtensionFromPath, order only", [&] {
        FrameExtensionOrder order;
        FileNameStitcher::frameExtensionFromPath(QN_String(manyDigits), order);
        return order;
    });
}

TEST(AllocationFailures, OfFrameSequences) {
    std::vector<string> const names{
        "fluid.0001.exr", "fluid.0002.exr", "fluid.0009.exr", "fluid.10.exr",
        "smoke_v2.vdb",   "notes.txt",      "a.tar.gz",       "long name of smoke-12.tar.gz"};
    FrameScanOptions options;
    options.negativeFrames = options.versionsAreNames = true;
    options.compoundExtensions = {"tar.gz"};
    unchanged("groupFrames", copyOf(names), [&](auto& n) { return groupFrames(n, options); });
    TempDir const folder;
    for (string const& name : names) folder.touch(name);
    unchanged("scanFrames", [&] { return scanFrames(folder.path(""), options); });
    FrameScan const scan = groupFrames(names);
    FrameSequence const fluid = scan.sequences.front();
    unchanged("FrameSequence", copyOf(fluid), [](auto& s) { return FrameSequence(s); });
    unchanged("missing", copyOf(groupFrames({"a.1.x", "a.5.x"}).sequences.front()),
              [](auto& s) { return s.missing(); });
    unchanged("fileName", copyOf(groupFrames({"a long name.0001.x"}).sequences.front()),
              [](auto& s) { return s.fileName(-7); });
}

TEST(AllocationFailures, OfIdentifiersAndPaths) {
    ByteId const id("00112233-4455-6677-8899-AABBCCDDEEFF");
    unchanged("ByteId", [] { return ByteId("0011"); });
    unchanged("toString", copyOf(id), [](ByteId& i) { return i.toString(); });
    unchanged("toUuidString", copyOf(id), [](ByteId& i) { return i.toUuidString(); });
    unchanged(
        "arrToHexStr", [] { return QN_String("old"); },
        [&](QN_String& out) { return id.arrToHexStr(out, id.getTuple()); });
    TempDir const folder;
    string const path = folder.path("a/b/c");
    unchanged("makeSurePathExists", [&] { return makeSurePathExists(path.c_str()); });
    unchanged("LibLoader::load", [] { return LibLoader::load("/none/libNone.so") == nullptr; });
}

namespace {

class Summary : public testing::Environment {
    void TearDown() override {
        std::printf("%ld operations, %ld failed allocations\n", tried.operations, tried.failurePoints);
    }
};
testing::Environment const* const summary = testing::AddGlobalTestEnvironment(new Summary);

} // namespace

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

auto const none = [] { return 0; };

template <class Value> auto copyOf(Value const& value) {
    return [value] { return value; };
}

} // namespace

TEST(AllocationFailures, OfContainers) {
    Array<int> const numbers{1, 2, 3};
    auto const pair = [] { return std::make_tuple(Strings{"old", "older", "oldest"}, Strings(threeTexts)); };
    failInTurn("Array of a list", Promise::Unchanged, none, [](int) { return Array<int>{1, 2}; });
    failInTurn("Array of texts", Promise::Unchanged, none, [](int) { return Strings{"a", "b"}; });
    failInTurn("copy of numbers", Promise::Unchanged, copyOf(numbers), [](auto& a) { return Array<int>(a); });
    failInTurn("copy of texts", Promise::Unchanged, copyOf(threeTexts), [](auto& a) { return Strings(a); });
    failInTurn("assign numbers", Promise::Unchanged, copyOf(numbers), [](auto& a) {
        a = Array<int>{9};
        return 0;
    });
    failInTurn("assign texts", Promise::Usable, pair, [](auto& a) {
        std::get<0>(a) = std::get<1>(a);
        return 0;
    });
    failInTurn("assign a shorter list", Promise::Usable, pair, [](auto& a) {
        std::get<0>(a).assign(Strings{"only one, but too long for a buffer"});
        return 0;
    });
    failInTurn("reserve", Promise::Unchanged, copyOf(threeTexts), [](Strings& a) {
        a.reserve(100, true);
        return a.capacity();
    });
    failInTurn("push_back a number", Promise::Unchanged, copyOf(numbers), [](Array<int>& a) {
        a.push_back(a[0]);
        return a.capacity();
    });
    failInTurn("push_back a text", Promise::Unchanged, copyOf(threeTexts), [](Strings& a) {
        a.push_back(longText);
        return 0;
    });
    failInTurn("push_back an element of its own", Promise::Unchanged, copyOf(threeTexts), [](Strings& a) {
        a.push_back(a[1]);
        return 0;
    });
    failInTurn("slotForAppend", Promise::Unchanged, copyOf(numbers), [](Array<int>& a) {
        a.slotForAppend() = 7;
        return a.capacity();
    });
}

TEST(AllocationFailures, OfStrings) {
    failInTurn("QN_String", Promise::Unchanged, none, [](int) { return QN_String(); });
    failInTurn("QN_String of a text", Promise::Unchanged, none, [](int) { return QN_String("abc"); });
    failInTurn("copy", Promise::Unchanged, copyOf(longText), [](QN_String& s) { return QN_String(s); });
    failInTurn(
        "assign", Promise::Unchanged, [] { return QN_String("old"); },
        [](QN_String& s) {
            s = longText;
            return 0;
        });
    for (char const* const text : {"%d of %d, and some room", "%2000d %d"}) {
        failInTurn(
            string("format ") + text, Promise::Unchanged, [] { return QN_String("old"); },
            [text](QN_String& s) { return s.format(text, 1, 2).size(); });
        failInTurn(string("StringTools::format ") + text, Promise::Unchanged, none,
                   [text](int) { return StringTools::format(text, 1, 9000); });
    }
    failInTurn("StringTools::format of 9000", Promise::Unchanged, none,
               [](int) { return StringTools::format("%9000d", 1); });
    failInTurn(
        "format with its own text", Promise::Unchanged, [] { return QN_String("old"); },
        [](QN_String& s) { return s.format("%s, %1500s", s.c_str(), s.c_str()).size(); });
}

TEST(AllocationFailures, OfTokenize) {
    QN_String const text("one,two, a third one that is longer,,five,six,seven");
    failInTurn(
        "tokenize", Promise::Usable,
        [&] {
            return std::make_tuple(QN_String(text), Strings{"old", "older"});
        },
        [](auto& a) { return std::get<0>(a).tokenize(',', std::get<1>(a)); });
    for (unsigned int at : {0u, 2u})
        failInTurn(
            "tokenize into the list that holds the string", Promise::Unchanged,
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
        return [&record] { return std::make_tuple(Reading(record), Strings{"old"}); };
    };
    failInTurn("raw list", Promise::Usable, into(raw), [&](auto& a) {
        FileStreamRaw stream(std::get<0>(a).fromStart());
        stream >> std::get<1>(a);
        return stream.failed();
    });
    failInTurn("endian list", Promise::Usable, into(endian), [&](auto& a) {
        FileStreamEndian stream(std::get<0>(a).fromStart());
        stream >> std::get<1>(a);
        return stream.failed();
    });
}

TEST(AllocationFailures, OfStringTools) {
    using namespace StringTools;
    string const text = longString + ", \"quoted, and escaped\\\" once\"";
    auto const tool = [&](char const* name, auto const& run) {
        failInTurn(name, Promise::Unchanged, copyOf(text), [&](string& s) { return run(s); });
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
    failInTurn("StringTokenizer", Promise::Unchanged, copyOf(text),
               [](string& s) { return StringTokenizer(s, ";"); });
    failInTurn("StringTokenizer with a long delimiter", Promise::Unchanged, copyOf(text),
               [](string& s) { return StringTokenizer(s, "of the long tokens=value;"); });
    failInTurn(
        "assign", Promise::Usable,
        [&] { return std::make_pair(StringTokenizer("a;b", ";"), StringTokenizer(text, ";")); },
        [](auto& pair) {
            pair.first = pair.second;
            return 0;
        });
    auto const take = [&](char const* name, auto const& run) {
        failInTurn(name, Promise::Unchanged, copyOf(tokenizer), run);
    };
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
    failInTurn("setSceneName", Promise::Unchanged, settings, [&](auto&) {
        stitcher.setSceneName(longString + ".scn");
        return 0;
    });
    failInTurn(
        "doIt", Promise::Unchanged,
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
    Reading const file(record);
    for (bool const checked : {false, true})
        failInTurn(checked ? "loadChecked" : "load", Promise::Unchanged, settings, [&](auto&) {
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
    failInTurn(
        "frameExtensionFromPath", Promise::Unchanged,
        [&] { return Range("old name", "old ext", 1u, 2u, 3u); },
        [&](Range& r) {
            FrameExtensionOrder order;
            return FileNameStitcher::frameExtensionFromPath(path.c_str(), std::get<0>(r), std::get<1>(r),
                                                            std::get<2>(r), std::get<3>(r), std::get<4>(r),
                                                            order);
        });
    for (bool const asName : {true, false})
        failInTurn(
            "frameExtensionFromPath into the path", Promise::Unchanged,
            [&] { return Range(path.c_str(), "", 1u, 2u, 3u); },
            [&](Range& r) {
                FrameExtensionOrder order;
                QN_String other;
                QN_String& taken = std::get<0>(r);
                return FileNameStitcher::frameExtensionFromPath(taken, asName ? taken : other,
                                                                asName ? other : taken, std::get<2>(r),
                                                                std::get<3>(r), std::get<4>(r), order);
            });
    failInTurn("frameExtensionFromPath without name", Promise::Unchanged, copyOf(QN_String(path.c_str())),
               [](QN_String& taken) {
                   unsigned int first = 0, last = 0, padding = 0;
                   FrameExtensionOrder order;
                   FileNameStitcher::frameExtensionFromPath(taken, first, last, padding, order);
                   return first + last + padding;
               });
    QN_String const manyDigits("fluid.bin.000000000000000000000000012");
    failInTurn("frameExtensionFromPath, order only", Promise::Unchanged, none, [&](int) {
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
    failInTurn("groupFrames", Promise::Unchanged, copyOf(names),
               [&](auto& n) { return groupFrames(n, options); });
    TempDir const folder;
    for (string const& name : names) folder.touch(name);
    failInTurn("scanFrames", Promise::Unchanged, none,
               [&](int) { return scanFrames(folder.path(""), options); });
    FrameScan const scan = groupFrames(names);
    FrameSequence const fluid = scan.sequences.front();
    failInTurn("FrameSequence", Promise::Unchanged, copyOf(fluid), [](auto& s) { return FrameSequence(s); });
    failInTurn("missing", Promise::Unchanged, copyOf(groupFrames({"a.1.x", "a.5.x"}).sequences.front()),
               [](auto& s) { return s.missing(); });
    failInTurn("fileName", Promise::Unchanged, copyOf(groupFrames({"a long name.0001.x"}).sequences.front()),
               [](auto& s) { return s.fileName(-7); });
}

TEST(AllocationFailures, OfIdentifiersAndPaths) {
    ByteId const id("00112233-4455-6677-8899-AABBCCDDEEFF");
    failInTurn("ByteId", Promise::Unchanged, none, [](int) { return ByteId("0011"); });
    failInTurn("toString", Promise::Unchanged, copyOf(id), [](ByteId& i) { return i.toString(); });
    failInTurn("toUuidString", Promise::Unchanged, copyOf(id), [](ByteId& i) { return i.toUuidString(); });
    failInTurn(
        "arrToHexStr", Promise::Unchanged, [] { return QN_String("old"); },
        [&](QN_String& out) { return id.arrToHexStr(out, id.getTuple()); });
    TempDir const folder;
    string const path = folder.path("a/b/c");
    failInTurn("makeSurePathExists", Promise::Unchanged, none,
               [&](int) { return makeSurePathExists(path.c_str()); });
    failInTurn("LibLoader::load", Promise::Unchanged, none,
               [](int) { return LibLoader::load("/none/libNone.so") == nullptr; });
}

namespace {

class Summary : public testing::Environment {
    void TearDown() override {
        std::printf("%ld operations, %ld failed allocations\n", tried.operations, tried.failurePoints);
    }
};
testing::Environment const* const summary = testing::AddGlobalTestEnvironment(new Summary);

} // namespace

// mrcommon-records: prints the records in a file, one line each.
//     mrcommon-records scene.raw PptyFloat PptyEnum
//     PptyFloat name="gravity" value=-9.8100004196166992
//     PptyEnum name="mode" label="High" index=20 labels=["Low", "High"] values=[10, 20]
// Real numbers have 17 digits. A string is shown without its last NUL; bytes that are not printable ASCII, quotes and
// backslashes are \xNN; a string of size 0 is none. Fields stand in the order of the record. What cannot be read gives
// one line on the standard error stream and exit status 2.
#include <MRCommon/properties/MetaClasses.h>

#include "../examples/WorkSpaceVersion.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace quarn;

namespace {

/// A damaged size or count would have the library ask for gigabytes, so no array may be larger than what a file of
/// this size can fill: a string takes at least 4 of its bytes and 16 in memory.
std::size_t largestArray = std::numeric_limits<std::size_t>::max();

} // namespace

void* operator new[](std::size_t size) {
    if (size > largestArray) throw std::bad_alloc();
    return ::operator new(size);
}

void operator delete[](void* array) noexcept { ::operator delete(array); }

void operator delete[](void* array, std::size_t) noexcept { ::operator delete(array); }

namespace {

void show(bool value) { std::printf(value ? "true" : "false"); }
void show(int value) { std::printf("%d", value); }
void show(long long value) { std::printf("%lld", value); }
void show(double value) { std::printf("%.17g", value); }
void show(float value) { show(static_cast<double>(value)); }

void show(QN_String const& text) {
    if (text.empty()) {
        std::printf("none");
        return;
    }
    unsigned int const count = text.size() - (text[text.size() - 1] == '\0' ? 1 : 0);
    std::printf("\"");
    for (unsigned int i = 0; i < count; ++i) {
        auto const byte = static_cast<unsigned char>(text[i]);
        bool const isPlain = byte >= 32 && byte < 127 && byte != '"' && byte != '\\';
        std::printf(isPlain ? "%c" : "\\x%02x", byte);
    }
    std::printf("\"");
}

template <class T> void show(Array<T> const& list) {
    std::printf("[");
    for (unsigned int i = 0; i < list.size(); ++i) {
        if (i != 0) std::printf(", ");
        show(list[i]);
    }
    std::printf("]");
}

template <class First, class... Others> void showTuple(First const& first, Others const&... others) {
    std::printf("(");
    show(first);
    ((std::printf(", "), show(others)), ...);
    std::printf(")");
}

template <class T> void show(Vector3<T> const& v) { showTuple(v.x, v.y, v.z); }
template <class T> void show(Color4<T> const& c) { showTuple(c.r, c.g, c.b, c.a); }
void show(Tuple2<QN_String, int> const& pair) { showTuple(pair.first, pair.second); }

template <class T> void showField(char const* what, T const& value) {
    std::printf(" %s=", what);
    show(value);
}

template <class T> bool showValueAs(ItemVariant const& variant) {
    T const* const value = variant.as<T>();
    if (value != nullptr) showField("value", *value);
    return value != nullptr;
}

template <class... T> void showValueAsFirstOf(ItemVariant const& variant) {
    (void)(showValueAs<T>(variant) || ...);
}

void showValue(ItemVariant const& variant) { // pair and list first, since they also pass for int and string
    showValueAsFirstOf<Tuple2<QN_String, int>, Array<QN_String>, int, long long, float, double, bool,
                       QN_String, Vector3<float>, Vector3<double>, Color4<float>, Color4<double>>(variant);
}

template <class Ranged> void showBoundsOf(Ppty const& ppty) {
    if (auto const* const ranged = dynamic_cast<Ranged const*>(&ppty)) {
        showField("max", ranged->getMax());
        showField("min", ranged->getMin());
    }
}

void showProperty(Ppty const& ppty, bool raw) {
    showField("name", ppty.getName());
    if (auto const* const choice = dynamic_cast<PptyEnum const*>(&ppty)) {
        auto const& pair = *choice->getVariantValue().as<Tuple2<QN_String, int>>();
        showField("label", pair.first);
        showField("index", pair.second);
        showField("labels", choice->itemLabels);
        showField("values", choice->itemValues);
    } else if (raw || ppty.getType() == Ppty::TYPE_ARRAY_STRING) {
        showValue(ppty.getVariantValue());
        showBoundsOf<RIntPpty>(ppty);
        showBoundsOf<RInt64Ppty>(ppty);
        showBoundsOf<RFloatPpty>(ppty);
        showBoundsOf<RDoublePpty>(ppty);
        showBoundsOf<RangeVect3FPpty>(ppty);
        showBoundsOf<RangeVect3DPpty>(ppty);
    }
}

constexpr char const* usage = "mrcommon-records [--endian] [--workspace <version>] <file> <class>...";

struct Request {
    bool endian = false;
    std::optional<unsigned int> workSpace;
    std::string path;
    std::vector<std::string> classes;
};

/// The end of the program: the one line that says why.
using Refusal = std::runtime_error;

/// Null for a name that is none of a property class. Only this library's classes are registered here: but for
/// the root all of them are properties.
QN_MetaClassBase const* propertyClass(std::string const& name) {
    QN_MetaClassBase const* const found = QN_MetaClassBase::find(name.c_str());
    return found == &metaClass_QN_Class ? nullptr : found;
}

unsigned int versionIn(std::string const& text) {
    unsigned int version = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), version);
    if (error != std::errc() || end != text.data() + text.size())
        throw Refusal("\"" + text + "\" is no workspace version");
    return version;
}

Request requestIn(std::vector<std::string> const& words) {
    Request request;
    std::size_t at = 0;
    for (; at < words.size() && words[at].rfind("--", 0) == 0; ++at) {
        if (words[at] == "--endian")
            request.endian = true;
        else if (words[at] == "--workspace" && at + 1 < words.size())
            request.workSpace = versionIn(words[++at]);
        else
            throw Refusal(std::string("usage: ") + usage);
    }
    if (words.size() < at + 2) throw Refusal(std::string("usage: ") + usage);
    request.path = words[at];
    request.classes.assign(words.begin() + static_cast<std::ptrdiff_t>(at) + 1, words.end());
    for (std::string const& name : request.classes)
        if (name != "ItemVariant" && propertyClass(name) == nullptr)
            throw Refusal("there is no record class " + name);
    return request;
}

/// One FILE behind both stream kinds, since a variant's record is a raw one everywhere.
class RecordFile {
public:
    explicit RecordFile(std::string const& path)
        : size_(sizeOf(path)), file_(std::fopen(path.c_str(), "rb"), &std::fclose) {
        if (file_ == nullptr) throw Refusal(path + ": " + std::strerror(errno));
        largestArray = 4 * size_ + 4096;
    }

    /// Prints the next record, or nothing of it.
    void print(std::string const& className, bool endian) {
        if (className == "ItemVariant") {
            ItemVariant variant;
            read(variant, raw_);
            std::printf("ItemVariant tag=%u", variant.tag());
            showValue(variant);
        } else {
            std::unique_ptr<Ppty> const ppty(static_cast<Ppty*>(propertyClass(className)->metaNew()));
            endian ? read(*ppty, endian_) : read(*ppty, raw_);
            std::printf("%s", className.c_str());
            showProperty(*ppty, !endian);
        }
        std::printf("\n");
    }

    std::size_t bytesLeft() const { return size_ - static_cast<std::size_t>(std::ftell(file_.get())); }

private:
    static std::size_t sizeOf(std::string const& path) {
        std::error_code error;
        auto const size = std::filesystem::file_size(path, error);
        if (error) throw Refusal(path + ": " + error.message());
        return size;
    }

    template <class Record, class Stream> void read(Record& record, Stream& stream) {
        try {
            record.readFrom(stream);
        } catch (std::bad_alloc const&) {
            throw Refusal("holds a size that the file cannot fill");
        }
        if (stream.failed()) throw Refusal("ends early");
    }

    std::size_t size_;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
    FileStreamRaw raw_{file_.get()};
    FileStreamEndian endian_{file_.get()};
};

void printRecords(Request const& request) {
    std::optional<WorkSpaceVersion> workSpace;
    if (request.workSpace) workSpace.emplace(*request.workSpace);
    RecordFile file(request.path);
    for (std::size_t i = 0; i < request.classes.size(); ++i) {
        try {
            file.print(request.classes[i], request.endian);
        } catch (Refusal const& refusal) {
            throw Refusal(request.path + ": record " + std::to_string(i + 1) + " (" + request.classes[i] +
                          ") " + refusal.what());
        }
    }
    if (file.bytesLeft() != 0)
        throw Refusal(request.path +
                      ": bytes left over behind the last record: " + std::to_string(file.bytesLeft()));
}

void printHelp() {
    std::printf("%s\n\nPrints the records in a file, one line each. Classes:\n  ItemVariant\n", usage);
    for (QN_MetaClassBase const* const metaClass : QN_MetaClassBase::registered())
        if (metaClass != &metaClass_QN_Class) std::printf("  %s\n", metaClass->className().c_str());
}

} // namespace

int main(int argc, char** argv) try {
    std::vector<std::string> const words(argv + 1, argv + argc);
    if (words == std::vector<std::string>{"--help"})
        printHelp();
    else
        printRecords(requestIn(words));
    if (std::fflush(stdout) != 0) throw Refusal(std::string("the output: ") + std::strerror(errno));
} catch (std::exception const& exception) {
    std::fflush(stdout);
    std::fprintf(stderr, "mrcommon-records: %s\n", exception.what());
    return 2;
}

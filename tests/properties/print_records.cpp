// Reads records with the library and prints the very lines of read_records.py, which tells their format.
//     print_records <file>...
#include <MRCommon/properties/MetaClasses.h>

#include "support/WorkSpaceVersion.h"

#include <cstdio>
#include <filesystem>
#include <string>

using namespace quarn;

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

template <class Stream> bool printProperty(QN_MetaClassBase const& metaClass, Stream& stream, bool raw) {
    void* object = metaClass.metaNew();
    auto& ppty = *static_cast<Ppty*>(object);
    ppty.readFrom(stream);
    showProperty(ppty, raw);
    metaClass.metaDelete(object);
    return !stream.failed();
}

bool printVariant(FileStreamRaw& stream) {
    ItemVariant variant;
    variant.readFrom(stream);
    std::printf(" tag=%u", variant.tag());
    showValue(variant);
    return !stream.failed();
}

bool printRecord(std::string const& fileName, std::FILE* file) {
    WorkSpaceVersion const version(fileName.find("5087") != std::string::npos ? 5087 : 5088);
    std::string const className = fileName.substr(0, fileName.find_first_of("-."));
    QN_MetaClassBase const* const metaClass = QN_MetaClassBase::find(className.c_str());
    FileStreamRaw raw(file);
    FileStreamEndian endian(file);
    if (className == "ItemVariant") return printVariant(raw);
    if (metaClass == nullptr) return false;
    bool const isRaw = std::filesystem::path(fileName).extension() == ".raw";
    return isRaw ? printProperty(*metaClass, raw, true) : printProperty(*metaClass, endian, false);
}

} // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        std::string const fileName = std::filesystem::path(argv[i]).filename().string();
        std::FILE* const file = std::fopen(argv[i], "rb");
        if (file == nullptr) return 1;
        std::printf("%s", fileName.c_str());
        bool const isWhole = printRecord(fileName, file) && std::fgetc(file) == EOF;
        std::printf("\n");
        std::fclose(file);
        if (!isWhole) return 1;
    }
}

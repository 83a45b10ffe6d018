#include <MRCommon/properties/RecordCheck.h>

#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/detail/EnumLayout.h>
#include <MRCommon/properties/detail/RecordBytes.h>
#include <MRCommon/properties/PptyArrayString.h>
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/properties/RangeVectPpty.h>
#include <MRCommon/properties/RgdBasicPpty.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <typeinfo>
#include <utility>

namespace quarn {

// ---------------------------------------------------------------------------
// What the library's own classes write after the name

namespace {

/// Steps over one value as detail::readValue reads it.
template <class T> void valueFields(RecordFields& fields, char const* field) {
    if constexpr (std::is_same_v<T, QN_String>) {
        fields.str(field);
    } else if constexpr (std::is_same_v<T, Array<QN_String>>) {
        fields.strArray(field);
    } else if constexpr (std::is_same_v<T, Tuple2<QN_String, int>>) {
        fields.str("label");
        fields.i32("index");
    } else {
        fields.bytes(field, std::is_same_v<T, bool> ? 1 : sizeof(T));
    }
}

void nothing(RecordFields&) {}

template <class T> void plainFields(RecordFields& fields) { valueFields<T>(fields, "value"); }

template <class T> void rangedFields(RecordFields& fields) {
    for (char const* const field : {"value", "maximum", "minimum"}) valueFields<T>(fields, field);
}

void enumFields(RecordFields& fields) {
    unsigned int layout = 0;
    if (detail::recordsCarryALayoutNumber()) fields.u32("layout", &layout);
    if (layout > detail::lastLayoutWithoutLabel) fields.str("label");
    fields.i32("index");
    fields.strArray("labels");
    fields.block("values", sizeof(int));
}

void variantFields(RecordFields& fields) {
    unsigned int tag = 0;
    if (!fields.tag(tag)) return;
    detail::visitKind(tag, [&](auto kind) { valueFields<typename decltype(kind)::Type>(fields, "value"); });
}

/// What one class of the library writes after the name, on either stream kind.
struct KindFields {
    std::type_info const* type;
    bool (*isBaseOf)(Ppty const&);
    void (*raw)(RecordFields&);
    void (*endian)(RecordFields&);
};

template <class Kind> bool isBaseOf(Ppty const& ppty) { return dynamic_cast<Kind const*>(&ppty) != nullptr; }

template <class Kind>
constexpr KindFields fieldsOf(void (*raw)(RecordFields&), void (*endian)(RecordFields&)) {
    return {&typeid(Kind), &isBaseOf<Kind>, raw, endian};
}

template <class Kind, class T> constexpr KindFields plain() {
    return fieldsOf<Kind>(&plainFields<T>, &nothing);
}
template <class Kind, class T> constexpr KindFields ranged() {
    return fieldsOf<Kind>(&rangedFields<T>, &nothing);
}

/// By type code, from 1.
constexpr std::array kinds{
    plain<PptyInt, int>(),
    plain<PptyInt64, long long>(),
    plain<PptyFloat, float>(),
    plain<PptyDouble, double>(),
    plain<PptyBool, bool>(),
    plain<PptyString, QN_String>(),
    plain<PptyVector3F, Vector3<float>>(),
    plain<PptyVector3D, Vector3<double>>(),
    plain<PptyColor4F, Color4<float>>(),
    plain<PptyColor4D, Color4<double>>(),
    fieldsOf<PptyArrayString>(&plainFields<Array<QN_String>>, &plainFields<Array<QN_String>>),
    ranged<RIntPpty, int>(),
    ranged<RInt64Ppty, long long>(),
    ranged<RFloatPpty, float>(),
    ranged<RDoublePpty, double>(),
    ranged<RangeVect3FPpty, Vector3<float>>(),
    ranged<RangeVect3DPpty, Vector3<double>>(),
    fieldsOf<PptyEnum>(&enumFields, &enumFields),
    plain<PptyFile, QN_String>(),
    plain<PptyDirectory, QN_String>(),
};

/// Returns the library's class with the type code of `pattern`; null if a class of a host's own has another code.
KindFields const* kindByCode(Ppty const& pattern) {
    unsigned int const place = pattern.getType() - 1;
    return place < kinds.size() ? &kinds[place] : nullptr;
}

/// Returns the library's class that `pattern` derives from, trying `likely` first; null if the only one is Ppty.
KindFields const* baseOf(Ppty const& pattern, KindFields const* likely) {
    if (likely != nullptr && likely->isBaseOf(pattern)) return likely;
    auto const* const found = std::find_if(kinds.begin(), kinds.end(),
                                           [&](KindFields const& kind) { return kind.isBaseOf(pattern); });
    return found == kinds.end() ? nullptr : found;
}

void propertyFields(Ppty const& pattern, bool raw, RecordFields& fields) {
    fields.str("name");
    KindFields const* kind = kindByCode(pattern);
    bool const isOurs = kind != nullptr && typeid(pattern) == *kind->type;
    if (!isOurs) kind = baseOf(pattern, kind);
    if (kind != nullptr) (raw ? kind->raw : kind->endian)(fields);
    if (isOurs) return;
    if (auto const* const own = dynamic_cast<CheckableRecord const*>(&pattern))
        raw ? own->checkRawFields(fields) : own->checkEndianFields(fields);
}

} // namespace

// ---------------------------------------------------------------------------

[[gnu::cold, gnu::noinline]] bool RecordFields::fail(RecordCheck::Reason reason, unsigned long long offset,
                                                     char const* field, long long element) {
    result_.reason = reason;
    result_.offset = offset;
    result_.field = field;
    if (element >= 0) {
        std::array<char, 24> index{};
        std::snprintf(index.data(), index.size(), "[%lld]", element);
        result_.field += index.data();
    }
    return false;
}

bool RecordFields::read32(unsigned int& value) {
    std::array<unsigned char, sizeof value> bytes;
    if (!bytes_.read(bytes.data(), bytes.size())) return false;
    if (raw_)
        std::memcpy(&value, bytes.data(), bytes.size());
    else
        value = static_cast<unsigned int>(bytes[0]) << 24 | static_cast<unsigned int>(bytes[1]) << 16 |
                static_cast<unsigned int>(bytes[2]) << 8 | bytes[3];
    return true;
}

bool RecordFields::u32(char const* field, unsigned int* value) {
    if (!good()) return false;
    unsigned int ignored = 0;
    if (!read32(value == nullptr ? ignored : *value)) return fail(RecordCheck::EndsEarly, at_, field);
    at_ += sizeof ignored;
    return true;
}

bool RecordFields::i32(char const* field) { return u32(field); }

bool RecordFields::tag(unsigned int& value) {
    unsigned long long const start = at_;
    if (!u32("tag", &value)) return false;
    return value <= detail::variantTag<Tuple2<QN_String, int>> || fail(RecordCheck::UnknownTag, start, "tag");
}

bool RecordFields::bytes(char const* field, unsigned long long byteCount) {
    if (!good()) return false;
    return skip(byteCount) || fail(RecordCheck::EndsEarly, at_, field);
}

bool RecordFields::skip(unsigned long long byteCount) {
    if (!bytes_.skip(byteCount)) return false;
    at_ += byteCount;
    return true;
}

bool RecordFields::str(char const* field) { return strAt(field, -1); }

bool RecordFields::strAt(char const* field, long long element) {
    if (!good()) return false;
    unsigned int size = 0;
    char last = '\0';
    if (!read32(size)) return fail(RecordCheck::EndsEarly, at_, field, element);
    if (size != 0 && !bytes_.readLast(last, size))
        return fail(RecordCheck::SizeBeyondFile, at_, field, element);
    if (last != '\0') return fail(RecordCheck::Unterminated, at_, field, element);
    at_ += sizeof size + size;
    return true;
}

/// Asks for the end of the file only if the list is long or at fault: that costs more than stepping over a short one.
bool RecordFields::strArray(char const* field) {
    constexpr unsigned int shortList = 256;
    unsigned long long const start = at_;
    unsigned int count = 0;
    if (!u32(field, &count)) return false;
    unsigned long long const first = at_;
    auto const fits = [&] { return count <= leftAt(first) / sizeof count; };
    if (count > shortList && !fits()) return fail(RecordCheck::SizeBeyondFile, start, field);
    for (unsigned int i = 0; i < count; ++i)
        if (!strAt(field, i)) return fits() ? false : fail(RecordCheck::SizeBeyondFile, start, field);
    return true;
}

bool RecordFields::block(char const* field, unsigned int elementSize) {
    unsigned long long const start = at_;
    unsigned int count = 0;
    if (!u32(field, &count)) return false;
    return skip(static_cast<unsigned long long>(count) * elementSize) ||
           fail(RecordCheck::SizeBeyondFile, start, field);
}

unsigned long long RecordFields::leftAt(unsigned long long offset) const {
    unsigned long long const end = bytes_.end();
    return offset < end ? end - offset : 0;
}

CheckableRecord::~CheckableRecord() = default;

void CheckableRecord::checkEndianFields(RecordFields&) const {}

// ---------------------------------------------------------------------------

RecordCheck detail::RecordBytes::check(Ppty const& pattern, bool raw) {
    RecordFields fields(*this, start(), raw);
    if (isSeekable()) propertyFields(pattern, raw, fields);
    return resultOf(fields);
}

RecordCheck detail::RecordBytes::checkVariant() {
    RecordFields fields(*this, start(), true);
    if (isSeekable()) variantFields(fields);
    return resultOf(fields);
}

RecordCheck detail::RecordBytes::resultOf(RecordFields& fields) {
    RecordCheck check;
    if (!isSeekable() || !putBack()) {
        check.reason = RecordCheck::NotSeekable;
    } else if (fields.good()) {
        check.offset = fields.at_;
        check.size = fields.at_ - start();
    } else {
        check = std::move(fields.result_);
    }
    return check;
}

namespace {

char const* explanation(RecordCheck::Reason reason) {
    switch (reason) {
    case RecordCheck::EndsEarly: return "the data ends inside it";
    case RecordCheck::SizeBeyondFile: return "its size exceeds the data that is left";
    case RecordCheck::Unterminated: return "the string does not end with a NUL";
    case RecordCheck::UnknownTag: return "the tag is unknown";
    default: return "";
    }
}

} // namespace

std::string RecordCheck::message() const {
    if (good()) return {};
    if (reason == NotSeekable) return "there is no file whose position can be read and set";
    std::array<char, 48> place{};
    std::snprintf(place.data(), place.size(), " at byte %llu: ", offset);
    return field + place.data() + explanation(reason);
}

RecordCheck checkRecord(Ppty const& pattern, FileStreamRaw& stream) {
    return detail::FileBytes(stream.file()).check(pattern, true);
}

RecordCheck checkRecord(Ppty const& pattern, FileStreamEndian& stream) {
    return detail::FileBytes(stream.file()).check(pattern, false);
}

RecordCheck checkVariantRecord(FileStreamRaw& stream) {
    return detail::FileBytes(stream.file()).checkVariant();
}

} // namespace quarn

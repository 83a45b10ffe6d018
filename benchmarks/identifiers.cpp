// Identifiers: ByteId compared with the peers that are installed.
#include "Comparison.h"

#include <MRCommon/system/ByteId.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#ifdef BENCH_ABSEIL
#include <absl/strings/escaping.h>
#endif
#ifdef BENCH_BOOST
#include <boost/endian/arithmetic.hpp>
#include <boost/uuid/string_generator.hpp>
#include <boost/uuid/uuid.hpp>
#include <boost/uuid/uuid_io.hpp>
#endif
#ifdef BENCH_FMT
#include <fmt/format.h>
#endif
#ifdef BENCH_QT
#include <QUuid>
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

#ifdef BENCH_QT
/// Qt's identifiers are numbers in memory; this gives their bytes.
static std::string shown(QUuid const& id) { return id.toByteArray(QUuid::Id128).toStdString(); }
#endif

namespace {

constexpr char const* uuidText = "00112233-4455-6677-8899-AABBCCDDEEFF";
constexpr char const* hexText = "00112233445566778899AABBCCDDEEFF";
ByteId fromBytes(void const* bytes) {
    ByteId id;
    std::memcpy(id.array().data(), bytes, ByteId::BYTE_LENGTH);
    return id;
}

/// Random identifiers. The first byte is one of 16, so that comparisons often have to read on.
template <class Id> std::vector<Id> identifiers(std::size_t count) {
    std::mt19937 source(7);
    std::vector<Id> ids(count);
    for (Id& id : ids) {
        unsigned char bytes[ByteId::BYTE_LENGTH];
        for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(source());
        bytes[0] %= 16;
        std::memcpy(static_cast<void*>(&id), bytes, sizeof bytes);
    }
    return ids;
}

#ifdef BENCH_QT
QByteArray const qtText = QByteArray(uuidText);
#endif

void parse() {
    static QN_String const text(uuidText);
    Comparison c("parse", [] { return ByteId(text); });
#ifdef BENCH_BOOST
    c.against("Boost", [] { return fromBytes(boost::uuids::string_generator()(text.c_str()).data); });
#endif
#ifdef BENCH_UUID
    c.against("libuuid", [] {
        uuid_t id;
        return uuid_parse(text.c_str(), id) == 0 ? fromBytes(id) : ByteId();
    });
#endif
#ifdef BENCH_QT
    c.against("Qt", [] { return QUuid(qtText); });
#endif
    static QN_String const digits(hexText);
    Comparison plain("parse_plain", [] { return ByteId(digits); });
#ifdef BENCH_ABSEIL
    plain.against("Abseil", [] { return fromBytes(absl::HexStringToBytes(digits.c_str()).data()); });
#endif
#ifdef BENCH_BOOST
    plain.against("Boost", [] { return fromBytes(boost::uuids::string_generator()(digits.c_str()).data); });
#endif
}

void print() {
    static ByteId const id((QN_String(uuidText)));
    Comparison c("print", [] { return id.toUuidString(); });
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
#ifdef BENCH_QT
    static QUuid const qt(qtText);
    c.against("Qt", [] { return qt.toByteArray(QUuid::WithoutBraces).toStdString(); });
#endif
    Comparison plain("print_plain", [] { return id.toString(); });
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

/// Returns the place-dependent sum of the middle bytes, which only the right order gives.
template <class Id> unsigned long digest(std::vector<Id> const& ids) {
    unsigned long sum = 0;
    for (Id const& id : ids) {
        unsigned char bytes[ByteId::BYTE_LENGTH];
        std::memcpy(bytes, static_cast<void const*>(&id), sizeof bytes);
        sum = sum * 31 + bytes[7];
    }
    return sum;
}

template <class Id> auto sorting(std::size_t count) {
    auto const ids = std::make_shared<std::vector<Id> const>(identifiers<Id>(count));
    return [ids] {
        std::vector<Id> sorted = *ids;
        std::sort(sorted.begin(), sorted.end());
        return digest(sorted);
    };
}

/// Counts the identifiers that are below the one before them: one comparison each, in an order that cannot be foreseen.
template <class Id> auto comparing(std::size_t count) {
    auto const shared = std::make_shared<std::vector<Id> const>(identifiers<Id>(count));
    return [shared] {
        std::vector<Id> const& ids = *shared;
        unsigned long descents = 0;
        for (std::size_t i = 1; i < ids.size(); ++i) descents += ids[i] < ids[i - 1];
        return descents;
    };
}

#ifdef BENCH_UUID
struct LibUuid {
    uuid_t bytes;
    friend bool operator<(LibUuid const& a, LibUuid const& b) { return uuid_compare(a.bytes, b.bytes) < 0; }
};
#endif

// Qt's identifiers are left out here: they are not ordered by their bytes.
void order(std::size_t count) {
    Comparison sort("sort_" + std::to_string(count), sorting<ByteId>(count), count);
    Comparison compare("compare_" + std::to_string(count), comparing<ByteId>(count), count);
#ifdef BENCH_BOOST
    sort.against("Boost", sorting<boost::uuids::uuid>(count));
    compare.against("Boost", comparing<boost::uuids::uuid>(count));
#endif
#ifdef BENCH_UUID
    sort.against("libuuid", sorting<LibUuid>(count));
    compare.against("libuuid", comparing<LibUuid>(count));
#endif
}

#ifdef BENCH_BOOST
/// An identifier of 16 bytes whose last eight are a number.
struct BoostNumbered {
    unsigned char bytes[8];
    boost::endian::big_uint64_t index;
};
static_assert(sizeof(BoostNumbered) == sizeof(ByteId));
#endif

/// Counts to 64, with every number in memory. A number's top bit is lost before it is counted on.
void increment() {
    constexpr int COUNT = 64;
    auto const ours = [] {
        ByteId id;
        for (int i = 0; i < COUNT; ++i) {
            benchmark::DoNotOptimize(&id);
            benchmark::ClobberMemory();
            id.incIdFromLast8BytesAsIdx64();
        }
        return static_cast<unsigned long>(id.last8BytesToUint64());
    };
    Comparison c("increment", ours, COUNT);
#ifdef BENCH_BOOST
    c.against("Boost_Endian", [] {
        BoostNumbered id{};
        for (int i = 0; i < COUNT; ++i) {
            benchmark::DoNotOptimize(&id);
            benchmark::ClobberMemory();
            id.index = (id.index & 0x7FFFFFFFFFFFFFFF) + 1;
        }
        return static_cast<unsigned long>(id.index);
    });
#endif
}

} // namespace

int main(int argc, char** argv) {
    parse();
    print();
    for (std::size_t count = 1000; count <= 100000; count *= 10) order(count);
    increment();
    return Report::run("identifiers", argc, argv);
}

// Prints a hash of what the library makes of fixed input, for fingerprint.sh to compare between compilers and machines:
//     texts                     strings, identifiers and frame names
//     records                   of both stream kinds; numbers in machine order are turned little-endian
//     arithmetic                results of + - * / and the square root
//     libm                      results of sine, cosine and their inverses, which are those of the platform's library
//     machine                   big or little, plain char signed or not
#include <MRCommon/math/DQuat.h>
#include <MRCommon/math/EulerAngles.h>
#include <MRCommon/math/Geometry.h>
#include <MRCommon/math/Quat.h>
#include <MRCommon/math/RotationMatrix.h>
#include <MRCommon/math/Rounding.h>
#include <MRCommon/MRCommon.h>

#include "support/Written.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <vector>

using namespace quarn;

namespace {

bool isBigEndian() {
    std::uint16_t const one = 1;
    unsigned char first = 0;
    std::memcpy(&first, &one, 1);
    return first == 0;
}

/// FNV-1a of bytes, of numbers by their value.
class Hash {
public:
    void add(std::string_view bytes) {
        for (char const c : bytes) value_ = (value_ ^ static_cast<unsigned char>(c)) * 1099511628211u;
        value_ = (value_ ^ 0xFF) * 1099511628211u; // where a text ends counts
    }
    void add(std::uint64_t number) {
        for (int i = 0; i < 8; ++i)
            value_ = (value_ ^ static_cast<unsigned char>(number >> 8 * i)) * 1099511628211u;
    }
    void add(double number) {
        std::uint64_t pattern = 0;
        std::memcpy(&pattern, &number, sizeof number);
        add(pattern);
    }
    template <class Vector> void addVector(Vector const& v) {
        for (auto const c : {v.x, v.y, v.z}) add(static_cast<double>(c));
    }
    template <class Quaternion4> void addQuaternion(Quaternion4 const& q) {
        for (int i = 0; i < 4; ++i) add(static_cast<double>(q[i]));
    }
    void print(char const* part) const {
        std::printf("%s %016llx\n", part, static_cast<unsigned long long>(value_));
    }

private:
    std::uint64_t value_ = 14695981039346656037u;
};

/// A value that the compiler does not know, so that it calculates nothing itself.
template <class T> T unknown(T value) {
    T volatile hidden = value;
    return hidden;
}

// ---------------------------------------------------------------------------
// Texts

void addTexts(Hash& hash) {
    using namespace StringTools;
    std::string every;
    for (int byte = 1; byte < 256; ++byte) every += static_cast<char>(byte);
    hash.add(url_encode(every));
    hash.add(escape(every, '\\'));
    hash.add(unescape(escape(every, '\xE4'), '\xE4'));
    hash.add(no_whitespace(every) + removeNonAlphanumeric(every));
    for (std::string const& token : tokenize(every + every, "\xC3\x80 \n", 5, true)) hash.add(token);
    hash.add(format("%5.3f|%-6d|%x|%s|%c", 2.0 / 3, -7, 0xBEEFu, "\xC3\xA4", 'z'));
    hash.add(std::uint64_t{parseDuration("1w2d3h30 4294967295D\xB2")});
    StringTokenizer tokenizer("12,\xFF,-9223372036854775809,0.1", ",");
    hash.add(static_cast<std::uint64_t>(tokenizer.nextIntToken()));
    hash.add(tokenizer.nextToken());
    hash.add(static_cast<std::uint64_t>(tokenizer.nextIntToken()));
    hash.add(tokenizer.nextFloatToken());

    hash.add(ByteId("00112233-4455-6677-8899-aabbccddeeff").toUuidString().view());
    hash.add(std::uint64_t{ByteId("7F") < ByteId("80")});
    hash.add(std::uint64_t{QN_String("a\x7F") < QN_String("a\x80")});
    for (int order = 0; order < 4; ++order) {
        FileNameStitcher& stitcher = FileNameStitcher::instance();
        stitcher.order = static_cast<FrameExtensionOrder>(order);
        hash.add(stitcher.doIt("fl\xFC"
                               "ssig",
                               std::numeric_limits<int>::min(), ".tar.gz"));
        hash.add(stitcher.doIt("fluid", 12, "bin"));
    }
    FrameScan const scan = groupFrames({"a.\xE4.0007.exr", "a.z.0008.exr", "v2", "b9", "b10", "\xFF"});
    for (FrameSequence const& sequence : scan.sequences) hash.add(sequence.fileName(sequence.first()));
    for (std::string const& other : scan.others) hash.add(other);
}

// ---------------------------------------------------------------------------
// Records

/// Raw records as a little-endian machine writes them. Numbers are known by the size of a piece, 4 or 8 bytes or a
/// vector or colour of them, so strings must have other sizes.
class LittleEndianStream : public FileStreamRaw {
public:
    using FileStreamRaw::FileStreamRaw;

    std::size_t write(void const* buffer, std::size_t byteCount) override {
        std::string bytes(static_cast<char const*>(buffer), byteCount);
        std::size_t const number = isBigEndian() ? numberSize(byteCount) : 0;
        for (std::size_t at = 0; number != 0 && at < byteCount; at += number)
            std::reverse(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                         bytes.begin() + static_cast<std::ptrdiff_t>(at + number));
        return FileStreamRaw::write(bytes.data(), byteCount);
    }

private:
    static std::size_t numberSize(std::size_t byteCount) {
        switch (byteCount) {
        case 4:
        case 12: // three of 4
        case 16: return 4;
        case 8:
        case 24:
        case 32: return 8;
        default: return 0; // a bool or a string
        }
    }
};

template <class Property> void addRecord(Hash& hash, Property const& property) {
    hash.add(property.getClassName().view());
    hash.add(written<LittleEndianStream>(property));
    if (property.getType() != Ppty::TYPE_ENUM) hash.add(written<FileStreamEndian>(property)); // has a block
    if (property.getType() < Ppty::TYPE_RANGE_INT) hash.add(property.toStr().view());
    hash.add(written<LittleEndianStream>(property.getVariantValue()));
}

void addRecords(Hash& hash) {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr long long least64 = std::numeric_limits<long long>::min();
    addRecord(hash, PptyInt("number", least));
    addRecord(hash, PptyInt64("number", least64 + 1));
    addRecord(hash, PptyFloat("number", -9.81f));
    addRecord(hash, PptyDouble("number", 5e-324));
    addRecord(hash, PptyBool("number", true));
    addRecord(hash, PptyString("number", "\xC3\xA4\xFF!"));
    addRecord(hash, PptyFile("number", "a/b/c."));
    addRecord(hash, PptyDirectory("number", "/tmp/d"));
    addRecord(hash, PptyVector3F("number", {1, -2.5f, 1e-45f}));
    addRecord(hash, PptyVector3D("number", {1, -2.5, 1e308}));
    addRecord(hash, PptyColor4F("number", {0.1f, 0.2f, 0.3f, 1}));
    addRecord(hash, PptyColor4D("number", {0.1, 0.2, 0.3, 1}));
    addRecord(hash, PptyArrayString("number", {"three", "fourteen", "a\xE4"}));
    addRecord(hash, RIntPpty("number", 3, least, 7));
    addRecord(hash, RInt64Ppty("number", 3, least64, 7));
    addRecord(hash, RFloatPpty("number", 3, -0.0f, 7));
    addRecord(hash, RDoublePpty("number", 3, -0.0, 7));
    addRecord(hash, RangeVect3FPpty("number", {1, 2, 3}, {0, 0, 0}, {4, 5, 6}));
    addRecord(hash, RangeVect3DPpty("number", {1, 2, 3}, {0, 0, 0}, {4, 5, 6}));
    PptyEnum choice("number");
    choice.itemLabels = {"first!", "second", "\xE4\xE4"};
    choice.itemValues = {1, -2, 1 << 30};
    choice.setValue(ItemVariant("second"));
    addRecord(hash, choice);
    std::set<std::uint64_t> ids; // whatever the order of registration
    for (QN_MetaClassBase const* const metaClass : QN_MetaClassBase::registered())
        ids.insert(metaClass->classId());
    for (std::uint64_t const id : ids) hash.add(id);
}

// ---------------------------------------------------------------------------
// Numbers

constexpr double samples[][4] = {{0.5, -0.25, 0.125, 0.8125}, {1, 0, 0, 0},
                                 {0.1, 0.7, -0.3, 0.6},       {-1e-9, 3, 4e5, -2},
                                 {0.36, 0.48, 0.8, 0.0},      {1e-160, 0.2, 0.3, 1.7}};

template <class Q, class T> Q sample(std::size_t i) {
    auto const e = [&](int k) { return static_cast<T>(unknown(samples[i % std::size(samples)][k])); };
    return Q(e(0), e(1), e(2), e(3));
}

template <class Q, class T> void addAlgebra(Hash& hash) {
    for (std::size_t i = 0; i < std::size(samples); ++i) {
        Q const q = sample<Q, T>(i), next = sample<Q, T>(i + 1);
        hash.addQuaternion(q * next);
        hash.addQuaternion(q.getInverse() + next / static_cast<T>(3));
        hash.add(static_cast<double>(q.Dot(next)));
        Matrix4<T> m;
        for (int k = 0; k < 16; ++k) m(k / 4, k % 4) = static_cast<T>(k);
        q.QuatToMatrix(&m);
        for (int k = 0; k < 16; ++k) hash.add(static_cast<double>(m(k / 4, k % 4)));
        hash.addQuaternion(Q(&m));
        hash.addVector(TransformaEje(m, Vector3<T>(1, 2, 3)));
    }
}

void addArithmetic(Hash& hash) {
    addAlgebra<Quat, float>(hash);
    addAlgebra<DQuat, double>(hash);
    for (std::size_t i = 0; i < std::size(samples); ++i) {
        double t = 0;
        auto const v = [&](std::size_t k) {
            DQuat const q = sample<DQuat, double>(i + k);
            return Vector3<double>(q[0], q[1], q[2]);
        };
        Vector3<double> closest(0, 0, 0);
        hash.add(D_minDist(v(0), v(1), v(2), i % 2 == 0, &t, &closest));
        hash.add(t);
        hash.addVector(closest);
        Matrix3<double> m;
        for (int k = 0; k < 9; ++k)
            m(k / 3, k % 3) = sample<DQuat, double>(i + static_cast<std::size_t>(k))[k % 4];
        Quaternion<double> q(0, 0, 0, 1);
        matrix3tools::getQuaternion_VERSION3(m, q);
        for (double const e : {q.x, q.y, q.z, q.w}) hash.add(e);
        for (double const e : samples[i]) {
            hash.add(static_cast<std::uint64_t>(Redondea(unknown(e * 1e3))));
            hash.add(static_cast<std::uint64_t>(Redondea(unknown(static_cast<float>(e * 1e10)))));
        }
    }
}

void addTrigonometry(Hash& hash) {
    for (std::size_t i = 0; i < std::size(samples); ++i) {
        DQuat const p = sample<DQuat, double>(i), q = sample<DQuat, double>(i + 1);
        hash.addQuaternion(DQuat::Slerp(unknown(0.3), p, q));
        hash.addQuaternion(p.Exp());
        hash.addQuaternion(DQuat(Vector3<double>(1, 0, 0), unknown(0.7 + static_cast<double>(i))));
        Tuple3<double, double, double> angles;
        Quaternion<double>(0.1, 0.2, 0.3, 0.9273618495495703)
            .getAngles(static_cast<QN_PERMUTATION_XYZ>(i), angles);
        for (int k = 0; k < 3; ++k) hash.add(angles[k]);
    }
}

void print(char const* part, void (*add)(Hash&)) {
    Hash hash;
    add(hash);
    hash.print(part);
}

} // namespace

int main() {
    print("texts", addTexts);
    print("records", addRecords);
    print("arithmetic", addArithmetic);
    print("libm", addTrigonometry);
    std::printf("machine %s-endian, plain char %s\n", isBigEndian() ? "big" : "little",
                std::numeric_limits<char>::is_signed ? "signed" : "unsigned");
}

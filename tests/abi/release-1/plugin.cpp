// A plug-in of release 1, kept as it was written then. It is built against today's headers, loaded and run; the
// symbols that its first build asked the libraries for stand in symbols.txt and must be offered for ever, so that a
// plug-in that nobody compiles again goes on working. Never changed: a later release gets a folder of its own.
#include <MRCommon/MRCommon.h>

#include <cstdio>
#include <memory>

using namespace quarn;

namespace {

/// A bounded number with a unit behind its record.
class Measure : public RFloatPpty {
public:
    QN_CLASS_IDENTITY
    Measure() = default;
    explicit Measure(QN_String const& name) : RFloatPpty(name, 1.5f, 0.0f, 2.0f) {}

    Ppty* clone() const override { return new Measure(*this); }
    Ppty* cloneWithNewName(QN_String const& name) const override { return withName(clone(), name); }
    QN_String toStr() const override {
        QN_String text;
        return text.format("%g %s", double(*getVariantValue().as<float>()), unit_.c_str());
    }
    using RFloatPpty::readFrom;
    using RFloatPpty::writeTo;
    void readFrom(FileStreamRaw& stream) override {
        RFloatPpty::readFrom(stream);
        encoding::readStr(stream, unit_);
    }
    void writeTo(FileStreamRaw& stream) const override {
        RFloatPpty::writeTo(stream);
        encoding::writeStr(stream, unit_);
    }

private:
    QN_String unit_ = "m";
};

QN_MetaClass<Measure> const metaClass_Measure("Measure", 1);

class CountingStream : public FileStreamRaw {
public:
    using FileStreamRaw::FileStreamRaw;
    std::size_t write(void const* buffer, std::size_t byteCount) override {
        bytes += byteCount;
        return FileStreamRaw::write(buffer, byteCount);
    }
    std::size_t bytes = 0;
};

bool ownKindTravels() {
    std::FILE* const file = std::tmpfile();
    CountingStream stream(file);
    Measure("depth").writeTo(stream);
    std::rewind(file);
    QN_MetaClassBase const* const metaClass = QN_MetaClassBase::find("Measure");
    void* object = metaClass->metaNew();
    auto& loaded = *static_cast<Ppty*>(object);
    loaded.readFrom(stream);
    bool const good = loaded.toStr() == "1.5 m" && loaded.getName() == "depth" && stream.bytes == 28 &&
                      loaded.hasAncestor("RFloatPpty") && !loaded.hasAncestor("RIntPpty");
    metaClass->metaDelete(object);
    std::fclose(file);
    return good && object == nullptr;
}

bool allKindsAreMade() {
    for (QN_MetaClassBase const* const metaClass : QN_MetaClassBase::registered()) {
        void* object = metaClass->metaNew();
        if (object == nullptr) continue;
        std::unique_ptr<Ppty> const copy(static_cast<Ppty*>(object)->cloneWithNewName("copy"));
        metaClass->metaDelete(object);
        if (copy->getType() == Ppty::TYPE_NONE || copy->getVariantValue().tag() == 0) return false;
    }
    return metaClass_PptyEnum.classSchema() == 2 && metaClass_RangeVect3DPpty.getClassSizeOf() != 0;
}

bool valuesAreSet() {
    PptyEnum mode("mode");
    mode.itemLabels = {"Low", "High"};
    mode.itemValues = {10, 20};
    RangeVect3FPpty box("box", {0, 0, 0}, {0, 0, 0}, {1, 1, 1});
    PptyArrayString list("list", {"a", "b"});
    ItemVariant variant(Color4<float>(1, 0, 0, 1));
    QN_String text;
    qn_basicppty::QN_set(text, true);
    return mode.setValue(ItemVariant("High")) && !box.setValue(Vector3<float>(2, 0, 0)) &&
           list.toStr() == "[ a, b ]" && variant.as<Color4<float>>() != nullptr && text == "True" &&
           PptyInt64("n", 5).toStr() == " 564 " && QN_System_Enum::instance().enums.empty() &&
           ConfigurationMngr::instance().userData == nullptr;
}

bool mathsAnswer() {
    Quat const turn(Vector3<float>(0, 0, 1), 0.5f);
    Matrix4<float> placement{};
    turn.QuatToMatrix(&placement);
    float t = 0;
    Vector3<float> from(1, 0, 0);
    Tuple3<double, double, double> angles;
    Quaternion<double>(0, 0, 0, 1).getAngles(PERMUTATION_XYZ_012, angles);
    resetRandomSequence();
    return DQuat::IDENTITY[0] == 1 && TransformaEje(placement, from).x != 0 && DameRandom() <= 1 &&
           minDist({0, 1, 0}, {-1, 0, 0}, {1, 0, 0}, true, &t, nullptr) == 1 && angles[0] == 0 &&
           getEulerAngles(&from, {1, 0, 0}, 1).x == 0 && Redondea(2.5) == 3 && AY == 1 && AZ == 2;
}

bool textIsTaken() {
    StringTools::StringTokenizer tokens("a,b", ",");
    FileNameStitcher const& names = FileNameStitcher::instance();
    unsigned int answer = 1;
    std::FILE* const file = std::tmpfile();
    bool const transferred = WriteUInt(&answer, 1, file) == 1;
    std::fclose(file);
    char path[] = "folder/file";
    return tokens.nextToken() == "a" && StringTools::url_encode("a b") == "a+b" && transferred &&
           names.doIt("x", 7, "bin") == "x00007.bin" && PathFindFileName(path) == path + 7 &&
           ByteId("0F").toString() == "0F000000000000000000000000000000" &&
           QNCPUInfo::instance().numCoresPerPackage() == 1 && LibLoader::unload(nullptr) == -1 &&
           !isEnvironmentVariableDefined("MRCOMMON_NO_SUCH_VARIABLE");
}

} // namespace

QN_MetaClassBase const& Measure::metaClass() { return metaClass_Measure; }

/// Null when all is as it was in release 1, else what is not.
extern "C" __attribute__((visibility("default"))) char const* checkRelease() {
    if (!ownKindTravels()) return "a property kind of the plug-in's own";
    if (!allKindsAreMade()) return "the registered kinds";
    if (!valuesAreSet()) return "setting values";
    if (!mathsAnswer()) return "the maths";
    return textIsTaken() ? nullptr : "text, files and services";
}

// Every public operation of variants, properties and meta-classes that allocates, with every allocation failing in turn.
#include "examples/WorkSpaceVersion.h"
#include "reliability/AllocationHarness.h"
#include "support/GoldenRecords.h"
#include "support/TempDir.h"

#include <filesystem>
#include <iterator>
#include <memory>
#include <tuple>
#include <vector>

using namespace quarn;
using std::string;
using Strings = Array<QN_String>;
using Choice = Tuple2<QN_String, int>;
using PptyPtr = std::unique_ptr<Ppty>;

namespace {

QN_String const longText("a text that is too long for any buffer inside an object");
Strings const threeTexts{"a", longText, "c"};

/// Each kind of value that a variant holds, with the name of its kind.
template <class Visit> void visitValues(Visit const& visit) {
    visit("int", 7);
    visit("long", 7L);
    visit("long long", 7LL);
    visit("float", 0.5f);
    visit("double", 0.5);
    visit("bool", true);
    visit("text", longText);
    visit("Vector3<float>", Vector3<float>{1, 2, 3});
    visit("Vector3<double>", Vector3<double>{1, 2, 3});
    visit("Color4<float>", Color4<float>{1, 2, 3, 4});
    visit("Color4<double>", Color4<double>{1, 2, 3, 4});
    visit("texts", threeTexts);
    visit("choice", Choice("High", 10));
}

PptyPtr made(string const& className) {
    void* const object = QN_MetaClassBase::find(className.c_str())->metaNew();
    PptyPtr property(static_cast<Ppty*>(object));
    // Vectors are uninitialised, and a record on a FileStreamEndian has no value.
    unsigned int const tag = property->getVariantValue().tag();
    if (tag == 7) property->setValue(ItemVariant(Vector3<float>{}));
    if (tag == 8) property->setValue(ItemVariant(Vector3<double>{}));
    return property;
}

void readFrom(Ppty& property, TempFile const& file, bool isRaw) {
    FileStreamRaw raw(file.fromStart());
    FileStreamEndian endian(raw.file());
    isRaw ? property.readFrom(raw) : property.readFrom(endian);
}

/// A property of a golden record.
PptyPtr readFrom(GoldenRecord const& golden) {
    PptyPtr property = made(golden.className());
    readFrom(*property, TempFile(golden.record), golden.isRaw());
    return property;
}

/// The constructors of a kind and its typed setter; the last arguments are the bounds of a ranged kind.
template <class Kind, class Value, class... Bounds>
void failConstructors(char const* kind, Value const& value, Bounds const&... bounds) {
    string const name = kind;
    auto const property = [&](auto const&... arguments) {
        unchanged(name + ", " + std::to_string(sizeof...(arguments)) + " arguments",
                  [&] { return std::make_unique<Kind>(arguments...)->getName(); });
    };
    property();
    property(longText);
    property(longText, value);
    if constexpr (sizeof...(bounds) != 0) property(longText, value, bounds...);
    unchanged(
        name + ", copy", [&] { return std::make_unique<Kind>(longText, value); },
        [](auto& original) { return PptyPtr(new Kind(*original)); });
}

} // namespace

TEST(AllocationFailures, OfVariants) {
    visitValues([](string const& kind, auto const& value) {
        auto const make = [&] { return ItemVariant(value); };
        unchanged("ItemVariant of " + kind, [&] { return ItemVariant(value); });
        unchanged("copy of " + kind, make, [](ItemVariant& v) { return ItemVariant(v); });
        unchanged(
            "assign " + kind, [&] { return std::make_pair(ItemVariant("old"), ItemVariant(value)); },
            [](auto& pair) { pair.first = pair.second; });
    });
    unchanged("makeDefault", [] { return ItemVariant::makeDefault<Strings>(); });
    unchanged("ItemVariant of a C string", [] { return ItemVariant("a C string"); });
}

TEST(AllocationFailures, OfReading) {
    for (GoldenRecord const& golden : goldenRecords()) {
        if (golden.fileName.find("-empty") != string::npos) continue;
        WorkSpaceVersion const version(golden.workSpaceVersion());
        if (golden.className() == "ItemVariant") {
            if (golden.record[0] == 0 || golden.record[0] > 12) continue; // no value
            usable(
                "read " + golden.fileName,
                [&] { return std::make_pair(TempFile(golden.record), ItemVariant()); },
                [](auto& pair) {
                    FileStreamRaw stream(pair.first.fromStart());
                    pair.second.deleteValue();
                    pair.second.readFrom(stream);
                    return stream.failed();
                });
            continue;
        }
        usable(
            "read " + golden.fileName,
            [&] { return std::make_pair(TempFile(golden.record), made(golden.className())); },
            [&](auto& pair) { readFrom(*pair.second, pair.first, golden.isRaw()); });
    }
}

TEST(AllocationFailures, OfProperties) {
    for (GoldenRecord const& golden : goldenRecords()) {
        string const kind = golden.className();
        if (golden.fileName != kind + ".raw") continue;
        auto const sample = [&] { return readFrom(golden); };
        auto const property = [&](char const* name, auto const& run) {
            unchanged(kind + "::" + name, sample, run);
        };
        unchanged(kind + "::metaNew", [&] { return made(kind)->getName(); });
        property("clone", [](PptyPtr& p) { return PptyPtr(p->clone()); });
        property("cloneWithNewName", [](PptyPtr& p) { return PptyPtr(p->cloneWithNewName(longText)); });
        property("toStr", [](PptyPtr& p) { return p->toStr(); });
        property("getVariantValue, copied", [](PptyPtr& p) { return ItemVariant(p->getVariantValue()); });
    }
}

TEST(AllocationFailures, OfEachKind) {
    failConstructors<PptyInt>("PptyInt", 1);
    failConstructors<PptyInt64>("PptyInt64", 1LL);
    failConstructors<PptyFloat>("PptyFloat", 1.0f);
    failConstructors<PptyDouble>("PptyDouble", 1.0);
    failConstructors<PptyBool>("PptyBool", true);
    failConstructors<PptyString>("PptyString", longText);
    failConstructors<PptyFile>("PptyFile", longText);
    failConstructors<PptyDirectory>("PptyDirectory", longText);
    Vector3<float> const f{1, 2, 3};
    Vector3<double> const d{1, 2, 3};
    failConstructors<PptyVector3F>("PptyVector3F", f);
    failConstructors<PptyVector3D>("PptyVector3D", d);
    failConstructors<PptyColor4F>("PptyColor4F", Color4<float>{1, 2, 3, 4});
    failConstructors<PptyColor4D>("PptyColor4D", Color4<double>{1, 2, 3, 4});
    failConstructors<PptyArrayString>("PptyArrayString", threeTexts);
    failConstructors<RIntPpty>("RIntPpty", 1, 0, 2);
    failConstructors<RInt64Ppty>("RInt64Ppty", 1LL, 0LL, 2LL);
    failConstructors<RFloatPpty>("RFloatPpty", 1.0f, 0.0f, 2.0f);
    failConstructors<RDoublePpty>("RDoublePpty", 1.0, 0.0, 2.0);
    failConstructors<RangeVect3FPpty>("RangeVect3FPpty", f, f, f);
    failConstructors<RangeVect3DPpty>("RangeVect3DPpty", d, d, d);
    failConstructors<PptyEnum>("PptyEnum", Choice("High", 10));
}

TEST(AllocationFailures, OfSettingValues) {
    auto const text = [] { return PptyString("name", "old"); };
    unchanged("PptyString::setValue", text, [](PptyString& p) { return p.setValue(longText); });
    unchanged("PptyString::setValue of a variant", text,
              [](PptyString& p) { return p.setValue(ItemVariant(longText)); });
    usable(
        "PptyArrayString::setValue", [] { return PptyArrayString("name", Strings{"old"}); },
        [](PptyArrayString& p) { return p.setValue(threeTexts); });
    auto const choices = [] {
        PptyEnum p("mode", Choice("Low", 10));
        p.itemLabels = {"Low", longText};
        p.itemValues = {10, 20};
        return p;
    };
    unchanged("PptyEnum::setValue of a label", choices,
              [](PptyEnum& p) { return p.setValue(ItemVariant(longText)); });
    unchanged("PptyEnum::setValue of a number", choices,
              [](PptyEnum& p) { return p.setValue(ItemVariant(20)); });
    unchanged("PptyEnum::setValue of a pair", choices,
              [](PptyEnum& p) { return p.setValue(Choice(longText, 30)); });
    auto const old = [] { return QN_String("old"); };
    unchanged("QN_set of a bool", old, [](QN_String& out) { qn_basicppty::QN_set(out, false); });
    unchanged("QN_set of a list", old, [](QN_String& out) { qn_basicppty::QN_set(out, threeTexts); });
    unchanged("QN_set of a choice", old, [&](QN_String& out) { qn_basicppty::QN_set(out, choices()); });
}

TEST(AllocationFailures, OfRecordChecks) {
    for (GoldenRecord const& golden : goldenRecords()) {
        if (golden.className() == "ItemVariant") continue;
        WorkSpaceVersion const version(golden.workSpaceVersion());
        PptyPtr const pattern = made(golden.className());
        Bytes const cut(golden.record.begin(), golden.record.end() - 1);
        unchanged(
            "check " + golden.fileName, [&] { return TempFile(cut); },
            [&](TempFile& file) {
                FileStreamRaw raw(file.fromStart());
                FileStreamEndian endian(raw.file());
                RecordCheck const check =
                    golden.isRaw() ? checkRecord(*pattern, raw) : checkRecord(*pattern, endian);
                return check.message();
            });
    }
    unchanged(
        "check a variant", [] { return TempFile(hex("06000000 7F000000")); },
        [](TempFile& file) {
            FileStreamRaw stream(file.fromStart());
            return checkVariantRecord(stream).message();
        });
}

TEST(AllocationFailures, OfPropertyFiles) {
    TempDir const folder;
    auto const sample = [] {
        PropertyList list;
        for (GoldenRecord const& golden : goldenRecords())
            if (golden.fileName == golden.className() + ".raw") list.add(readFrom(golden));
        return list;
    };
    string const path = folder.path("all.props"), other = folder.path("other.props");
    ASSERT_TRUE(saveProperties(path, sample()).ok());
    unchanged(
        "add", [] { return PropertyList(); },
        [](PropertyList& list) {
            list.add(std::make_unique<PptyInt>("added", 1));
            return list.size();
        });
    unchanged("saveProperties", sample, [&](PropertyList& list) { return saveProperties(other, list); });
    unchanged("saveProperties in a missing folder", sample,
              [&](PropertyList& list) { return saveProperties(folder.path("none/a.props"), list); });
    unchanged(
        "loadProperties",
        [] {
            PropertyList list;
            list.add(std::make_unique<PptyInt>("old", 1));
            return list;
        },
        [&](PropertyList& list) { return loadProperties(path, list); });
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path("")), {}), 2)
        << "no temporary file";
}

TEST(AllocationFailures, OfMetaClasses) {
    unchanged("registration", [] {
        unsigned int const schema = 1;
        return QN_MetaClass<PptyInt>("AllocationFailuresClass", schema).className();
    });
    EXPECT_EQ(QN_MetaClassBase::find("AllocationFailuresClass"), nullptr);
    unchanged("find", [] { return QN_MetaClassBase::find("PptyFloat"); });
    unchanged("registered", [] { return QN_MetaClassBase::registered(); });
    unchanged("hasAncestor", [] { return metaClass_PptyInt.hasAncestor(QN_String("QN_Class")); });
    unchanged("QN_System_Enum", [] {
        QN_System_Enum enums;
        enums.enums["mode"] = nullptr;
        return enums.enums.size();
    });
}

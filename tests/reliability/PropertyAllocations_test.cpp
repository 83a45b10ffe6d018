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

auto const none = [] { return 0; };

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

void readFrom(Ppty& property, Reading const& file, bool isRaw) {
    FileStreamRaw raw(file.fromStart());
    FileStreamEndian endian(raw.file());
    isRaw ? property.readFrom(raw) : property.readFrom(endian);
}

/// A property of a golden record.
PptyPtr readFrom(GoldenRecord const& golden) {
    PptyPtr property = made(golden.className());
    readFrom(*property, Reading(golden.record), golden.isRaw());
    return property;
}

/// The constructors of a kind and its typed setter; the last arguments are the bounds of a ranged kind.
template <class Kind, class Value, class... Bounds>
void failConstructors(char const* kind, Value const& value, Bounds const&... bounds) {
    string const name = kind;
    auto const property = [&](auto const&... arguments) {
        failInTurn(name + ", " + std::to_string(sizeof...(arguments)) + " arguments", Promise::Unchanged,
                   none, [&](int) { return std::make_unique<Kind>(arguments...)->getName(); });
    };
    property();
    property(longText);
    property(longText, value);
    if constexpr (sizeof...(bounds) != 0) property(longText, value, bounds...);
    failInTurn(
        name + ", copy", Promise::Unchanged, [&] { return std::make_unique<Kind>(longText, value); },
        [](auto& original) { return PptyPtr(new Kind(*original)); });
}

} // namespace

TEST(AllocationFailures, OfVariants) {
    visitValues([](string const& kind, auto const& value) {
        auto const make = [&] { return ItemVariant(value); };
        failInTurn("ItemVariant of " + kind, Promise::Unchanged, none,
                   [&](int) { return ItemVariant(value); });
        failInTurn("copy of " + kind, Promise::Unchanged, make,
                   [](ItemVariant& v) { return ItemVariant(v); });
        failInTurn(
            "assign " + kind, Promise::Unchanged,
            [&] { return std::make_pair(ItemVariant("old"), ItemVariant(value)); },
            [](auto& pair) {
                pair.first = pair.second;
                return 0;
            });
    });
    failInTurn("makeDefault", Promise::Unchanged, none,
               [](int) { return ItemVariant::makeDefault<Strings>(); });
    failInTurn("ItemVariant of a C string", Promise::Unchanged, none,
               [](int) { return ItemVariant("a C string"); });
}

TEST(AllocationFailures, OfReading) {
    for (GoldenRecord const& golden : goldenRecords()) {
        if (golden.fileName.find("-empty") != string::npos) continue;
        WorkSpaceVersion const version(golden.workSpaceVersion());
        if (golden.className() == "ItemVariant") {
            if (golden.record[0] == 0 || golden.record[0] > 12) continue; // no value
            failInTurn(
                "read " + golden.fileName, Promise::Usable,
                [&] { return std::make_pair(Reading(golden.record), ItemVariant()); },
                [](auto& pair) {
                    FileStreamRaw stream(pair.first.fromStart());
                    pair.second.deleteValue();
                    pair.second.readFrom(stream);
                    return stream.failed();
                });
            continue;
        }
        failInTurn(
            "read " + golden.fileName, Promise::Usable,
            [&] { return std::make_pair(Reading(golden.record), made(golden.className())); },
            [&](auto& pair) {
                readFrom(*pair.second, pair.first, golden.isRaw());
                return 0;
            });
    }
}

TEST(AllocationFailures, OfProperties) {
    for (GoldenRecord const& golden : goldenRecords()) {
        string const kind = golden.className();
        if (golden.fileName != kind + ".raw") continue;
        auto const sample = [&] { return readFrom(golden); };
        auto const property = [&](char const* name, auto const& run) {
            failInTurn(kind + "::" + name, Promise::Unchanged, sample, run);
        };
        failInTurn(kind + "::metaNew", Promise::Unchanged, none, [&](int) { return made(kind)->getName(); });
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
    failInTurn("PptyString::setValue", Promise::Unchanged, text,
               [](PptyString& p) { return p.setValue(longText); });
    failInTurn("PptyString::setValue of a variant", Promise::Unchanged, text,
               [](PptyString& p) { return p.setValue(ItemVariant(longText)); });
    failInTurn(
        "PptyArrayString::setValue", Promise::Usable, [] { return PptyArrayString("name", Strings{"old"}); },
        [](PptyArrayString& p) { return p.setValue(threeTexts); });
    auto const choices = [] {
        PptyEnum p("mode", Choice("Low", 10));
        p.itemLabels = {"Low", longText};
        p.itemValues = {10, 20};
        return p;
    };
    failInTurn("PptyEnum::setValue of a label", Promise::Unchanged, choices,
               [](PptyEnum& p) { return p.setValue(ItemVariant(longText)); });
    failInTurn("PptyEnum::setValue of a number", Promise::Unchanged, choices,
               [](PptyEnum& p) { return p.setValue(ItemVariant(20)); });
    failInTurn("PptyEnum::setValue of a pair", Promise::Unchanged, choices,
               [](PptyEnum& p) { return p.setValue(Choice(longText, 30)); });
    auto const old = [] { return QN_String("old"); };
    failInTurn("QN_set of a bool", Promise::Unchanged, old, [](QN_String& out) {
        qn_basicppty::QN_set(out, false);
        return 0;
    });
    failInTurn("QN_set of a list", Promise::Unchanged, old, [](QN_String& out) {
        qn_basicppty::QN_set(out, threeTexts);
        return 0;
    });
    failInTurn("QN_set of a choice", Promise::Unchanged, old, [&](QN_String& out) {
        qn_basicppty::QN_set(out, choices());
        return 0;
    });
}

TEST(AllocationFailures, OfRecordChecks) {
    for (GoldenRecord const& golden : goldenRecords()) {
        if (golden.className() == "ItemVariant") continue;
        WorkSpaceVersion const version(golden.workSpaceVersion());
        PptyPtr const pattern = made(golden.className());
        Bytes const cut(golden.record.begin(), golden.record.end() - 1);
        failInTurn(
            "check " + golden.fileName, Promise::Unchanged, [&] { return Reading(cut); },
            [&](Reading& file) {
                FileStreamRaw raw(file.fromStart());
                FileStreamEndian endian(raw.file());
                RecordCheck const check =
                    golden.isRaw() ? checkRecord(*pattern, raw) : checkRecord(*pattern, endian);
                return check.message();
            });
    }
    failInTurn(
        "check a variant", Promise::Unchanged, [] { return Reading(hex("06000000 7F000000")); },
        [](Reading& file) {
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
    failInTurn(
        "add", Promise::Unchanged, [] { return PropertyList(); },
        [](PropertyList& list) {
            list.add(std::make_unique<PptyInt>("added", 1));
            return list.size();
        });
    failInTurn("saveProperties", Promise::Unchanged, sample,
               [&](PropertyList& list) { return saveProperties(other, list); });
    failInTurn("saveProperties in a missing folder", Promise::Unchanged, sample,
               [&](PropertyList& list) { return saveProperties(folder.path("none/a.props"), list); });
    failInTurn(
        "loadProperties", Promise::Unchanged,
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
    failInTurn("registration", Promise::Unchanged, none, [](int) {
        unsigned int const schema = 1;
        return QN_MetaClass<PptyInt>("AllocationFailuresClass", schema).className();
    });
    EXPECT_EQ(QN_MetaClassBase::find("AllocationFailuresClass"), nullptr);
    failInTurn("find", Promise::Unchanged, none, [](int) { return QN_MetaClassBase::find("PptyFloat"); });
    failInTurn("registered", Promise::Unchanged, none, [](int) { return QN_MetaClassBase::registered(); });
    failInTurn("hasAncestor", Promise::Unchanged, none,
               [](int) { return metaClass_PptyInt.hasAncestor(QN_String("QN_Class")); });
    failInTurn("QN_System_Enum", Promise::Unchanged, none, [](int) {
        QN_System_Enum enums;
        enums.enums["mode"] = nullptr;
        return enums.enums.size();
    });
}

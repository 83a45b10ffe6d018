// The two kinds whose values travel on both stream kinds, their texts, and the registry of enumerations.
#include <MRCommon/properties/PptyArrayString.h>
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/properties/PptyText.h>
#include <MRCommon/properties/QN_System_Enum.h>

#include "examples/WorkSpaceVersion.h"
#include "support/Allocations.h"
#include "support/Slots.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace quarn;

namespace {

using Pair = Tuple2<QN_String, int>;

PptyEnum mode() {
    PptyEnum p("mode", Pair("none", 0));
    p.itemLabels = {"Low", "High"};
    p.itemValues = {10, 20};
    return p;
}

Bytes rawRecordOf(Ppty const& ppty) {
    TempFile file;
    FileStreamRaw stream(file);
    ppty.writeTo(stream);
    return file.bytes();
}

Pair readAs(std::string const& record) {
    PptyEnum p("before", Pair("before", 99));
    TempFile file(hex(record));
    FileStreamRaw stream(file);
    p.readFrom(stream);
    return *p.getRefToValue();
}

std::string text(Array<QN_String> const& list) {
    QN_String out("a longer text from before");
    qn_basicppty::QN_set(out, list);
    EXPECT_EQ(out.capacity(), out.length() + 1);
    return out.c_str();
}

constexpr char const* table = "02000000 04000000 4C6F7700 05000000 4869676800  02000000 0A000000 14000000";

} // namespace

TEST(PptyArrayString, HasTheListsText) {
    EXPECT_EQ(text({}), "");
    EXPECT_EQ(text({"a"}), "[ a ]");
    EXPECT_EQ(text({"a", "b", "c"}), "[ a, b, c ]");
    EXPECT_EQ(text({"", ""}), "[ ,  ]");
    EXPECT_STREQ(PptyArrayString("n", {"a", "b"}).toStr().c_str(), "[ a, b ]");
    QN_String flag("longer");
    qn_basicppty::QN_set(flag, true);
    EXPECT_TRUE(flag == "True" && flag.size() == 5);
}

TEST(PptyArrayString, MakesItsTextWithoutOneOfEachElement) {
    PptyArrayString p("n");
    for (int i = 0; i < 50; ++i) p.getRefToValue()->push_back("a text too long to stand in a small buffer");
    AllocationCounter count;
    EXPECT_EQ(p.toStr().length(), 50 * 44u + 2);
    EXPECT_LT(count.made(), 20);
}

TEST(PptyArrayString, TakesListsOnly) {
    PptyArrayString p("n", {"a", "b"});
    EXPECT_EQ(rawRecordOf(PptyArrayString("n", {"a"})), hex("02000000 6E00 01000000 02000000 6100"));
    EXPECT_TRUE(p.setValue(ItemVariant("text")) && p.getRefToValue()->size() == 2);
    EXPECT_TRUE(p.setValue(ItemVariant(Array<QN_String>{"c"})) && p.getRefToValue()->size() == 1);
    EXPECT_TRUE(p.setValue(Array<QN_String>{"d", "e", "f"}));
    std::unique_ptr<Ppty> const copy(p.cloneWithNewName("m"));
    p.getRefToValue()->reserve(0, false);
    EXPECT_STREQ(copy->toStr().c_str(), "[ d, e, f ]");
    EXPECT_TRUE(copy->getType() == 11 && copy->getVariantValue().tag() == 11);
    EXPECT_EQ(rawRecordOf(p), hex("02000000 6E00 00000000"));
}

TEST(PptyEnum, LooksChoicesUp) {
    PptyEnum p = mode();
    EXPECT_TRUE(p.setValue(ItemVariant("High")) && *p.getRefToValue() == Pair("High", 20));
    EXPECT_TRUE(p.setValue(ItemVariant(10)) && *p.getRefToValue() == Pair("Low", 10));
    EXPECT_TRUE(p.setValue(ItemVariant(Pair("whatever", 20))) && *p.getRefToValue() == Pair("High", 20));
    for (ItemVariant const& none : {ItemVariant(15), ItemVariant("low"), ItemVariant(Pair("Low", 1)),
                                    ItemVariant(10.0f), ItemVariant(Array<QN_String>{"Low"}), ItemVariant()})
        EXPECT_FALSE(p.setValue(none));
    ItemVariant gone("Low");
    gone.deleteValue();
    EXPECT_FALSE(p.setValue(gone));
    EXPECT_EQ(*p.getRefToValue(), Pair("High", 20));
    EXPECT_FALSE(PptyEnum("e").setValue(ItemVariant(-1))) << "an empty table";
    EXPECT_TRUE(p.setValue(Pair("free", 3)) && *p.getRefToValue() == Pair("free", 3));
}

TEST(PptyEnum, PrefersTheFirstOfEqualsAndWantsWholeEntries) {
    PptyEnum p = mode();
    p.itemLabels = {"A", "B", "A", "lonely"};
    p.itemValues = {1, 1, 3};
    EXPECT_TRUE(p.setValue(ItemVariant(1)) && p.getRefToValue()->first == "A");
    EXPECT_TRUE(p.setValue(ItemVariant("A")) && p.getRefToValue()->second == 1);
    EXPECT_FALSE(p.setValue(ItemVariant("lonely")));
    p.itemLabels = {"A"};
    EXPECT_FALSE(p.setValue(ItemVariant(3)));
}

TEST(PptyEnum, IsDescribedByTextAndRecord) {
    EXPECT_STREQ(PptyEnum("mode", Pair("Fast", 2)).toStr().c_str(), " PptyEnum : mode( Fast, 2 )\n");
    EXPECT_STREQ(PptyEnum("e").toStr().c_str(), " PptyEnum : e( , -1 )\n");
    EXPECT_EQ(rawRecordOf(PptyEnum("e")),
              hex("02000000 6500 02000000 01000000 00 FFFFFFFF 00000000 00000000"));
    EXPECT_TRUE(mode().getType() == 18 && mode().getVariantValue().tag() == 12 &&
                mode().getClassSchema() == 2);
    std::unique_ptr<Ppty> const copy(mode().cloneWithNewName("m"));
    EXPECT_EQ(static_cast<PptyEnum&>(*copy).itemValues[1], 20);
    TempFile file;
    RecordingStream<FileStreamEndian> endian(file);
    mode().writeTo(endian);
    EXPECT_EQ(endian.calls, (std::vector<std::size_t>{5, 5, 4, 5, 8})) << "the values are one block";
}

TEST(PptyEnum, ReadsTheLayoutThatTheWorkSpaceTells) {
    std::string const head = "02000000 6500 ", labelled = "02000000 02000000 5800 14000000 ", t = table;
    {
        WorkSpaceVersion const version(5088);
        EXPECT_EQ(readAs(head + labelled + t), Pair("X", 20)) << "as stored, untested";
        EXPECT_EQ(readAs(head + "01000000 14000000 " + t), Pair("High", 20));
        EXPECT_EQ(readAs(head + "00000000 0A000000 " + t), Pair("Low", 10));
    }
    {
        WorkSpaceVersion const version(5087);
        EXPECT_EQ(readAs(head + "14000000 " + t), Pair("High", 20));
        EXPECT_EQ(readAs(head + "1E000000 " + t), Pair("", 30));
        EXPECT_EQ(readAs(head + labelled + t).second, 2) << "the layout number taken as index";
    }
    struct : ConfigurationHost {
        ConfigurationObject* getObject(QN_String const&) override { return nullptr; }
    } ignorant;
    ConfigurationMngr::instance().host = &ignorant;
    EXPECT_EQ(readAs(head + labelled + t), Pair("X", 20));
    ConfigurationMngr::instance().host = nullptr;
    EXPECT_EQ(readAs(head + labelled + t), Pair("X", 20));
}

TEST(EnumRegistry, DeletesItsDefinitionsInTheOrderOfTheirNames) {
    static std::string gone;
    struct Definition : QN_Enum {
        explicit Definition(char letter_) : letter(letter_) {}
        ~Definition() override { gone += letter; }
        char letter;
    };
    {
        QN_System_Enum registry;
        registry.enums["beta"] = new Definition('b');
        registry.enums["alpha"] = new Definition('a');
        registry.enums["none"] = nullptr;
    }
    EXPECT_EQ(gone, "ab");
    EXPECT_EQ(&QN_System_Enum::instance(), &QN_System_Enum::instance());
    EXPECT_TRUE(QN_System_Enum::instance().enums.empty());
}

TEST(Configuration, IsOneManagerWithoutAHostAtFirst) {
    ConfigurationMngr& manager = ConfigurationMngr::instance();
    EXPECT_EQ(&manager, &ConfigurationMngr::instance());
    EXPECT_EQ(manager.host, nullptr);
    EXPECT_EQ(manager.userData, nullptr);
    EXPECT_EQ(slotOf(&ConfigurationHost::getObject), 2u);
    EXPECT_EQ(slotOf(&ConfigurationObject::getVersion), 2u);
}

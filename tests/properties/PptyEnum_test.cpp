// The property with one choice out of a table: look-up, both layouts of its record.
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/properties/QN_MetaClass.h>

#include "examples/WorkSpaceVersion.h"
#include "properties/Records.h"
#include "support/Allocations.h"
#include "support/Slots.h"
#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace quarn;

namespace {

using Pair = Tuple2<QN_String, int>;

class OwnSchema : public PptyEnum {
public:
    QN_CLASS_IDENTITY
    QN_PPTY_COPIES(OwnSchema)
    using PptyEnum::PptyEnum;
};

QN_MetaClass<OwnSchema> const metaClass_OwnSchema("OwnSchema", 9);
QN_MetaClassBase const& OwnSchema::metaClass() { return metaClass_OwnSchema; }

PptyEnum mode() {
    PptyEnum p("mode", Pair("none", 0));
    p.itemLabels = {"Low", "High"};
    p.itemValues = {10, 20};
    return p;
}

Pair readAs(std::string const& record) {
    PptyEnum p("before", Pair("before", 99));
    read(p, hex(record));
    return *p.getRefToValue();
}

constexpr char const* table = "02000000 04000000 4C6F7700 05000000 4869676800  02000000 0A000000 14000000";

} // namespace

TEST(PptyEnum, LooksUpChoices) {
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

TEST(PptyEnum, TakesTheFirstOfEqualsAndNeedsCompleteEntries) {
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
    EXPECT_EQ(recordOf(PptyEnum("e")), hex("02000000 6500 02000000 01000000 00 FFFFFFFF 00000000 00000000"));
    EXPECT_TRUE(mode().getType() == 18 && mode().getVariantValue().tag() == 12 &&
                mode().getClassSchema() == 2);
    std::unique_ptr<Ppty> const copy(mode().cloneWithNewName("m"));
    EXPECT_EQ(static_cast<PptyEnum&>(*copy).itemValues[1], 20);
    TempFile file;
    RecordingStream<FileStreamEndian> endian(file);
    mode().writeTo(endian);
    EXPECT_EQ(endian.calls, (std::vector<std::size_t>{5, 5, 4, 5, 8})) << "the values are one block";
}

TEST(PptyEnum, ReadsTheLayoutOfTheWorkSpaceVersion) {
    std::string const head = "02000000 6500 ", labelled = "02000000 02000000 5800 14000000 ", t = table;
    {
        WorkSpaceVersion const version(5088);
        EXPECT_EQ(readAs(head + labelled + t), Pair("X", 20)) << "as stored";
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
    } hostWithoutWorkSpace;
    ConfigurationMngr::instance().host = &hostWithoutWorkSpace;
    EXPECT_EQ(readAs(head + labelled + t), Pair("X", 20));
    ConfigurationMngr::instance().host = nullptr;
    EXPECT_EQ(readAs(head + labelled + t), Pair("X", 20));
}

TEST(PptyEnum, WritesTheNewLayoutWhateverVersionAndDerivedSchema) {
    Bytes const record = hex("02000000 6500 02000000 01000000 00 FFFFFFFF 00000000 00000000");
    EXPECT_EQ(recordOf(OwnSchema("e")), record);
    WorkSpaceVersion const version(5087);
    EXPECT_EQ(recordOf(PptyEnum("e")), record);
}

TEST(PptyEnum, KeepsItsPairWhenMemoryRunsOut) {
    PptyEnum p = mode();
    ItemVariant const high("High");
    p.getRefToValue()->first.reserve(0, false); // so that the label needs memory

    WorkSpaceVersion const version(5087);
    TempFile file(hex(std::string("02000000 6500 14000000") + table));
    FileStreamRaw stream(file);
    PptyEnum unread("e", Pair("X", 3));
    FailingAllocation failing(0);
    EXPECT_THROW(unread.readFrom(stream), std::bad_alloc);
    EXPECT_EQ(*unread.getRefToValue(), Pair("X", 3)) << "the index follows the table";
}

TEST(Configuration, IsOneManagerWithoutAHostAtFirst) {
    ConfigurationMngr& manager = ConfigurationMngr::instance();
    EXPECT_EQ(&manager, &ConfigurationMngr::instance());
    EXPECT_EQ(manager.host, nullptr);
    EXPECT_EQ(manager.userData, nullptr);
    EXPECT_EQ(slotOf(&ConfigurationHost::getObject), 2u);
    EXPECT_EQ(slotOf(&ConfigurationObject::getVersion), 2u);
}

// The registry of classes, and ancestry by run-time type, with classes of a host.
#include <MRCommon/properties/MetaClasses.h>

#include "support/Allocations.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

using namespace quarn;

namespace {

/// A kind that a host adds.
class Wind : public PptyFloat {
public:
    QN_CLASS_IDENTITY
    QN_PPTY_COPIES(Wind)
};

class Storm : public Wind {
public:
    QN_CLASS_IDENTITY
    QN_PPTY_COPIES(Storm)
};

QN_MetaClass<Wind> const metaClass_Wind("Wind", 7);
QN_MetaClass<Storm> const metaClass_Storm("Storm", 9);

QN_MetaClassBase const& Wind::metaClass() { return metaClass_Wind; }
QN_MetaClassBase const& Storm::metaClass() { return metaClass_Storm; }

} // namespace

TEST(QN_MetaClassBase, FindsTheClassesOfTheLibraryInTheirOrder) {
    std::string names;
    std::set<unsigned long long> ids;
    for (QN_MetaClassBase const* m : QN_MetaClassBase::registered()) {
        names += std::string(m->className().c_str()) + " ";
        ids.insert(m->classId());
        EXPECT_EQ(QN_MetaClassBase::find(m->className()), m);
        EXPECT_EQ(QN_MetaClassBase::find(m->classId()), m);
    }
    EXPECT_EQ(names,
              "QN_Class PptyInt PptyInt64 PptyDouble PptyFloat PptyBool PptyString PptyVector3F "
              "PptyVector3D PptyColor4F PptyColor4D PptyArrayString PptyFile PptyDirectory RIntPpty "
              "RInt64Ppty RDoublePpty RFloatPpty RangeVect3FPpty RangeVect3DPpty PptyEnum Wind Storm ");
    EXPECT_EQ(ids.size(), QN_MetaClassBase::registered().size());
    EXPECT_EQ(QN_MetaClassBase::find("NoSuchClass"), nullptr);
    EXPECT_EQ(QN_MetaClassBase::find(0ull), nullptr);
}

TEST(QN_MetaClassBase, MakesIdsFromNames) {
    // FNV-1a of "a", from the published test vectors.
    QN_MetaClass<Wind> const a("a", 1);
    EXPECT_EQ(a.classId(), 0xAF63DC4C8601EC8Cull);
    QN_MetaClass<Wind> const again("a", 2);
    EXPECT_EQ(again.classId(), a.classId() + 1) << "a taken id moves on by one";
    EXPECT_EQ(QN_MetaClassBase::find("a"), &a) << "the oldest of a name";
}

TEST(QN_MetaClassBase, LeavesTheRegistryWhenDestroyed) {
    unsigned int const before = QN_MetaClassBase::registered().size();
    auto first = std::make_unique<QN_MetaClass<Wind>>("Twice", 1);
    QN_MetaClass<Wind> const second("Twice", 2);
    EXPECT_EQ(QN_MetaClassBase::registered().size(), before + 2);
    unsigned long long const id = first->classId();
    first.reset();
    EXPECT_EQ(QN_MetaClassBase::find(id), nullptr);
    EXPECT_EQ(QN_MetaClassBase::find("Twice"), &second)
        << "found although its id is not the hash of its name";
}

TEST(QN_MetaClassBase, FindsTheOldestOfANameWhenAnotherTakesItsId) {
    auto first = std::make_unique<QN_MetaClass<Wind>>("Thrice", 1);
    QN_MetaClass<Wind> const second("Thrice", 2);
    first.reset();
    QN_MetaClass<Wind> const third("Thrice", 3);
    EXPECT_EQ(third.classId() + 1, second.classId());
    EXPECT_EQ(QN_MetaClassBase::find("Thrice"), &second);
}

TEST(QN_MetaClassBase, KnowsAncestorsByRunTimeType) {
    struct {
        Ppty const& object;
        char const* name;
        bool answer;
    } const cases[] = {
        {PptyFile(), "PptyFile", true},  {PptyFile(), "QN_Class", true}, {PptyFile(), "PptyString", false},
        {PptyInt(), "PptyInt64", false}, {Wind(), "PptyFloat", true},    {Wind(), "QN_Class", true},
        {Wind(), "Storm", false},        {Storm(), "Wind", true},        {Storm(), "PptyFloat", true},
        {PptyFloat(), "Wind", false},    {Storm(), "PptyInt", false},    {Storm(), "NoSuchClass", false},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(c.object.hasAncestor(c.name), c.answer) << c.object.getClassName().c_str() << " " << c.name;
        QN_MetaClassBase const* const m = QN_MetaClassBase::find(c.name);
        EXPECT_EQ(c.object.hasAncestor(m == nullptr ? 0ull : m->classId()), c.answer);
    }
    EXPECT_TRUE(metaClass_QN_Class.hasAncestor("QN_Class"));
    EXPECT_TRUE(metaClass_QN_Class.hasAncestor(metaClass_QN_Class.classId()));
    EXPECT_FALSE(metaClass_QN_Class.hasAncestor("PptyInt"));
}

TEST(QN_MetaClassBase, KnowsAnAncestorByANameThatAnotherClassShares) {
    QN_MetaClass<PptyInt> const other("Gust", 1);
    QN_MetaClass<Wind> const ancestor("Gust", 1);
    EXPECT_TRUE(metaClass_Storm.hasAncestor("Gust"));
    EXPECT_FALSE(metaClass_PptyFloat.hasAncestor("Gust"));
}

TEST(QN_MetaClassBase, ForgetsAncestorsWhenClassesComeOrGo) {
    auto again = std::make_unique<QN_MetaClass<Storm>>("Again", 1);
    void* const place = again.get();
    EXPECT_TRUE(again->hasAncestor("Wind"));
    again.reset();
    auto other =
        std::make_unique<QN_MetaClass<PptyInt>>("Again", 1); // same name and id, perhaps the same place
    EXPECT_FALSE(other->hasAncestor("Wind")) << (other.get() == place ? "in the same place" : "elsewhere");
}

TEST(QN_MetaClassBase, AddsUpTheSchemasOfItsAncestors) {
    unsigned int const root = metaClass_QN_Class.getGenealogyTreeSchema();
    EXPECT_EQ(root, 1u);
    EXPECT_EQ(metaClass_PptyInt.getGenealogyTreeSchema(), root + 1);
    EXPECT_EQ(metaClass_Storm.getGenealogyTreeSchema(), root + 1 + 7 + 9);
}

TEST(QN_MetaClassBase, SearchesAncestorsWithoutAllocating) {
    PptyInt const p("p");
    QN_String const name("PptyFloat");
    AllocationCounter count;
    EXPECT_FALSE(p.hasAncestor(name));
    EXPECT_EQ(count.made(), 0);
}

TEST(QN_MetaClassBase, PrintsItsDescription) {
    testing::internal::CaptureStdout();
    Wind().printfMeta();
    std::string const line = testing::internal::GetCapturedStdout();
    EXPECT_EQ(line.rfind("Wind (id ", 0), 0u) << line;
    EXPECT_NE(line.find("schema 7)\n"), std::string::npos) << line;
}

TEST(QN_MetaClassBase, IsItsOwnAncestor) {
    EXPECT_TRUE(metaClass_QN_Class.hasAncestor(metaClass_QN_Class.classId()));
    EXPECT_EQ(metaClass_QN_Class.getGenealogyTreeSchema(), metaClass_QN_Class.classSchema());
    QN_MetaClassBase const plain("Plain", 3);
    EXPECT_TRUE(plain.hasAncestor(plain.classId()) && plain.hasAncestor("Plain"));
    EXPECT_TRUE(plain.hasAncestor(metaClass_QN_Class.classId()));
    EXPECT_EQ(plain.getGenealogyTreeSchema(), 3 + metaClass_QN_Class.classSchema());
}

TEST(QN_MetaClassBase, IsUnrelatedToOthersWithoutTheTemplate) {
    QN_MetaClassBase const plain("Plain", 3);
    EXPECT_FALSE(plain.hasAncestor("PptyInt"));
    EXPECT_FALSE(metaClass_PptyInt.hasAncestor("Plain"));
    EXPECT_EQ(plain.metaNew(), nullptr);
    void* object = &object;
    plain.metaDelete(object);
    EXPECT_EQ(object, &object);
}

TEST(QN_MetaClassBase, AnswersManyQuestionsRepeatedly) {
    Array<QN_MetaClassBase const*> const classes = QN_MetaClassBase::registered();
    for (int round = 0; round < 3; ++round)
        for (QN_MetaClassBase const* ancestor : classes)
            for (QN_MetaClassBase const* descendant : classes) {
                if (descendant == &metaClass_Wind || descendant == &metaClass_Storm) continue;
                bool const expected = ancestor == descendant || ancestor == &metaClass_QN_Class;
                ASSERT_EQ(descendant->hasAncestor(ancestor->classId()), expected)
                    << descendant->className().c_str() << " below " << ancestor->className().c_str();
                ASSERT_EQ(descendant->hasAncestor(ancestor->className()), expected);
            }
}

TEST(QN_MetaClassBase, ForgetsAnswersAboutDestroyedClasses) {
    auto ancestor = std::make_unique<QN_MetaClass<PptyInt>>("Alias", 1);
    unsigned long long const id = ancestor->classId();
    EXPECT_TRUE(metaClass_PptyInt.hasAncestor(id));
    ancestor.reset();
    EXPECT_FALSE(metaClass_PptyInt.hasAncestor(id));
    QN_MetaClass<PptyFloat> const other("Alias", 1);
    EXPECT_EQ(other.classId(), id);
    EXPECT_FALSE(metaClass_PptyInt.hasAncestor(id));
}

// QN_MetaClassBase: classes without the template, ancestors by id, remembered answers.
#include <MRCommon/properties/MetaClasses.h>

#include <gtest/gtest.h>

#include <memory>

using namespace quarn;

namespace {

void* storage = nullptr;
bool wasNullInDestructor = false;

struct Observer : QN_Class {
    ~Observer() override { wasNullInDestructor = storage == nullptr; }
};

} // namespace

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

TEST(QN_MetaClass, NullsThePointerBeforeItDeletesTheObject) {
    QN_MetaClass<Observer> const metaClass("Observer", 1);
    storage = metaClass.metaNew();
    ASSERT_NE(storage, nullptr);
    metaClass.metaDelete(storage);
    EXPECT_TRUE(wasNullInDestructor);
}

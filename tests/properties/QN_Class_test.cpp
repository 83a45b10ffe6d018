// The root class: the identity of objects whose class declares none.
#include <MRCommon/properties/QN_Class.h>

#include <gtest/gtest.h>

#include <string>

using namespace quarn;

TEST(QN_Class, IsTheIdentityOfClassesThatDeclareNone) {
    struct : QN_Class {
    } const object;
    EXPECT_STREQ(object.getClassName().c_str(), "QN_Class");
    EXPECT_EQ(object.getClassId(), metaClass_QN_Class.classId());
    EXPECT_EQ(object.getClassSchema(), 1u);
    EXPECT_TRUE(object.hasAncestor("QN_Class") && object.hasAncestor(metaClass_QN_Class.classId()));
    EXPECT_FALSE(object.hasAncestor("PptyInt") ||
                 object.hasAncestor(QN_MetaClassBase::find("PptyInt")->classId()));
    testing::internal::CaptureStdout();
    object.printfMeta();
    EXPECT_EQ(testing::internal::GetCapturedStdout().rfind("QN_Class (id ", 0), 0u);
}

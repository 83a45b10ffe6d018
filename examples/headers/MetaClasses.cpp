// The objects that stand for the library's classes.
#include <MRCommon/properties/MetaClasses.h>

#include "claim.h"

using namespace quarn;

int main() {
    void* object = metaClass_PptyFloat.metaNew();
    auto& gravity = *static_cast<PptyFloat*>(object);
    gravity.setValue(-9.81f);
    claim(gravity.getClassName() == "PptyFloat", "it made a PptyFloat");
    claim(metaClass_PptyFloat.getClassSizeOf() == sizeof(PptyFloat), "it knows the size of its objects");
    claim(metaClass_PptyFloat.hasAncestor("QN_Class"), "it knows the ancestors");

    metaClass_PptyFloat.metaDelete(object);
    claim(object == nullptr, "the object is deleted and the pointer null");
    claim(metaClass_PptyEnum.classSchema() == 2, "the record of enumerations has version 2");
}

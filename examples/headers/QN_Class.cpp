// The class of an object, at run time.
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/QN_Class.h>

#include "claim.h"

using namespace quarn;

int main() {
    PptyFloat const gravity("gravity", -9.81f);
    QN_Class const& object = gravity;
    claim(object.getClassName() == "PptyFloat" && object.getClassSchema() == 1,
          "class and version of its record");
    claim(object.hasAncestor("PptyFloat") && object.hasAncestor("QN_Class"),
          "it descends from its own class and the root");
    claim(!object.hasAncestor("PptyDouble"), "and from no other kind");
    claim(object.getClassId() == PptyFloat::metaClass().classId(), "the id is that of the class");
    object.printfMeta();
}

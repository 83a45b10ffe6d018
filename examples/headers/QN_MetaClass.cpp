// A class that a host adds, registered while its meta-class object lives.
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/QN_MetaClass.h>

#include "claim.h"

using namespace quarn;

class AnglePpty : public PptyDouble {
public:
    QN_CLASS_IDENTITY
    QN_PPTY_COPIES(AnglePpty)
};

QN_MetaClass<AnglePpty> const metaClass_AnglePpty("AnglePpty", 1);
QN_MetaClassBase const& AnglePpty::metaClass() { return metaClass_AnglePpty; }

int main() {
    QN_MetaClassBase const* const found = QN_MetaClassBase::find("AnglePpty");
    claim(found == &metaClass_AnglePpty, "the class is found by its name");
    void* object = found->metaNew();
    claim(static_cast<Ppty*>(object)->hasAncestor("PptyDouble"), "its objects know their ancestors");
    found->metaDelete(object);
}

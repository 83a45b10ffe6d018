// All classes that are known, and an object of one that is known by name alone.
#include <MRCommon/properties/Ppty.h>
#include <qn_basic/QN_MetaClassBase.h>

#include "claim.h"

#include <cstring>

using namespace quarn;

int main() {
    unsigned int ranged = 0;
    for (QN_MetaClassBase const* const known : QN_MetaClassBase::registered())
        ranged += std::strncmp(known->className().c_str(), "R", 1) == 0 ? 1 : 0;
    claim(ranged == 6, "six ranged kinds are registered");

    QN_MetaClassBase const* const kind = QN_MetaClassBase::find("PptyString");
    claim(kind != nullptr && QN_MetaClassBase::find(kind->classId()) == kind, "found by name and by id");
    claim(QN_MetaClassBase::find("PptyStrnig") == nullptr, "what is not known is null");

    void* object = kind->metaNew(); // ours until metaDelete
    claim(static_cast<Ppty*>(object)->setValue(ItemVariant("sea")), "it works like any other");
    kind->metaDelete(object);
    claim(object == nullptr, "given back");
}

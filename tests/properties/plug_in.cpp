// A plug-in's view of the property classes: plug_in_symbols.sh compiles it and looks at what it exports.
#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/QN_System_Enum.h>

using namespace quarn;

class MRCOMMON_API Gale : public RFloatPpty {
public:
    QN_CLASS_IDENTITY
    QN_PPTY_COPIES(Gale)
    float twice() const { return value() * 2; }
};

class Choice : public PptyEnum { // without an identity of its own
public:
    QN_PPTY_COPIES(Choice)
};

QN_MetaClass<Gale> const metaClass_Gale("Gale", 1);
QN_MetaClassBase const& Gale::metaClass() { return metaClass_Gale; }

extern "C" MRCOMMON_API bool use(FileStreamRaw& stream) {
    ItemVariant variant(1.5f), moved(std::move(variant)), text("text");
    for (ItemVariant const& other :
         {ItemVariant(1), ItemVariant(2l), ItemVariant(3ll), ItemVariant(4.0), ItemVariant(true),
          ItemVariant(Vector3<float>(1, 2, 3)), ItemVariant(Vector3<double>(1, 2, 3)),
          ItemVariant(Color4<float>()), ItemVariant(Color4<double>()), ItemVariant(Array<QN_String>()),
          ItemVariant::makeDefault<Vector3<float>>(), ItemVariant::makeDefault<QN_String>()})
        variant = other;
    Gale gale;
    Choice choice;
    PptyEnum mode("mode");
    PptyArrayString list;
    RangeVect3FPpty vector("v");
    PptyBool flag("flag", true);
    QN_System_Enum enums;
    enums.enums["x"] = nullptr;
    void* object = metaClass_PptyFloat.metaNew();
    metaClass_PptyFloat.metaDelete(object);
    object = metaClass_Gale.metaNew();
    metaClass_Gale.metaDelete(object);
    gale.setValue(moved);
    flag.writeTo(stream);
    return gale.twice() > *moved.as<float>() && text.as<QN_String>() != nullptr && variant.tag() != 0 &&
           mode.getClassName() == choice.getClassName() && list.hasAncestor(vector.getClassId()) &&
           mode.getName() == vector.getName() && list.getClassSchema() == 1;
}

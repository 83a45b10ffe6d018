// A property kind that a host adds: the speed of a wind, with bounds, and the bearing that it comes from.
// docs/properties.md walks through it. Exits with 1 if a claim does not hold.
#include <MRCommon/MRCommon.h>

#include "claim.h"

#include <cstdio>
#include <memory>

using namespace quarn;

class WindPpty : public RFloatPpty, public CheckableRecord {
public:
    QN_CLASS_IDENTITY
    QN_PPTY_COPIES(WindPpty)

    WindPpty() : WindPpty("") {}
    explicit WindPpty(QN_String const& name, float speed = 0) : RFloatPpty(name, speed, 0, 60) {}

    using RFloatPpty::readFrom; // the FileStreamEndian forms, which store just the name
    using RFloatPpty::writeTo;
    void readFrom(FileStreamRaw& stream) override {
        RFloatPpty::readFrom(stream);
        bearing = encoding::readI32(stream);
    }
    void writeTo(FileStreamRaw& stream) const override {
        RFloatPpty::writeTo(stream);
        encoding::writeI32(stream, bearing);
    }
    void checkRawFields(RecordFields& fields) const override { fields.i32("bearing"); }

    int bearing = 0; // degrees
};

QN_MetaClass<WindPpty> const metaClass_WindPpty("WindPpty", 1);

QN_MetaClassBase const& WindPpty::metaClass() { return metaClass_WindPpty; }

namespace {

void checkIdentity(Ppty const& wind) {
    claim(wind.getClassName() == "WindPpty", "it has its own class name");
    claim(wind.getType() == Ppty::TYPE_RANGE_FLOAT, "its type code is that of its base");
    claim(wind.hasAncestor("WindPpty"), "it is a WindPpty");
    claim(wind.hasAncestor("RFloatPpty"), "it is a ranged float");
    claim(wind.hasAncestor("QN_Class"), "it descends from the root");
    claim(!wind.hasAncestor("PptyFloat"), "it is not a plain float");
}

void checkCopies(WindPpty const& wind) {
    std::unique_ptr<Ppty> const copy(wind.cloneWithNewName("breeze"));
    auto const* const breeze = dynamic_cast<WindPpty const*>(copy.get());
    claim(breeze != nullptr && breeze->bearing == wind.bearing, "its copies are winds with the same bearing");
    claim(copy->getName() == "breeze" && wind.getName() == "storm", "only the copy has the new name");
}

} // namespace

int main() {
    WindPpty storm("storm", 25);
    storm.bearing = 270;
    claim(storm.setValue(40.0f), "40 is within its bounds");
    claim(!storm.setValue(90.0f), "90 does not");
    checkCopies(storm);

    QN_MetaClassBase const* const found = QN_MetaClassBase::find("WindPpty");
    if (found == nullptr) return 1;
    void* object = found->metaNew();
    auto& loaded = *static_cast<Ppty*>(object);
    checkIdentity(loaded);

    std::FILE* const file = std::tmpfile();
    if (file == nullptr) return 1;
    FileStreamRaw stream(file);
    storm.writeTo(stream);
    claim(stream.finish(), "its record was written completely");
    std::rewind(file);
    claim(checkRecord(loaded, stream).good(), "its record is good, bearing included");
    loaded.readFrom(stream);
    claim(!stream.failed(), "its record was read completely");
    auto const& wind = static_cast<WindPpty const&>(loaded);
    claim(*loaded.getVariantValue().as<float>() == 40.0f, "its speed came back");
    claim(wind.bearing == 270, "its bearing came back");
    std::fclose(file);

    found->metaDelete(object);
    claim(object == nullptr, "the object is deleted and the pointer null");
}

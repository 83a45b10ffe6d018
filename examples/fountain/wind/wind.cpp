// fountain_wind: a wind for the fountain. It drags every particle along, higher ones more.
#include "GustPpty.h"

#include "../PlugIn.h"

#include <MRCommon/properties/QN_MetaClass.h>

#include <cmath>

using namespace quarn;

namespace {

QN_MetaClass<GustPpty> const metaClass_GustPpty("GustPpty", 1);

constexpr double drag = 0.55; // per second, at a height of one metre

} // namespace

QN_MetaClassBase const& GustPpty::metaClass() { return metaClass_GustPpty; }

Ppty* GustPpty::clone() const { return new GustPpty(*this); }

Ppty* GustPpty::cloneWithNewName(QN_String const& name) const { return withName(clone(), name); }

void GustPpty::readFrom(FileStreamRaw& stream) {
    RangeVect3FPpty::readFrom(stream);
    stream.read(&gustPeriod_, sizeof gustPeriod_);
}

void GustPpty::writeTo(FileStreamRaw& stream) const {
    RangeVect3FPpty::writeTo(stream);
    stream.write(&gustPeriod_, sizeof gustPeriod_);
}

void GustPpty::checkRawFields(RecordFields& fields) const { fields.bytes("gustPeriod", sizeof gustPeriod_); }

Vector3<double> GustPpty::at(double seconds) const {
    constexpr double turn = 6.283185307179586;
    double const gust = 1 + 0.5 * std::sin(turn * seconds / gustPeriod_);
    Vector3<float> const& mean = *getVariantValue().as<Vector3<float>>();
    return Vector3<double>(mean.x, mean.y, mean.z) * gust;
}

void fountainAccelerate(Ppty const& settings, double time, Vector3<double> const& position,
                        Vector3<double> const& velocity, Vector3<double>& acceleration) {
    double const height = std::max(position.z, 0.0);
    acceleration +=
        (static_cast<GustPpty const&>(settings).at(time) - velocity) * (drag * height / (1 + height));
}

char const* fountainSettingsClass() { return "GustPpty"; }

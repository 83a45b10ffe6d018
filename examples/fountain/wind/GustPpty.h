// GustPpty: a property kind that a plug-in adds: the velocity of the wind, bounded, with the period of its gusts.
//   raw record    that of a ranged vector, then the period in seconds as a double
#ifndef FOUNTAIN_WIND_GUSTPPTY_H
#define FOUNTAIN_WIND_GUSTPPTY_H

#include <MRCommon/properties/RangeVectPpty.h>
#include <MRCommon/properties/RecordCheck.h>

class GustPpty : public quarn::RangeVect3FPpty, public quarn::CheckableRecord {
public:
    QN_CLASS_IDENTITY

    GustPpty() = default;

    quarn::Ppty* clone() const override;
    quarn::Ppty* cloneWithNewName(quarn::QN_String const& name) const override;

    using RangeVect3FPpty::readFrom;
    using RangeVect3FPpty::writeTo;
    void readFrom(quarn::FileStreamRaw& stream) override;
    void writeTo(quarn::FileStreamRaw& stream) const override;
    void checkRawFields(quarn::RecordFields& fields) const override;

    /// Returns the velocity in metres a second, including gusts.
    quarn::Vector3<double> at(double seconds) const;

private:
    double gustPeriod_ = 1.7;
};

#endif

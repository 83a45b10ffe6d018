// WindPpty: a property kind of a plug-in's own: the wind's velocity, bounded, with the period of its gusts.
//   raw record    that of a ranged vector, then the period in seconds as a double
#ifndef FOUNTAIN_WIND_WINDPPTY_H
#define FOUNTAIN_WIND_WINDPPTY_H

#include <MRCommon/properties/RangeVectPpty.h>

class WindPpty : public quarn::RangeVect3FPpty {
public:
    QN_CLASS_IDENTITY

    WindPpty() = default;

    quarn::Ppty* clone() const override;
    quarn::Ppty* cloneWithNewName(quarn::QN_String const& name) const override;

    using RangeVect3FPpty::readFrom;
    using RangeVect3FPpty::writeTo;
    void readFrom(quarn::FileStreamRaw& stream) override;
    void writeTo(quarn::FileStreamRaw& stream) const override;

    /// The velocity in metres a second, gusts included.
    quarn::Vector3<double> at(double seconds) const;

private:
    double gustPeriod_ = 1.7;
};

#endif

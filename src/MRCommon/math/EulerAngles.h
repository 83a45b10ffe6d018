// EulerAngles: three angles for a rotation, in any of six axis orders.
//     Vector3<float> from(1, 0, 0);
//     getEulerAngles(&from, Vector3<float>(0, 1, 0), 2)         // degrees
// The angles of a quaternion, in radians, are its member getAngles (basic/Quaternion.h), defined here. On
// column vectors the turn by angle 0 comes first, the turn by angle 2 last, about these axes:
//     order 0  x y z      order 1  y z x      order 2  z x y
//     order 3  z y x      order 4  x z y      order 5  y x z
#ifndef MRCOMMON_MATH_EULERANGLES_H
#define MRCOMMON_MATH_EULERANGLES_H

#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/basic/Vector3.h>

// Axis numbers for the application; nothing here reads them.
extern MRCOMMON_API int AX; ///< 0
extern MRCOMMON_API int AY; ///< 1
extern MRCOMMON_API int AZ; ///< 2

namespace quarn {

/// The images of the axes 0, 1, 2 in each order of QN_PERMUTATION_XYZ: which angle turns about x, y and z.
/// Meant: the rows of the orders 3 and 4 are each other's, compared with what getAngles extracts.
extern MRCOMMON_API int const PERMUTATION_XYZ_IMAGES[6][3];

} // namespace quarn

/// The angles about x, y and z, in degrees, of the smallest rotation that turns the direction `*from` onto
/// `to`. Only `from` is normalised; `to` is taken for a unit vector as it is. Mode 1 answers in the order
/// PERMUTATION_XYZ_102; modes 2 and 3 in the orders PERMUTATION_XYZ_120 and PERMUTATION_XYZ_201, all three
/// angles negated. Another mode gives zeros. Like directions give zeros, exactly opposite ones, a `from` of
/// length 0 and a product n . to beyond -1 or 1 give NaN. `*from` is not modified.
MRCOMMON_API quarn::Vector3<float> getEulerAngles(quarn::Vector3<float>* from,
                                                  quarn::Vector3<float> const& to, int mode);

#endif

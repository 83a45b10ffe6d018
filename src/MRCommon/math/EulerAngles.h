// EulerAngles: three angles for a rotation, in any of six axis orders.
//     Vector3<float> from(1, 0, 0);
//     getEulerAngles(&from, Vector3<float>(0, 1, 0), 2)         // degrees
// The angles of a quaternion, in radians, are returned by its member getAngles (declared in basic/Quaternion.h, defined
// beside this header). For column vectors the rotation by angle 0 comes first, that by angle 2 last, about these axes:
//     order 0  x y z      order 1  y z x      order 2  z x y
//     order 3  z y x      order 4  x z y      order 5  y x z
#ifndef MRCOMMON_MATH_EULERANGLES_H
#define MRCOMMON_MATH_EULERANGLES_H

#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/Export.h>

// Axis numbers for the application; the library does not read them.
extern MRCOMMON_API int AX; ///< 0
extern MRCOMMON_API int AY; ///< 1
extern MRCOMMON_API int AZ; ///< 2

namespace quarn {

/// The images of the axes 0, 1, 2 in each order of QN_PERMUTATION_XYZ: the index of the angle about x, y and z.
/// Intentional: the rows of the orders 3 and 4 are exchanged, compared with what getAngles extracts.
/// Tested by PermutationXyzImages.NameTheAngleAboutEachAxis.
extern MRCOMMON_API int const PERMUTATION_XYZ_IMAGES[6][3];

} // namespace quarn

/// Returns the angles about x, y and z, in degrees, of the smallest rotation that takes the direction `*from` to `to`.
/// Only `from` is normalised: `to` must be a unit vector. Mode 1 uses the order PERMUTATION_XYZ_102, modes 2 and 3 the
/// orders PERMUTATION_XYZ_120 and PERMUTATION_XYZ_201 with all three angles negated. Any other mode returns zeros.
/// Equal directions give zeros, opposite directions and a `from` of length 0 give NaN. If `to` is not a unit vector, its
/// product with the normalised `from` is used all the same: 1, or up to 4 epsilon above 1, gives zeros, and a product
/// above that or below -1 gives NaN. `*from` is not modified.
MRCOMMON_API quarn::Vector3<float> getEulerAngles(quarn::Vector3<float>* from,
                                                  quarn::Vector3<float> const& to, int mode);

#endif

// RotationMatrix: an axis rotated by a matrix, and the quaternion of a rotation matrix.
//     TransformaEje(placement, Vector3<float>(0, 0, 1))       // where the z axis of a placed body points
//     matrix3tools::getQuaternion_VERSION3(m, q);             // m for row vectors, q of length 1, q.w >= 0
#ifndef MRCOMMON_MATH_ROTATIONMATRIX_H
#define MRCOMMON_MATH_ROTATIONMATRIX_H

#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/Export.h>

///@{
/// Returns the row vector `axis` times the three rotation rows of `m`, each normalised first, so that the scale has no
/// effect; neither has the translation. A row shorter than about 1e-14 (float) or 1e-28 (double) is not normalised.
MRCOMMON_API quarn::Vector3<float> TransformaEje(quarn::Matrix4<float> const& m,
                                                 quarn::Vector3<float> const& axis);
MRCOMMON_API quarn::Vector3<double> TransformaEje(quarn::Matrix4<double> const& m,
                                                  quarn::Vector3<double> const& axis);
///@}

namespace quarn::matrix3tools {

/// Writes the unit quaternion, w not negative, of a rotation matrix for row vectors. A matrix that is not a rotation gives
/// a unit quaternion, too, unless its elements are so large (about 1e154) that their squares overflow. Instantiated in
/// libMRCommon for Matrix3<double>. (After Ken Shoemake, "Quaternion calculus and fast animation", 1987.)
template <class M, class T> MRCOMMON_API void getQuaternion_VERSION3(M const& m, Quaternion<T>& q);

/// The only instance in libMRCommon.
extern template MRCOMMON_API void getQuaternion_VERSION3<Matrix3<double>, double>(Matrix3<double> const& m,
                                                                                  Quaternion<double>& q);

} // namespace quarn::matrix3tools

#endif

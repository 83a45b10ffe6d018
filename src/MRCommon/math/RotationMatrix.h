// RotationMatrix: an axis carried along by a matrix, and the quaternion of a rotation matrix.
//     TransformaEje(placement, Vector3<float>(0, 0, 1))       // where the z axis of a placed body points
//     matrix3tools::getQuaternion_VERSION3(m, q);             // m for row vectors, q of length 1, q.w >= 0
#ifndef MRCOMMON_MATH_ROTATIONMATRIX_H
#define MRCOMMON_MATH_ROTATIONMATRIX_H

#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/basic/Vector3.h>

///@{
/// The row vector `axis` times the three rotation rows of `m`, each first brought to length 1, so that scale
/// does not count; nor does the translation. A row shorter than about 1e-14 (float) or 1e-28 (double) is
/// taken as it is.
MRCOMMON_API quarn::Vector3<float> TransformaEje(quarn::Matrix4<float> const& m,
                                                 quarn::Vector3<float> const& axis);
MRCOMMON_API quarn::Vector3<double> TransformaEje(quarn::Matrix4<double> const& m,
                                                  quarn::Vector3<double> const& axis);
///@}

namespace quarn::matrix3tools {

/// The unit quaternion, w not negative, of a rotation matrix for row vectors. A matrix of no rotation may
/// give NaN. Made in libMRCommon for Matrix3<double>. (After Ken Shoemake, "Quaternion calculus and fast
/// animation", 1987.)
template <class M, class T> MRCOMMON_API void getQuaternion_VERSION3(M const& m, Quaternion<T>& q);

/// The one instance that libMRCommon holds.
extern template MRCOMMON_API void getQuaternion_VERSION3<Matrix3<double>, double>(Matrix3<double> const& m,
                                                                                  Quaternion<double>& q);

} // namespace quarn::matrix3tools

#endif

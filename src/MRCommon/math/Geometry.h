// Geometry: distances, boxes and shared edges.
//     float t;  Vector3<float> closest;
//     minDist(p, a, b, true, &t, &closest)         // from p to the segment a b
//     computeBoxVolume(corners)                    // of the axis-aligned box around eight points
// Degenerate input gives NaN or the value stated; no error is reported.
#ifndef MRCOMMON_MATH_GEOMETRY_H
#define MRCOMMON_MATH_GEOMETRY_H

#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/Export.h>

///@{
/// Returns the distance from p to the segment from a to b, or to the infinite line through both if `clampToSegment` is
/// false. `*t` receives the position of the closest point, 0 at a and 1 at b, and `*closest` the point itself. `t` must
/// not be null; `closest` may be. If a = b, all three results are NaN.
MRCOMMON_API float minDist(quarn::Vector3<float> p, quarn::Vector3<float> a, quarn::Vector3<float> b,
                           bool clampToSegment, float* t, quarn::Vector3<float>* closest);
MRCOMMON_API double D_minDist(quarn::Vector3<double> p, quarn::Vector3<double> a, quarn::Vector3<double> b,
                              bool clampToSegment, double* t, quarn::Vector3<double>* closest);
///@}

/// Returns the volume of the axis-aligned bounding box of eight points in any order, with coordinates from -1e9 to 1e9.
MRCOMMON_API float computeBoxVolume(quarn::Vector3<float> const* corners);

/// Returns the volume of the intersection of the bounding boxes of two sets of eight points, 0 if they only touch.
MRCOMMON_API float intersectVolume(quarn::Vector3<float> const* a, quarn::Vector3<float> const* b);

/// Returns whether p is strictly inside a box: points on a face, and all points of a box without thickness, are outside.
/// `lo` and `hi` are opposite corners in the box's own frame; `m` (for row vectors) transforms the corners and `q` the
/// edges, so both must be the same rotation.
MRCOMMON_API bool IsInBox(quarn::Vector3<float> const& p, quarn::Vector3<float> const& lo,
                          quarn::Vector3<float> const& hi, quarn::Matrix4<float> const& m,
                          quarn::Quaternion<float> const& q);

/// Returns whether the triangles (a0, a1, a2) and (b0, b1, b2) share exactly two vertex numbers. If so, `*own`
/// receives the vertex of the first that is not shared, and `*opposite` that of the second.
///     CrossCheck(1, 2, 3, 2, 3, 4, &opposite, &own)      true, own 1, opposite 4
///     CrossCheck(1, 2, 3, 1, 2, 3, &opposite, &own)      false, nothing written
/// `*opposite` is not changed if the second triangle has no other vertex, as in (1, 1, 2) with (1, 1, 1).
MRCOMMON_API bool CrossCheck(int a0, int a1, int a2, int b0, int b1, int b2, int* opposite, int* own);

#endif

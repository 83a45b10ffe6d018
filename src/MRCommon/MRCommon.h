// MRCommon.h: everything public in one include, the two sibling libraries' headers with it.
//     #include <MRCommon/MRCommon.h>
//     quarn::PptyFloat gravity("gravity", -9.81f);
#ifndef MRCOMMON_MRCOMMON_H
#define MRCOMMON_MRCOMMON_H

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/ArrayCore.h>
#include <MRCommon/basic/ArrayFlags.h>
#include <MRCommon/basic/Color4.h>
#include <MRCommon/basic/ErrorItem.h>
#include <MRCommon/basic/GridConnections.h>
#include <MRCommon/basic/Limits.h>
#include <MRCommon/basic/Matrix3.h>
#include <MRCommon/basic/Matrix4.h>
#include <MRCommon/basic/QN_String.h>
#include <MRCommon/basic/Quaternion.h>
#include <MRCommon/basic/TriangleFlags.h>
#include <MRCommon/basic/Tuple.h>
#include <MRCommon/basic/Vector3.h>
#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/frames/FrameSequence.h>
#include <MRCommon/host/ConfigurationHost.h>
#include <MRCommon/host/ConfigurationMngr.h>
#include <MRCommon/host/MessageNames.h>
#include <MRCommon/host/WorkSpace.h>
#include <MRCommon/math/DQuat.h>
#include <MRCommon/math/EulerAngles.h>
#include <MRCommon/math/Geometry.h>
#include <MRCommon/math/Quat.h>
#include <MRCommon/math/Random.h>
#include <MRCommon/math/RotationMatrix.h>
#include <MRCommon/math/Rounding.h>
#include <MRCommon/properties/BasePpty.h>
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/ItemVariant.h>
#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/Ppty.h>
#include <MRCommon/properties/PptyArrayString.h>
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/properties/PptyText.h>
#include <MRCommon/properties/PropertyFile.h>
#include <MRCommon/properties/QN_Class.h>
#include <MRCommon/properties/QN_Enum.h>
#include <MRCommon/properties/QN_MetaClass.h>
#include <MRCommon/properties/QN_System_Enum.h>
#include <MRCommon/properties/RangePpty.h>
#include <MRCommon/properties/RangeVectPpty.h>
#include <MRCommon/properties/RecordCheck.h>
#include <MRCommon/properties/RgdBasicPpty.h>
#include <MRCommon/streams/FileStream.h>
#include <MRCommon/streams/FileStreamEndian.h>
#include <MRCommon/streams/FileStreamRaw.h>
#include <MRCommon/streams/StreamEncoding.h>
#include <MRCommon/system/ByteId.h>
#include <MRCommon/system/Environment.h>
#include <MRCommon/system/LibLoader.h>
#include <MRCommon/system/Paths.h>
#include <MRCommon/system/QNCPUInfo.h>
#include <MRCommon/text/StringTokenizer.h>
#include <MRCommon/text/StringTools.h>
#include <MRCommon/Version.h>
#include <qn_basic/QN_MetaClassBase.h>
#include <qn_fileio/qn_fileio.h>

#endif

// MessageNames: the names of the application's message types, capitalised (CAP) and in lower case (LRW).
#ifndef MRCOMMON_HOST_MESSAGENAMES_H
#define MRCOMMON_HOST_MESSAGENAMES_H

#include <MRCommon/Export.h>

namespace quarn {
namespace MRCOMMON_HIDDEN mr_mesgs {

///@{
/// The name of one type of message.
inline constexpr char const* DAEMON_TYPE_CAP_NAME = "Daemon";
inline constexpr char const* DAEMON_TYPE_LRW_NAME = "daemon";
inline constexpr char const* WAVE_TYPE_CAP_NAME = "Wave";
inline constexpr char const* WAVE_TYPE_LRW_NAME = "wave";
inline constexpr char const* PARTICLES_TYPE_CAP_NAME = "Particles";
inline constexpr char const* PARTICLES_TYPE_LWR_NAME = "particles"; ///< intentional: LWR, unlike the others
inline constexpr char const* OBJECT_TYPE_CAP_NAME = "Object";
inline constexpr char const* OBJECT_TYPE_LRW_NAME = "object";
inline constexpr char const* CMD_TYPE_CAP_NAME = "Command";
inline constexpr char const* CMD_TYPE_LRW_NAME = CMD_TYPE_CAP_NAME; ///< intentional: capitalised
///@}

} // namespace mr_mesgs
} // namespace quarn

#endif

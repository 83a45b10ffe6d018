// MessageNames: what the application's message types are called, with a capital (CAP) and without.
#ifndef MRCOMMON_HOST_MESSAGENAMES_H
#define MRCOMMON_HOST_MESSAGENAMES_H

namespace quarn::mr_mesgs {

///@{
/// The name of one type of message.
constexpr char const* DAEMON_TYPE_CAP_NAME = "Daemon";
constexpr char const* DAEMON_TYPE_LRW_NAME = "daemon";
constexpr char const* WAVE_TYPE_CAP_NAME = "Wave";
constexpr char const* WAVE_TYPE_LRW_NAME = "wave";
constexpr char const* PARTICLES_TYPE_CAP_NAME = "Particles";
constexpr char const* PARTICLES_TYPE_LWR_NAME = "particles"; ///< meant: LWR, unlike the others
constexpr char const* OBJECT_TYPE_CAP_NAME = "Object";
constexpr char const* OBJECT_TYPE_LRW_NAME = "object";
constexpr char const* CMD_TYPE_CAP_NAME = "Command";
constexpr char const* CMD_TYPE_LRW_NAME = CMD_TYPE_CAP_NAME; ///< meant: with the capital
///@}

} // namespace quarn::mr_mesgs

#endif

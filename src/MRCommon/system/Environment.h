// Environment: asks whether an environment variable is defined.
//     isEnvironmentVariableDefined("SHOT_CACHE")
#ifndef MRCOMMON_SYSTEM_ENVIRONMENT_H
#define MRCOMMON_SYSTEM_ENVIRONMENT_H

#include <MRCommon/Export.h>

/// Returns whether the environment contains the variable, even with an empty value.
[[nodiscard]] MRCOMMON_API bool isEnvironmentVariableDefined(char const* name) noexcept;

#endif

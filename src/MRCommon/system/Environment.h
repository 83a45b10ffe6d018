// Environment: whether a variable is set.
#ifndef MRCOMMON_SYSTEM_ENVIRONMENT_H
#define MRCOMMON_SYSTEM_ENVIRONMENT_H

#include <MRCommon/Export.h>

/// True when the environment holds the variable, an empty value included.
MRCOMMON_API bool isEnvironmentVariableDefined(char const* name);

#endif

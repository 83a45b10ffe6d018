#include <MRCommon/system/Environment.h>

#include <cstdlib>

bool isEnvironmentVariableDefined(char const* name) noexcept { return std::getenv(name) != nullptr; }

#include <MRCommon/system/Environment.h>

#include <cstdlib>

bool isEnvironmentVariableDefined(char const* name) { return std::getenv(name) != nullptr; }

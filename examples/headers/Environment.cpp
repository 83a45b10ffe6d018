// Whether a variable is defined.
#include <MRCommon/system/Environment.h>

#include "claim.h"

#include <cstdlib>

int main() {
    setenv("SHOT_CACHE", "", 1);
    claim(isEnvironmentVariableDefined("SHOT_CACHE"), "an empty value counts");
    unsetenv("SHOT_CACHE");
    claim(!isEnvironmentVariableDefined("SHOT_CACHE"), "a variable that was removed does not");
}

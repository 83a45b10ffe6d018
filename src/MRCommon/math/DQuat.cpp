#include <MRCommon/math/DQuat.h>

using quarn::detail::AXIS_AFTER;

DQuat const DQuat::IDENTITY(1, 0, 0, 0);
DQuat const DQuat::ZERO(0, 0, 0, 0);
int const DQuat::ms_iNext[3] = {AXIS_AFTER[0], AXIS_AFTER[1], AXIS_AFTER[2]};

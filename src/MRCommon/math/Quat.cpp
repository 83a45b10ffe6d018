#include <MRCommon/math/Quat.h>

using quarn::detail::AXIS_AFTER;

Quat const Quat::IDENTITY(1, 0, 0, 0);
Quat const Quat::ZERO(0, 0, 0, 0);
int const Quat::ms_iNext[3] = {AXIS_AFTER[0], AXIS_AFTER[1], AXIS_AFTER[2]};

#include <MRCommon/host/WorkSpace.h>

namespace quarn::marelle {

int const WorkSpace::NUM_USR_TOOLBARS;

} // namespace quarn::marelle

// WorkSpace: constants of the application's work space.
#ifndef MRCOMMON_HOST_WORKSPACE_H
#define MRCOMMON_HOST_WORKSPACE_H

#include <MRCommon/Export.h>

namespace quarn::marelle {

class MRCOMMON_API WorkSpace {
public:
    static int const NUM_USR_TOOLBARS = 0; ///< number of tool bars that users define
};

} // namespace quarn::marelle

#endif

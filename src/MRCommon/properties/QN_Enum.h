// QN_Enum: the definition of an enumeration. The host derives from it; QN_System_Enum owns and deletes it.
#ifndef MRCOMMON_PROPERTIES_QN_ENUM_H
#define MRCOMMON_PROPERTIES_QN_ENUM_H

#include <MRCommon/Export.h>

namespace quarn {

class MRCOMMON_API QN_Enum {
public:
    virtual ~QN_Enum(); ///< slots 0 and 1
};

} // namespace quarn

#endif

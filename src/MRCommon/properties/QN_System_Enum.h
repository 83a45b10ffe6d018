// QN_System_Enum: the process-wide enumeration definitions by name. The host fills and reads the registry.
//     QN_System_Enum::instance().enums["mode"] = new ModeEnum;      // owned by the registry from now on
#ifndef MRCOMMON_PROPERTIES_QN_SYSTEM_ENUM_H
#define MRCOMMON_PROPERTIES_QN_SYSTEM_ENUM_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/Export.h>
#include <MRCommon/properties/QN_Enum.h>

#include <map>

namespace quarn {

class MRCOMMON_API QN_System_Enum {
public:
    /// Returns the one registry, created on first use. Creation is thread-safe, changes to the map are not.
    /// At exit its definitions are deleted; later calls return an empty registry.
    [[nodiscard]] static QN_System_Enum& instance();

    MRCOMMON_HIDDEN QN_System_Enum() = default;
    QN_System_Enum(QN_System_Enum const&) = delete;
    QN_System_Enum& operator=(QN_System_Enum const&) = delete;

    /// Deletes the definitions in the order of their names. Each entry is set to null before its definition is
    /// deleted.
    virtual ~QN_System_Enum(); ///< slots 0 and 1, the only ones

    std::map<QN_String, QN_Enum*> enums; ///< owns the definitions; entries may be null
};

} // namespace quarn

#endif

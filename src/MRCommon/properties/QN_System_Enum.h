// QN_System_Enum: the process's enumeration definitions by name. The host fills and reads it.
//     QN_System_Enum::instance().enums["mode"] = new ModeEnum;      // owned by the registry from here on
#ifndef MRCOMMON_PROPERTIES_QN_SYSTEM_ENUM_H
#define MRCOMMON_PROPERTIES_QN_SYSTEM_ENUM_H

#include <MRCommon/basic/QN_String.h>
#include <MRCommon/properties/QN_Enum.h>

#include <map>

namespace quarn {

class MRCOMMON_API QN_System_Enum {
public:
    /// The one registry: made on first use, safe from any thread, gone at exit. Changes to the map are not
    /// guarded.
    static QN_System_Enum& instance();

    QN_System_Enum() = default;
    QN_System_Enum(QN_System_Enum const&) = delete;
    QN_System_Enum& operator=(QN_System_Enum const&) = delete;

    /// Deletes the definitions in the order of their names. An entry is null by the time its definition goes.
    virtual ~QN_System_Enum(); ///< slots 0 and 1: all

    std::map<QN_String, QN_Enum*> enums; ///< owns what the pointers point to; null entries are allowed
};

} // namespace quarn

#endif

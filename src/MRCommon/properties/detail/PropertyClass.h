// isPropertyClass: whether a registered class is a property, found out without making an object.
#ifndef MRCOMMON_PROPERTIES_DETAIL_PROPERTYCLASS_H
#define MRCOMMON_PROPERTIES_DETAIL_PROPERTYCLASS_H

#include <MRCommon/properties/Ppty.h>
#include <qn_basic/QN_MetaClassBase.h>

namespace quarn::detail {

/// Returns whether objects of the class are properties.
inline bool isPropertyClass(QN_MetaClassBase const& metaClass) {
    auto const throwNull = metaClass.upcastProbe().throwNull;
    if (throwNull == nullptr) return false;
    try {
        throwNull();
    } catch (Ppty const*) {
        return true;
    } catch (...) { // a pointer to another class
    }
    return false;
}

} // namespace quarn::detail

#endif

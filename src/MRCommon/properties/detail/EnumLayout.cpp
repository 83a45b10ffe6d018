#include <MRCommon/properties/detail/EnumLayout.h>

#include <MRCommon/host/ConfigurationMngr.h>

#include <utility>

namespace quarn::detail {

namespace {

// Made once, so that reading a record makes no string. Never destroyed: exit handlers may still read records.
QN_String const& workSpace = *new QN_String("WorkSpace");

/// The last workspace version whose enumerations carry no layout number.
constexpr unsigned int lastVersionWithoutLayout = 5087;

thread_local bool isCurrentLayout = false;

} // namespace

bool recordsCarryALayoutNumber() {
    if (isCurrentLayout) return true;
    ConfigurationHost* const host = ConfigurationMngr::instance().host;
    ConfigurationObject const* const object = host == nullptr ? nullptr : host->getObject(workSpace);
    return object == nullptr || object->getVersion() > lastVersionWithoutLayout;
}

CurrentEnumLayout::CurrentEnumLayout() : previous_(std::exchange(isCurrentLayout, true)) {}

CurrentEnumLayout::~CurrentEnumLayout() { isCurrentLayout = previous_; }

} // namespace quarn::detail

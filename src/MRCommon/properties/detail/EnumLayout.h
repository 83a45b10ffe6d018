// EnumLayout: which of its two layouts the record of an enumeration has, for reading and for checking.
#ifndef MRCOMMON_PROPERTIES_DETAIL_ENUMLAYOUT_H
#define MRCOMMON_PROPERTIES_DETAIL_ENUMLAYOUT_H

namespace quarn::detail {

constexpr unsigned int lastLayoutWithoutLabel = 1;

/// Returns whether records carry a layout number, by the version of the host's "WorkSpace". Always true during the life
/// of a CurrentEnumLayout.
bool recordsCarryALayoutNumber();

/// During its life, enumerations read by this thread carry a layout number, and the host is not asked.
class CurrentEnumLayout {
public:
    CurrentEnumLayout();
    ~CurrentEnumLayout();
    CurrentEnumLayout(CurrentEnumLayout const&) = delete;
    CurrentEnumLayout& operator=(CurrentEnumLayout const&) = delete;

private:
    bool previous_;
};

} // namespace quarn::detail

#endif

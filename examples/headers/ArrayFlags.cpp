// Why an array is locked, and which of its controls are raised: single bits in one number.
#include <MRCommon/basic/ArrayFlags.h>

#include "claim.h"

using namespace quarn;

int main() {
    unsigned int flags = ARRAY_TYPEABLE_IS_LOCKED_BECAUSE_Wa | ARRAY_TYPEABLE_IS_LOCKED_TYPE;
    flags |= ARRAY_TYPEABLE_MODIFIED_CONTROL_2;

    claim((flags & ARRAY_TYPEABLE_MODIFIED_CONTROL_MASK) == ARRAY_TYPEABLE_MODIFIED_CONTROL_2,
          "the mask picks the controls out of all flags");
    claim((flags & ARRAY_TYPEABLE_COPY_MASK) == ARRAY_TYPEABLE_IS_LOCKED_TYPE,
          "of the locks a copy takes over that of the type alone");
}

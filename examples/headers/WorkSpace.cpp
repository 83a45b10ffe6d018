// A constant of the application's work space.
#include <MRCommon/host/WorkSpace.h>

#include "claim.h"

int main() {
    claim(quarn::marelle::WorkSpace::NUM_USR_TOOLBARS == 0, "there is no tool bar of the user's own");
}

// An entry of the error list, and the one that stands for entries that are gone.
#include <MRCommon/basic/ErrorItem.h>

#include "claim.h"

using namespace quarn;

int main() {
    ErrorItem const item{EICF_WARNING | EICF_RECOVERABLE_ERROR, EILF_BASICLIB, 7, "the cache folder is full"};
    claim((item.classFlags & EICF_WARNING) != 0, "it is a warning");
    claim((item.classFlags & EICF_CRITICAL_ERROR) == 0, "it is not critical");
    claim(item.listFlags == EILF_BASICLIB, "it stands in the list of the basic library");

    claim(ERROR_TOO_OLD.message == "Error not in list because too old", "an old entry has a stand-in");
}

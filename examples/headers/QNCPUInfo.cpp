// The processor as the application sees it.
#include <MRCommon/system/QNCPUInfo.h>

#include "claim.h"

int main() {
    QNCPUInfo const& cpu = QNCPUInfo::instance();
    claim(cpu.numCoresPerPackage() == 1 && cpu.numLogicalPerPackage() == 1,
          "one core, one logical processor");
    claim(!cpu.isMTCPU() && cpu.getAPIC_ID() == 0, "on every machine, intentionally");
}

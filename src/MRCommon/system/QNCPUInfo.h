// QNCPUInfo: the processor as the application sees it: one core and one logical processor for each package.
//     QNCPUInfo::instance().numCoresPerPackage()      // 1
// Intentional: the processor is not queried. On every machine the two counts for each package are 1, and all
// others, the number of packages included, are 0. Tested by QNCPUInfo.ReturnsFixedAnswers.
#ifndef MRCOMMON_SYSTEM_QNCPUINFO_H
#define MRCOMMON_SYSTEM_QNCPUINFO_H

#include <MRCommon/Export.h>

class MRCOMMON_API QNCPUInfo {
public:
    /// Returns the process-wide object. Its creation on first use is thread-safe, and it never changes.
    static QNCPUInfo& instance();

    QNCPUInfo();
    QNCPUInfo(QNCPUInfo const&) = delete;
    QNCPUInfo& operator=(QNCPUInfo const&) = delete;
    virtual ~QNCPUInfo(); ///< slots 0 and 1, the last ones

    bool isMTCPU() const noexcept;                      ///< false
    unsigned int numLogicalPerPackage() const noexcept; ///< 1

    /// Returns 1. In a derived class without a logical processor, prints the line "else" to stdout and
    /// returns 0.
    unsigned int numCoresPerPackage() const;

    unsigned int totalLogicalProcessors() const noexcept; ///< 0
    unsigned int numProcessingPackages() const noexcept;  ///< 0
    unsigned int getAPIC_ID() const noexcept;             ///< 0

    /// Returns 1. Despite its name, prints no more than `numCoresPerPackage`.
    int printAPICInfo() const;

protected:
    unsigned char logicalPerPackage = 1; ///< may be set by a derived class
    int vendorCode = 0;                  ///< 457 or 456 for the two known vendors, otherwise 0
};

#endif

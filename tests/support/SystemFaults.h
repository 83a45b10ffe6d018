// SystemFaults: makes one of the calls that read or change files fail, or ends the process at it.
//     SystemFaults const fault(3, SystemFaults::Fail, ENOSPC);      // the fourth call from here on
// The calls are open, read, fchmod, write, fsync, close and rename, as far as libraries make them; the C library's own do
// not count. A test program that links this has them replaced.
#ifndef MRCOMMON_TESTS_SUPPORT_SYSTEMFAULTS_H
#define MRCOMMON_TESTS_SUPPORT_SYSTEMFAULTS_H

class SystemFaults {
public:
    enum Kind {
        Fail,       ///< the call does nothing and returns -1 with `reason`; close() closes all the same
        Kill,       ///< the process ends before the call; half of the bytes of a write are written
        ShortWrites ///< every write from that call on writes 1,000 bytes at most
    };
    static constexpr int killed = 77; ///< the exit status

    SystemFaults(int nth, Kind kind, int reason = 0);
    ~SystemFaults();
    SystemFaults(SystemFaults const&) = delete;
    SystemFaults& operator=(SystemFaults const&) = delete;
    bool struck() const; ///< whether there was such a call
};

#endif

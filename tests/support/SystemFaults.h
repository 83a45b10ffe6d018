// SystemFaults: makes one of the calls that read or change files fail, or ends the process at it.
//     SystemFaults const fault(3, SystemFaults::Fail, ENOSPC);      // the fourth call from here on
// A test program that links this has the calls replaced: open, read, fchmod, write, fsync, close, rename, mkdir, and those of
// a FILE. The C library's own calls do not count. As a library that is preloaded before a program it makes one call of
// the whole program fail as on a full disk:
//     LD_PRELOAD=libfailing_calls.so FAILING_CALL=12 CALL_COUNT=count.txt program
//         FAILING_CALL   the number of the failing call, from 0; none without it
//         CALL_COUNT     the file that gets the number of calls when the program ends
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

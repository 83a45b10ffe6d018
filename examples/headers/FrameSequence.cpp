// The sequences in a folder, their gaps and the names of their files.
#include <MRCommon/frames/FrameSequence.h>

#include "claim.h"

#include <filesystem>

int main() {
    quarn::FrameScan const scan = quarn::groupFrames({"fluid.0003.exr", "fluid.0001.exr", "fluid.0002.exr",
                                                      "fluid.0006.exr", "notes.txt", "smoke_v2.vdb"});
    claim(scan.sequences.size() == 2 && scan.others.size() == 1, "two sequences, a name without a frame");

    quarn::FrameSequence const& fluid = scan.sequences[0];
    claim(fluid.head == "fluid." && fluid.tail == ".exr" && fluid.padding == 4, "what surrounds the frame");
    claim(fluid.first() == 1 && fluid.last() == 6 && fluid.count() == 4, "four frames from 1 to 6");
    claim(fluid.missing().size() == 1 && fluid.missing()[0].first == 4 && fluid.missing()[0].last == 5,
          "4 and 5 are missing");
    claim(fluid.fileName(6) == "fluid.0006.exr", "the name that was found");

    quarn::FrameScanOptions options;
    options.versionsAreNames = true;
    options.negativeFrames = true;
    quarn::FrameScan const strict = quarn::groupFrames({"smoke_v2.vdb", "slap_-0010.abc"}, options);
    claim(strict.others.size() == 1 && strict.others[0] == "smoke_v2.vdb",
          "a version is no frame on request");
    claim(strict.sequences[0].first() == -10, "and a minus is a sign");

    try {
        (void)quarn::scanFrames("there/is/no/such/folder");
        claim(false, "a folder that is not there is an error");
    } catch (std::filesystem::filesystem_error const& error) {
        claim(error.code() == std::errc::no_such_file_or_directory, "with the system's reason");
    }
}

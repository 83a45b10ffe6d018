// Whether a record can be read, before it is read.
#include <MRCommon/properties/RecordCheck.h>

#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/properties/PptyArrayString.h>

#include "claim.h"

using namespace quarn;

int main() {
    std::FILE* const file = std::tmpfile();
    claim(file != nullptr, "there is a temporary file");
    FileStreamRaw stream(file);
    PptyFloat("gravity", -9.81f).writeTo(stream);
    claim(stream.finish(), "the record is written");

    std::rewind(file);
    PptyFloat gravity;
    RecordCheck const asFloat = checkRecord(gravity, stream);
    claim(asFloat.good() && asFloat.size == 16, "the record is good and has 16 bytes");
    gravity.readFrom(stream);
    claim(!stream.failed() && gravity.getName() == "gravity", "so it is read whole");

    std::rewind(file);
    RecordCheck const asList = checkRecord(PptyArrayString(), stream);
    claim(asList.reason == RecordCheck::SizeBeyondFile, "taken for a list of strings it claims too much");
    claim(asList.message() == "value at byte 12: its size exceeds the data that is left",
          "and the message says where");
    std::fclose(file);
}

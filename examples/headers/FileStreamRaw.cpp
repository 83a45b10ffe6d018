// Saving properties and loading them again, in the byte order of the machine.
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include "claim.h"

int main() {
    std::FILE* const file = std::tmpfile();
    claim(file != nullptr, "a temporary file");
    quarn::FileStreamRaw stream(file);
    quarn::PptyFloat("gravity", -9.81f).writeTo(stream);
    quarn::PptyInt("frames", 60).writeTo(stream);
    claim(stream.finish(), "both records were written");

    std::rewind(file);
    quarn::PptyFloat gravity;
    quarn::PptyInt frames;
    gravity.readFrom(stream); // in the order in which they were written: a record does not tell its kind
    frames.readFrom(stream);
    claim(gravity.getName() == "gravity" && *gravity.getRefToValue() == -9.81f, "the first is back");
    claim(*frames.getRefToValue() == 60 && !stream.failed(), "and the second");
    std::fclose(file);
}

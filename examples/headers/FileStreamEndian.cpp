// The stream kind whose integers lie in one byte order everywhere, and which keeps the name of most properties alone.
#include <MRCommon/properties/BasicPpty.h>
#include <MRCommon/streams/FileStreamEndian.h>

#include "claim.h"

#include <cstring>

int main() {
    std::FILE* const file = std::tmpfile();
    claim(file != nullptr, "a temporary file");
    quarn::FileStreamEndian stream(file);
    quarn::PptyFloat("g", -9.81f).writeTo(stream);
    claim(stream.finish(), "the record is written");
    std::rewind(file);

    unsigned char bytes[16];
    claim(std::fread(bytes, 1, sizeof bytes, file) == 6, "the name's length and the name, no value");
    claim(std::memcmp(bytes, "\0\0\0\2g\0", 6) == 0, "the length stands most significant byte first");
    std::fclose(file);
}

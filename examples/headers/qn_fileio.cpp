// Integers on a FILE, in one byte order on every machine.
#include <qn_fileio/qn_fileio.h>

#include "claim.h"

int main() {
    std::FILE* const file = std::tmpfile();
    claim(file != nullptr, "a temporary file");
    unsigned int frames[2] = {258, 60};
    claim(WriteUInt(frames, 2, file) == 2, "two numbers are written");

    std::rewind(file);
    unsigned char bytes[4];
    claim(ReadBuffer(bytes, 1, 4, file) == 4 && bytes[2] == 1 && bytes[3] == 2, "the first is 00 00 01 02");

    SetCurrentStream(file);
    unsigned int last = 0;
    claim(ReadUInt(&last, 1, nullptr) == 1 && last == 60, "without a FILE the current stream is read");
    claim(ReadUInt(&last, 1, nullptr) == 0 && last == 60, "what is not delivered stays");
    SetCurrentStream(nullptr);
    std::fclose(file);
}

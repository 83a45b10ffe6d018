// Code for both stream kinds: blocks of bytes, and one question after the last of them.
#include <MRCommon/streams/FileStream.h>
#include <MRCommon/streams/FileStreamRaw.h>

#include "claim.h"

void writeMark(quarn::FileStream& stream) { stream.write("MARK", 4); }

int main() {
    std::FILE* const file = std::tmpfile();
    claim(file != nullptr, "a temporary file");
    quarn::FileStreamRaw stream(file);
    writeMark(stream);
    claim(stream.finish(), "the bytes have left the buffer of the C library, and all went well");
    std::rewind(file);

    char bytes[8] = "-------";
    claim(stream.read(bytes, 4) == 4 && bytes[0] == 'M' && bytes[4] == '-', "four bytes come back");
    claim(!stream.failed(), "so far everything was transferred");
    claim(stream.read(bytes, 4) == 0 && stream.failed(), "nothing follows the end, and the stream remembers");
    std::fclose(file); // the FILE is still ours
}

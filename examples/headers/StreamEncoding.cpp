// The values that records are made of, for a record of your own.
#include <MRCommon/streams/StreamEncoding.h>

#include "claim.h"

using namespace quarn;

int main() {
    std::FILE* const file = std::tmpfile();
    claim(file != nullptr, "a temporary file");
    FileStreamEndian stream(file);
    encoding::writeI32(stream, -5);
    encoding::writeStr(stream, "foam");
    encoding::writeStrArray(stream, {"sea", "sky"});
    claim(stream.finish(), "all values are written");
    claim(std::ftell(file) == 4 + (4 + 5) + (4 + 8 + 8),
          "a text takes 4 bytes and its characters with the NUL");
    std::rewind(file);

    QN_String text;
    Array<QN_String> list;
    claim(encoding::readI32(stream) == -5, "the number is back");
    encoding::readStr(stream, text);
    stream >> list;
    claim(text == "foam" && list.size() == 2 && list[1] == "sky", "so are the text and the list");
    claim(encoding::readU32(stream) == 0 && stream.failed(), "behind the end integers are 0");
    std::fclose(file);
}

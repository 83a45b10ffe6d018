// A text whose size counts its terminator.
#include <MRCommon/basic/QN_String.h>

#include "claim.h"

using namespace quarn;

int main() {
    QN_String s("ab");
    claim(s.length() == 2 && s.size() == 3, "two characters and the NUL");
    s.format("%d of %s", 12, "frames");
    claim(s == "12 of frames", "format prints as printf does");

    Array<QN_String> parts;
    claim(QN_String("sea,foam,").tokenize(',', parts) == 3, "every separator splits");
    claim(parts[1] == "foam" && parts[2] == "", "behind the last one an empty text follows");

    QN_String const taken = std::move(s);
    claim(taken == "12 of frames", "a move takes the buffer along");
    claim(s.size() == 0 && s.c_str()[0] == '\0', "what is left has no buffer and reads as the empty text");
}

// Identifiers as text, and as a numbered run.
#include <MRCommon/system/ByteId.h>

#include "claim.h"

using quarn::ByteId;

int main() {
    ByteId id(quarn::QN_String("00112233-4455-6677-8899-AABBCCDDEEFF"));
    claim(id.toString() == "00112233445566778899AABBCCDDEEFF", "32 digits");
    claim(id.toUuidString() == "00112233-4455-6677-8899-AABBCCDDEEFF", "or five groups of them");

    id.setLast8BytesFromIdx64(41);
    claim(id.incIdFromLast8BytesAsIdx64() == 42 && id.last8BytesToIdx64() == 42,
          "the next one of a numbered run");
    claim(id.toUuidString() == "00112233-4455-6677-0000-00000000002A", "the first eight bytes stay");

    claim(ByteId(quarn::QN_String("no digits")).isZero(), "a malformed text gives zeros");
    claim(ByteId() < id, "they are ordered byte by byte");
}

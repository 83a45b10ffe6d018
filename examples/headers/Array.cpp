// A list that knows its size and how much room it has.
#include <MRCommon/basic/Array.h>

#include "claim.h"

int main() {
    quarn::Array<int> frames{10, 20};
    claim(frames.size() == 2 && frames.capacity() == 2, "a list is made exactly as large as its elements");

    frames.push_back(30);
    claim(frames.capacity() == 6, "an append makes room: 2, an eighth of it, and 4");
    claim(frames[2] == 30, "the new element is the last");

    int sum = 0;
    for (int const frame : frames) sum += frame;
    claim(sum == 60, "a loop sees the elements in use");

    quarn::Array<int> const copy = frames;
    claim(copy.size() == 3 && copy.capacity() == 3, "a copy is sized exactly");
}

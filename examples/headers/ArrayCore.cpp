// The storage behind strings and lists, whose room the caller rules.
#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/ArrayCore.h>

#include "claim.h"

int main() {
    quarn::Array<double> samples{0.5, 1.5, 2.5};

    samples.reserve(8, true);
    claim(samples.capacity() == 8 && samples[2] == 2.5,
          "reserve makes room for exactly 8 and keeps the elements");

    samples.setSize(5);
    samples[3] = samples[4] = 0;
    claim(samples.end() - samples.begin() == 5, "the size is set without touching an element");

    samples.reserve(2, true);
    claim(samples.size() == 2, "less room cuts the list");

    samples.reserve(0, false);
    claim(samples.data() == nullptr && samples.empty(), "no room at all gives the buffer back");
}

// Reads a record of 30 bytes whose string claims 1 GiB, and fails if that commits more than 64 MiB of memory or
// if a byte that the file did not deliver is not 0.
#include <MRCommon/streams/StreamEncoding.h>

#include <sys/resource.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>

namespace {

long peakKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

/// Reads a string of `size` bytes from a file that delivers 26 of them. Returns whether the others are 0.
bool readShortRecord(unsigned int size) {
    std::FILE* const file = std::tmpfile();
    if (file == nullptr) return false;
    char const delivered[] = "twenty-six bytes of a text";
    quarn::FileStreamRaw stream(file);
    quarn::encoding::writeU32(stream, size);
    stream.write(delivered, 26);
    std::rewind(file);
    quarn::QN_String text;
    quarn::encoding::readStr(stream, text);
    bool const failed = stream.failed();
    std::fclose(file);
    return failed && text.size() == size && text == delivered &&
           std::all_of(text.begin() + 26, text.end(), [](char c) { return c == 0; });
}

} // namespace

int main() {
    long const before = peakKilobytes();
    bool good = readShortRecord(1u << 30);
    long const committed = peakKilobytes() - before;

    // The heap has just been full of other bytes, and hands them out again.
    for (std::size_t const size : {200000u, 100000u})
        delete[] static_cast<char*>(std::memset(new char[size], 'x', size));
    good = readShortRecord(100000) && good;

    std::printf("a damaged length of 1 GiB committed %ld KiB; %s\n", committed,
                good ? "the rest is zero" : "the rest is not zero");
    return good && committed < 65536 ? 0 : 1;
}

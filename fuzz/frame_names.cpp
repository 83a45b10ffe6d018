// Frame names: building agrees with printf, parsing takes apart what building put together, searching finds the ends,
// both by itself and through paths on a disk that exists in this program only. Settings are loaded as they were saved,
// and a checked load takes whole settings or nothing.
//     byte 0       order; bytes 1, 2 padding; bytes 3 to 6 frame; bytes 7, 8 the length of the sequence
//     two pieces   name, extension
//     the rest     a path of any kind
#include "Memory.h"
#include "support/Allocations.h"

#include <MRCommon/frames/detail/FrameSearch.h>
#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/text/StringTools.h>
#include <qn_fileio/qn_fileio.h>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <functional>
#include <set>
#include <tuple>
#include <utility>

using quarn::QN_String;

namespace {

/// The folder that this program imagines, and its files.
constexpr std::string_view imagined = "/no such folder/";
std::set<std::string, std::less<>> files;

/// What a program that opens the folder has: another folder, so that it has a descriptor, and what is still to be read.
DIR* opened = nullptr;
std::set<std::string, std::less<>>::const_reverse_iterator next;

bool isImagined(std::string_view path) { return path.substr(0, imagined.size()) == imagined; }
int found(std::string_view path) { return files.count(path) == 1 ? 0 : -1; }

template <class Function> Function* original(char const* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

// They take the place of the system's calls in the libraries too.
extern "C" {
int access(char const* path, int mode) noexcept {
    return isImagined(path) ? found(path) : original<decltype(access)>("access")(path, mode);
}
int faccessat(int folder, char const* name, int mode, int flags) noexcept {
    return opened != nullptr && folder == dirfd(opened)
               ? found(std::string(imagined) + name)
               : original<decltype(faccessat)>("faccessat")(folder, name, mode, flags);
}
DIR* opendir(char const* path) {
    DIR* const folder = original<decltype(opendir)>("opendir")(path == imagined ? "/" : path);
    if (path == imagined) {
        opened = folder;
        next = files.rbegin();
    }
    return folder;
}
int closedir(DIR* folder) {
    if (folder == opened) opened = nullptr;
    return original<decltype(closedir)>("closedir")(folder);
}
dirent* readdir(DIR* folder) {
    static dirent entry;
    if (folder != opened) return original<decltype(readdir)>("readdir")(folder);
    if (next == files.rend()) return nullptr;
    std::string const name = next->substr(imagined.size());
    require(name.size() < sizeof entry.d_name, "imagined names are short");
    entry.d_type = DT_REG;
    std::memcpy(entry.d_name, name.c_str(), name.size() + 1);
    ++next;
    return &entry;
}
}

namespace {

struct Parsed {
    QN_String name, ext;
    unsigned int first = 0, last = 0, padding = 0;
    FrameExtensionOrder order = FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT;
    bool hasDot;

    explicit Parsed(std::string const& path)
        : hasDot(FileNameStitcher::frameExtensionFromPath(path.c_str(), name, ext, first, last, padding,
                                                          order)) {}
};

std::string printed(FrameExtensionOrder order, unsigned int padding, std::string const& name, int frame,
                    std::string const& ext) {
    char format[32];
    FileNameStitcher::setFormatStr(format, order, padding);
    return order == FRAME_ORDER_NAME_DOT_EXT_DOT_FRAME
               ? StringTools::format(format, name.c_str(), ext.c_str(), frame)
               : StringTools::format(format, name.c_str(), frame, ext.c_str());
}

/// For names that say clearly where the frame stands, while no file exists.
void requireParsingOfBuilt(FileNameStitcher const& stitcher, std::string const& name, int frame,
                           std::string const& ext) {
    if (frame < 0 || stitcher.padding > 10 || ext.empty() || !isAlphanumeric(ext[0]) || isDigit(ext[0]))
        return;
    if (stitcher.order == FRAME_ORDER_NAME_FRAME_DOT_EXT) return;
    Parsed const parsed(stitcher.doIt(name, frame, ext));
    require(parsed.hasDot && parsed.name == name.c_str() && parsed.ext == ext.c_str() &&
                parsed.order == stitcher.order && parsed.first == static_cast<unsigned int>(frame) &&
                parsed.padding == std::max<std::size_t>(stitcher.padding, std::to_string(frame).size()),
            "a built name is taken apart into what it was built of");
}

void requireParsingOfAny(std::string const& path) {
    Parsed const parsed(path);
    require(parsed.hasDot == (path.find('.') != std::string::npos), "a path with a dot can be taken apart");
    if (parsed.hasDot && parsed.padding == 0)
        require(path == std::string(parsed.name.c_str()) + "." + parsed.ext.c_str(),
                "nothing of a path is lost");
}

void requireSearching(unsigned int first, unsigned int length, unsigned int known, unsigned int padding) {
    unsigned int const last = first + length;
    int questions = 0;
    auto const exists = [&](unsigned int frame) { return ++questions, first <= frame && frame <= last; };
    require(quarn::detail::firstFrame(known, exists) == first, "the first frame of a sequence without a gap");
    require(questions <= 33, "one question for each bit of the known frame, and one for frame 0");
    unsigned int const limit = quarn::detail::frameLimit(padding);
    bool const isBeyond = static_cast<int>(known) >= static_cast<int>(limit);
    bool const isFull = known < limit && last >= limit - 1;
    require(quarn::detail::lastFrame(known, padding, exists) == (isBeyond || isFull ? known : last),
            "the last frame, or the known one where the padding allows no more");
}

/// A sequence with one gap at most, as files of the imagined folder.
struct ImaginedSequence {
    FrameExtensionOrder order;
    unsigned int padding;
    std::string name, ext;
    unsigned int first, last, gap;

    std::string path(unsigned int frame) const {
        return printed(order, padding, name, static_cast<int>(frame), ext);
    }
    bool exists(unsigned int frame) const { return first <= frame && frame <= last && frame != gap; }
};

/// Asks for the sequence by the path of one of its frames.
void requireFound(ImaginedSequence const& sequence, unsigned int known) {
    Parsed const parsed(sequence.path(known));
    unsigned int const gap = sequence.gap;
    unsigned int const end = known < gap && gap <= sequence.last ? gap - 1 : sequence.last;
    std::size_t const width = std::max<std::size_t>(sequence.padding, std::to_string(known).size());
    bool const isFull = end + 1 >= quarn::detail::frameLimit(static_cast<unsigned int>(width));
    if (sequence.order == FRAME_ORDER_NAME_FRAME_DOT_EXT && parsed.padding == 0) {
        require(end == known || isFull, "digits belong to the name only if there is no later frame");
        return;
    }
    QN_String const name = sequence.name.c_str(), ext = sequence.ext.c_str();
    require(parsed.hasDot && parsed.order == sequence.order && parsed.name == name && parsed.ext == ext,
            "a frame's path is taken apart");
    require(parsed.last == (isFull ? known : end), "the last frame on the disk");
    require(sequence.exists(parsed.first) && parsed.first <= known, "the first frame is on the disk");
    bool const isWider = parsed.padding > sequence.padding; // narrower names are not looked for
    require(parsed.first == sequence.first || isWider || (sequence.first <= gap && gap < known),
            "the first frame on the disk, but for a gap");
    require(
        FileNameStitcher::findMinValue(sequence.order, name, ext, parsed.padding, known) == parsed.first &&
            FileNameStitcher::findMaxValue(sequence.order, name, ext, parsed.padding, known) == parsed.last,
        "both searches agree with the path's");
}

void requireSequence(ImaginedSequence const& sequence, unsigned int known) {
    for (unsigned int frame = sequence.first; frame <= sequence.last + 1; ++frame) {
        std::string path = sequence.path(frame);
        if (sequence.exists(frame)) files.insert(path);
        path.back() = '~'; // no frame
        files.insert(path);
    }
    if (sequence.exists(known)) requireFound(sequence, known);
    files.clear();
}

void requireSettings(FileNameStitcher& stitcher, std::string const& prefix) {
    char* bytes = nullptr;
    std::size_t size = 0;
    std::FILE* const out = open_memstream(&bytes, &size);
    require(out != nullptr, "a file can be made of memory");
    stitcher.prefix = prefix;
    SetCurrentStream(out);
    stitcher.save();
    SetCurrentStream(nullptr);
    std::fclose(out);
    unsigned int const padding = std::exchange(stitcher.padding, 0u);
    FrameExtensionOrder const order = stitcher.order;
    stitcher.prefix = "another";
    {
        MemoryFile const in({bytes, size});
        SetCurrentStream(in.get());
        stitcher.load();
        SetCurrentStream(nullptr);
        require(in.position() == size, "the settings are read whole");
    }
    std::free(bytes);
    require(stitcher.prefix == prefix && stitcher.padding == padding && stitcher.order == order,
            "settings are loaded as they were saved");
    stitcher.prefix.clear();
}

void requireCheckedSettings(FileNameStitcher& stitcher, std::string_view bytes) {
    if (bytes.empty()) return; // no file can be made of nothing
    auto const number = [bytes](std::size_t at) {
        unsigned int value = 0;
        for (std::size_t i = at; i < at + 4; ++i)
            value = value << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
        return value;
    };
    auto const settings = [&stitcher] {
        return std::tuple(stitcher.prefix, stitcher.padding, static_cast<unsigned int>(stitcher.order));
    };
    auto expected = settings();
    std::size_t const length = number(0);
    bool const isGood = bytes.size() >= length + 12 && number(length + 8) < 4;
    if (isGood) expected = {std::string(bytes.substr(4, length)), number(length + 4), number(length + 8)};
    MemoryFile const file(bytes);
    SetCurrentStream(file.get());
    bool isLoaded = false;
    {
        AllocationLimit const limit(bytes.size() + 1024); // whatever the length claims
        isLoaded = stitcher.loadChecked();
    }
    require(isLoaded == isGood && settings() == expected, "whole settings are loaded, or none");
    SetCurrentStream(nullptr);
    require(!isGood || file.position() == length + 12, "no more is read than the settings");
    stitcher.prefix.clear();
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    auto& stitcher = FileNameStitcher::instance();
    stitcher.order = static_cast<FrameExtensionOrder>(input.number<unsigned char>() % 4);
    stitcher.padding = input.number<unsigned short>();
    int const frame = input.number<int>();
    unsigned int const length = input.number<unsigned short>() % 4096u;
    std::string const name = std::string(imagined) + without(input.piece(), [](char c) { return c == '\0'; });
    std::string const ext = without(input.piece(), [](char c) { return c == '\0' || c == '.'; });
    if (stitcher.padding == 0) stitcher.padding = 1; // without a padding the format has no frame
    require(stitcher.doIt(name, frame, ext) == printed(stitcher.order, stitcher.padding, name, frame, ext),
            "names are built as printf prints them");
    stitcher.padding = stitcher.padding % 12 + 1;
    requireParsingOfBuilt(stitcher, name, frame, ext);
    requireParsingOfAny(std::string(imagined) +
                        without(std::string(input.rest()), [](char c) { return c == '\0'; }));

    unsigned int const first = static_cast<unsigned int>(frame) & 0x7FFFFFFF;
    unsigned int const known = first + (length == 0 ? 0 : stitcher.padding * 97 % length);
    requireSearching(first, length, known, stitcher.padding);

    auto const isNoLetter = [](char c) { return !isAlphanumeric(c) || isDigit(c); };
    std::string const plainName = std::string(imagined) + "n" + without(name, isNoLetter);
    bool const isLong = length % 16 == 0; // so that the folder is read as well
    unsigned int const low = first % 100000, count = length % (isLong ? 1024 : 64);
    unsigned int const inside = low + count / 2, gap = inside + stitcher.padding % 8 * 5 - 14;
    requireSequence({stitcher.order, std::min(stitcher.padding, 10u), plainName,
                     "e" + without(ext, isNoLetter), low, low + count, gap},
                    inside);
    requireSettings(stitcher, std::string(input.rest()));
    requireCheckedSettings(stitcher, input.rest());
    return 0;
}

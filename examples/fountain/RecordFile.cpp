#include "RecordFile.h"

#include <cerrno>
#include <cstring>

OpenFile openToRead(std::string const& path) {
    OpenFile file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) throw FileError(path, std::strerror(errno));
    return file;
}

long writeWhole(std::string const& path, std::function<void(std::FILE*)> const& write) {
    std::string const temporary = path + ".part";
    OpenFile file(std::fopen(temporary.c_str(), "wb"));
    if (file == nullptr) throw FileError(temporary, std::strerror(errno));
    try {
        write(file.get());
        long const bytes = std::ftell(file.get());
        if (std::fclose(file.release()) != 0 || std::rename(temporary.c_str(), path.c_str()) != 0)
            throw FileError(path, std::strerror(errno));
        return bytes;
    } catch (...) {
        std::remove(temporary.c_str());
        throw;
    }
}

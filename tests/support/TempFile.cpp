#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <cctype>
#include <stdexcept>

namespace {

std::FILE* temporaryFile() {
    std::FILE* const file = std::tmpfile();
    if (file == nullptr) throw std::runtime_error("no temporary file to be had");
    return file;
}

} // namespace

Bytes hex(std::string_view digits) {
    std::string pairs;
    for (char const c : digits)
        if (std::isxdigit(static_cast<unsigned char>(c))) pairs += c;
    if (pairs.size() % 2 != 0) throw std::invalid_argument("an odd number of hexadecimal digits");
    Bytes bytes;
    for (std::size_t i = 0; i < pairs.size(); i += 2)
        bytes.push_back(static_cast<unsigned char>(std::stoi(pairs.substr(i, 2), nullptr, 16)));
    return bytes;
}

TempFile::TempFile() : file_(temporaryFile()) {}

TempFile::TempFile(Bytes const& content) : TempFile() {
    if (content.empty()) return;
    EXPECT_EQ(std::fwrite(content.data(), 1, content.size(), file_), content.size());
    rewind();
}

TempFile::~TempFile() {
    if (file_ != nullptr) std::fclose(file_);
}

Bytes TempFile::bytes() const {
    long const position = std::ftell(file_);
    std::fseek(file_, 0, SEEK_END);
    Bytes content(static_cast<std::size_t>(std::ftell(file_)));
    std::rewind(file_);
    EXPECT_EQ(std::fread(content.data(), 1, content.size(), file_), content.size());
    std::fseek(file_, position, SEEK_SET);
    return content;
}

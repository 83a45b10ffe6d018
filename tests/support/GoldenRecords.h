// GoldenRecords: the records in tests/properties/golden, which were made without the library.
//     <Class>[-<what>].<raw|endian>     a record; "5087" in the name: read under that workspace version
//     ItemVariant-<tag>.raw             a variant's record
// The including test is compiled with MRCOMMON_GOLDEN_FOLDER.
#ifndef MRCOMMON_TESTS_SUPPORT_GOLDENRECORDS_H
#define MRCOMMON_TESTS_SUPPORT_GOLDENRECORDS_H

#include "support/TempFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

struct GoldenRecord {
    std::string fileName;
    Bytes record;

    std::string className() const { return fileName.substr(0, fileName.find_first_of("-.")); }
    bool has(char const* part) const { return fileName.find(part) != std::string::npos; }
    bool isRaw() const { return has(".raw"); }
    unsigned int workSpaceVersion() const { return has("5087") ? 5087 : 5088; }
    bool isOldLayout() const { return has("5087") || has("layout1"); }
};

/// All of them, 64 at least.
inline std::vector<GoldenRecord> goldenRecords() {
    std::vector<GoldenRecord> records;
    for (auto const& entry : std::filesystem::directory_iterator(MRCOMMON_GOLDEN_FOLDER)) {
        std::ifstream file(entry.path(), std::ios::binary);
        records.push_back({entry.path().filename().string(),
                           Bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}});
    }
    EXPECT_GE(records.size(), 64u);
    return records;
}

#endif

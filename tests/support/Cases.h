// Cases: tables of inputs and results, in the file <Subject>_test.cases beside the test.
//     [BuildsNames]
//     fluid 12 "a name with blanks"          # a case of three fields; in quotes \" \\ \n and \x80 are special
//     for (Case const& c : casesOf("BuildsNames")) EXPECT_EQ(built(c[0], c.number(1)), c[2]) << c.place;
#ifndef MRCOMMON_TESTS_SUPPORT_CASES_H
#define MRCOMMON_TESTS_SUPPORT_CASES_H

#include <string>
#include <vector>

struct Case {
    std::vector<std::string> fields;
    std::string place; ///< file and line

    std::string const& operator[](std::size_t i) const { return fields.at(i); }
    char const* c_str(std::size_t i) const { return fields.at(i).c_str(); }
    long long number(std::size_t i) const { return std::stoll(fields.at(i)); }
    int integer(std::size_t i) const { return static_cast<int>(number(i)); }
    unsigned int count(std::size_t i) const { return static_cast<unsigned int>(number(i)); }
    std::vector<std::string> from(std::size_t i) const; ///< the fields from the i-th on
};

/// Ends the program if the file has no such table.
std::vector<Case> casesIn(std::string const& path, std::string const& table);

#ifdef MRCOMMON_CASES
inline std::vector<Case> casesOf(std::string const& table) { return casesIn(MRCOMMON_CASES, table); }
#endif

#endif

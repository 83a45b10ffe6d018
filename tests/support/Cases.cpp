#include "support/Cases.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

/// Takes a field in quotes, whose first quote was taken, from the front of the line.
std::string quoted(std::string const& line, std::size_t& at) {
    std::string field;
    for (; at < line.size() && line[at] != '"'; ++at) {
        if (line[at] != '\\') {
            field += line[at];
            continue;
        }
        char const special = line.at(++at);
        if (special == 'x') {
            field += static_cast<char>(std::stoi(line.substr(at + 1, 2), nullptr, 16));
            at += 2;
        } else {
            field += special == 'n' ? '\n' : special;
        }
    }
    ++at;
    return field;
}

std::vector<std::string> fieldsOf(std::string const& line) {
    std::vector<std::string> fields;
    for (std::size_t at = 0; (at = line.find_first_not_of(' ', at)) != std::string::npos && line[at] != '#';)
        if (line[at] == '"') {
            fields.push_back(quoted(line, ++at));
        } else {
            std::size_t const end = std::min(line.find(' ', at), line.size());
            fields.push_back(line.substr(at, end - at));
            at = end;
        }
    return fields;
}

} // namespace

std::vector<std::string> Case::from(std::size_t i) const {
    return {fields.begin() + static_cast<std::ptrdiff_t>(i), fields.end()};
}

std::vector<Case> casesIn(std::string const& path, std::string const& table) {
    std::ifstream file(path);
    std::vector<Case> cases;
    bool isWanted = false;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        std::vector<std::string> const fields = fieldsOf(line);
        if (fields.empty()) continue;
        if (line[0] == '[')
            isWanted = line == '[' + table + ']';
        else if (isWanted)
            cases.push_back({fields, path + ':' + std::to_string(number)});
    }
    if (!cases.empty()) return cases;
    std::fprintf(stderr, "%s: no table %s\n", path.c_str(), table.c_str());
    std::exit(1);
}

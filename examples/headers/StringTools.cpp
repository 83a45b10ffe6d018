// Strings that are printed, split and escaped.
#include <MRCommon/text/StringTools.h>

#include "claim.h"

int main() {
    claim(StringTools::format("%s_%03d", "dunes", 7) == "dunes_007", "printed");
    claim(StringTools::replace_all("a//b//c", "//", "/") == "a/b/c", "replaced");

    auto const words = StringTools::tokenize("copy \"my file\" here", " ", 0, true);
    claim(words.size() == 3 && words[1] == "my file", "split, with quotes");

    claim(StringTools::url_encode("a b/") == "a+b%2F", "for an address");
    std::string const safe = StringTools::escape("50%;", '\\');
    claim(safe == "50\\%\\;" && StringTools::unescape(safe, '\\') == "50%;", "escaped and back");
    claim(StringTools::parseDuration("1d2h30") == 1440 + 120 + 30, "minutes in a duration");
}

// A string, piece by piece.
#include <MRCommon/text/StringTokenizer.h>

#include "claim.h"

using StringTools::StringTokenizer;

int main() {
    StringTokenizer tokens("::size::12::depth::0.5", "::");
    claim(tokens.countTokens() == 4, "four pieces are to come");
    claim(tokens.nextToken() == "size" && tokens.nextIntToken() == 12, "a word and a number");
    claim(tokens.remainingString() == "depth::0.5", "what is left");
    claim(tokens.nextToken() == "depth" && tokens.nextFloatToken() == 0.5, "the rest of it");
    claim(!tokens.hasMoreTokens() && tokens.nextToken().empty(), "after the last token everything is empty");

    StringTokenizer settings("speed=3;spin=4", ";");
    claim(settings.nextTokenWithLimit("=") == "speed", "up to the limit");
    claim(settings.nextToken() == "spin=4", "the rest of the piece is passed over");
}

// Values as strings.
#include <MRCommon/properties/PptyEnum.h>
#include <MRCommon/properties/PptyText.h>

#include "claim.h"

using namespace quarn;

int main() {
    QN_String text;
    qn_basicppty::QN_set(text, true);
    claim(text == "True", "a bool");
    qn_basicppty::QN_set(text, Array<QN_String>{"a", "b"});
    claim(text == "[ a, b ]", "a list");
    qn_basicppty::QN_set(text, PptyEnum("mode", {"Fast", 2}));
    claim(text == " PptyEnum : mode( Fast, 2 )\n",
          "an enumeration; no blank before the parenthesis: intentional");
}

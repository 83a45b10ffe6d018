// One value of any kind.
#include <MRCommon/properties/ItemVariant.h>

#include "claim.h"

using namespace quarn;

int main() {
    ItemVariant v(2.5f);
    claim(v.tag() == 3 && *v.as<float>() == 2.5f, "it holds a float, as its tag says");
    claim(v.as<double>() == nullptr, "it returns null for another kind");

    v = ItemVariant(Tuple2<QN_String, int>("High", 20));
    claim(*v.as<int>() == 20 && *v.as<QN_String>() == "High", "a pair is also its index and its label");

    ItemVariant copy = v;
    *copy.as<int>() = 30;
    claim(*v.as<int>() == 20, "copies are deep");

    v.deleteValue();
    claim(v.tag() == 12 && v.as<int>() == nullptr, "the tag stays without the value: check the pointer");
    claim(ItemVariant::ItemVariant_Invalid->tag() == 0, "the shared one holds nothing");
}

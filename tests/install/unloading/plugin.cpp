// A plug-in with a property kind KIND. All plug-ins made of this file use the same containers of the same types.
#include <MRCommon/MRCommon.h>

#include <map>
#include <vector>

#ifdef USES_UNIQUE_SYMBOLS
#include <memory>
#include <regex>
#include <string>
#endif

using namespace quarn;

struct Sample {
    float weight;
    Vector3<float> place;
};

class KIND : public RFloatPpty {
public:
    QN_CLASS_IDENTITY
    Ppty* clone() const override { return new KIND(*this); }
    Ppty* cloneWithNewName(QN_String const& name) const override { return withName(clone(), name); }
};

namespace {
QN_MetaClass<KIND> const metaClass_KIND(KIND_NAME, 1);
}

QN_MetaClassBase const& KIND::metaClass() { return metaClass_KIND; }

extern "C" MRCOMMON_API unsigned int lengthOf(int count);
unsigned int lengthOf(int count) {
    Array<Sample> samples;
    Array<Vector3<float>> places;
    Array<QN_String> names;
    std::vector<Vector3<float>> copies;
    std::map<QN_String, Quat> turns;
    for (int i = 0; i < count; ++i) {
        samples.push_back({1.0f, {0, 0, float(i)}});
        places.push_back(samples[samples.size() - 1].place);
        names.push_back(QN_String().format("%d", i));
        copies.push_back(places[places.size() - 1]);
        turns[names[names.size() - 1]] = Quat::IDENTITY * Quat(Vector3<float>(0, 0, 1), float(i));
    }
    ItemVariant const variant(names);
#ifdef USES_UNIQUE_SYMBOLS
    auto const shared = std::make_shared<std::regex>("[0-9]+");
    if (!std::regex_match(std::to_string(count), *shared)) return 0;
#endif
    return samples.size() + places.size() + variant.as<Array<QN_String>>()->size() +
           static_cast<unsigned int>(copies.size() + turns.size());
}

// The definition of an enumeration, which a host derives.
#include <MRCommon/properties/QN_Enum.h>

#include "claim.h"

#include <memory>

class Quality : public quarn::QN_Enum {
public:
    explicit Quality(bool& gone) : gone_(gone) {}
    ~Quality() override { gone_ = true; }

private:
    bool& gone_;
};

int main() {
    bool gone = false;
    std::unique_ptr<quarn::QN_Enum> definition(new Quality(gone));
    definition.reset();
    claim(gone, "it is deleted through the base");
}

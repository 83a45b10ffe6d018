// What an exit handler still does after the library's destructors have run: see exit_host.cpp.
#include <MRCommon/host/ConfigurationMngr.h>
#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/QN_System_Enum.h>

#include <cstdio>

using namespace quarn;

namespace {

int definitionsDeleted = 0;

struct Definition : QN_Enum {
    ~Definition() override { ++definitionsDeleted; }
};

struct Host : ConfigurationHost {
    ConfigurationObject* getObject(QN_String const& name) override {
        askedForWorkSpace = name == "WorkSpace";
        return nullptr;
    }
    bool askedForWorkSpace = false;
};

int failures = 0;

void expect(bool holds, char const* what) {
    if (holds) return;
    std::fprintf(stderr, "at exit: %s\n", what);
    ++failures;
}

bool isEmpty(QN_String const& text) { return text.size() == 1 && *text.data() == '\0'; }

} // namespace

extern "C" __attribute__((visibility("default"))) void prepare() {
    QN_System_Enum::instance().enums["mode"] = new Definition;
}

extern "C" __attribute__((visibility("default"))) int checkAtExit() {
    expect(isEmpty(PptyFloat().getName()), "a property without a name");
    PptyEnum choice;
    expect(isEmpty(choice.getName()) && isEmpty(choice.getRefToValue()->first),
           "an enumeration without a choice");
    expect(ItemVariant::ItemVariant_Invalid->tag() == 0, "the shared variant");

    Host host;
    ConfigurationMngr::instance().host = &host;
    FileStreamRaw nothing;
    choice.readFrom(nothing);
    ConfigurationMngr::instance().host = nullptr;
    expect(host.askedForWorkSpace, "the name of the workspace");

    expect(definitionsDeleted == 1, "one definition deleted");
    auto& enums = QN_System_Enum::instance().enums;
    expect(enums.empty(), "an empty registry");
    enums["late"] = nullptr;
    expect(enums.count("late") == 1 && enums.count("mode") == 0, "a registry that can be used");
    return failures;
}

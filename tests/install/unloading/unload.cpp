// Opens two plug-ins and closes them in both orders; each must leave memory and the registry when it is closed.
//     unload <plug-in> <its class> <plug-in> <its class>
#include <MRCommon/system/LibLoader.h>
#include <qn_basic/QN_MetaClassBase.h>

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

using namespace quarn;

namespace {

struct PlugIn {
    char const* path;
    char const* className;
    void* handle = nullptr;

    void open() {
        handle = LibLoader::load(path);
        auto const lengthOf =
            reinterpret_cast<unsigned int (*)(int)>(LibLoader::getFunctionPtr(handle, "lengthOf"));
        require(lengthOf != nullptr && lengthOf(9) == 45 && registered(), "does not work once it is open");
    }
    void close() {
        require(LibLoader::unload(handle) == 0, "cannot be closed");
        require(dlopen(path, RTLD_LAZY | RTLD_NOLOAD) == nullptr, "stays in memory");
        require(!registered(), "leaves its class in the registry");
    }
    bool registered() const { return QN_MetaClassBase::find(className) != nullptr; }
    void require(bool holds, char const* fault) const {
        if (holds) return;
        std::printf("%s %s\n", path, fault);
        std::exit(1);
    }
};

} // namespace

int main(int count, char** arguments) {
    if (count != 5) return 2;
    PlugIn one{arguments[1], arguments[2]}, two{arguments[3], arguments[4]};
    for (PlugIn* const first : {&one, &two}) {
        PlugIn* const second = first == &one ? &two : &one;
        for (PlugIn* const leaving : {first, second}) {
            first->open();
            second->open();
            leaving->close();
            (leaving == first ? second : first)->close();
        }
    }
}

// A host that registers an exit handler and then loads a plug-in: the handler runs after the destructors of the
// library that came with the plug-in, and calls into it.
//     exit_host <plug-in>               exits with 1 if the library cannot be used any more
#include <dlfcn.h>
#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

// Overwrites freed memory and never hands it out again, so that a reader of it sees the damage.
void operator delete(void* memory) noexcept {
    if (memory != nullptr) std::memset(memory, 0xDD, malloc_usable_size(memory));
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
void operator delete[](void* memory) noexcept { operator delete(memory); }
void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }

namespace {

int (*checkAtExit)() = nullptr;

void exitHandler() {
    if (checkAtExit == nullptr || checkAtExit() != 0) std::_Exit(1);
}

template <class Function> void look(void* library, char const* name, Function& function) {
    void* const address = library == nullptr ? nullptr : dlsym(library, name);
    if (address == nullptr) {
        std::fprintf(stderr, "exit_host: %s\n", dlerror());
        std::exit(1);
    }
    std::memcpy(&function, &address, sizeof function);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2 || std::atexit(exitHandler) != 0) return 2;
    void* const plugIn = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    void (*prepare)() = nullptr;
    look(plugIn, "prepare", prepare);
    look(plugIn, "checkAtExit", checkAtExit);
    prepare();
}

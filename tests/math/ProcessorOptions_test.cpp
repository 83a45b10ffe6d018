// A plug-in compiled with a processor option must not change the results of the plug-ins loaded after it.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include <dlfcn.h>

namespace {

bool hasFusedOperations() {
#ifdef __x86_64__
    return __builtin_cpu_supports("fma") != 0;
#else
    return true;
#endif
}

struct Module {
    explicit Module(char const* path) : handle(dlopen(path, RTLD_NOW | RTLD_GLOBAL)) {
        if (handle == nullptr) ADD_FAILURE() << dlerror();
    }
    ~Module() {
        if (handle != nullptr) dlclose(handle);
    }
    std::vector<double> results() const {
        if (handle == nullptr) return {};
        auto const calculate =
            reinterpret_cast<double const* (*)(unsigned int*)>(dlsym(handle, "calculateRotations"));
        unsigned int count = 0;
        double const* const first = calculate(&count);
        return {first, first + count};
    }
    void* handle;
};

/// Compares bit patterns, so that NaN equals itself.
bool sameBits(std::vector<double> const& a, std::vector<double> const& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

} // namespace

TEST(InlineRotations, KeepTheirBitsBesideAModuleWithProcessorOptions) {
    if (!hasFusedOperations()) GTEST_SKIP() << "this processor has no fused operations";
    std::vector<double> const alone = Module(PLAIN_MODULE).results();
    ASSERT_GT(alone.size(), 10000u);
    ASSERT_EQ(dlopen(PLAIN_MODULE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "must be bound anew";
    Module const fused(FUSED_MODULE);
    Module const plain(PLAIN_MODULE);
    EXPECT_FALSE(sameBits(fused.results(), alone))
        << "the modules do not differ, so that this test shows nothing";
    EXPECT_TRUE(sameBits(plain.results(), alone));
}

// LibLoader: a plug-in that is opened and closed, and the reasons of failures.
#include <MRCommon/system/LibLoader.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstdlib>
#include <string>
#include <thread>

using quarn::LibLoader;
using quarn::QN_String;

namespace {

bool contains(std::string const& text, std::string const& part) {
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(LibLoader, LoadsAPlugIn) {
    void* const plugin = LibLoader::load(TEST_PLUGIN);
    ASSERT_NE(plugin, nullptr) << LibLoader::lastError();
    void* const again = loadLibUnix(TEST_PLUGIN);
    void* const address = LibLoader::getFunctionPtr(plugin, "testPluginAnswer");
    ASSERT_NE(address, nullptr);
    EXPECT_EQ(reinterpret_cast<int (*)()>(address)(), 42);
    EXPECT_EQ(getSymbolAddressUnix(again, "testPluginAnswer"), address);
    EXPECT_EQ(LibLoader::getFunctionPtr(plugin, "testPluginanswer"), nullptr);
    EXPECT_EQ(unloadLibUnix(again), 0);
    EXPECT_EQ(LibLoader::unload(plugin), 0);
    EXPECT_EQ(dlopen(TEST_PLUGIN, RTLD_NOW | RTLD_NOLOAD), nullptr) << "closed as often as opened";
}

// In a process of its own: a library that dlsym found for the program is never unloaded from it.
TEST(LibLoader, MakesSymbolsVisibleToAll) {
    auto const isVisible = [] { return dlsym(RTLD_DEFAULT, "testPluginAnswer") != nullptr; };
    EXPECT_EXIT(
        {
            bool const before = isVisible();
            void* const plugin = LibLoader::load(TEST_PLUGIN);
            bool const after = isVisible();
            std::exit(!before && after && LibLoader::unload(plugin) == 0 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(LibLoader, BindsAllSymbolsWhenItOpens) {
    EXPECT_EQ(LibLoader::load(TEST_PLUGIN_UNBOUND), nullptr);
    EXPECT_TRUE(contains(LibLoader::lastError(), "testPluginUndefined")) << LibLoader::lastError();
    void* const lazy = dlopen(TEST_PLUGIN_UNBOUND, RTLD_LAZY);
    EXPECT_NE(lazy, nullptr) << "it could be opened in another way: " << dlerror();
    if (lazy != nullptr) dlclose(lazy);
}

TEST(LibLoader, PassesFailuresThrough) {
    EXPECT_EQ(LibLoader::load("/no/such/plugin.so"), nullptr);
    EXPECT_EQ(loadLibUnix(__FILE__), nullptr) << "not a library";
    EXPECT_EQ(LibLoader::unload(nullptr), -1);
    EXPECT_EQ(getSymbolAddressUnix(nullptr, "malloc"), nullptr);
}

TEST(LastError, IsTheReasonOfTheLastFailure) {
    EXPECT_EQ(LibLoader::load("/no/such/plugin.so"), nullptr);
    EXPECT_TRUE(contains(LibLoader::lastError(), "/no/such/plugin.so")) << LibLoader::lastError();
    EXPECT_EQ(loadLibUnix(__FILE__), nullptr);
    EXPECT_TRUE(contains(LibLoader::lastError(), __FILE__)) << LibLoader::lastError();

    void* const plugin = LibLoader::load(TEST_PLUGIN);
    EXPECT_STREQ(LibLoader::lastError(), "") << "a success clears it";
    EXPECT_EQ(LibLoader::getFunctionPtr(plugin, "noSuchFunction"), nullptr);
    EXPECT_TRUE(contains(LibLoader::lastError(), "noSuchFunction")) << LibLoader::lastError();
    EXPECT_NE(getSymbolAddressUnix(plugin, "testPluginAnswer"), nullptr);
    EXPECT_STREQ(LibLoader::lastError(), "");
    EXPECT_EQ(getSymbolAddressUnix(nullptr, "malloc"), nullptr);
    std::string const reason = LibLoader::lastError();
    EXPECT_NE(reason, "");
    EXPECT_EQ(LibLoader::unload(plugin), 0);
    EXPECT_EQ(LibLoader::unload(nullptr), -1);
    EXPECT_EQ(LibLoader::lastError(), reason) << "closing a library leaves it";
}

#ifdef __ELF__ // elsewhere the plug-in has no such symbol
TEST(LastError, IsEmptyForASymbolAtAddressZero) {
    void* const plugin = LibLoader::load(TEST_PLUGIN);
    ASSERT_NE(plugin, nullptr);
    EXPECT_EQ(LibLoader::getFunctionPtr(plugin, "noSuchFunction"), nullptr);
    EXPECT_EQ(LibLoader::getFunctionPtr(plugin, "testPluginAddressZero"), nullptr);
    EXPECT_STREQ(LibLoader::lastError(), "");
    EXPECT_EQ(LibLoader::unload(plugin), 0);
}
#endif

TEST(LastError, KeepsTheReasonAfterALongPath) {
    for (std::size_t length = 900; length < 1100; ++length) {
        std::string const path = "/" + std::string(length, 'x') + "/tail.so";
        EXPECT_EQ(LibLoader::load(path.c_str()), nullptr);
        std::string const kept = LibLoader::lastError();
        void* const found = dlopen(path.c_str(), RTLD_NOW);
        ASSERT_EQ(found, nullptr);
        std::string const whole = dlerror();
        EXPECT_EQ(kept, whole.size() < 1024 ? whole : "..." + whole.substr(whole.size() - 1020)) << length;
    }
}

TEST(LastError, BelongsToTheCallingThread) {
    EXPECT_EQ(LibLoader::load("/no/such/plugin.so"), nullptr);
    std::string const own = LibLoader::lastError();
    std::string atStart = "?", atEnd;
    std::thread([&] {
        atStart = LibLoader::lastError();
        EXPECT_EQ(LibLoader::load("/nor/this/one.so"), nullptr);
        atEnd = LibLoader::lastError();
    }).join();
    EXPECT_EQ(atStart, "");
    EXPECT_TRUE(contains(atEnd, "/nor/this/one.so"));
    EXPECT_EQ(LibLoader::lastError(), own);
}

// What may run at the same time: first use of the singletons, reading from different streams, look-ups. Meaningful
// in a build with the thread sanitizer; the results are checked in every build.
#include <MRCommon/MRCommon.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace quarn;

namespace {

constexpr int threadCount = 4;

/// Runs `work` with 0, 1, ... in as many threads, which start together.
void atOnce(std::function<void(int)> const& work) {
    std::atomic<int> waiting{threadCount};
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back([&, i] {
            --waiting;
            while (waiting != 0) std::this_thread::yield();
            work(i);
        });
    for (std::thread& thread : threads) thread.join();
}

/// What `find` returns in each thread; all of them the same.
template <class Find> void expectOne(Find const& find) {
    std::vector<void const*> found(threadCount);
    atOnce([&](int i) { found[static_cast<std::size_t>(i)] = find(); });
    for (void const* const each : found) EXPECT_EQ(each, found[0]);
    EXPECT_NE(found[0], nullptr);
}

} // namespace

// No other test of this program uses them, so that this is their first use in whatever order the tests run.
TEST(Threads, MakeTheSingletonsOnce) {
    expectOne([] { return static_cast<void const*>(&FileNameStitcher::instance()); });
    expectOne([] { return static_cast<void const*>(&QNCPUInfo::instance()); });
    expectOne([] { return static_cast<void const*>(&QN_System_Enum::instance()); });
}

TEST(Threads, FindClassesAndAncestors) {
    atOnce([](int) {
        for (int round = 0; round < 20; ++round) {
            for (QN_MetaClassBase const* const metaClass : QN_MetaClassBase::registered()) {
                EXPECT_EQ(QN_MetaClassBase::find(metaClass->className()), metaClass);
                EXPECT_EQ(QN_MetaClassBase::find(metaClass->classId()), metaClass);
                EXPECT_TRUE(metaClass->hasAncestor("QN_Class"));
                EXPECT_GT(metaClass->getGenealogyTreeSchema(), 0u);
            }
            EXPECT_TRUE(metaClass_PptyInt.hasAncestor(metaClass_QN_Class.classId()));
            EXPECT_FALSE(metaClass_PptyInt.hasAncestor("PptyFloat"));
        }
    });
}

TEST(Threads, UseTheirOwnStreamsAndProperties) {
    PptyArrayString const shared("layers", {"sea", "foam", "a layer with a long name"});
    atOnce([&](int i) {
        std::FILE* const file = std::tmpfile();
        ASSERT_NE(file, nullptr);
        for (int round = 0; round < 20; ++round) {
            std::rewind(file);
            FileStreamRaw raw(file);
            FileStreamEndian endian(file);
            PptyString const text("text", std::to_string(i).c_str());
            PptyEnum mode("mode", Tuple2<QN_String, int>("Low", i));
            text.writeTo(raw);
            shared.writeTo(endian);
            mode.writeTo(endian);
            std::rewind(file);
            PptyString text2;
            PptyArrayString list2;
            PptyEnum mode2;
            text2.readFrom(raw);
            list2.readFrom(endian);
            mode2.readFrom(endian);
            EXPECT_EQ(text2.toStr(), std::to_string(i).c_str());
            EXPECT_EQ(list2.toStr(), shared.toStr());
            EXPECT_EQ(mode2.getRefToValue()->second, i);
            EXPECT_FALSE(raw.failed());
        }
        std::fclose(file);
    });
}

TEST(Threads, ReadSharedValues) {
    PptyFloat const property("gravity", -9.81f);
    ItemVariant const variant(Array<QN_String>{"a", "b"});
    QN_String const text("one,two,three");
    std::string const message = "a b\tc";
    ByteId const id("00112233-4455-6677-8899-AABBCCDDEEFF");
    atOnce([&](int) {
        for (int round = 0; round < 100; ++round) {
            std::unique_ptr<Ppty> const copy(property.cloneWithNewName("other"));
            EXPECT_EQ(copy->toStr(), property.toStr());
            EXPECT_EQ(ItemVariant(variant).as<Array<QN_String>>()->size(), 2u);
            Array<QN_String> tokens;
            EXPECT_EQ(text.tokenize(',', tokens), 3u);
            EXPECT_EQ(StringTools::url_encode(message), "a+b+c");
            EXPECT_EQ(ByteId(id.toString()), id);
        }
    });
}

TEST(Threads, GroupNamesAndKeepTheirOwnErrors) {
    atOnce([](int i) {
        std::string const name = "fluid" + std::to_string(i) + ".";
        FrameScan const scan = groupFrames({name + "0001.exr", name + "0003.exr"});
        ASSERT_EQ(scan.sequences.size(), 1u);
        EXPECT_EQ(scan.sequences[0].head, name);
        FrameExtensionOrder order{};
        EXPECT_TRUE(FileNameStitcher::frameExtensionFromPath((name + "0001.exr").c_str(), order));
        std::string const missing = "/none/lib" + std::to_string(i) + ".so";
        EXPECT_EQ(LibLoader::load(missing.c_str()), nullptr);
        EXPECT_NE(std::string(LibLoader::lastError()).find(missing), std::string::npos);
    });
}

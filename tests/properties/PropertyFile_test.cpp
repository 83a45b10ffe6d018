// PropertyFile: what is saved is loaded again, what is damaged is refused, and the file is the old one or the new one.
#include <MRCommon/properties/detail/Crc32.h>
#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/PropertyFile.h>

#include "examples/WorkSpaceVersion.h"
#include "support/GoldenRecords.h"
#include "support/SystemFaults.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>

using namespace quarn;

namespace {

Bytes contentOf(std::string const& path) {
    std::string const bytes = bytesIn(path);
    return {bytes.begin(), bytes.end()};
}

void put(std::string const& path, Bytes const& content) {
    store(path, {reinterpret_cast<char const*>(content.data()), content.size()});
}

std::size_t filesBeside(std::string const& path) {
    std::filesystem::directory_iterator const files(std::filesystem::path(path).parent_path());
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

/// A property of every class, with values.
PropertyList everyClass() {
    PropertyList list;
    for (GoldenRecord const& golden : goldenRecords()) {
        if (golden.className() == "ItemVariant" || !golden.isRaw() || golden.isOldLayout()) continue;
        std::unique_ptr<Ppty> ppty(
            static_cast<Ppty*>(QN_MetaClassBase::find(golden.className().c_str())->metaNew()));
        TempFile file(golden.record);
        FileStreamRaw stream(file);
        ppty->readFrom(stream);
        list.add(std::move(ppty));
    }
    EXPECT_GE(list.size(), 20u);
    return list;
}

/// Makes the checksum right again.
void sign(Bytes& file) {
    if (file.size() < 4) return;
    detail::Crc32 crc;
    crc.update(reinterpret_cast<char const*>(file.data()), file.size() - 4);
    std::uint32_t const value = crc.value();
    std::memcpy(file.data() + file.size() - 4, &value, 4);
}

/// A file of one entry.
Bytes fileOf(std::string const& className, Bytes const& record, unsigned char schema = 1) {
    Bytes file = hex("4D5250524F50530A 01000000 01000000");
    auto const append = [&](auto const& bytes) { file.insert(file.end(), bytes.begin(), bytes.end()); };
    append(Bytes{static_cast<unsigned char>(className.size() + 1), 0, 0, 0});
    append(className);
    append(Bytes{0, schema, 0, 0, 0, static_cast<unsigned char>(record.size()), 0, 0, 0, 0, 0, 0, 0});
    append(record);
    append(hex("00000000"));
    sign(file);
    return file;
}

class PropertyFile : public testing::Test {
protected:
    TempDir folder;
    std::string const path = folder.path("scene.props");
    PropertyList list;

    void saveSmall() {
        list.add(std::make_unique<PptyFloat>("gravity", -9.81f));
        ASSERT_TRUE(saveProperties(path, list).ok());
    }

    FileStatus load(Bytes const& content) {
        put(path, content);
        return loadProperties(path, list);
    }

    /// Expects that the file is refused and the list left alone.
    void expectRefused(Bytes const& content, FileStatus::Code code, char const* words) {
        PropertyList kept;
        kept.add(std::make_unique<PptyInt>("kept", 7));
        put(path, content);
        FileStatus const status = loadProperties(path, kept);
        EXPECT_EQ(status.code, code) << status.message;
        EXPECT_EQ(status.message.rfind(path + ": ", 0), 0u) << status.message;
        EXPECT_NE(status.message.find(words), std::string::npos) << status.message;
        EXPECT_EQ(status.message.find('\n'), std::string::npos);
        EXPECT_NE(kept.find("kept"), nullptr);
        EXPECT_EQ(kept.size(), 1u);
    }
};

/// A plug-in's class, registered as long as a `QN_MetaClass<Kelp>` lives.
class Kelp : public PptyInt {
public:
    using PptyInt::PptyInt;
    QN_String const& getClassName() const override {
        static QN_String const name("Kelp");
        return name;
    }
    Ppty* clone() const override { return new Kelp(*this); }
    using PptyInt::readFrom;
    using PptyInt::writeTo;
    void readFrom(FileStreamRaw& stream) override {
        PptyInt::readFrom(stream);
        stream.read(&depth, sizeof depth);
    }
    void writeTo(FileStreamRaw& stream) const override {
        PptyInt::writeTo(stream);
        stream.write(&depth, sizeof depth);
    }
    double depth = 0;
};

/// Its stream fails after a whole record.
struct Torn : PptyInt {
    using PptyInt::writeTo;
    void writeTo(FileStreamRaw& stream) const override {
        PptyInt::writeTo(stream);
        char more[1 << 16];
        stream.read(more, sizeof more);
    }
};

struct NoProperty : QN_Class {};

} // namespace

// The files were made without the library.
TEST_F(PropertyFile, HoldsTheBytesThatThePageDescribes) {
    for (char const* const name : {"/every-class.props", "/scene.props"}) {
        FileStatus const status = loadProperties(MRCOMMON_PROPERTY_FILES + std::string(name), list);
        ASSERT_TRUE(status.ok()) << status.message;
        ASSERT_TRUE(saveProperties(path, list).ok());
        EXPECT_EQ(contentOf(path), contentOf(MRCOMMON_PROPERTY_FILES + std::string(name)));
    }
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(*list.find("gravity")->getVariantValue().as<float>(), -9.81f);
    EXPECT_EQ(list.className(0), "PptyFloat");
    EXPECT_EQ(list.className(1), "Kelp");
    EXPECT_EQ(list.property(1), nullptr);
    EXPECT_EQ(list.className(2), "");
    EXPECT_EQ(list.find("forest"), nullptr);
}

TEST_F(PropertyFile, KeepsEveryClassWhateverTheWorkSpaceIs) {
    PropertyList const all = everyClass();
    WorkSpaceVersion const version(5087); // enumerations elsewhere have the old layout
    ASSERT_TRUE(saveProperties(path, all).ok());
    Bytes const saved = contentOf(path);
    FileStatus const status = loadProperties(path, list);
    ASSERT_TRUE(status.ok()) << status.message;
    ASSERT_EQ(list.size(), all.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        EXPECT_EQ(list.property(i)->getClassName(), all.property(i)->getClassName());
        EXPECT_EQ(list.property(i)->getName(), all.property(i)->getName());
    }
    ASSERT_TRUE(saveProperties(path, list).ok());
    EXPECT_EQ(contentOf(path), saved);
}

TEST_F(PropertyFile, KeepsWhatAMissingPlugInStored) {
    {
        QN_MetaClass<Kelp> const plugIn("Kelp", 1);
        auto kelp = std::make_unique<Kelp>("forest", 3);
        kelp->depth = 12.5;
        list.add(std::move(kelp));
        list.add(std::make_unique<PptyFloat>("gravity", -9.81f));
        ASSERT_TRUE(saveProperties(path, list).ok());
        list.clear();
    }
    ASSERT_TRUE(loadProperties(path, list).ok());
    EXPECT_EQ(list.property(0), nullptr);
    static_cast<PptyFloat*>(list.find("gravity"))->setValue(-1.62f);
    ASSERT_TRUE(saveProperties(path, list).ok());

    QN_MetaClass<Kelp> const plugIn("Kelp", 1);
    ASSERT_TRUE(loadProperties(path, list).ok());
    EXPECT_EQ(dynamic_cast<Kelp&>(*list.property(0)).depth, 12.5);
    EXPECT_EQ(*list.find("gravity")->getVariantValue().as<float>(), -1.62f);

    Bytes const newer = fileOf("Kelp", hex("01000000 00 FF"), 2); // a record that this plug-in does not know
    ASSERT_TRUE(load(newer).ok());
    EXPECT_EQ(list.property(0), nullptr);
    ASSERT_TRUE(saveProperties(path, list).ok());
    EXPECT_EQ(contentOf(path), newer);

    PropertyList copied; // entry by entry, as callers who build a list of their own do
    copied.addUnknown(list.className(0), list.unknownSchema(0), list.unknownRecord(0));
    ASSERT_TRUE(saveProperties(path, copied).ok());
    EXPECT_EQ(contentOf(path), newer);
    list.clear();
}

TEST_F(PropertyFile, RefusesWhatIsNotInOrder) {
    Bytes const good = fileOf("PptyInt", hex("02000000 6100 07000000"));
    ASSERT_TRUE(load(good).ok());
    auto const changed = [&](std::size_t at, unsigned char byte) {
        Bytes file = good;
        file[at] = byte;
        sign(file);
        return file;
    };
    using S = FileStatus;
    expectRefused({}, S::NotAPropertyFile, "Not a property file");
    expectRefused(hex("7B7D"), S::NotAPropertyFile, "Not a property file");
    expectRefused(changed(0, 'm'), S::NotAPropertyFile, "Not a property file");
    expectRefused(changed(8, 2), S::NewerFormat, "format 2");
    expectRefused(changed(8, 0), S::Damaged, "format 0");
    expectRefused(Bytes(good.begin(), good.begin() + 14), S::Damaged, "the file ends before it");
    expectRefused(changed(12, 3), S::Damaged, "number of entries at byte 12"); // in twice the least size
    expectRefused(changed(12, 2), S::Damaged, "entry 2");
    expectRefused(changed(12, 0), S::Damaged, "last entry at byte 16");
    expectRefused(changed(16, 200), S::Damaged, "entry 1 (): name of the class at byte 16");
    expectRefused(changed(16, 0), S::Damaged, "name of the class at byte 16");
    expectRefused(changed(22, 0), S::Damaged, "name of the class at byte 16");
    expectRefused(changed(32, 200), S::Damaged, "entry 1 (PptyInt): size of the record at byte 32");
    expectRefused(changed(40, 200), S::Damaged, "entry 1 (PptyInt): name at byte 40");
    Bytes odd = changed(22, '\n');
    odd[23] = ' ', odd[32] = 200;
    sign(odd);
    expectRefused(odd, S::Damaged, "entry 1 (Pp? Int): size of the record");
    expectRefused(changed(40, 1), S::Damaged, "entry 1 (PptyInt): name at byte 40");
    expectRefused(fileOf("PptyInt", hex("02000000 6100 07000000 00")), S::Damaged,
                  "entry 1 (PptyInt): record at byte 40: reading it does not take its 11 bytes");
    expectRefused(fileOf("QN_Class", hex("02000000 6100")), S::Damaged, "the class is not a property");
    QN_MetaClass<NoProperty> const none("NoProperty", 1);
    expectRefused(fileOf("NoProperty", hex("02000000 6100"), 9), S::Damaged, "the class is not a property");

    put(path, fileOf("PptyInt", hex("02000000 6100 070000")));
    FileStatus const status = loadProperties(path, list);
    EXPECT_EQ(status.fault.reason, RecordCheck::EndsEarly);
    EXPECT_EQ(status.fault.field, "value");
    EXPECT_EQ(status.fault.offset, 46u);
    QN_MetaClass<Kelp> const plugIn("Kelp", 1); // reads more than the record has
    expectRefused(fileOf("Kelp", hex("01000000 00 07000000")), S::Damaged, "record at byte 37");
}

TEST_F(PropertyFile, RefusesFilesThatCannotBeOpened) {
    EXPECT_EQ(loadProperties(path, list).code, FileStatus::CannotOpen);
    EXPECT_EQ(loadProperties(path, list).message, path + ": No such file or directory");
    EXPECT_EQ(loadProperties(path, list).systemError, ENOENT);
    EXPECT_EQ(loadProperties(folder.path(""), list).code, FileStatus::CannotOpen);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(loadProperties(path, list).message, path + ": Not a regular file");
}

TEST_F(PropertyFile, NoticesEveryCutAndEveryChangedByte) {
    ASSERT_TRUE(saveProperties(path, everyClass()).ok());
    Bytes const good = contentOf(path);
    for (std::size_t at = 0; at < good.size(); ++at) {
        EXPECT_FALSE(load(Bytes(good.begin(), good.begin() + static_cast<long>(at))).ok()) << at;
        Bytes changed = good;
        changed[at] ^= static_cast<unsigned char>(1 << at % 8);
        EXPECT_FALSE(load(changed).ok()) << at;
    }
    EXPECT_EQ(list.size(), 0u);
}

// ---------------------------------------------------------------------------
// Saving

TEST_F(PropertyFile, IsTheOldOneOrTheNewOneWhereverSavingIsKilled) {
    saveSmall();
    Bytes const old = contentOf(path);
    list.add(std::make_unique<PptyString>("story", std::string(200000, 'x').c_str()));
    std::string const other = folder.path("other.props");
    ASSERT_TRUE(saveProperties(other, list).ok());
    Bytes const renewed = contentOf(other);
    int kills = 0, renewals = 0;
    for (bool isDone = false; !isDone && kills < 1000; ++kills) {
        put(path, old);
        pid_t const child = fork();
        if (child == 0) {
            SystemFaults const kill(kills, SystemFaults::Kill);
            _exit(saveProperties(path, list).ok() ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFEXITED(status));
        isDone = WEXITSTATUS(status) == 0;
        ASSERT_TRUE(isDone || WEXITSTATUS(status) == SystemFaults::killed) << kills;
        Bytes const found = contentOf(path);
        ASSERT_TRUE(found == old || found == renewed) << kills;
        if (found == renewed) ++renewals;
    }
    EXPECT_GE(kills, 10);
    EXPECT_GE(renewals, 2);
    EXPECT_LT(renewals, kills);
}

TEST_F(PropertyFile, IsTheOldOneAfterEveryFailure) {
    saveSmall();
    chmod(path.c_str(), 0640);
    Bytes const old = contentOf(path);
    list.add(std::make_unique<PptyString>("story", std::string(200000, 'x').c_str()));
    int failures = 0;
    for (int nth = 0; nth < 1000; ++nth) {
        bool struck = false;
        FileStatus status;
        {
            SystemFaults const fault(nth, SystemFaults::Fail, ENOSPC);
            status = saveProperties(path, list);
            struck = fault.struck();
        }
        EXPECT_EQ(filesBeside(path), 1u) << nth;
        if (!struck) break;
        if (status.ok()) { // nothing but the folder's flush may fail
            EXPECT_NE(contentOf(path), old) << nth;
            put(path, old);
            continue;
        }
        ++failures;
        EXPECT_EQ(status.code, FileStatus::CannotWrite);
        EXPECT_EQ(status.message, path + ": No space left on device");
        EXPECT_EQ(contentOf(path), old) << nth;
    }
    EXPECT_EQ(failures, 8); // open, fchmod, three writes, fsync, close, rename
}

TEST_F(PropertyFile, IsSavedDespiteInterruptionsShortWritesAndTakenNames) {
    list.add(std::make_unique<PptyString>("story", std::string(200000, 'x').c_str()));
    for (int nth = 0; nth < 12; ++nth) {
        SystemFaults const fault(nth, SystemFaults::Fail, EINTR);
        EXPECT_TRUE(saveProperties(path, list).ok()) << nth;
    }
    {
        SystemFaults const fault(0, SystemFaults::ShortWrites);
        EXPECT_TRUE(saveProperties(path, list).ok());
    }
    EXPECT_TRUE(loadProperties(path, list).ok());
    for (int i = 0; i < 999; ++i)
        folder.touch(".mrprops-" + std::to_string(getpid()) + "-" + std::to_string(i));
    EXPECT_TRUE(saveProperties(path, list).ok());
    EXPECT_EQ(filesBeside(path), 1000u) << "names that are taken are not used";
}

TEST_F(PropertyFile, ReportsErrorsOfReading) {
    saveSmall();
    for (int const reason : {EIO, EINTR}) {
        SystemFaults const fault(1, SystemFaults::Fail, reason);
        EXPECT_EQ(loadProperties(path, list).message, reason == EIO ? path + ": Input/output error" : "");
        EXPECT_TRUE(fault.struck());
    }
}

TEST_F(PropertyFile, ReplacesWhatALinkLeadsToAndKeepsPermissions) {
    saveSmall();
    ASSERT_EQ(chmod(path.c_str(), 0606), 0);
    std::string const link = folder.path("link"), nowhere = folder.path("nowhere");
    std::filesystem::create_symlink("scene.props", link);
    std::filesystem::create_symlink("none", nowhere);
    list.add(std::make_unique<PptyInt>("more", 1));
    ASSERT_TRUE(saveProperties(link, list).ok());
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_FALSE(std::filesystem::is_symlink(path));
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0606u);
    PropertyList loaded;
    ASSERT_TRUE(loadProperties(path, loaded).ok());
    EXPECT_EQ(loaded.size(), 2u);

    EXPECT_EQ(saveProperties(nowhere, list).message, nowhere + ": The symbolic link leads to nothing");
    mode_t const mask = umask(027);
    ASSERT_TRUE(saveProperties(folder.path("new"), list).ok());
    umask(mask);
    ASSERT_EQ(stat(folder.path("new").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u) << "as any other new file";
}

TEST_F(PropertyFile, IsNotSavedWhereItCannotBe) {
    std::string const missing = folder.path("none/scene.props");
    EXPECT_EQ(saveProperties(missing, list).message, missing + ": No such file or directory");
    std::string const plain = folder.path("plain");
    folder.touch("plain");
    EXPECT_EQ(saveProperties(plain + "/scene.props", list).message, plain + "/scene.props: Not a directory");
    EXPECT_EQ(saveProperties(plain + "/scene.props", list).systemError, ENOTDIR);
    std::filesystem::create_directory(path);
    EXPECT_EQ(saveProperties(path, list).message, path + ": Not a regular file");
    EXPECT_EQ(saveProperties("", list).code, FileStatus::CannotWrite);
}

TEST_F(PropertyFile, IsNotSavedWithARecordThatCouldNotBeReadAgain) {
    saveSmall();
    Bytes const old = contentOf(path);
    auto story = std::make_unique<PptyString>("story", "end");
    (*story->getRefToValue())[3] = '.';
    list.add(std::move(story));
    FileStatus const status = saveProperties(path, list);
    EXPECT_EQ(status.code, FileStatus::CannotWrite);
    EXPECT_NE(status.message.find("entry 2 (PptyString): "), std::string::npos) << status.message;
    EXPECT_EQ(contentOf(path), old);
    EXPECT_EQ(filesBeside(path), 1u);
}

TEST_F(PropertyFile, IsNotSavedIfTheStreamOfARecordFails) {
    list.add(std::make_unique<Torn>());
    EXPECT_EQ(saveProperties(path, list).message, path + ": entry 1 (PptyInt): its record cannot be written");
}

TEST(PropertyList, IgnoresWhatIsNotThereAndMovesItsProperties) {
    PropertyList list;
    list.add(nullptr);
    EXPECT_EQ(list.size(), 0u);
    EXPECT_EQ(list.property(0), nullptr);
    list.add(std::make_unique<PptyInt>("a", 1));
    list.add(std::make_unique<PptyInt>("a", 2));
    PropertyList other(std::move(list));
    EXPECT_EQ(other.find("a"), other.property(0));
    EXPECT_EQ(other.find("b"), nullptr);
    list = std::move(other);
    EXPECT_EQ(list.size(), 2u);
    EXPECT_THROW(list.addUnknown("", 1, "bytes"), std::invalid_argument);
    EXPECT_THROW(list.addUnknown(std::string("Ke\0lp", 5), 1, "bytes"), std::invalid_argument);
    EXPECT_EQ(list.unknownSchema(1) + list.unknownSchema(7), 0u) << "of a property, and beyond the end";
    EXPECT_EQ(list.unknownRecord(7), "") << "beyond the end";
    EXPECT_EQ(list.size(), 2u);
}

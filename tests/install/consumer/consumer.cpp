// What a stranger's first program does: a text from the headers, a property from libMRCommon made by its
// class name from libqn_basic, its record on a stream, and an integer through libqn_fileio.
#include <MRCommon/MRCommon.h>

#include <cstdio>

int main() {
    using namespace quarn;
    std::FILE* const file = std::tmpfile();
    QN_MetaClassBase const* const metaClass = QN_MetaClassBase::find("PptyFloat");
    if (file == nullptr || metaClass == nullptr || QN_MetaClassBase::find("QN_Class") == nullptr) return 1;

    QN_String name;
    name.format("gravity %04d", 7);
    FileStreamRaw stream(file);
    PptyFloat(name, -9.81f).writeTo(stream);
    unsigned int written = 258;
    WriteUInt(&written, 1, file);

    std::rewind(file);
    void* object = metaClass->metaNew();
    auto* const loaded = static_cast<PptyFloat*>(object);
    loaded->readFrom(stream);
    unsigned int read = 0;
    ReadUInt(&read, 1, file);
    std::fclose(file);

    bool const right = loaded->getName() == "gravity 0007" && loaded->toStr() == " -9.810000 " && read == 258;
    metaClass->metaDelete(object);
    std::puts(right ? "the library works" : "the library is broken");
    return right ? 0 : 1;
}

#include <MRCommon/MRCommon.h>

int main() {
    using namespace quarn;
    std::FILE* file = std::tmpfile();
    if (file == nullptr) return 1;

    PptyFloat gravity("gravity", -9.81f);
    FileStreamRaw out(file);
    gravity.writeTo(out); // the name, then the value
    if (!out.finish()) return 1;

    std::rewind(file);
    PptyFloat loaded;
    FileStreamRaw in(file);
    loaded.readFrom(in);
    std::fclose(file);

    std::printf("%s:%s\n", loaded.getName().c_str(), loaded.toStr().c_str());
    return *loaded.getRefToValue() == -9.81f ? 0 : 1;
}

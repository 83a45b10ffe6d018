#include <MRCommon/properties/Ppty.h>

#include <MRCommon/streams/StreamEncoding.h>

#include <memory>

namespace quarn {

Ppty::Ppty(QN_String const& name) : name_(name) {}

Ppty::Ppty(Ppty const& other) = default;

Ppty::~Ppty() = default;

unsigned int Ppty::getType() const { return TYPE_NONE; }

void Ppty::readFrom(FileStreamRaw& stream) { encoding::readStr(stream, name_); }

void Ppty::writeTo(FileStreamRaw& stream) const { encoding::writeStr(stream, name_); }

void Ppty::readFrom(FileStreamEndian& stream) { encoding::readStr(stream, name_); }

void Ppty::writeTo(FileStreamEndian& stream) const { encoding::writeStr(stream, name_); }

Ppty* Ppty::withName(Ppty* copy, QN_String const& name) {
    std::unique_ptr<Ppty> owned(copy);
    owned->name_ = name;
    return owned.release();
}

} // namespace quarn

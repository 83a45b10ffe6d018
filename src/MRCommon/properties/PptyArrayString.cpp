#include <MRCommon/properties/PptyArrayString.h>

#include <MRCommon/properties/detail/BasePptyImpl.h>
#include <MRCommon/properties/detail/EmptyString.h>
#include <MRCommon/properties/PptyText.h>
#include <MRCommon/streams/StreamEncoding.h>

namespace quarn {

template class BasePpty<Array<QN_String>, Ppty::TYPE_ARRAY_STRING>;

PptyArrayString::PptyArrayString() : PptyArrayString(detail::emptyString) {}

PptyArrayString::PptyArrayString(QN_String const& name) : BasePpty(name) {}

PptyArrayString::PptyArrayString(QN_String const& name, Array<QN_String> const& value)
    : BasePpty(name, value) {}

PptyArrayString::PptyArrayString(PptyArrayString const& other) = default;

PptyArrayString::~PptyArrayString() = default;

Ppty* PptyArrayString::clone() const { return new PptyArrayString(*this); }

Ppty* PptyArrayString::cloneWithNewName(QN_String const& name) const { return withName(clone(), name); }

QN_String PptyArrayString::toStr() const {
    QN_String text;
    qn_basicppty::QN_set(text, value());
    return text;
}

template <class Stream> void PptyArrayString::readFromT(Stream& stream) {
    Ppty::readFrom(stream);
    stream >> value();
}

template <class Stream> void PptyArrayString::writeToT(Stream& stream) const {
    Ppty::writeTo(stream);
    encoding::writeStrArray(stream, value());
}

void PptyArrayString::readFrom(FileStreamRaw& stream) { readFromT(stream); }

void PptyArrayString::writeTo(FileStreamRaw& stream) const { writeToT(stream); }

void PptyArrayString::readFrom(FileStreamEndian& stream) { readFromT(stream); }

void PptyArrayString::writeTo(FileStreamEndian& stream) const { writeToT(stream); }

} // namespace quarn

// Describe: everything that can be seen of a value, as text that can be compared.
#ifndef MRCOMMON_TESTS_RELIABILITY_DESCRIBE_H
#define MRCOMMON_TESTS_RELIABILITY_DESCRIBE_H

#include <MRCommon/MRCommon.h>

#include "support/Written.h"

#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

template <class T, class = std::enable_if_t<std::is_arithmetic_v<T> || std::is_enum_v<T>>>
std::string describe(T value) {
    if constexpr (std::is_enum_v<T>)
        return std::to_string(static_cast<long>(value));
    else
        return std::to_string(value);
}
inline std::string describe(std::string const& text) { return "'" + text + "'"; }
template <class T> std::string describe(std::vector<T> const& list);
template <class T, class S, class P, class L, class H, class W>
std::string describe(quarn::ArrayCore<T, S, P, L, H, W> const& list);
inline std::string describe(quarn::QN_String const& text) {
    return "'" + std::string(text.begin(), text.end()) + "'";
}
inline std::string describe(quarn::ByteId const& id) { return id.toString().c_str(); }
inline std::string describe(quarn::QN_MetaClassBase const* metaClass) {
    return metaClass->className().c_str();
}
inline std::string describe(StringTools::StringTokenizer const& tokenizer) {
    return tokenizer.remainingString();
}

inline std::string describe(quarn::ItemVariant const& variant) {
    return written<quarn::FileStreamRaw>(variant);
}
inline std::string describe(quarn::Ppty const& property) {
    return written<quarn::FileStreamRaw>(property) + property.toStr().c_str();
}
inline std::string describe(quarn::FrameRange const& range) {
    return std::to_string(range.first) + "-" + std::to_string(range.last);
}
std::string describe(quarn::FrameSequence const& sequence);
std::string describe(quarn::FrameScan const& scan);
template <class Object> std::string describe(std::unique_ptr<Object> const& object) {
    return describe(*object);
}

template <class A, class B> std::string describe(std::pair<A, B> const& pair) {
    return describe(pair.first) + ", " + describe(pair.second);
}
template <class... Members> std::string describe(std::tuple<Members...> const& members) {
    return std::apply([](auto const&... each) { return (std::string() + ... + (describe(each) + "; ")); },
                      members);
}

template <class List> std::string describeElements(List const& list) {
    std::string text = "[";
    for (auto const& element : list) text += describe(element) + ",";
    return text + "]";
}
template <class T> std::string describe(std::vector<T> const& list) { return describeElements(list); }
template <class T, class S, class P, class L, class H, class W>
std::string describe(quarn::ArrayCore<T, S, P, L, H, W> const& list) {
    return describeElements(list);
}
inline std::string describe(quarn::RecordCheck const& check) {
    return describe(check.reason) + describe(check.offset) + describe(check.size) + check.message();
}
inline std::string describe(quarn::FileStatus const& status) {
    return describe(status.code) + status.message;
}
inline std::string describe(quarn::PropertyList const& list) {
    std::string text;
    for (std::size_t i = 0; i < list.size(); ++i) {
        text += list.className(i) + ": ";
        if (list.property(i) != nullptr) text += describe(*list.property(i));
    }
    return text;
}
inline std::string describe(quarn::FrameSequence const& s) {
    return describe(s.head) + describe(s.tail) + describe(s.padding) + describe(s.ranges);
}
inline std::string describe(quarn::FrameScan const& scan) {
    return describe(scan.sequences) + describe(scan.others) + describe(scan.complete);
}

#endif

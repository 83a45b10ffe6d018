// Containers: lists of strings and of numbers behave as the standard's do, whatever is called in whatever order.
//     pairs of bytes    a call and its argument
#include "Input.h"

#include <MRCommon/basic/Array.h>
#include <MRCommon/basic/QN_String.h>

#include <utility>
#include <vector>

using namespace quarn;

namespace {

/// A list and the standard's, to which the same is done.
template <class Element, class Plain> class Twins {
public:
    void call(unsigned int what, unsigned int argument) {
        switch (what % 9) {
        case 0: append(make(argument)); break;
        case 1:
            if (!plain_.empty()) appendOwn(argument % size());
            break;
        case 2: resize(size() == 0 ? 0 : argument % size()); break;
        case 3:
            list_.reserve(argument, true);
            resize(std::min(size(), argument));
            break;
        case 4: list_ = Array<Element>(list_); break;
        case 5: {
            Array<Element> moved(std::move(list_));
            list_ = std::move(moved);
            break;
        }
        case 6: list_ = *&list_; break;
        case 7: list_.reserve(list_.capacity() + argument, true); break;
        default: std::swap(list_, other_); std::swap(plain_, otherPlain_);
        }
        requireSame();
    }

private:
    static Element make(unsigned int argument);

    unsigned int size() const { return static_cast<unsigned int>(plain_.size()); }
    void append(Element const& element) {
        list_.push_back(element);
        plain_.push_back(plainOf(element));
    }
    void appendOwn(unsigned int index) {
        list_.push_back(list_[index]);
        plain_.push_back(Plain(plain_[index]));
    }
    void resize(unsigned int newSize) {
        list_.setSize(newSize);
        plain_.resize(newSize);
    }
    void requireSame() const {
        require(list_.size() == plain_.size() && list_.capacity() >= list_.size(), "the sizes agree");
        for (unsigned int i = 0; i < list_.size(); ++i)
            require(plainOf(list_[i]) == plain_[i], "the elements agree");
    }
    static std::string plainOf(QN_String const& text) { return std::string(text.view()); }
    static int plainOf(int number) { return number; }

    Array<Element> list_, other_;
    std::vector<Plain> plain_, otherPlain_;
};

template <> QN_String Twins<QN_String, std::string>::make(unsigned int argument) {
    QN_String text;
    return text.format("%0*u", static_cast<int>(argument), argument);
}
template <> int Twins<int, int>::make(unsigned int argument) { return static_cast<int>(argument); }

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    Twins<QN_String, std::string> texts;
    Twins<int, int> numbers;
    while (!input.rest().empty()) {
        unsigned int const call = input.number<unsigned char>();
        unsigned int const argument = input.number<unsigned char>();
        texts.call(call, argument);
        numbers.call(call, argument);
    }
    return 0;
}

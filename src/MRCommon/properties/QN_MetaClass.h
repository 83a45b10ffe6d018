// QN_MetaClass: the object that stands for class T: registers it, makes and deletes its objects.
//     QN_MetaClass<Wind> const metaClass_Wind("Wind", 1);     // registered while it lives
//     void* object = metaClass_Wind.metaNew();
// T derives from QN_Class and has a default constructor.
#ifndef MRCOMMON_PROPERTIES_QN_METACLASS_H
#define MRCOMMON_PROPERTIES_QN_METACLASS_H

#include <MRCommon/properties/QN_Class.h>
#include <qn_basic/QN_MetaClassBase.h>

#include <type_traits>
#include <utility>

namespace quarn {

template <class T> class MRCOMMON_API QN_MetaClass : public QN_MetaClassBase {
public:
    /// Registers T under this name; `schema` is the version of its record.
    QN_MetaClass(char const* name, unsigned int const& schema) : QN_MetaClassBase(name, schema) {}
    ~QN_MetaClass() override = default;

    unsigned long getClassSizeOf() const override { return sizeof(T); }

    /// A new T, owned by the caller. What its constructor throws passes on; nothing is left behind.
    void* metaNew() const override { return new T(); }

    /// Nulls the caller's pointer, then deletes the T behind it through its virtual destructor. Null:
    /// nothing.
    void metaDelete(void*& object) const override { delete static_cast<T*>(std::exchange(object, nullptr)); }

    UpcastProbe upcastProbe() const override { return {&throwNull, &catches}; }

private:
    static void throwNull() {
        static_assert(std::is_base_of_v<QN_Class, T>, "only what derives from QN_Class has an identity");
        throw static_cast<T const*>(nullptr);
    }

    static bool catches(void (*throwsNull)()) {
        try {
            throwsNull();
        } catch (T const*) {
            return true;
        } catch (...) { // another class's pointer: no ancestor of it
        }
        return false;
    }
};

} // namespace quarn

#endif

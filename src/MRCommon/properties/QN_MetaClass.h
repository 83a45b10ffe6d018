// QN_MetaClass: the object that represents class T. It registers T, makes objects of T and deletes them.
//     QN_MetaClass<Wind> const metaClass_Wind("Wind", 1);     // registered as long as this object lives
//     void* object = metaClass_Wind.metaNew();
// T derives from QN_Class and has a default constructor. The template is not exported: the instance for a
// plug-in's class is private to that plug-in, and MetaClasses.h exports those for the library's kinds.
#ifndef MRCOMMON_PROPERTIES_QN_METACLASS_H
#define MRCOMMON_PROPERTIES_QN_METACLASS_H

#include <MRCommon/properties/QN_Class.h>
#include <qn_basic/QN_MetaClassBase.h>

#include <type_traits>
#include <utility>

namespace quarn {

template <class T> class QN_MetaClass : public QN_MetaClassBase {
public:
    /// Registers T under this name; `schema` is the version of its record.
    QN_MetaClass(char const* name, unsigned int const& schema) : QN_MetaClassBase(name, schema) {}
    ~QN_MetaClass() override = default;

    unsigned long getClassSizeOf() const override { return sizeof(T); }

    /// Returns a new T, owned by the caller. Passes on what its constructor throws, without a leak.
    [[nodiscard]] void* metaNew() const override { return new T(); }

    /// Sets the caller's pointer to null, then deletes the T through its virtual destructor. Does nothing if
    /// the pointer is null.
    void metaDelete(void*& object) const override { delete static_cast<T*>(std::exchange(object, nullptr)); }

    UpcastProbe upcastProbe() const override { return {&throwNull, &catches}; }

private:
    static void throwNull() {
        static_assert(std::is_base_of_v<QN_Class, T>, "only classes derived from QN_Class have an identity");
        throw static_cast<T const*>(nullptr);
    }

    static bool catches(void (*throwsNull)()) {
        try {
            throwsNull();
        } catch (T const*) {
            return true;
        } catch (...) { // a pointer to a class that does not descend from T
        }
        return false;
    }
};

} // namespace quarn

#endif

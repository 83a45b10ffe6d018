// The objects that stand for classes: making and deleting objects, of the library's kinds and of a host's.
#include <MRCommon/properties/MetaClasses.h>

#include "support/Allocations.h"
#include "support/Slots.h"

#include <gtest/gtest.h>

using namespace quarn;

namespace {

/// Notes in its destructor what the caller's pointer is at that time.
class Watcher : public PptyFloat {
public:
    QN_CLASS_IDENTITY
    QN_PPTY_COPIES(Watcher)
    Watcher() = default;
    Watcher(Watcher const&) = default;
    ~Watcher() override { seen = callersPointer; }
    static inline void* callersPointer = nullptr;
    static inline void* seen = nullptr;
};

QN_MetaClass<Watcher> const metaClass_Watcher("Watcher", 1);
QN_MetaClassBase const& Watcher::metaClass() { return metaClass_Watcher; }

} // namespace

TEST(QN_MetaClass, MakesAndDeletesObjects) {
    for (QN_MetaClassBase const* m : QN_MetaClassBase::registered()) {
        AllocationCounter count;
        void* object = m->metaNew();
        if (m == &metaClass_QN_Class) {
            EXPECT_EQ(object, nullptr) << "the root has no objects of its own";
            EXPECT_EQ(m->getClassSizeOf(), 0u);
            continue;
        }
        auto const& ppty = *static_cast<Ppty*>(object);
        EXPECT_EQ(&ppty.getClassId(), &m->classId());
        EXPECT_EQ(&ppty.getClassName(), &m->className());
        EXPECT_EQ(&ppty.getClassSchema(), &m->classSchema());
        EXPECT_EQ(m->classSchema(), m == &metaClass_PptyEnum ? 2u : 1u);
        EXPECT_STREQ(ppty.getName().c_str(), "");
        m->metaDelete(object);
        EXPECT_EQ(object, nullptr);
        m->metaDelete(object);
        EXPECT_EQ(count.alive(), 0);
    }
    EXPECT_EQ(metaClass_PptyFloat.getClassSizeOf(), sizeof(PptyFloat));
}

TEST(QN_MetaClass, NullsTheCallersPointerBeforeItDeletes) {
    Watcher::callersPointer = metaClass_Watcher.metaNew();
    Watcher::seen = Watcher::callersPointer;
    metaClass_Watcher.metaDelete(Watcher::callersPointer);
    EXPECT_EQ(Watcher::seen, nullptr);
}

TEST(QN_MetaClass, KeepsItsSlots) {
    using Base = QN_MetaClassBase;
    EXPECT_EQ(slotOf<bool (Base::*)(unsigned long long const&) const>(&Base::hasAncestor), 2u);
    EXPECT_EQ(slotOf<bool (Base::*)(QN_String const&) const>(&Base::hasAncestor), 3u);
    EXPECT_EQ(slotOf(&Base::getGenealogyTreeSchema), 4u);
    EXPECT_EQ(slotOf(&Base::getClassSizeOf), 5u);
    EXPECT_EQ(slotOf(&Base::metaNew), 6u);
    EXPECT_EQ(slotOf(&Base::metaDelete), 7u);
    EXPECT_EQ(slotOf(&Base::upcastProbe), 8u);
    using SizeOf = unsigned long (*)(Base const*);
    EXPECT_EQ(entry<SizeOf>(metaClass_PptyDouble, 5)(&metaClass_PptyDouble), sizeof(PptyDouble));
}

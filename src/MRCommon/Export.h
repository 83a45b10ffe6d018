// Export.h: which names a library of this family exports, and what a caller's compiler must offer.
//
// Everything is compiled with hidden visibility; a name is visible outside only if a header says so:
//     class MRCOMMON_API Palette { ... };               // all members, virtual table and type information
//     MRCOMMON_API int paletteSize();                   // one function
// A plug-in exports only the C functions that its host looks up, never a class (docs/plug-ins.md).
//
// A closed family of templates is exported by its explicit instances: the template and every type among its
// arguments carry the macro, the header says `extern template class`, one source file says `template class`.
// An argument type without the macro, an empty tag included, makes the whole instance vanish silently.
//
// A class that is defined in its header alone is exported as a type, for the sake of those instances and of its
// type information, but its members are hidden one by one:
//     template <class T> class MRCOMMON_API Pair {
//         MRCOMMON_HIDDEN T sum() const { ... }
//         MRCOMMON_HIDDEN_COPIES(Pair)
//     };
// A visible inline member is compiled into every module that uses it, and the loader makes all modules share
// the first copy. A plug-in whose copy others share cannot be unloaded, and if it was compiled with fused
// multiplications it changes the last bits of everybody's results. A hidden member stays in its module, even if
// the plug-in is compiled without -fvisibility=hidden. Clang does not hide member templates of class templates;
// so there are none. Header constants are hidden too: a visible one is a unique symbol with GCC, which pins the
// plug-in that brings it. Instances of C++ standard templates remain visible without optimisation; only a linker
// option of the plug-in hides them (docs/plug-ins.md).
#ifndef MRCOMMON_EXPORT_H
#define MRCOMMON_EXPORT_H

#if !defined(__cpp_rtti) || !defined(__cpp_exceptions)
#error "MRCommon needs exceptions and run-time type information: no -fno-exceptions, no -fno-rtti"
#endif
#ifndef __LP64__
#error "MRCommon needs a 64-bit platform with a 64-bit long"
#endif

#define MRCOMMON_API __attribute__((visibility("default")))  ///< exported by libMRCommon or a plug-in
#define QN_BASIC_API __attribute__((visibility("default")))  ///< exported by libqn_basic
#define QN_FILEIO_API __attribute__((visibility("default"))) ///< exported by libqn_fileio

/// Hides an inline member or friend of an exported class; before a namespace's name, everything in the block.
#define MRCOMMON_HIDDEN [[gnu::visibility("hidden")]]

// NOLINTBEGIN(bugprone-macro-parentheses): the name of a class takes none
/// Declares copy, move and destruction as the compiler would, but hidden. Trivial ones stay trivial. Moving the
/// members must not throw.
#define MRCOMMON_HIDDEN_COPIES(CLASS)                                                                        \
    MRCOMMON_HIDDEN CLASS(CLASS const&) = default;                                                           \
    MRCOMMON_HIDDEN CLASS(CLASS&&) noexcept = default;                                                       \
    MRCOMMON_HIDDEN CLASS& operator=(CLASS const&) = default;                                                \
    MRCOMMON_HIDDEN CLASS& operator=(CLASS&&) noexcept = default;                                            \
    MRCOMMON_HIDDEN ~CLASS() = default;
// NOLINTEND(bugprone-macro-parentheses)

/// Marks what is kept for old callers: `MRCOMMON_DEPRECATED("call load() instead") MRCOMMON_API void read();`
#define MRCOMMON_DEPRECATED(reason) [[deprecated(reason)]]

#endif

// Export.h: which names a library of this family shows to others.
//
// Everything is compiled with hidden visibility; a name is visible outside only if a header says so:
//     class MRCOMMON_API Palette { ... };               // all members, virtual table and type information
//     MRCOMMON_API int paletteSize();                   // one function
//
// A closed family of templates is exported by its explicit instances: the template and every type among its
// arguments carry the macro, the header says `extern template class`, one source file says `template class`.
// An argument type without the macro, an empty tag included, makes the whole instance vanish without a word.
//
// Inline members of exported classes are hidden, so that a plug-in's copy of them serves that plug-in alone:
// a visible copy would be bound by the next plug-in and would keep the first one from being unloaded.
//     MRCOMMON_HIDDEN int size() const { return size_; }
// Inline members of templates with `extern template` stay visible: callers use the library's copy.
#ifndef MRCOMMON_EXPORT_H
#define MRCOMMON_EXPORT_H

#define MRCOMMON_API __attribute__((visibility("default")))  ///< shown by libMRCommon
#define QN_BASIC_API __attribute__((visibility("default")))  ///< shown by libqn_basic
#define QN_FILEIO_API __attribute__((visibility("default"))) ///< shown by libqn_fileio

#define MRCOMMON_HIDDEN                                                                                      \
    __attribute__((visibility("hidden"))) ///< not shown: an inline member of an exported class

#endif

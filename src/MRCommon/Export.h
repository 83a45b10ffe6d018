// Export.h: which names a library of this family shows to others.
//
// Everything is compiled with hidden visibility; a name is visible outside only where a header says so:
//     class MRCOMMON_API Palette { ... };               // all members, virtual table and type information
//     MRCOMMON_API int paletteSize();                   // one function
//
// A closed family of templates is exported by its explicit instances: the template and every type among its
// arguments carry the macro, the header says `extern template class`, one source file says `template class`.
// An argument type without the macro, an empty tag included, makes the whole instance vanish without a word.
//
// An inline function that carries MRCOMMON_HIDDEN is compiled into every module that calls it and never bound to another
// module's copy, whatever visibility and processor options the modules were compiled with.
#ifndef MRCOMMON_EXPORT_H
#define MRCOMMON_EXPORT_H

#define MRCOMMON_API __attribute__((visibility("default")))  ///< shown by libMRCommon
#define QN_BASIC_API __attribute__((visibility("default")))  ///< shown by libqn_basic
#define QN_FILEIO_API __attribute__((visibility("default"))) ///< shown by libqn_fileio

#define MRCOMMON_HIDDEN __attribute__((visibility("hidden"))) ///< never shown by any module

#endif

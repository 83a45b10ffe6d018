#include "Failures.h"

#include "Conversions.h"

#include <cerrno>
#include <utility>

using namespace quarn;

namespace {

void raise(SystemError const& error) {
    errno = error.number;
    PyErr_SetFromErrnoWithFilenameObject(PyExc_OSError, pathToPython(error.path).ptr());
}

void raise(RecordFault const& fault) {
    py::object const type = py::module_::import("mrcommon.errors").attr("RecordError");
    py::object const path = fault.path.empty() ? py::object(py::none()) : pathToPython(fault.path);
    py::object const error = type(toPython(std::string_view(fault.message)),
                                  toPython(std::string_view(fault.field)), fault.offset, fault.reason, path);
    PyErr_SetObject(type.ptr(), error.ptr());
}

char const* nameOf(RecordCheck::Reason reason) {
    switch (reason) {
    case RecordCheck::EndsEarly: return "EndsEarly";
    case RecordCheck::SizeBeyondFile: return "SizeBeyondFile";
    case RecordCheck::Unterminated: return "Unterminated";
    case RecordCheck::UnknownTag: return "UnknownTag";
    case RecordCheck::NotSeekable: return "NotSeekable";
    case RecordCheck::Good: break;
    }
    return "Damaged"; // what no check of a single record finds
}

} // namespace

RecordFault::RecordFault(std::string text, unsigned long long at, char const* why)
    : message(std::move(text)), offset(at), reason(why) {}

RecordFault::RecordFault(RecordCheck const& check)
    : message(check.message()), field(check.field), offset(check.offset), reason(nameOf(check.reason)) {}

void registerFailures() {
    py::register_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown) std::rethrow_exception(thrown);
        } catch (RecordFault const& fault) {
            raise(fault);
        } catch (SystemError const& error) {
            raise(error);
        } catch (py::cast_error const&) { // by default a RuntimeError
            PyErr_SetString(PyExc_TypeError, "an element of another type than expected");
        }
    });
}

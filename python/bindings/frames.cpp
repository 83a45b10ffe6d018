// Names of frames: one name, the sequences of a folder, the sequences of a list of names.
#include "bindings.h"
#include "Conversions.h"

#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/frames/FrameSequence.h>
#include <pybind11/stl.h>

#include <filesystem>

using namespace quarn;

namespace {

py::list rangesToPython(std::vector<FrameRange> const& ranges) {
    py::list list;
    for (FrameRange const& range : ranges) list.append(py::make_tuple(range.first, range.last));
    return list;
}

py::list namesToPython(std::vector<std::string> const& names) {
    py::list list;
    for (std::string const& name : names) list.append(pathToPython(name));
    return list;
}

FrameScanOptions optionsFrom(bool negativeFrames, bool versionsAreNames,
                             std::vector<std::string> compoundExtensions, py::object const& progress) {
    FrameScanOptions options;
    options.negativeFrames = negativeFrames;
    options.versionsAreNames = versionsAreNames;
    options.compoundExtensions = std::move(compoundExtensions);
    if (!progress.is_none())
        options.progress = [progress](std::size_t namesSoFar) {
            py::gil_scoped_acquire const locked;
            return !progress(namesSoFar).is(py::bool_(false));
        };
    return options;
}

/// Without the interpreter's lock, which the progress function takes again.
template <class Scan> FrameScan unlocked(Scan const& scan) {
    py::gil_scoped_release const released;
    return scan();
}

FrameScan scanFolder(std::string const& folder, FrameScanOptions const& options) {
    try {
        return unlocked([&] { return scanFrames(folder, options); });
    } catch (std::filesystem::filesystem_error const& error) {
        errno = error.code().value();
        throwOsError(folder);
    }
}

/// As FileNameStitcher builds it, with a layout of the call's own.
std::string frameName(std::string const& name, int frame, std::string const& ext, unsigned int padding,
                      int order, std::string const& prefix) {
    if (order < FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT || order > FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT)
        throw py::value_error("unknown order");
    FileNameStitcher& stitcher = FileNameStitcher::instance();
    std::string const prefixBefore = std::exchange(stitcher.prefix, prefix);
    unsigned int const paddingBefore = std::exchange(stitcher.padding, padding);
    FrameExtensionOrder const orderBefore = std::exchange(stitcher.order, FrameExtensionOrder(order));
    std::string built;
    try {
        built = stitcher.doIt(name, frame, ext);
    } catch (...) {
        stitcher.prefix = prefixBefore, stitcher.padding = paddingBefore, stitcher.order = orderBefore;
        throw;
    }
    stitcher.prefix = prefixBefore, stitcher.padding = paddingBefore, stitcher.order = orderBefore;
    return built;
}

} // namespace

void bindFrames(py::module_& module) {
    py::class_<FrameSequence>(module, "FrameSequence")
        .def_property_readonly("head", [](FrameSequence const& s) { return pathToPython(s.head); })
        .def_property_readonly("tail", [](FrameSequence const& s) { return pathToPython(s.tail); })
        .def_readonly("padding", &FrameSequence::padding)
        .def_property_readonly("ranges", [](FrameSequence const& s) { return rangesToPython(s.ranges); })
        .def_property_readonly("missing", [](FrameSequence const& s) { return rangesToPython(s.missing()); })
        .def_property_readonly("first", &FrameSequence::first)
        .def_property_readonly("last", &FrameSequence::last)
        .def("file_name", [](FrameSequence const& s, long long frame) { return pathToPython(s.fileName(frame)); },
             py::arg("frame"))
        .def("__len__", [](FrameSequence const& s) { return static_cast<std::size_t>(s.count()); })
        .def("__contains__", &FrameSequence::contains)
        .def("__contains__", [](FrameSequence const&, py::object const&) { return false; });

    module.def("scan_frames",
               [](py::object const& folder, bool negativeFrames, bool versionsAreNames,
                  std::vector<std::string> const& compoundExtensions, py::object const& progress) {
                   FrameScan scan = scanFolder(pathFrom(folder), optionsFrom(negativeFrames, versionsAreNames,
                                                                             compoundExtensions, progress));
                   return py::make_tuple(std::move(scan.sequences), namesToPython(scan.others), scan.complete);
               });
    module.def("group_frames",
               [](py::iterable const& names, bool negativeFrames, bool versionsAreNames,
                  std::vector<std::string> const& compoundExtensions, py::object const& progress) {
                   std::vector<std::string> texts;
                   for (py::handle const name : names) texts.push_back(pathFrom(name));
                   FrameScanOptions const options =
                       optionsFrom(negativeFrames, versionsAreNames, compoundExtensions, progress);
                   FrameScan scan = unlocked([&] { return groupFrames(texts, options); });
                   return py::make_tuple(std::move(scan.sequences), namesToPython(scan.others), scan.complete);
               });
    module.def("frame_name", [](py::object const& name, int frame, py::object const& ext, unsigned int padding,
                                int order, py::object const& prefix) {
        return pathToPython(frameName(textFrom(name), frame, textFrom(ext), padding, order, textFrom(prefix)));
    });
}

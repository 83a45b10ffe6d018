// Names of frames: one name, the sequences of a folder, the sequences of a list of names.
#include "bindings.h"
#include "Conversions.h"
#include "Failures.h"

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
    if (!progress.is_none()) // a handle, which can be copied without the interpreter's lock
        options.progress = [call = py::handle(progress)](std::size_t namesSoFar) {
            py::gil_scoped_acquire const locked;
            return !call(namesSoFar).is(py::bool_(false));
        };
    return options;
}

/// Scans without the interpreter's lock, which the progress function takes again.
template <class Scan> FrameScan unlocked(Scan const& scan) {
    py::gil_scoped_release const released;
    return scan();
}

FrameScan scanFolder(std::string const& folder, FrameScanOptions const& options) {
    try {
        return unlocked([&] { return scanFrames(folder, options); });
    } catch (std::filesystem::filesystem_error const& error) {
        throw SystemError{error.code().value(), folder};
    }
}

/// Puts the settings of the process's stitcher back. The interpreter's lock keeps other threads of Python away.
class ScopedStitcher {
public:
    ScopedStitcher() = default;
    ~ScopedStitcher() {
        stitcher_.prefix.swap(prefix_);
        stitcher_.padding = padding_;
        stitcher_.order = order_;
    }
    ScopedStitcher(ScopedStitcher const&) = delete;
    ScopedStitcher& operator=(ScopedStitcher const&) = delete;
    FileNameStitcher* operator->() const { return &stitcher_; }

private:
    FileNameStitcher& stitcher_ = FileNameStitcher::instance();
    std::string prefix_ = stitcher_.prefix;
    unsigned int padding_ = stitcher_.padding;
    FrameExtensionOrder order_ = stitcher_.order;
};

std::string frameName(std::string const& name, int frame, std::string const& ext, unsigned int padding,
                      int order, std::string const& prefix) {
    if (order < FRAME_ORDER_NAME_DOT_FRAME_DOT_EXT || order > FRAME_ORDER_NAME_UNDERSCORE_FRAME_DOT_EXT)
        throw py::value_error("unknown order");
    ScopedStitcher const stitcher;
    stitcher->prefix = prefix;
    stitcher->padding = padding;
    stitcher->order = static_cast<FrameExtensionOrder>(order);
    return stitcher->doIt(name, frame, ext);
}

FrameSequence makeSequence(py::handle head, py::handle tail, py::handle padding, py::iterable const& ranges) {
    FrameSequence sequence;
    sequence.head = pathFrom(head);
    sequence.tail = pathFrom(tail);
    fromPython(padding, sequence.padding);
    for (py::handle const item : ranges) {
        auto const [first, last] = item.cast<std::pair<long long, long long>>();
        bool const follows = sequence.ranges.empty() || first - 1 > sequence.last();
        if (first > last || !follows) throw py::value_error("ranges must ascend and must not touch");
        sequence.ranges.push_back({first, last});
    }
    return sequence;
}

bool containsFrame(FrameSequence const& sequence, py::object const& frame) {
    if (!PyLong_Check(frame.ptr()) && !PyIndex_Check(frame.ptr())) return false;
    try {
        return sequence.contains(valueFrom<long long>(frame));
    } catch (py::error_already_set&) { // beyond 64 bits
        return false;
    }
}

} // namespace

void bindFrames(py::module_& module) {
    py::class_<FrameSequence>(module, "FrameSequence", "The sequence below mrcommon.FrameSequence.")
        .def(py::init(&makeSequence), py::arg("head"), py::arg("tail"), py::arg("padding"), py::arg("ranges"))
        .def_property_readonly("head", [](FrameSequence const& s) { return pathToPython(s.head); })
        .def_property_readonly("tail", [](FrameSequence const& s) { return pathToPython(s.tail); })
        .def_readonly("padding", &FrameSequence::padding)
        .def_property_readonly("ranges", [](FrameSequence const& s) { return rangesToPython(s.ranges); })
        .def_property_readonly("missing", [](FrameSequence const& s) { return rangesToPython(s.missing()); })
        .def_property_readonly("first", &FrameSequence::first)
        .def_property_readonly("last", &FrameSequence::last)
        .def(
            "file_name",
            [](FrameSequence const& s, py::object const& frame) {
                return pathToPython(s.fileName(valueFrom<long long>(frame)));
            },
            py::arg("frame"))
        .def("__len__", [](FrameSequence const& s) { return static_cast<std::size_t>(s.count()); })
        .def("__contains__", &containsFrame)
        .def("__reduce__", &refuseToReduce);

    module.def("scan_frames", [](py::object const& folder, bool negativeFrames, bool versionsAreNames,
                                 std::vector<std::string> const& compoundExtensions,
                                 py::object const& progress) {
        FrameScan scan = scanFolder(
            pathFrom(folder), optionsFrom(negativeFrames, versionsAreNames, compoundExtensions, progress));
        return py::make_tuple(std::move(scan.sequences), namesToPython(scan.others), scan.complete);
    });
    module.def("group_frames", [](py::iterable const& names, bool negativeFrames, bool versionsAreNames,
                                  std::vector<std::string> const& compoundExtensions,
                                  py::object const& progress) {
        std::vector<std::string> texts;
        for (py::handle const name : names) texts.push_back(pathFrom(name));
        FrameScanOptions const options =
            optionsFrom(negativeFrames, versionsAreNames, compoundExtensions, progress);
        FrameScan scan = unlocked([&] { return groupFrames(texts, options); });
        return py::make_tuple(std::move(scan.sequences), namesToPython(scan.others), scan.complete);
    });
    module.def("frame_name", [](py::object const& name, py::object const& frame, py::object const& ext,
                                py::object const& padding, int order, py::object const& prefix) {
        return pathToPython(frameName(pathFrom(name), valueFrom<int>(frame), pathFrom(ext),
                                      valueFrom<unsigned int>(padding), order, pathFrom(prefix)));
    });
}

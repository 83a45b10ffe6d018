// mrcommon-records: prints the records in files, one line each, after checking them.
//     mrcommon-records --kinds PptyFloat,PptyEnum scene.raw
//     PptyFloat name="gravity" value=-9.8100004196166992
//     PptyEnum name="mode" label="High" index=20 labels=["Low", "High"] values=[10, 20]
// docs/man/mrcommon-records.1 describes the options.
#include <MRCommon/frames/FileNameStitcher.h>
#include <MRCommon/properties/detail/PropertyClass.h>
#include <MRCommon/properties/MetaClasses.h>
#include <MRCommon/properties/PropertyFile.h>
#include <MRCommon/properties/RecordCheck.h>
#include <MRCommon/streams/StreamEncoding.h>
#include <MRCommon/system/LibLoader.h>
#include <qn_fileio/qn_fileio.h>

#include "../examples/WorkSpaceVersion.h"
#include "CommandLine.h"
#include "RecordText.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

using namespace quarn;

namespace {

struct Request {
    std::vector<std::string> files;
    std::vector<std::string> kinds;
    std::string kindsFrom;
    std::vector<std::string> plugIns;
    std::optional<unsigned int> workSpace;
    bool repeat = false;
    bool endian = false;
    bool settings = false;
    bool json = false;
    bool check = false;
};

constexpr char const* standardInput = "-";
constexpr char const* variantKind = "ItemVariant";
constexpr char const* settingsKind = "FileNameStitcher";

/// What is wrong with an input; ends the work on it.
struct BadInput : std::runtime_error {
    using runtime_error::runtime_error;
};

std::string systemReason() { return std::generic_category().message(errno); }

/// Returns null if the class is not registered or its objects are not properties.
QN_MetaClassBase const* propertyClass(std::string const& name) {
    QN_MetaClassBase const* const found = QN_MetaClassBase::find(name.c_str());
    return found != nullptr && detail::isPropertyClass(*found) ? found : nullptr;
}

void requireKinds(std::vector<std::string> const& kinds) {
    for (std::string const& kind : kinds)
        if (kind != variantKind && propertyClass(kind) == nullptr)
            throw CLI::ValidationError("unknown record class " + kind);
}

/// Appends the kinds in a list with commas or blanks between them.
void appendKinds(std::string list, std::vector<std::string>& kinds) {
    std::replace(list.begin(), list.end(), ',', ' ');
    std::istringstream words(list);
    for (std::string kind; words >> kind;) kinds.push_back(kind);
}

std::string contentOf(std::string const& path) {
    std::ifstream file(path);
    std::ostringstream content;
    if (!file || !(content << file.rdbuf())) throw std::runtime_error(path + ": " + systemReason());
    return content.str();
}

/// A FILE that can be positioned, with both stream kinds on it, since a variant's record is raw everywhere.
class RecordFile {
public:
    explicit RecordFile(std::string const& path)
        : file_(openFile(path), path == standardInput ? &keepOpen : &std::fclose) {
        struct stat status;
        if (file_ == nullptr || fstat(fileno(file_.get()), &status) != 0) throw BadInput(systemReason());
        if (S_ISDIR(status.st_mode)) throw BadInput(std::generic_category().message(EISDIR));
        if (!S_ISREG(status.st_mode) || ftello(file_.get()) < 0)
            throw BadInput(
                "records are read from files that can be positioned only; save it as a file first");
        size_ = static_cast<unsigned long long>(status.st_size);
    }

    FileStreamRaw& raw() { return raw_; }
    FileStreamEndian& endian() { return endian_; }
    std::FILE* file() const { return file_.get(); }
    unsigned long long position() const { return static_cast<unsigned long long>(ftello(file_.get())); }
    unsigned long long left() const { return size_ - std::min(size_, position()); }
    void seek(unsigned long long position) {
        if (fseeko(file_.get(), static_cast<off_t>(position), SEEK_SET) != 0) throw BadInput(systemReason());
    }

private:
    static std::FILE* openFile(std::string const& path) {
        return path == standardInput ? stdin : std::fopen(path.c_str(), "rb");
    }
    static int keepOpen(std::FILE*) { return 0; }

    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
    unsigned long long size_ = 0;
    FileStreamRaw raw_{file_.get()};
    FileStreamEndian endian_{file_.get()};
};

class Printing {
public:
    Printing(Request const& request, CommandLine& program) : request_(request), program_(program) {}

    void printFile(std::string const& path) {
        path_ = path;
        count_ = 0;
        if (request_.settings)
            printSettings();
        else if (request_.kinds.empty())
            printPropertyFile();
        else
            printRecords();
    }

private:
    void printRecords() {
        RecordFile file(path_);
        if (!request_.repeat || file.left() != 0) do {
                for (std::string const& kind : request_.kinds) printRecord(file, kind);
            } while (request_.repeat && file.left() != 0);
        requireEnd(file, "the last record");
    }

    void printRecord(RecordFile& file, std::string const& kind) {
        countRecord();
        unsigned long long const offset = file.position();
        if (kind == variantKind) {
            RecordCheck const check = checkVariantRecord(file.raw());
            if (check.reason != RecordCheck::UnknownTag)
                require(check, kind); // such a record is its tag alone
            ItemVariant variant;
            variant.readFrom(file.raw());
            print(offset, kind, [&](auto& fields) { fields.variant(variant); });
            return;
        }
        std::unique_ptr<Ppty> const ppty(static_cast<Ppty*>(propertyClass(kind)->metaNew()));
        request_.endian ? read(*ppty, file.endian(), kind) : read(*ppty, file.raw(), kind);
        print(offset, kind, [&](auto& fields) { fields.property(*ppty, !request_.endian); });
    }

    template <class Stream> void read(Ppty& ppty, Stream& stream, std::string const& kind) {
        require(checkRecord(ppty, stream), kind);
        ppty.readFrom(stream);
        if (stream.failed())
            throw BadInput(place(kind) + "reading it failed"); // a class that is not checkable
    }

    /// Everything was verified by loadProperties; the walk over the file finds where its records are.
    void printPropertyFile() {
        bool const isStandardInput = path_ == standardInput;
        RecordFile file(path_);
        std::string const path = isStandardInput ? "/dev/stdin" : path_;
        PropertyList list;
        FileStatus const status = loadProperties(path, list);
        if (!status.ok()) {
            bool const isOther = status.code == FileStatus::NotAPropertyFile;
            throw BadInput(status.message.substr(path.size() + 2) +
                           (isOther ? "; its kinds must be given" : ""));
        }
        file.seek(firstEntry);
        for (std::size_t i = 0; i < list.size(); ++i) {
            countRecord();
            QN_String className;
            encoding::readStr(file.raw(), className);
            unsigned int const schema = encoding::readU32(file.raw());
            std::uint64_t size = 0;
            file.raw().read(&size, sizeof size);
            unsigned long long const offset = file.position();
            print(offset, list.className(i), [&](auto& fields) {
                if (Ppty const* const ppty = list.property(i))
                    fields.property(*ppty, true);
                else
                    fields.unknown(schema, size);
            });
            file.seek(offset + size);
        }
    }

    void printSettings() {
        RecordFile file(path_);
        constexpr unsigned long long withoutPrefix = 3 * sizeof(int);
        unsigned int length = 0;
        unsigned long long const offset = file.position(), left = file.left();
        if (left < withoutPrefix) throw BadInput("the settings end early");
        ReadUInt(&length, 1, file.file());
        if (length > left - withoutPrefix)
            throw BadInput("the length of the prefix exceeds the data that is left");
        file.seek(offset);
        FileNameStitcher& settings = FileNameStitcher::instance();
        SetCurrentStream(file.file());
        settings.load();
        SetCurrentStream(nullptr);
        print(offset, settingsKind, [&](auto& fields) { fields.settings(settings); });
        requireEnd(file, "the settings");
    }

    void requireEnd(RecordFile const& file, char const* what) const {
        if (file.left() != 0)
            throw BadInput("trailing bytes after " + std::string(what) + ": " + std::to_string(file.left()));
    }

    void require(RecordCheck const& check, std::string const& kind) const {
        if (!check.good()) throw BadInput(place(kind) + check.message());
    }

    std::string place(std::string const& kind) const {
        return "record " + std::to_string(count_) + " (" + kind + "): ";
    }

    void countRecord() {
        CommandLine::endIfInterrupted();
        if (++count_ % 1000 == 0)
            program_.showProgress(printable(path_) + ": " + std::to_string(count_) + " records");
    }

    template <class Describe>
    void print(unsigned long long offset, std::string const& kind, Describe const& describe) {
        if (request_.check) return;
        if (request_.json) {
            RecordJson fields(program_, path_, offset, kind);
            describe(fields);
            fields.end();
            return;
        }
        RecordText fields(program_,
                          (request_.files.size() > 1 ? printable(path_) + ": " : "") + printable(kind));
        describe(fields);
        fields.end();
    }

    static constexpr unsigned long long firstEntry =
        16; // after the signature, the format and the number of entries

    Request const& request_;
    CommandLine& program_;
    std::string path_;
    unsigned long long count_ = 0; // of the record that is being worked on
};

void addOptions(CommandLine& program, Request& request) {
    CLI::App& options = program.options;
    auto const flag = [&](char const* name, bool& value, char const* description) {
        return options.add_flag(name, value, description);
    };
    program.addList("FILE", request.files, "Files; - is the standard input if that is a file")->required();
    CLI::Option* const kinds =
        options.add_option("--kinds", request.kinds, "The classes of the records, in the order of the file")
            ->delimiter(',')
            ->allow_extra_args(false)
            ->type_name("A,B,...");
    CLI::Option* const kindsFrom = options
                                       .add_option("--kinds-from", request.kindsFrom,
                                                   "A file with the classes, in the order of the file")
                                       ->type_name("FILE")
                                       ->excludes(kinds);
    CLI::Option* const repeat =
        flag("--repeat", request.repeat, "Take the classes again and again to the end of the file");
    CLI::Option* const endian = flag("--endian", request.endian, "Read what a byte-order-aware stream wrote");
    CLI::Option* const workSpace =
        options.add_option("--workspace", request.workSpace, "The workspace version for enumerations")
            ->type_name("N");
    program
        .addList("--plug-in", request.plugIns, "A library that brings classes of its own; may be repeated")
        ->type_name("LIB")
        ->allow_extra_args(false);
    CLI::Option* const settings = flag("--settings", request.settings, "Read the settings of frame names");
    flag("--json", request.json, "Print one JSON object a line");
    flag("--check", request.check, "Print nothing but what is wrong");
    for (CLI::Option* const option : {kinds, kindsFrom, repeat, endian, workSpace})
        settings->excludes(option);
    options.footer([] {
        std::string text =
            "Without classes, a file of properties is expected, which names them itself. Classes:\n  " +
            std::string(variantKind);
        for (QN_MetaClassBase const* const metaClass : QN_MetaClassBase::registered())
            if (propertyClass(metaClass->className().c_str()) != nullptr)
                text += std::string("\n  ") + metaClass->className().c_str();
        return text;
    });
}

void loadPlugIns(std::vector<std::string> const& libraries) {
    for (std::string const& library : libraries)
        if (LibLoader::load(library.c_str()) == nullptr) throw std::runtime_error(LibLoader::lastError());
}

} // namespace

int main(int argc, char** argv) {
    CommandLine program("mrcommon-records",
                        "Prints the records in files, one line each, after checking them.");
    Request request;
    addOptions(program, request);
    return program.run(argc, argv, [&] {
        loadPlugIns(request.plugIns);
        if (!request.kindsFrom.empty()) appendKinds(contentOf(request.kindsFrom), request.kinds);
        requireKinds(request.kinds);
        if ((request.repeat || request.endian) && request.kinds.empty())
            throw CLI::ValidationError("--repeat and --endian need --kinds or --kinds-from");
        std::optional<WorkSpaceVersion> workSpace;
        if (request.workSpace) workSpace.emplace(*request.workSpace);
        Printing printing(request, program);
        for (std::string const& file : request.files) {
            try {
                printing.printFile(file);
            } catch (BadInput const& fault) {
                program.complain(file, fault.what());
            }
        }
    });
}

// Files in and out: mapping, the reports, and the choice between text and binary.
#include "host/dxf/dxf.h"

#include "host/dxf/reader.h"
#include "host/dxf/writer.h"
#include "host/os/files.h"
#include "host/os/text.h"

namespace host {
namespace {

// No undo record of a drawing's coming into being.
class ReadingState {
public:
    explicit ReadingState(AcDbDatabase& database) : log_(database.undoLog()) { log_.setRecording(false); }
    ~ReadingState() {
        log_.clear();
        log_.setRecording(true);
        log_.markSaved();
    }
    ReadingState(const ReadingState&) = delete;
    ReadingState& operator=(const ReadingState&) = delete;

private:
    UndoLog& log_;
};

bool isDwg(std::string_view bytes) {
    return bytes.starts_with("AC1") && bytes.substr(0, 64).find('\0') != std::string_view::npos;
}

void tellFault(const dxf::Fault& fault, const dxf::DrawingReader& reader, const std::string& name,
               const ReadOptions& options, ReadReport& report) {
    report.message = name + ": " + reader.whereabouts() + ": " + fault.sentence;
    report.message += options.recover ? "; what stands before was kept"
                                      : "; open it with recovery to keep what stands before";
}

void read(dxf::DrawingReader& reader, const std::string& name, const ReadOptions& options,
          ReadReport& report) {
    try {
        reader.run();
    } catch (const dxf::Fault& fault) {
        tellFault(fault, reader, name, options, report);
        if (!options.recover) return;
    } catch (const dxf::Cancelled&) {
        report.cancelled = true;
        report.message = name + ": reading was cancelled";
        return;
    }
    reader.finish();
    report.ok = true;
}

// A drawing's bytes on their way out.
struct Outgoing {
    WriteReport report;
    std::unique_ptr<dxf::GroupSink> head, body;
    std::vector<std::string_view> chunks() const {
        std::vector<std::string_view> all = head->chunks();
        for (std::string_view chunk : body->chunks()) all.push_back(chunk);
        return all;
    }
};

AcDb::AcDbDwgVersion targetVersion(const AcDbDatabase& database, const WriteOptions& options) {
    AcDb::AcDbDwgVersion version = options.version;
    if (version == AcDb::kDHL_Unknown) version = database.originalFileVersion();
    if (version == AcDb::kDHL_Unknown) version = AcDb::kDHL_1032;
    return std::max(version, AcDb::kDHL_1009);
}

std::unique_ptr<dxf::GroupSink> makeSink(const dxf::TextEncoder::Form& form, bool binary, bool shortCodes,
                                         bool first) {
    if (!binary) return std::make_unique<dxf::TextSink>(dxf::TextEncoder(form));
    return std::make_unique<dxf::BinarySink>(dxf::TextEncoder(form), shortCodes, first);
}

Outgoing write(AcDbDatabase& database, const WriteOptions& options) {
    const AcDb::AcDbDwgVersion version = targetVersion(database, options);
    const dxf::TextEncoder::Form form{dxf::codePageFor(database, version), dxf::holdsUtf8(version)};
    const bool shortCodes = version <= AcDb::kDHL_1009;
    Outgoing out;
    out.head = makeSink(form, options.binary, shortCodes, true);
    out.body = makeSink(form, options.binary, shortCodes, false);
    dxf::DrawingWriter writer(database, version, *out.head, *out.body, options.progress);
    try {
        writer.run();
    } catch (const dxf::WriteCancelled&) {
        out.report.cancelled = true;
        out.report.message = "saving was cancelled";
        return out;
    }
    out.report.ok = true;
    out.report.losses = writer.losses();
    if (const long cut = out.head->cut() + out.body->cut())
        out.report.losses.push_back("a binary file can't hold " + std::to_string(cut) +
                                    " whole numbers that are too large; they were cut");
    return out;
}

} // namespace

ReadReport readDrawingBytes(std::string_view bytes, const std::string& name, AcDbDatabase& into,
                            const ReadOptions& options) {
    ReadReport report;
    if (isDwg(bytes)) {
        report.message = name + ": this is a DWG file; save it as DXF to open it here";
        return report;
    }
    ReadingState state(into);
    dxf::DrawingReader reader(bytes, into, options, report);
    read(reader, name, options, report);
    return report;
}

ReadReport readDrawing(const std::filesystem::path& path, AcDbDatabase& into, const ReadOptions& options) {
    MappedFile file;
    if (const FileError error = file.open(path.string())) {
        ReadReport report;
        report.message = error.message;
        return report;
    }
    into.setFilename(wide(path.string()));
    return readDrawingBytes(file.bytes(), path.string(), into, options);
}

WriteReport writeDrawing(const std::filesystem::path& path, AcDbDatabase& database,
                         const WriteOptions& options) {
    Outgoing out = write(database, options);
    if (!out.report.ok) return out.report;
    const std::vector<std::string_view> chunks = out.chunks();
    if (const FileError error = writeWhole(path.string(), chunks)) {
        out.report.ok = false;
        out.report.message = error.message;
        return out.report;
    }
    database.undoLog().markSaved();
    return out.report;
}

std::string drawingBytes(AcDbDatabase& database, const WriteOptions& options) {
    const Outgoing out = write(database, options);
    std::string bytes;
    bytes.reserve(out.head->bytes() + out.body->bytes());
    for (std::string_view chunk : out.chunks()) bytes += chunk;
    return bytes;
}

} // namespace host

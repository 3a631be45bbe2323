// Drawings in and out.
#include "apps/corvane/drawing_files.h"

#include "apps/corvane/report.h"

namespace app {

OpenedDrawing openDrawing(const std::string& path, const Arguments& arguments, bool mayBeEmpty) {
    OpenedDrawing opened;
    if (mayBeEmpty && path == "-") {
        opened.database = std::make_unique<AcDbDatabase>(true);
        opened.database->undoLog().clear();
        opened.database->undoLog().markSaved();
        opened.report.ok = true;
        return opened;
    }
    Progress progress;
    host::ReadOptions options;
    options.recover = arguments.has("--recover");
    options.progress = [&](double share) { return progress.show("Reading " + path, share), true; };
    opened.database = std::make_unique<AcDbDatabase>(false);
    opened.report = host::readDrawing(path, *opened.database, options);
    progress.clear();
    if (opened.report.ok)
        return tellRepairs(path, opened.report, arguments.has("--verbose")), std::move(opened);
    complain(opened.report.message);
    opened.database.reset();
    return opened;
}

ExitStatus saveDrawing(const std::string& path, AcDbDatabase& database, const SaveOptions& options) {
    Progress progress;
    host::WriteOptions write;
    write.version = options.version;
    write.binary = options.binary;
    write.progress = [&](double share) { return progress.show("Writing " + path, share), true; };
    const host::WriteReport report = host::writeDrawing(path, database, write);
    progress.clear();
    if (!report.ok) return complain(report.message), ExitStatus::file;
    for (const std::string& loss : report.losses) complain(path + ": " + loss);
    return ExitStatus::done;
}

bool readVersion(const Arguments& arguments, AcDb::AcDbDwgVersion& version) {
    version = AcDb::kDHL_Unknown;
    if (!arguments.has("--version")) return true;
    const std::string name = arguments.value("--version");
    version = host::versionByName(name);
    if (version >= AcDb::kDHL_1009) return true;
    complain("drawings can't be written as version \"" + name +
             "\"; there are R12, R13, R14, R2000, R2004, R2007, R2010, R2013 and R2018");
    return false;
}

} // namespace app

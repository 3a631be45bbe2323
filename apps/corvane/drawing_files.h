// Drawings in and out, with what there is to tell about it on standard error.
#pragma once
#include <memory>
#include <string>

#include "apps/corvane/arguments.h"
#include "apps/corvane/exit_status.h"
#include "host/dxf/dxf.h"

namespace app {

struct OpenedDrawing {
    std::unique_ptr<AcDbDatabase> database; // null when it could not be read
    host::ReadReport report;
};
// Reads a drawing as --recover and --verbose say, or makes an empty one for "-" where `mayBeEmpty`. Failures
// and repairs are told. The host must have been started.
OpenedDrawing openDrawing(const std::string& path, const Arguments& arguments, bool mayBeEmpty = false);

struct SaveOptions {
    AcDb::AcDbDwgVersion version = AcDb::kDHL_Unknown; // unknown: as the drawing was
    bool binary = false;
};
// Tells failures and what the version can't hold.
ExitStatus saveDrawing(const std::string& path, AcDbDatabase& database, const SaveOptions& options);

// The value of --version: unknown when it isn't given. False, told, for a version there is none of.
bool readVersion(const Arguments& arguments, AcDb::AcDbDwgVersion& version);

} // namespace app

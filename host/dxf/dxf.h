// Drawing files: a drawing from a DXF file, text or binary, of any version, and back. What is read
// and not understood is kept and written again; what can't be written is told.
#pragma once
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/db/database.h"

namespace host {

// Called now and then with the part done, 0 to 1; false stops the work.
using FileProgress = std::function<bool(double)>;

struct ReadOptions {
    // A broken file: keep what stands before the fault instead of refusing the file; then take out
    // references that lead nowhere, and those by which blocks contain themselves. Each is noted.
    bool recover = false;
    FileProgress progress;
};

struct ReadReport {
    struct Note {
        long line = 0; // in binary files the byte
        std::string section, object, sentence;
        bool fixed = true; // put right; else lost or left as it was
    };
    bool ok = false;
    bool cancelled = false;
    std::string message;     // what was wrong, where and what to do; empty when nothing was
    std::vector<Note> notes; // faults that were put right, the first thousand of them
    long noteCount = 0;      // all of them
    AcDb::AcDbDwgVersion version = AcDb::kDHL_Unknown; // as the file states it
    bool binary = false;
};

// Reads a file into an empty shell, AcDbDatabase(false). Afterwards the drawing is complete: what
// drawings must have and the file lacked was made. When `ok` is false the drawing is unusable. The
// database's original version is the one to save it as: the file's own, but R2018 for a file that
// names none and holds what R12 can't.
ReadReport readDrawing(const std::filesystem::path& path, AcDbDatabase& into,
                       const ReadOptions& options = {});
// The same from memory; `name` stands in messages. The bytes are needed during the call alone.
ReadReport readDrawingBytes(std::string_view bytes, const std::string& name, AcDbDatabase& into,
                            const ReadOptions& options = {});

struct WriteOptions {
    AcDb::AcDbDwgVersion version = AcDb::kDHL_Unknown; // unknown: the drawing's original version
    bool binary = false;
    FileProgress progress;
};

struct WriteReport {
    bool ok = false;
    bool cancelled = false;
    std::string message;             // of a failure; the old file stands untouched
    std::vector<std::string> losses; // what the version can't hold, one sentence a kind
};

// Writes the drawing whole or not at all: to a temporary file beside the old one, then renamed.
// Versions from R12 (kDHL_1009) on; older ones give R12.
WriteReport writeDrawing(const std::filesystem::path& path, AcDbDatabase& database,
                         const WriteOptions& options = {});
// The bytes that writeDrawing would write.
std::string drawingBytes(AcDbDatabase& database, const WriteOptions& options = {});

// "R2018" for kDHL_1032; and back from "R2018", "2018" or "AC1032". Unknown ones give "" and
// kDHL_Unknown.
std::string versionName(AcDb::AcDbDwgVersion version);
AcDb::AcDbDwgVersion versionByName(std::string_view name);
// "AC1032" and so on, as $ACADVER states it.
std::string versionMark(AcDb::AcDbDwgVersion version);

} // namespace host

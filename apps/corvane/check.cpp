// "check": faults of a drawing, those that reading put right and those that stand in it.
#include <cstdio>

#include "apps/corvane/json.h"
#include "apps/corvane/report.h"
#include "apps/corvane/session.h"
#include "apps/corvane/subcommands.h"
#include "host/dxf/audit.h"
#include "host/dxf/dxf.h"
#include "host/os/text.h"

namespace app {
namespace {

struct Faults {
    host::ReadReport reading;
    std::vector<host::AuditFinding> drawing;
    bool any() const { return reading.noteCount > 0 || !drawing.empty() || !reading.message.empty(); }
};

std::string hex(std::uint64_t handle) { return host::utf8(AcDbHandle(handle).ascii()); }

std::string asJson(const std::string& path, const Faults& faults) {
    JsonWriter json;
    json.beginObject();
    json.text("file", path);
    if (!faults.reading.message.empty()) json.text("cut", faults.reading.message);
    json.whole("readingFaults", faults.reading.noteCount);
    json.beginList("reading");
    for (const host::ReadReport::Note& note : faults.reading.notes) {
        json.beginObject();
        json.whole(faults.reading.binary ? "byte" : "line", note.line);
        json.text("section", note.section);
        json.text("object", note.object);
        json.truth("fixed", note.fixed);
        json.text("sentence", note.sentence);
        json.endObject();
    }
    json.endList();
    json.beginList("drawing");
    for (const host::AuditFinding& finding : faults.drawing) {
        json.beginObject();
        json.text("code", finding.code);
        json.text("kind", finding.kind);
        json.text("handle", hex(finding.handle));
        json.text("sentence", finding.sentence);
        json.endObject();
    }
    json.endList();
    json.endObject();
    return json.take();
}

void print(const std::string& path, const Faults& faults) {
    if (!faults.any()) return void(std::printf("%s: nothing is wrong\n", path.c_str()));
    if (!faults.reading.message.empty()) std::printf("%s\n", faults.reading.message.c_str());
    for (const host::ReadReport::Note& note : faults.reading.notes) {
        std::string place;
        if (note.line > 0) place = (faults.reading.binary ? "byte " : "line ") + std::to_string(note.line);
        if (!note.object.empty()) place += (place.empty() ? "" : ", ") + note.object;
        std::printf("%s: %s%s\n", place.empty() ? "file" : place.c_str(), note.sentence.c_str(),
                    note.fixed ? "" : " (not put right)");
    }
    for (const host::AuditFinding& finding : faults.drawing)
        std::printf("%s %s: %s (%s)\n", finding.kind.c_str(), hex(finding.handle).c_str(),
                    finding.sentence.c_str(), finding.code.c_str());
    std::printf("%s: %ld found while reading, %zu in the drawing\n", path.c_str(), faults.reading.noteCount,
                faults.drawing.size());
}

} // namespace

ExitStatus checkDrawing(const Arguments& arguments) {
    const Session session;
    const std::string& path = arguments.positional()[0];
    AcDbDatabase database(false);
    host::ReadOptions options;
    options.recover = arguments.has("--recover");
    Faults faults;
    faults.reading = host::readDrawing(path, database, options);
    if (!faults.reading.ok) return complain(faults.reading.message), ExitStatus::file;
    faults.drawing = host::audit(database);
    if (arguments.has("--json"))
        std::fputs(asJson(path, faults).c_str(), stdout);
    else
        print(path, faults);
    return faults.any() ? ExitStatus::found : ExitStatus::done;
}

} // namespace app

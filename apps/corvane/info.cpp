// "info": what is in a drawing.
#include <algorithm>
#include <cstdio>

#include "apps/corvane/drawing_files.h"
#include "apps/corvane/json.h"
#include "apps/corvane/session.h"
#include "apps/corvane/subcommands.h"
#include "host/dxf/summary.h"
#include "host/os/numbers.h"

namespace app {
namespace {

using Counts = std::vector<host::DrawingSummary::Count>;

void writePoint(JsonWriter& json, const char* key, const AcGePoint3d& p) {
    json.beginList(key);
    for (const double value : {p.x, p.y, p.z}) json.real({}, value);
    json.endList();
}

void writeCounts(JsonWriter& json, const char* key, const Counts& counts) {
    json.beginList(key);
    for (const auto& one : counts) {
        json.beginObject();
        json.text("name", one.name);
        json.whole("count", one.count);
        json.endObject();
    }
    json.endList();
}

std::string asJson(const std::string& path, const host::DrawingSummary& summary,
                   const host::ReadReport& report) {
    JsonWriter json;
    json.beginObject();
    json.text("file", path);
    json.text("version", host::versionName(report.version));
    json.truth("binary", report.binary);
    json.text("units", summary.unitName);
    if (summary.hasExtents) {
        json.beginObject("extents");
        writePoint(json, "minimum", summary.minimum);
        writePoint(json, "maximum", summary.maximum);
        json.endObject();
    } else {
        json.null("extents");
    }
    json.whole("entities", summary.entities);
    writeCounts(json, "kinds", summary.kinds);
    writeCounts(json, "layers", summary.layers);
    json.beginList("blocks");
    for (const auto& block : summary.blocks) {
        json.beginObject();
        json.text("name", block.name);
        json.whole("entities", block.entities);
        json.whole("references", block.references);
        json.endObject();
    }
    json.endList();
    writeCounts(json, "applications", summary.applications);
    json.whole("repairs", report.noteCount);
    json.endObject();
    return json.take();
}

// Columns of numbers, then names: names may hold wide characters, so they stand last.
void printCounts(const char* title, const Counts& counts) {
    if (counts.empty()) return;
    std::printf("\n%s (%zu)\n", title, counts.size());
    for (const auto& one : counts) std::printf("%10ld  %s\n", one.count, one.name.c_str());
}

std::string pointText(const AcGePoint3d& p) {
    constexpr int kDecimals = 4;
    return host::formatFixed(p.x, kDecimals, true) + ", " + host::formatFixed(p.y, kDecimals, true) + ", " +
           host::formatFixed(p.z, kDecimals, true);
}

void printSummary(const std::string& path, const host::DrawingSummary& summary,
                  const host::ReadReport& report) {
    const std::string version = host::versionName(report.version);
    std::printf("%s\n", path.c_str());
    std::printf("  Version   %s, %s\n", version.empty() ? "not stated" : version.c_str(),
                report.binary ? "binary" : "text");
    std::printf("  Units     %s\n", summary.unitName.c_str());
    if (summary.hasExtents)
        std::printf("  Extents   %s  to  %s\n", pointText(summary.minimum).c_str(),
                    pointText(summary.maximum).c_str());
    else
        std::printf("  Extents   none\n");
    std::printf("  Objects   %ld\n", summary.entities);
    printCounts("Kinds", summary.kinds);
    printCounts("Layers", summary.layers);
    if (!summary.blocks.empty())
        std::printf("\nBlocks (%zu), with their objects and references\n", summary.blocks.size());
    for (const auto& block : summary.blocks)
        std::printf("%10ld  %6ld  %s\n", block.entities, block.references, block.name.c_str());
    printCounts("Applications with data on objects", summary.applications);
}

} // namespace

ExitStatus showInfo(const Arguments& arguments) {
    const Session session;
    const std::string& path = arguments.positional()[0];
    const OpenedDrawing opened = openDrawing(path, arguments);
    if (!opened.database) return ExitStatus::file;
    const host::DrawingSummary summary = host::summarise(*opened.database);
    if (arguments.has("--json"))
        std::fputs(asJson(path, summary, opened.report).c_str(), stdout);
    else
        printSummary(path, summary, opened.report);
    return ExitStatus::done;
}

} // namespace app

// The smoothing commands on drawings that others made: whatever is in them, a command ends, what it
// leaves can be read again, and one undo brings the drawing back byte for byte.
#include <gmock/gmock.h>

#include <filesystem>

#include "host/dxf/audit.h"
#include "support/drawing.h"

using support::Drawing;

namespace {

std::vector<std::filesystem::path> drawings() {
    std::vector<std::filesystem::path> all;
    for (const auto& entry : std::filesystem::directory_iterator(CORVANE_TEST_DATA "/drawings"))
        all.push_back(entry.path());
    std::sort(all.begin(), all.end());
    return all;
}

// The file as a document; null when it can't be read.
AcApDocument* openDocument(const std::filesystem::path& path) {
    auto database = std::make_unique<AcDbDatabase>(false);
    if (!host::readDrawing(path, *database, {}).ok) return nullptr;
    return acDocManagerPtr()->add(std::move(database));
}

size_t faults(AcDbDatabase& database) { return host::audit(database).size(); }

} // namespace

TEST(RealDrawings, CommandsLeaveSoundDrawingsAndUndoThemWhole) {
    Drawing base; // starts the host
    size_t tried = 0, changed = 0;
    for (const auto& path : drawings()) {
        AcApDocument* document = openDocument(path);
        if (!document) continue;
        ++tried;
        AcDbDatabase& database = *document->database();
        const std::string before = host::drawingBytes(database);
        const size_t faultsBefore = faults(database);
        for (const wchar_t* script :
             {L"PLYH2\nall\n\n", L"PLYH\nall\n\n2\nYes\n", L"PLYH3\nall\n\n", L"QXTY\nall\n\n"}) {
            const size_t steps = database.undoLog().undoSteps();
            base.run(script);
            EXPECT_LE(faults(database), faultsBefore) << path << host::utf8(script);
            const std::string after = host::drawingBytes(database);
            changed += after != before;
            AcDbDatabase again(false);
            EXPECT_TRUE(host::readDrawingBytes(after, path.string(), again, {}).ok)
                << path << host::utf8(script);
            if (database.undoLog().undoSteps() > steps) base.run(L"U\n");
            EXPECT_EQ(before, host::drawingBytes(database)) << path << host::utf8(script);
        }
        acDocManagerPtr()->close(document);
    }
    EXPECT_GE(tried, 20u);
    EXPECT_GE(changed, 8u);
}

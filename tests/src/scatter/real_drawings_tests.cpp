// Scatters on real drawings: whatever the curves and boundaries, the scatter is sound, can be read again, and
// one undo takes it back.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "host/dxf/audit.h"
#include "support/scatters.h"

using namespace corvane::scatter;

namespace {

std::vector<std::filesystem::path> drawings() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(CORVANE_TEST_DATA "/drawings"))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

TEST(ScattersInRealDrawings, AreSoundAndUndoneWhole) {
    support::ScatterDrawing base;
    size_t made[2] = {0, 0};
    const std::wstring scripts[] = {L"rndScatter1\nall\n\nF\n1\nN\n2\n\n\n\n50\nY\n",
                                    L"rndScatter2\nall\n\nC\n1\n\n\n\n50\nY\nY\n"};
    const wchar_t* const applications[] = {ScatterOnCurveParams::kApplication,
                                           ScatterInRegionParams::kApplication};
    for (const auto& file : drawings()) {
        auto database = std::make_unique<AcDbDatabase>(false);
        if (!host::readDrawing(file, *database, {}).ok) continue;
        AcApDocument* document = acDocManagerPtr()->add(std::move(database));
        AcDbDatabase& drawing = *document->database();
        const std::string before = host::drawingBytes(drawing);
        const size_t faults = host::audit(drawing).size();
        for (size_t i = 0; i < 2; ++i) {
            const size_t steps = drawing.undoLog().undoSteps();
            base.run(scripts[i]);
            const std::string after = host::drawingBytes(drawing);
            made[i] += after.find(host::utf8(applications[i])) != after.npos;
            EXPECT_LE(host::audit(drawing).size(), faults) << file << i;
            AcDbDatabase again(false);
            EXPECT_TRUE(host::readDrawingBytes(after, file.string(), again, {}).ok) << file << i;
            while (drawing.undoLog().undoSteps() > steps) base.run(L"U\n");
            EXPECT_EQ(before, host::drawingBytes(drawing)) << file << i;
        }
        acDocManagerPtr()->close(document);
    }
    EXPECT_GE(made[0], 8u);
    EXPECT_GE(made[1], 4u);
}

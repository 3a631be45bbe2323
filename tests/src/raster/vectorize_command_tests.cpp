// R2V by script: what is asked, what lands in the drawing, what is remembered, and runs that come to nothing.
#include <gmock/gmock.h>

#include "core/settings.h"
#include "host/picture/dialog_pictures.h"
#include "raster/vectorizing/outline_settings.h"
#include "support/drawing.h"

using namespace corvane;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::wstring kLoad = L"1156!\n" + host::wide(CORVANE_TEST_DATA "/images/horse-silhouette.png") + L"\n";

class VectorizeCommandTest : public testing::Test {
protected:
    VectorizeCommandTest() {
        host::installDialogPictures(); // image files are read by them
        for (const wchar_t* key : {L"OutlineThreshold", L"OutlineStep", L"OutlinePreprocessMode",
                                   L"OutlineIgnorVertexNumber", L"OutlineOptimizationLevel",
                                   L"OutlineOptimizationLevelInited", L"OutlineSmoothness", L"VectorizeMode"})
            SettingsStore::WriteInt(key, 0);
    }
    AcGeScale3d scaleOf(AcDbObjectId id) {
        return AcDbObjectPointer<AcDbBlockReference>(id, AcDb::kForRead)->scaleFactors();
    }
    // The polylines of the reference's block.
    std::vector<AcDbObjectId> contents(AcDbObjectId reference) {
        AcDbObjectPointer<AcDbBlockReference> opened(reference, AcDb::kForRead);
        AcDbObjectPointer<AcDbBlockTableRecord> block(opened->blockTableRecord(), AcDb::kForRead);
        return {block->entities().begin(), block->entities().end()};
    }
    support::Drawing drawing;
};

} // namespace

TEST_F(VectorizeCommandTest, OutlinesStandInOneBlockAtTheGivenHeight) {
    const std::string before = drawing.bytes();
    drawing.run(L"R2V\n" + kLoad + L"1243=on\nOK\n10,20,5\n164\n");
    const AcDbObjectId id = drawing.only<AcDbBlockReference>();
    ASSERT_FALSE(id.isNull());
    EXPECT_NEAR(0.5, scaleOf(id).sx, 1e-12) << "328 rows";
    EXPECT_NEAR(-0.5, scaleOf(id).sy, 1e-12) << "rows grow downward";
    AcDbExtents box;
    {
        AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
        EXPECT_EQ(AcGePoint3d(10, 184, 5), reference->position());
        ASSERT_EQ(Acad::eOk, reference->getGeomExtents(box));
    }
    EXPECT_TRUE(box.minPoint().x >= 10 && box.maxPoint().x <= 210);
    EXPECT_TRUE(box.minPoint().y >= 20 && box.maxPoint().y <= 184);
    EXPECT_GT(box.maxPoint().y - box.minPoint().y, 140) << "the horse fills most of the picture";
    const auto lines = contents(id);
    ASSERT_GE(lines.size(), 2u) << "the horse and the gap in its tail";
    for (const AcDbObjectId line : lines) {
        AcDbObjectPointer<AcDbPolyline> polyline(line, AcDb::kForRead);
        ASSERT_TRUE(polyline);
        EXPECT_TRUE(polyline->isClosed());
    }
    drawing.run(L"U\n");
    EXPECT_EQ(before, drawing.bytes());
}

TEST_F(VectorizeCommandTest, SettingsAreHeldInTheirRangesAndRemembered) {
    SettingsStore::WriteInt(L"OutlineThreshold", 999);
    SettingsStore::WriteInt(L"OutlineSmoothness", 9);
    EXPECT_THAT(drawing.run(L"R2V\n?\nCANCEL\n"), HasSubstr("光滑度： 10"));
    EXPECT_EQ(254u, SettingsStore::ReadInt(L"OutlineThreshold")) << "held as the dialog opens";
    EXPECT_EQ(5u, SettingsStore::ReadInt(L"OutlineSmoothness"));
    SettingsStore::WriteInt(L"OutlineSmoothness", 0);
    drawing.run(L"R2V\n" + kLoad + L"1243=on\n1264=128\n1265=3\n1267=4\nOK\n0,0\n50\n");
    EXPECT_EQ(128u, SettingsStore::ReadInt(L"OutlineThreshold"));
    EXPECT_EQ(3u, SettingsStore::ReadInt(L"OutlineStep"));
    EXPECT_EQ(2u, SettingsStore::ReadInt(L"OutlinePreprocessMode"));
    EXPECT_EQ(2u, SettingsStore::ReadInt(L"OutlineIgnorVertexNumber"))
        << "two at least, also after a run at none";
    EXPECT_EQ(4u, SettingsStore::ReadInt(L"OutlineOptimizationLevel"));
    EXPECT_EQ(1u, SettingsStore::ReadInt(L"VectorizeMode"));
    EXPECT_EQ(1u, drawing.entities().size());
}

TEST_F(VectorizeCommandTest, MovingTheStepsPutsTheThresholdBack) {
    const std::string transcript = drawing.run(L"R2V\n" + kLoad + L"1264=90\n?\n1265=4\n?\nCANCEL\n");
    EXPECT_THAT(transcript, HasSubstr("= 90  (1 to 254)"));
    EXPECT_THAT(transcript, HasSubstr("= 128  (1 to 254)"));
    EXPECT_EQ(0u, SettingsStore::ReadInt(L"OutlineThreshold")) << "nothing is stored before a run";
}

TEST_F(VectorizeCommandTest, WithoutAnImageNothingRuns) {
    const std::string before = drawing.bytes();
    EXPECT_THAT(drawing.run(L"R2V\nOK\n?\nCANCEL\n"), HasSubstr("请先载入图片"));
    const std::wstring text = host::wide(CORVANE_TEST_DATA "/NOTICES.txt");
    EXPECT_THAT(drawing.run(L"R2V\n1156!\n" + text + L"\nCANCEL\n"), HasSubstr("Load image Error"));
    EXPECT_EQ(before, drawing.bytes());
}

TEST_F(VectorizeCommandTest, TheInsertionIsAskedAgainUntilAScriptRunsDry) {
    drawing.run(L"R2V\n" + kLoad + L"1243=on\nOK\n^C\n0,0\n-5\n20\n");
    EXPECT_EQ(1u, drawing.entities().size()) << "Esc asks again, a height is above zero";
    support::Drawing other;
    other.run(L"R2V\n" + kLoad + L"1243=on\nOK\n1,1\n");
    EXPECT_TRUE(other.ranDry);
    EXPECT_TRUE(other.entities().empty());
    EXPECT_THAT(other.bytes(), Not(HasSubstr("*U"))) << "no block is left behind";
}

TEST_F(VectorizeCommandTest, ScriptsAreToldHowFarTheWorkIs) {
    std::vector<std::pair<std::wstring, double>> told;
    host::ScriptFrontEnd frontEnd(
        L"R2V\n" + kLoad + L"1242=on\nOK\n0,0\n50\n", [](const std::string&) {},
        [&](const std::wstring& caption, double share) {
            if (share >= 0) told.emplace_back(caption, share);
            return true;
        });
    host::setFrontEnd(&frontEnd);
    host::commandLoop();
    host::setFrontEnd(nullptr);
    // Two stretches of work, each from its beginning to its end: tracing, then drawing.
    const auto building = std::find_if(told.begin(), told.end(), [](const auto& one) {
        return one.first.find(L"正在生成CAD多段线") != std::wstring::npos;
    });
    const auto rises = [](const auto& a, const auto& b) { return a.second < b.second; };
    ASSERT_GT(building - told.begin(), 5);
    EXPECT_LT(told.front().second, 0.1); // in between the two halves of a pass alternate
    EXPECT_TRUE(std::is_sorted(building, told.end(), rises));
    EXPECT_DOUBLE_EQ(1, (building - 1)->second);
    EXPECT_DOUBLE_EQ(1, told.back().second);
    EXPECT_EQ(L"正在提取图片中心线....", told.front().first);
}

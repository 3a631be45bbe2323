// Arrays picked again, their dialog and preview, AAC2, and real drawings.
#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <set>

#include "arrays/one_curve/aac_dialog.h"
#include "host/dxf/audit.h"
#include "host/ui/actions.h"
#include "support/arrays.h"

using namespace corvane;
using support::ArrayDrawing;
using support::contentsOf;
using support::expectAt;
using support::handleAnswer;
using support::middlesOf;
using support::recordOf;
using support::runArray;
using testing::HasSubstr;

namespace {

std::vector<AcGePoint3d> wave() {
    std::vector<AcGePoint3d> points;
    for (int i = 0; i < 12; ++i) points.emplace_back(i * 20.0, i % 2 ? 30.0 : -30.0, 0);
    return points;
}

// The objects of a file: their text without the handles, and how often each stands there.
std::map<std::string, int> objectsOf(const std::string& bytes) {
    std::map<std::string, int> objects;
    for (size_t from = 0; from < bytes.size();) {
        const size_t end = std::min(bytes.find("\n  0\n", from + 1), bytes.size());
        ++objects[bytes.substr(from, end - from)];
        from = end;
    }
    return objects;
}
// What the first has and the second lacks, by the kind of object.
std::map<std::string, int> lostBetween(const std::string& first, const std::string& second) {
    std::map<std::string, int> lost;
    const auto after = objectsOf(second);
    for (const auto& [text, count] : objectsOf(first)) {
        const auto kept = after.find(text);
        const int gone = count - (kept == after.end() ? 0 : std::min(count, kept->second));
        const size_t kind = text.find("\n  0\n") == 0 ? 5 : 4;
        if (gone) lost[text.substr(kind, text.find('\n', kind) - kind)] += gone;
    }
    return lost;
}

// The dialog, open without being run.
class Open : public CAACDlg {
public:
    explicit Open(ArrayJob& job) : CAACDlg(job) {
        const CAcModuleResourceOverride ours(host_door::moduleResources());
        EXPECT_TRUE(Create(1083));
        ShowWindow(SW_SHOW);
        host::deliverPosted();
    }
};

} // namespace

TEST(ArrayEditing, OneNumberChangedInASavedDrawingChangesNothingElse) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addSpline(wave());
    const AcDbObjectId leaf =
        drawing.addBlock(L"LEAF", new AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, 3), {0, 90, 0});
    drawing.addLine({0, 200, 0}, {1.0 / 3, 200, 0});
    runArray(drawing, path, leaf, L"-5,-30\n1090=20\n1089=4\ndrag 53001 0.3333,100 0.2,240");
    const std::string file = drawing.bytes();
    const AcDbHandle handle = drawing.array().handle();
    const ArrayRecord made = recordOf(drawing.array());

    auto database = std::make_unique<AcDbDatabase>(false);
    ASSERT_TRUE(host::readDrawingBytes(file, "file", *database, {}).ok);
    const std::string saved = host::drawingBytes(*database);
    AcApDocument* document = acDocManagerPtr()->add(std::move(database));
    AcDbObjectId array;
    document->database()->getAcDbObjectId(array, false, handle);
    EXPECT_EQ(20u, contentsOf<AcDbBlockReference>(array).size());
    drawing.run(L"AAC\n" + handleAnswer(array) + L"\n1090=21\nOK\n");
    const std::string edited = host::drawingBytes(*document->database());
    EXPECT_EQ(21u, contentsOf<AcDbBlockReference>(array).size());
    ArrayRecord expected = made;
    expected.params.settings.count = 21;
    EXPECT_EQ(expected.params, recordOf(array).params);
    EXPECT_EQ(made.name, recordOf(array).name);
    // The reference changes, the header's next handle, the number of blocks, and who refers to two of them;
    // the new block comes on top of what was there.
    const std::map<std::string, int> expectedLoss{
        {"INSERT", 1}, {"SECTION", 1}, {"TABLE", 1}, {"BLOCK_RECORD", 2}};
    EXPECT_EQ(expectedLoss, lostBetween(saved, edited));
    EXPECT_EQ(1 + 21, lostBetween(edited, saved)["INSERT"]);
    drawing.run(L"U\n");
    EXPECT_EQ(saved, host::drawingBytes(*document->database()));
    acDocManagerPtr()->close(document);
}

TEST(ArrayEditing, NumbersThatNobodyTouchedKeepTheirDigits) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {100.0 / 3, 0, 0});
    runArray(drawing, path, drawing.addCircle({0, 50, 0}, 1), L"\n1092=12.3456789");
    const ArrayParams before = recordOf(drawing.array()).params;
    drawing.run(L"AAC\n" + handleAnswer(drawing.array()) + L"\n1091=7\nOK\n");
    ArrayParams after = before;
    after.endTwist = 7;
    EXPECT_EQ(after, recordOf(drawing.array()).params);
    EXPECT_NEAR(5.0 / 3, after.settings.spacing, 1e-15);
}

// Wherever the block was taken, its copies come back to the path.
TEST(ArrayEditing, ABlockThatWasMovedTurnedAndStretchedShowsItsCopiesOnThePathAgain) {
    for (const AcGeScale3d& scale : {AcGeScale3d(2, 2, 2), AcGeScale3d(2, -0.5, 1)}) {
        ArrayDrawing drawing;
        const AcDbObjectId path = drawing.addLine({0, 0, 0}, {60, 0, 0});
        runArray(drawing, path, drawing.addCircle({0, 50, 0}, 2), L"\n1090=4");
        {
            AcDbObjectPointer<AcDbBlockReference> reference(drawing.array(), AcDb::kForWrite);
            reference->setPosition({500, 400, 30});
            reference->setRotation(0.7);
            reference->setScaleFactors(scale);
        }
        drawing.run(L"AAC\n" + handleAnswer(drawing.array()) + L"\n1090=3\nOK\n");
        const auto stand = middlesOf(drawing.array());
        ASSERT_EQ(3u, stand.size());
        for (size_t i = 0; i < 3; ++i) expectAt({30.0 * double(i), 0, 0}, stand[i]);
        AcDbExtents box;
        contentsOf<AcDbEntity>(drawing.array())[1]->getGeomExtents(box);
        expectAt({28, -2, 0}, box.minPoint());
        expectAt({32, 2, 0}, box.maxPoint());
    }
}

TEST(ArrayEditing, AsksForWhatHasGone) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {60, 0, 0});
    const AcDbObjectId other = drawing.addLine({0, 20, 0}, {60, 20, 0});
    const AcDbObjectId circle = drawing.addCircle({0, 50, 0}, 2);
    const AcDbObjectId text = drawing.add(std::make_unique<AcDbText>(AcGePoint3d(0, 90, 0), L"A"));
    runArray(drawing, path, circle, L"\n1090=4");
    const std::wstring again = L"AAC\n" + handleAnswer(drawing.array()) + L"\n";
    drawing.run(L"ERASE\n" + handleAnswer(path) + L"\n\n");
    std::string transcript = drawing.run(again + handleAnswer(other) + L"\nOK\n");
    EXPECT_THAT(transcript, HasSubstr("找不到参考曲线，请重新选择一条曲线>>"));
    EXPECT_EQ(other.handle().ascii(), recordOf(drawing.array()).path);
    expectAt({60, 20, 0}, middlesOf(drawing.array())[3]);
    drawing.run(L"ERASE\n" + handleAnswer(circle) + L"\n\n");
    transcript = drawing.run(again + handleAnswer(text) + L"\nOK\n");
    EXPECT_THAT(transcript, HasSubstr("请选择阵列物体(单一物体)>>"));
    EXPECT_EQ(4u, contentsOf<AcDbText>(drawing.array()).size());
    drawing.run(L"ERASE\n" + handleAnswer(other) + L"\n\n");
    const std::string before = drawing.bytes();
    drawing.run(again + handleAnswer(text) + L"\n");
    EXPECT_EQ(before, drawing.bytes()) << "a text is no path";
}

TEST(ArrayEditing, PayloadsThatAreNoneAreLeftAlone) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {60, 0, 0});
    runArray(drawing, path, drawing.addCircle({0, 50, 0}, 2), L"\n1090=4");
    for (const wchar_t* text : {L" AAC1;g=1;ph=1;ch=1;", L"AAC2;g=1;ph=1;ch=1;", L"AAC1;g=1;ph=1;", L""}) {
        PayloadText(text).Write(drawing.array(), RegisteredAppNames::kArrayOneCurve);
        const std::string before = drawing.bytes();
        drawing.run(L"AAC\n" + handleAnswer(drawing.array()) + L"\n");
        EXPECT_TRUE(drawing.outcome.strays.empty());
        EXPECT_EQ(before, drawing.bytes()) << host::utf8(text);
    }
}

TEST(ArrayDialog, ShowsItsCopiesForAsLongAsItIsOpen) {
    ArrayDrawing drawing;
    ArrayJob job;
    job.source.path = drawing.addLine({0, 0, 0}, {90, 0, 0});
    job.source.prototype = drawing.addCircle({0, 50, 0}, 2);
    job.source.base = {0, 50, 0};
    {
        Open dialog(job);
        EXPECT_EQ(2u + 10, drawing.entities().size());
        dialog.SetDlgItemText(1090, L"4");
        EXPECT_EQ(2u + 4, drawing.entities().size());
        dialog.SetDlgItemText(1090, L"");
        EXPECT_EQ(4, job.params.settings.count) << "what can't be read leaves what was";
        dialog.SetDlgItemText(1093, L"30");
        host::press(::GetDlgItem(dialog, 1095));
        EXPECT_EQ(2u + 4, drawing.entities().size());
        dialog.SetDlgItemText(1093, L"10");
        EXPECT_EQ(2u + 10, drawing.entities().size());
        dialog.SendMessage(WM_COMMAND, IDCANCEL);
        EXPECT_EQ(2u, drawing.entities().size());
    }
    {
        Open dialog(job);
        EXPECT_EQ(2u + 10, drawing.entities().size());
    }
    EXPECT_EQ(2u, drawing.entities().size()) << "a dialog that just goes takes its copies along";
}

TEST(ArrayDialog, StepsAsideForPicks) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {60, 0, 0});
    const AcDbObjectId bent = drawing.add3dPolyline(
        AcGePoint3dArray(std::vector<AcGePoint3d>{{0, 80, 0}, {1, 80, 0}, {1, 81, 0}, {1, 81, 5}}));
    const AcDbObjectId circle = drawing.addCircle({0, 50, 0}, 2);
    // An object without a plane takes the 3D switch away, one with a plane brings it back.
    const std::string transcript =
        runArray(drawing, path, circle,
                 L"\n1090=4\n1086=on\n1084!\n" + handleAnswer(bent) + L"\n?\n1084!\n" + handleAnswer(circle) +
                     L"\n1085!\n55,0\n1084!\n\n1085!\n^C");
    EXPECT_THAT(transcript, HasSubstr("1086   check   三维垂直于路径 = off  disabled"));
    const ArrayRecord record = recordOf(drawing.array());
    EXPECT_TRUE(record.params.start.fromEnd);
    EXPECT_FALSE(record.params.acrossPath);
    EXPECT_EQ(circle.handle().ascii(), record.prototype) << "a pick of nothing keeps it";
    expectAt({60, 0, 0}, middlesOf(drawing.array())[0]);
    // An object that stands on the path is picked, not the copy that was shown on it.
    const AcDbObjectId mark = drawing.addCircle({60, 0, 0}, 2);
    drawing.run(L"AAC\n" + handleAnswer(drawing.array()) + L"\n1084!\n62,0\nOK\n");
    EXPECT_EQ(mark.handle().ascii(), recordOf(drawing.array()).prototype);
}

TEST(ArraysLikeABlock, StampItsParametersOntoCurves) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {60, 0, 0});
    runArray(drawing, path, drawing.addCircle({0, 500, 0}, 2), L"55,0\n1090=4\n1089=1\n53002=3");
    const AcDbObjectId model = drawing.array();
    const AcDbObjectId line = drawing.addLine({0, 100, 0}, {0, 160, 0});
    const AcDbObjectId arc = drawing.add(std::make_unique<AcDbArc>(AcGePoint3d(300, 0, 0), 10, 0, 3));
    const AcDbObjectId spatial =
        drawing.add3dPolyline(AcGePoint3dArray(std::vector<AcGePoint3d>{{0, 0, 9}, {5, 5, 9}, {9, 5, 0}}));
    const AcDbObjectId block =
        drawing.addBlock(L"B", new AcDbLine(AcGePoint3d(), AcGePoint3d(30, 0, 0)), {400, 0, 0});
    const size_t present = drawing.entities().size();
    const std::string before = drawing.bytes();
    const std::string transcript =
        drawing.run(L"AAC2\n" + handleAnswer(model) + L"\n" + handleAnswer(line) + L"\n" + handleAnswer(arc) +
                    L"\n" + handleAnswer(spatial) + L"\n" + handleAnswer(block) + L"\n\n");
    EXPECT_THAT(transcript, HasSubstr("请选择SCVN_ArrayAlignCurve创建的匿名块作为参考>>"));
    EXPECT_THAT(transcript, HasSubstr("请选择一批曲线>>"));
    const auto arrays = drawing.arrays();
    ASSERT_EQ(4u, arrays.size());
    EXPECT_EQ(present + 3, drawing.entities().size()) << "what was taken from the block is gone";
    std::set<std::wstring> names;
    for (const AcDbObjectId array : arrays) {
        EXPECT_EQ(recordOf(model).params, recordOf(array).params);
        EXPECT_EQ(4u, contentsOf<AcDbCircle>(array).size());
        names.insert(recordOf(array).name);
    }
    EXPECT_EQ(4u, names.size());
    expectAt({0, 160, 0}, middlesOf(arrays[1])[0], "from the end, as the model");
    expectAt({400, 0, 0}, middlesOf(arrays[3])[3]);
    drawing.run(L"U\n");
    EXPECT_EQ(before, drawing.bytes());
    drawing.run(L"AAC2\n" + handleAnswer(line) + L"\n");
    EXPECT_TRUE(drawing.outcome.strays.empty()) << "a curve is no model";
}

// Whatever drawing, curve and object: the array is sound, can be read again, and one undo takes it back.
TEST(ArraysInRealDrawings, AreSoundAndUndoneWhole) {
    ArrayDrawing base;
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(CORVANE_TEST_DATA "/drawings"))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    size_t made = 0;
    for (const auto& file : files) {
        auto database = std::make_unique<AcDbDatabase>(false);
        if (!host::readDrawing(file, *database, {}).ok) continue;
        AcApDocument* document = acDocManagerPtr()->add(std::move(database));
        AcDbDatabase& drawing = *document->database();
        AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForRead);
        const std::vector<AcDbObjectId> objects = space->entities();
        space.close();
        const std::string before = host::drawingBytes(drawing);
        const size_t faults = host::audit(drawing).size();
        const size_t stride = std::max<size_t>(1, objects.size() / 6);
        for (size_t i = 0; i < objects.size(); i += stride) {
            AcDbObjectPointer<AcDbCurve> curve(objects[i], AcDb::kForRead);
            if (!curve || objects[i].isErased()) continue;
            const bool closed = curve->isClosed();
            curve.close();
            const AcDbObjectId object = objects[(i + stride) % objects.size()];
            const size_t steps = drawing.undoLog().undoSteps();
            base.run(L"AAC\n" + handleAnswer(objects[i]) + L"\n" + handleAnswer(object) + L"\n0,0\n" +
                     (closed ? L"CW\n" : L"") + L"1088=3\n1086=on\nOK\n");
            EXPECT_LE(host::audit(drawing).size(), faults) << file << i;
            const std::string after = host::drawingBytes(drawing);
            AcDbDatabase again(false);
            EXPECT_TRUE(host::readDrawingBytes(after, file.string(), again, {}).ok) << file << i;
            made += after.find("AAC1;g=AAC_") != after.npos;
            if (drawing.undoLog().undoSteps() > steps) base.run(L"U\n");
            EXPECT_EQ(before, host::drawingBytes(drawing)) << file << i;
        }
        acDocManagerPtr()->close(document);
    }
    EXPECT_GE(made, 20u);
}

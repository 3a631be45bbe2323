// Device contexts: what their calls become, and how text is measured and broken.
#include "tests/host/ui/support.h"

using namespace host;
using Kind = Primitive::Kind;

namespace {

// A context that writes into a recording of its own.
class Paper {
public:
    Paper(int width, int height) : recording(std::make_shared<Recording>(Recording{width, height, {}})) {
        dc.Attach(addDevice(std::make_unique<DeviceContext>(recording)));
    }
    const Primitive& last() const { return recording->primitives.back(); }
    std::shared_ptr<Recording> recording;
    CDC dc;
};

std::vector<std::wstring> lines(const Recording& recording) {
    std::vector<std::wstring> texts;
    for (const Primitive& primitive : recording.primitives)
        if (primitive.kind == Kind::text) texts.push_back(primitive.text);
    return texts;
}

// The box of all shapes, cut to their clips.
CRect inkBox(const Recording& recording) {
    CRect all;
    for (const Primitive& primitive : recording.primitives) {
        CRect own;
        for (const AcGePoint2d& p : primitive.points)
            own.UnionRect(CRect(own), CRect(int(p.x), int(p.y), int(p.x) + 1, int(p.y) + 1));
        CRect cut;
        if (cut.IntersectRect(own, primitive.clip)) all.UnionRect(CRect(all), cut);
    }
    return all;
}

} // namespace

TEST(Drawing, FilledShapesCoverTheirPixelsAndOutlinesRunThroughMiddles) {
    Paper paper(100, 80);
    paper.dc.SelectStockObject(NULL_PEN);
    CBrush red(RGB(255, 0, 0));
    paper.dc.SelectObject(&red);
    paper.dc.Rectangle(10, 20, 30, 40);
    EXPECT_EQ(AcGePoint2d(10, 20), paper.last().points[0]);
    EXPECT_EQ(AcGePoint2d(30, 40), paper.last().points[1]);
    EXPECT_EQ(RGB(255, 0, 0), paper.last().fill.value_or(0));
    EXPECT_FALSE(paper.last().pen);

    CPen thin(PS_SOLID, 1, RGB(0, 0, 255)), wide(PS_DASH, 2, RGB(0, 9, 0));
    paper.dc.SelectObject(&thin);
    paper.dc.Rectangle(10, 20, 30, 40); // pixels 10 to 29
    EXPECT_EQ(AcGePoint2d(10.5, 20.5), paper.last().points[0]);
    EXPECT_EQ(AcGePoint2d(29.5, 39.5), paper.last().points[1]);
    paper.dc.SelectObject(&wide);
    paper.dc.MoveTo(1, 2);
    paper.dc.LineTo(5, 2);
    paper.dc.LineTo(5, 9);
    EXPECT_EQ(AcGePoint2d(5, 2), paper.last().points[0]); // even pens run between pixels
    EXPECT_EQ(PS_DASH, paper.last().pen->style);
}

TEST(Drawing, WhatHasNoPartOrNoInkIsNotRecorded) {
    Paper paper(100, 80);
    paper.dc.SelectStockObject(NULL_PEN);
    paper.dc.MoveTo(0, 0);
    paper.dc.LineTo(9, 9);
    const POINT one{3, 3};
    EXPECT_FALSE(paper.dc.Polyline(&one, 1) || paper.dc.Polygon(&one, 1));
    paper.dc.FillSolidRect(5, 5, 0, 9, 0);
    paper.dc.IntersectClipRect(CRect(200, 200, 300, 300));
    paper.dc.FillSolidRect(5, 5, 9, 9, 0);
    EXPECT_TRUE(paper.recording->primitives.empty());
    CDC none;
    EXPECT_FALSE(none.LineTo(1, 1) || none.Rectangle(0, 0, 9, 9) || none.TextOut(0, 0, L"x", 1));
}

TEST(Drawing, ClipsOnlyShrinkUntilTheyAreRestored) {
    Paper paper(100, 80);
    const int saved = paper.dc.SaveDC();
    paper.dc.IntersectClipRect(10, 10, 50, 50);
    paper.dc.SaveDC();
    paper.dc.IntersectClipRect(40, 40, 90, 90);
    paper.dc.FillSolidRect(0, 0, 100, 80, 1);
    EXPECT_EQ(CRect(40, 40, 50, 50), paper.last().clip);
    EXPECT_TRUE(paper.dc.RestoreDC(-1));
    CRect box;
    paper.dc.GetClipBox(box);
    EXPECT_EQ(CRect(10, 10, 50, 50), box);
    paper.dc.SaveDC();
    EXPECT_TRUE(paper.dc.RestoreDC(saved));
    EXPECT_FALSE(paper.dc.RestoreDC(saved)); // gone with it
    paper.dc.GetClipBox(box);
    EXPECT_EQ(CRect(0, 0, 100, 80), box);
    CRgn region;
    region.CreateRectRgn(-5, -5, 20, 200);
    paper.dc.SelectClipRgn(&region);
    paper.dc.GetClipBox(box);
    EXPECT_EQ(CRect(0, 0, 20, 80), box); // never beyond the paper
    paper.dc.SelectClipRgn(nullptr);
    paper.dc.GetClipBox(box);
    EXPECT_EQ(CRect(0, 0, 100, 80), box);
}

TEST(Drawing, MovedOriginMovesEverything) {
    const auto draw = [](CDC& dc) {
        dc.MoveTo(1, 2);
        dc.LineTo(11, 12);
        dc.Rectangle(5, 5, 15, 20);
        dc.FillSolidRect(8, 8, 4, 4, RGB(1, 1, 1));
        dc.TextOut(3, 4, L"abc", 3);
        const POINT corners[] = {{5, 5}, {9, 5}, {9, 12}};
        dc.Polygon(corners, 3);
    };
    Paper here(100, 80), there(100, 80);
    draw(here.dc);
    there.dc.SetViewportOrg(20, 30);
    draw(there.dc);
    CRect moved = inkBox(*here.recording);
    moved.OffsetRect(20, 30);
    EXPECT_EQ(moved, inkBox(*there.recording));
}

TEST(Drawing, PaintingOverEverythingForgetsWhatLayBelow) {
    Paper paper(100, 80);
    for (int frame = 0; frame < 1000; ++frame) {
        paper.dc.FillSolidRect(0, 0, 100, 80, RGB(frame & 255, 0, 0));
        paper.dc.MoveTo(0, 0);
        paper.dc.LineTo(frame, 9);
    }
    EXPECT_EQ(2u, paper.recording->primitives.size());
    paper.dc.FillSolidRect(0, 0, 99, 80, 0); // one column is left
    EXPECT_EQ(3u, paper.recording->primitives.size());
}

TEST(Drawing, CopiesOfABitmapDoNotFollowItsLaterChanges) {
    Paper paper(100, 80);
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateCompatibleBitmap(&paper.dc, 20, 10));
    CDC memory;
    memory.CreateCompatibleDC(&paper.dc);
    EXPECT_FALSE(paper.dc.BitBlt(0, 0, 9, 9, &memory, 0, 0, SRCCOPY)); // nothing selected
    const HGDIOBJ before = memory.SelectObject(HGDIOBJ(bitmap.GetSafeHandle()));
    memory.FillSolidRect(0, 0, 20, 10, RGB(9, 9, 9));
    EXPECT_TRUE(paper.dc.BitBlt(5, 5, 20, 10, &memory, 0, 0, SRCCOPY));
    memory.FillSolidRect(0, 0, 5, 5, 0);
    memory.FillSolidRect(0, 0, 5, 5, 1);
    ASSERT_EQ(1u, paper.recording->primitives.size());
    EXPECT_EQ(1u, paper.last().recording->primitives.size());
    EXPECT_EQ(3u, bitmapOf(bitmap.GetSafeHandle())->drawn()->primitives.size());
    memory.SelectObject(before);
    EXPECT_EQ(CSize(20, 10), bitmap.GetSize());
}

TEST(Drawing, TextIsAsWideAsItsPartsAndGrowsWithItsFont) {
    Paper paper(100, 80);
    const CSize whole = paper.dc.GetTextExtent(L"Weight 12");
    const int parts = paper.dc.GetTextExtent(L"Weight ").cx + paper.dc.GetTextExtent(L"12").cx;
    EXPECT_NEAR(whole.cx, parts, 1); // each is rounded up
    LOGFONTW font;
    font.lfHeight = -24;
    CFont large;
    large.CreateFontIndirect(&font);
    paper.dc.SelectObject(&large);
    EXPECT_NEAR(2 * whole.cx, paper.dc.GetTextExtent(L"Weight 12").cx, 2);
    TEXTMETRICW metrics;
    paper.dc.GetTextMetrics(&metrics);
    EXPECT_EQ(metrics.tmAscent + metrics.tmDescent, metrics.tmHeight);
    font.lfHeight = 40; // of the line
    CFont byLine;
    byLine.CreateFontIndirect(&font);
    paper.dc.SelectObject(&byLine);
    paper.dc.GetTextMetrics(&metrics);
    EXPECT_NEAR(40, metrics.tmHeight, 1);
}

TEST(Drawing, LongTextIsBrokenAtBlanksAndBetweenIdeographs) {
    Paper paper(400, 300);
    const std::wstring words = L"one two three four five six seven";
    const int width = paper.dc.GetTextExtent(L"one two three").cx;
    CRect box(0, 0, width, 300);
    const int height = paper.dc.DrawText(words.c_str(), -1, box, DT_WORDBREAK);
    const auto broken = lines(*paper.recording);
    std::wstring joined;
    for (const std::wstring& line : broken) {
        EXPECT_LE(paper.dc.GetTextExtent(line.c_str(), int(line.size())).cx, width);
        joined += (joined.empty() ? L"" : L" ") + line;
    }
    EXPECT_EQ(words, joined);
    EXPECT_EQ(L"one two three", broken.front());
    TEXTMETRICW metrics;
    paper.dc.GetTextMetrics(&metrics);
    EXPECT_EQ(int(broken.size()) * metrics.tmHeight, height);

    Paper eastern(400, 300);
    CRect narrow(0, 0, eastern.dc.GetTextExtent(L"对齐切").cx, 300);
    eastern.dc.DrawText(L"对齐切线旋转", -1, narrow, DT_WORDBREAK);
    EXPECT_EQ((std::vector<std::wstring>{L"对齐切", L"线旋转"}), lines(*eastern.recording));

    Paper single(400, 300);
    CRect slim(0, 0, 5, 300);
    single.dc.DrawText(L"unbreakable\r\nline", -1, slim, DT_WORDBREAK); // words stay whole
    EXPECT_EQ((std::vector<std::wstring>{L"unbreakable", L"line"}), lines(*single.recording));
}

TEST(Drawing, TextKeepsToItsSideAndHidesAccessKeys) {
    Paper paper(400, 300);
    CRect box(100, 50, 300, 90);
    const int width = paper.dc.GetTextExtent(L"Save & go").cx;
    paper.dc.SetBkMode(TRANSPARENT);
    const auto startOf = [&](UINT format) {
        paper.recording->primitives.clear();
        paper.dc.DrawText(L"&Save && go", -1, box, format | DT_SINGLELINE);
        EXPECT_EQ(L"Save & go", paper.recording->primitives.front().text);
        return int(std::lround(paper.recording->primitives.front().points[0].x));
    };
    EXPECT_EQ(100, startOf(DT_LEFT));
    EXPECT_EQ(300 - width, startOf(DT_RIGHT));
    EXPECT_NEAR(200 - width / 2.0, startOf(DT_CENTER), 1);
    EXPECT_EQ(2u, paper.recording->primitives.size()); // and the line below the S
    paper.recording->primitives.clear();
    paper.dc.DrawText(L"a&b", -1, box, DT_NOPREFIX);
    EXPECT_EQ(L"a&b", paper.recording->primitives.front().text);
    CRect fitted(100, 50, 101, 51);
    paper.dc.DrawText(L"Save && go", -1, fitted, DT_CALCRECT);
    EXPECT_EQ(width, fitted.Width());
    paper.recording->primitives.clear();
    CRect tight(0, 0, width, 20);
    paper.dc.DrawText(L"Save && go further", -1, tight, DT_SINGLELINE | DT_END_ELLIPSIS);
    EXPECT_TRUE(paper.last().text.ends_with(L"...") &&
                paper.dc.GetTextExtent(paper.last().text.c_str(), int(paper.last().text.size())).cx <= width);
}

TEST(Drawing, ObjectsAreKnownByTheirKindUntilTheyAreDeleted) {
    CPen pen(PS_DOT, 3, RGB(1, 2, 3));
    LOGPEN facts;
    EXPECT_EQ(int(sizeof facts), pen.GetObject(sizeof facts, &facts));
    EXPECT_EQ(3, facts.lopnWidth.x);
    EXPECT_EQ(0, pen.GetObject(4, &facts)); // too small
    const HGDIOBJ handle = pen.GetSafeHandle();
    pen.DeleteObject();
    EXPECT_EQ(0, GetObjectW(handle, sizeof facts, &facts));
    EXPECT_FALSE(DeleteObject(handle) || DeleteObject(GetStockObject(WHITE_BRUSH)));
    EXPECT_EQ(nullptr, CreateFontIndirectW(nullptr));
    EXPECT_EQ(nullptr, CreateCompatibleBitmap(nullptr, 40000, 1));
    EXPECT_EQ(2, MulDiv(3, 1, 2)); // halves away from zero
    EXPECT_EQ(-2, MulDiv(-3, 1, 2));
    EXPECT_EQ(-1, MulDiv(3, 1, 0));
}

TEST(Drawing, OverlaysLastUntilTheWindowIsInvalid) {
    const DialogTemplate shape = uitest::dialogFrom(uitest::withControls(""));
    CDialog dialog;
    dialog.CreateIndirect(&shape);
    const std::size_t plain = paintDialog(dialog)->primitives.size();
    CClientDC(&dialog).FillSolidRect(1, 1, 5, 5, RGB(1, 2, 3));
    EXPECT_EQ(plain + 1, paintDialog(dialog)->primitives.size());
    dialog.Invalidate();
    EXPECT_EQ(plain, paintDialog(dialog)->primitives.size());
}

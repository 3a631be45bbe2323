// The dialog base on several screens: sizes, fonts, the controls it draws itself, and its translation.
#include <gmock/gmock.h>

#include <numeric>

#include "core/dialog.h"
#include "core/dialog_language.h"
#include "core/dialog_resources.h"
#include "core/dialog_text.h"
#include "support/dialogs.h"
#include "support/drawing.h"

using namespace corvane;
using support::placeOf;
using support::screen;
using support::Screens;
using testing::ElementsAre;

namespace {

class Probe : public CMyAcUiDialog {
public:
    Probe() : CMyAcUiDialog(0) {}
    // Opens without running, on the screen that holds that place.
    bool open(CPoint place = {}) {
        place_ = place;
        const support::TestTemplates templates;
        return Create(4001) != FALSE;
    }
    using CMyAcUiDialog::ApplyDialogScale;
    using CMyAcUiDialog::dialogFont;
    using CMyAcUiDialog::pictureStatics;
    using CMyAcUiDialog::scale;
    using CMyAcUiDialog::scaledFonts;
    using CMyAcUiDialog::textStatics;
    CImage picture;

protected:
    BOOL OnInitDialog() override {
        SetWindowPos(nullptr, place_.x, place_.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        if (!picture.IsNull()) SendDlgItemMessage(12, STM_SETIMAGE, IMAGE_BITMAP, LPARAM(HBITMAP(picture)));
        CMyAcUiDialog::OnInitDialog();
        for (const int id : {14, 15}) {
            const UINT add = id == 14 ? CB_ADDSTRING : LB_ADDSTRING,
                       data = id == 14 ? CB_SETITEMDATA : LB_SETITEMDATA;
            for (const wchar_t* text : {L"线性", L"plain", L"正弦"}) {
                const LRESULT at = SendDlgItemMessage(id, add, 0, LPARAM(text));
                SendDlgItemMessage(id, data, WPARAM(at), 70 + at);
            }
            SendDlgItemMessage(id, id == 14 ? CB_SETCURSEL : LB_SETCURSEL, 2);
        }
        return TRUE;
    }

private:
    CPoint place_;
};

LONG fontHeight(HWND window) {
    LOGFONTW font;
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
    return font.lfHeight;
}
std::vector<std::wstring> comboTexts(HWND dialog) {
    CString text;
    std::vector<std::wstring> all;
    auto* combo = static_cast<CComboBox*>(CWnd::FromHandle(GetDlgItem(dialog, 14)));
    for (int i = 0; i < combo->GetCount(); ++i) combo->GetLBText(i, text), all.push_back(text.str());
    return all;
}
CSize clientSize(const CWnd& window) {
    CRect client;
    window.GetClientRect(client);
    return client.Size();
}
// The dialog on the reference screen, against which others are held.
struct Reference {
    CSize client;
    CRect edit, button;
    LONG font;
    Reference() {
        const Screens one({screen(0, 1920, 1080, 96)});
        Probe dialog;
        EXPECT_TRUE(dialog.open());
        client = clientSize(dialog);
        edit = placeOf(dialog, 13);
        button = placeOf(dialog, 2);
        font = fontHeight(dialog);
    }
};

} // namespace

TEST(DialogScale, FollowsTheScreenAgainstTheReferenceAndTakesOutTheHostsOwn) {
    const struct {
        int width, height;
        double dpi, factor;
    } rows[] = {{1920, 1080, 1, 1},
                {2560, 1440, 1, 4.0 / 3},
                {3840, 2160, 2, 1},
                {3840, 2160, 1, 2},
                {2560, 1080, 1, 1},
                {1280, 1024, 1, 2.0 / 3},
                {0, 540, 1, 0.5},
                {960, -1, 1, 0.5},
                {0, 0, 1, 1},
                {1920, 1080, 0, 1},
                {1920, 1080, -3, 1},
                {1920, 1080, 1.25, 0.8},
                {1920, 1080, std::nan(""), 1}};
    for (const auto& row : rows)
        EXPECT_NEAR(row.factor, DialogScaleFor(row.width, row.height, row.dpi), 1e-12)
            << row.width << "x" << row.height << " at " << row.dpi;
}

TEST(Dialog, FitsTheScreenItOpensOn) {
    const Reference reference;
    const struct {
        const char* what;
        std::vector<host::Monitor> screens;
        CPoint place;
        bool dpiKnown;
        double factor;
    } rows[] = {
        {"2560 by 1440", {screen(0, 2560, 1440, 96)}, {}, true, 4.0 / 3},
        {"the second, larger one",
         {screen(0, 1920, 1080, 96), screen(1920, 3840, 2160, 96)},
         {2500, 300},
         true,
         2},
        {"the first of two", {screen(0, 1920, 1080, 96), screen(1920, 3840, 2160, 96)}, {300, 300}, true, 1},
        {"a small one beside a large",
         {screen(0, 3840, 2160, 96), screen(3840, 1280, 720, 96)},
         {4000, 9},
         true,
         2.0 / 3},
        {"an old host", {screen(0, 2560, 1440, 96)}, {}, false, 4.0 / 3},
    };
    for (const auto& row : rows) {
        const Screens screens(row.screens);
        host::setDpiForWindowPresent(row.dpiKnown);
        Probe dialog;
        ASSERT_TRUE(dialog.open(row.place)) << row.what;
        EXPECT_NEAR(row.factor, dialog.scale, 1e-12) << row.what;
        const auto grown = [&](int length) { return int(length * row.factor + 0.5); };
        EXPECT_EQ(CSize(grown(reference.client.cx), grown(reference.client.cy)), clientSize(dialog))
            << row.what;
        for (const auto& [id, before] : {std::pair(13, reference.edit), std::pair(2, reference.button)}) {
            EXPECT_EQ(CRect(grown(before.left), grown(before.top), grown(before.right), grown(before.bottom)),
                      placeOf(dialog, id))
                << row.what << ", control " << id;
        }
        EXPECT_EQ(LONG(reference.font * row.factor), fontHeight(dialog)) << row.what;
        EXPECT_EQ(LONG(reference.font * row.factor), fontHeight(GetDlgItem(dialog, 13))) << row.what;
        const CSize once = clientSize(dialog);
        dialog.ApplyDialogScale();
        EXPECT_EQ(once, clientSize(dialog)) << "scaled once only";
    }
}

TEST(Dialog, AtTwoHundredPercentOnFourTimesTheScreenTheHostHasDoneItAll) {
    const Screens screens({screen(0, 3840, 2160, 192)});
    Probe dialog;
    ASSERT_TRUE(dialog.open());
    EXPECT_DOUBLE_EQ(1, dialog.scale);
}

TEST(Dialog, StandsInTheMiddleOfItsScreenAndControlsShareOneScaledFont) {
    const Screens screens({screen(0, 1920, 1080, 96), screen(1920, 2560, 1440, 96)});
    Probe dialog;
    ASSERT_TRUE(dialog.open({2400, 200}));
    CRect frame;
    dialog.GetWindowRect(frame);
    EXPECT_NEAR(1920 + 1280, frame.CenterPoint().x, 1);
    EXPECT_EQ(1u, dialog.scaledFonts.size());
    EXPECT_NE(nullptr, dialog.dialogFont.GetSafeHandle());
}

TEST(Dialog, FontsDieWithIt) {
    Probe().open();
    const size_t before = host::gdiObjectCount();
    Probe().open();
    EXPECT_EQ(before, host::gdiObjectCount());
}

TEST(Dialog, TextsOfSeveralLinesAreItsOwnAndCutAtAWholeLine) {
    Probe dialog;
    ASSERT_TRUE(dialog.open());
    EXPECT_THAT(dialog.textStatics, ElementsAre(GetDlgItem(dialog, 11), GetDlgItem(dialog, 16)));
    EXPECT_NE(LONG(SS_OWNERDRAW), GetWindowLongW(GetDlgItem(dialog, 10), GWL_STYLE) & LONG(SS_TYPEMASK));
    dialog.ShowWindow(SW_SHOW);
    std::vector<support::PaintedText> texts;
    support::collectTexts(*host::paintDialog(dialog), texts);
    std::vector<double> lines;
    for (const auto& painted : texts)
        if (painted.text.ends_with(L"行")) lines.push_back(painted.y);
    ASSERT_EQ(3u, lines.size());
    CClientDC dc(&dialog);
    dc.SelectObject(dialog.GetFont());
    TEXTMETRICW metrics;
    dc.GetTextMetrics(&metrics);
    const int pitch = int((metrics.tmHeight + metrics.tmExternalLeading) * 1.5 + 0.5);
    EXPECT_DOUBLE_EQ(pitch, lines[1] - lines[0]);
    EXPECT_DOUBLE_EQ(pitch, lines[2] - lines[1]);
    const auto shows = [&](const wchar_t* text) {
        return std::any_of(texts.begin(), texts.end(), [&](const auto& p) { return p.text == text; });
    };
    EXPECT_TRUE(shows(L"甲"));
    EXPECT_FALSE(shows(L"丁")) << "20 units of height hold no four lines";
}

TEST(Dialog, PicturesAreStretchedOverTheirControls) {
    Probe dialog;
    ASSERT_TRUE(dialog.picture.Create(3, 2, 32));
    ASSERT_TRUE(dialog.open());
    ASSERT_EQ(1u, dialog.pictureStatics.size());
    EXPECT_EQ(GetDlgItem(dialog, 12), dialog.pictureStatics.begin()->first);
    EXPECT_EQ(LONG(SS_OWNERDRAW), GetWindowLongW(GetDlgItem(dialog, 12), GWL_STYLE) & LONG(SS_TYPEMASK));
    dialog.ShowWindow(SW_SHOW);
    bool found = false;
    const CRect place = placeOf(dialog, 12);
    const auto look = [&](auto&& self, const host::Recording& recording) -> void {
        for (const host::Primitive& p : recording.primitives) {
            const bool picture = p.kind == host::Primitive::Kind::image;
            if (picture && p.points[1].x - p.points[0].x == place.Width()) found = true;
            if (p.recording) self(self, *p.recording);
        }
    };
    look(look, *host::paintDialog(dialog));
    EXPECT_TRUE(found);
}

TEST(DialogText, BreaksWhereTheWidthIsFullAndNeverBeforeALonelyCharacter) {
    const auto lines = [](const wchar_t* text, int width) {
        return BreakLines(text, width, [](std::wstring_view line) { return 10 * int(line.size()); });
    };
    EXPECT_THAT(lines(L"一二三四五", 25), ElementsAre(L"一二", L"三四", L"五"));
    EXPECT_THAT(lines(L"一二三", 5), ElementsAre(L"一", L"二", L"三"));
    EXPECT_THAT(lines(L"ab cd", 30), ElementsAre(L"ab ", L"cd"));
    EXPECT_THAT(lines(L"a\r\n\nb", 30), ElementsAre(L"a", L"", L"b"));
    EXPECT_THAT(lines(L"", 30), ElementsAre(L""));
    const TextArea area = TextAreaOf(RECT{10, 20, 15, 60}, 15);
    EXPECT_EQ(1, area.width) << "never without width";
    EXPECT_EQ(23, area.pitch);
    EXPECT_EQ(1, TextAreaOf(RECT{}, -9).pitch - 1) << "a line without height counts as one of 1";
}

TEST(DialogLanguage, ComesAfterTheDerivedClassHasFilledItsControls) {
    const support::Drawing drawing; // sets the settings aside
    host::setRequestedLanguage("en");
    Probe dialog;
    ASSERT_TRUE(dialog.open());
    EXPECT_THAT(comboTexts(dialog), ElementsAre(L"线性", L"plain", L"正弦"));
    host::deliverPosted();
    host::setRequestedLanguage("zh");
    EXPECT_EQ(L"Multiple copy", WindowText(dialog));
    EXPECT_EQ(L"Divides curves into equal parts", WindowText(GetDlgItem(dialog, 10)));
    EXPECT_THAT(comboTexts(dialog), ElementsAre(L"Linear", L"plain", L"Sine"));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(70 + i, dialog.SendDlgItemMessage(14, CB_GETITEMDATA, WPARAM(i)));
        EXPECT_EQ(70 + i, dialog.SendDlgItemMessage(15, LB_GETITEMDATA, WPARAM(i)));
    }
    EXPECT_EQ(2, dialog.SendDlgItemMessage(14, CB_GETCURSEL));
    EXPECT_EQ(2, dialog.SendDlgItemMessage(15, LB_GETCURSEL));
}

TEST(DialogLanguage, TheSourceLanguageChangesNothing) {
    const support::Drawing drawing;
    Probe dialog;
    ASSERT_TRUE(dialog.open());
    host::deliverPosted();
    EXPECT_EQ(L"多次复制", WindowText(dialog));
    TranslateDialog(nullptr);
    TranslateWindowText(nullptr);
    TranslateComboItems(nullptr);
}

TEST(DialogLanguage, AnItemWithoutALengthLeavesTheBoxAsItWas) {
    class Mute : public CComboBox {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            return message == CB_GETLBTEXTLEN && wParam == 1 ? CB_ERR
                                                             : CComboBox::WindowProc(message, wParam, lParam);
        }
    };
    const support::Drawing drawing;
    Probe dialog;
    ASSERT_TRUE(dialog.open());
    Mute mute;
    ASSERT_TRUE(mute.SubclassDlgItem(14, &dialog));
    host::setRequestedLanguage("en");
    TranslateComboItems(&mute);
    host::setRequestedLanguage("zh");
    EXPECT_EQ(2, mute.GetCurSel());
    mute.UnsubclassWindow();
    EXPECT_THAT(comboTexts(dialog), ElementsAre(L"线性", L"plain", L"正弦"));
}

TEST(DialogResources, PicturesAreFoundByNumberAndType) {
    CImage image;
    EXPECT_EQ(0, LoadPngResource(nullptr, nullptr, 1297, L"PNG"));
    EXPECT_EQ(1, LoadPngResource(nullptr, &image, 1297, L"PNG"));
    image.Create(2, 2, 32);
    EXPECT_EQ(0, LoadPngResource(nullptr, &image, 60000, L"PNG"));
    EXPECT_TRUE(image.IsNull()) << "what it held is given up first";
    EXPECT_EQ(0, LoadPngResource(nullptr, &image, 1297, L"JPG"));
}

// Dialogs as pictures: what was painted stands where it should, and bitmaps bring pixels and drawings
// together.
#include "host/picture/dialog_pictures.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "host/picture/fonts.h"
#include "host/picture/images.h"
#include "host/ui/ui.h"

using namespace host;

namespace {

constexpr const char* kDialog = R"rc(53 DIALOGEX 0, 0, 260, 190
STYLE DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU
CAPTION "沿曲线阵列"
FONT 9, "MS Shell Dlg"
BEGIN
    GROUPBOX "排列", -1, 7, 5, 120, 58
    AUTORADIOBUTTON "总数量", 1094, 14, 18, 48, 10, WS_GROUP | WS_TABSTOP
    EDITTEXT 1090, 66, 16, 50, 13, ES_NUMBER
    AUTORADIOBUTTON "间距", 1095, 14, 36, 48, 10
    EDITTEXT 1093, 66, 34, 50, 13, WS_DISABLED
    GROUPBOX "大小变异", -1, 133, 5, 120, 58
    COMBOBOX 1089, 140, 17, 106, 80, CBS_DROPDOWNLIST
    LTEXT "对比度:", -1, 140, 40, 30, 8
    CONTROL "", 1264, "msctls_trackbar32", TBS_NOTICKS | WS_TABSTOP, 172, 37, 74, 14
    AUTOCHECKBOX "对齐切线(旋转)", 1087, 14, 70, 90, 10
    AUTOCHECKBOX "三维垂直于路径", 1086, 14, 84, 90, 10, WS_DISABLED
    AUTO3STATE "Mixed state", 1085, 14, 98, 90, 10
    LISTBOX 1273, 133, 70, 120, 50, WS_TABSTOP
    LTEXT "A longer explanation that does not fit into one line and so is broken at a blank between two words.", -1, 14, 114, 110, 36
    CONTROL "", 1290, "Static", SS_WHITERECT, 133, 126, 120, 30
    PUSHBUTTON "重选物体(&R)", 1084, 7, 168, 60, 15
    DEFPUSHBUTTON "确定", 1, 150, 168, 50, 15
    PUSHBUTTON "取消", 2, 203, 168, 50, 15, WS_DISABLED
END
)rc";

const DialogTemplate& shape() {
    static const DialogTemplate all = [] {
        installTextMetrics();
        installDialogPictures();
        return parseResourceScript(kDialog).dialogs.at(0);
    }();
    return all;
}

class Shown : public CDialog {
public:
    Shown() { CreateIndirect(&shape()), fill(), ShowWindow(SW_SHOW); }
    void fill() {
        CheckDlgButton(1094, 1), CheckDlgButton(1087, 1), CheckDlgButton(1085, 2);
        SetDlgItemInt(1090, 10);
        SetDlgItemText(1093, L"12.5");
        auto& combo = static_cast<CComboBox&>(*GetDlgItem(1089));
        for (const wchar_t* kind : {L"不变", L"线性", L"正弦"}) combo.AddString(kind);
        combo.SetCurSel(2);
        auto& slider = static_cast<CSliderCtrl&>(*GetDlgItem(1264));
        slider.SetRange(0, 100), slider.SetPos(60);
        auto& list = static_cast<CListBox&>(*GetDlgItem(1273));
        for (int i = 1; i < 9; ++i) list.AddString((L"曲线 " + std::to_wstring(i)).c_str());
        list.SetCurSel(1);
    }
    // Where the middle of a control lies in the picture at scale 1.
    CPoint middle(int id) const {
        CRect place, own;
        GetDlgItem(id)->GetWindowRect(place);
        GetWindowRect(own);
        return place.CenterPoint() - own.TopLeft();
    }
};

ImagePixels pixelsOf(HWND dialog) {
    const auto painted = paintDialog(dialog);
    ImagePixels pixels{painted->width, painted->height, {}};
    pixels.rgba.resize(std::size_t(pixels.width) * std::size_t(pixels.height) * 4);
    pictureServices()->draw(*painted, pixels);
    return pixels;
}
COLORREF at(const ImagePixels& pixels, CPoint p) {
    const std::uint8_t* c =
        &pixels.rgba[(std::size_t(p.y) * std::size_t(pixels.width) + std::size_t(p.x)) * 4];
    return RGB(c[0], c[1], c[2]);
}

} // namespace

TEST(DialogPictures, ControlsAreWhereTheyAreAndShowTheirState) {
    Shown dialog;
    const ImagePixels pixels = pixelsOf(dialog);
    EXPECT_EQ(RGB(255, 255, 255), at(pixels, dialog.middle(1290)));
    EXPECT_EQ(RGB(255, 255, 255), at(pixels, CPoint(40, 4))); // the title bar
    CRect own;
    dialog.GetWindowRect(own);
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), at(pixels, CPoint(own.Width() / 2, own.Height() - 6)));
    // A checked box is filled, an empty one white within its border.
    const auto mark = [&](int id) {
        CRect place;
        dialog.GetDlgItem(id)->GetWindowRect(place);
        return at(pixels, CPoint(place.left + 3 - own.left, place.CenterPoint().y - 3 - own.top));
    };
    EXPECT_NE(mark(1087), mark(1086));
    dialog.GetDlgItem(1290)->ShowWindow(SW_HIDE);
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), at(pixelsOf(dialog), dialog.middle(1290)));
}

TEST(DialogPictures, FileIsAPngOfTheDialogsSize) {
    Shown dialog;
    const std::string path = (std::filesystem::temp_directory_path() / "corvane-dialog-picture.png").string();
    const auto painted = paintDialog(dialog);
    EXPECT_EQ("", pictureServices()->save(*painted, 2, path));
    const LoadedImage image = loadImage(path);
    EXPECT_EQ(painted->width * 2, image.width);
    EXPECT_EQ(painted->height * 2, image.height);
    if (!std::getenv("CORVANE_KEEP_PICTURES")) std::filesystem::remove(path);
    EXPECT_NE("", pictureServices()->save(*painted, 1e9, path));
    EXPECT_NE("", pictureServices()->save(*painted, 1, "/no/such/folder/a.png"));
}

TEST(DialogPictures, BitmapsKeepWhatWasDrawnOverThem) {
    shape();
    CImage image;
    ASSERT_TRUE(image.Create(10, 8, 24));
    image.SetPixel(9, 7, RGB(10, 20, 30));
    CDC* dc = CDC::FromHandle(image.GetDC());
    dc->FillSolidRect(0, 0, 4, 8, RGB(200, 0, 0));
    dc->SetPixel(5, 0, RGB(0, 0, 200));
    EXPECT_EQ(RGB(200, 0, 0), image.GetPixel(3, 7));
    EXPECT_EQ(RGB(255, 255, 255), image.GetPixel(4, 7));
    EXPECT_EQ(RGB(10, 20, 30), image.GetPixel(9, 7));
    EXPECT_EQ(RGB(0, 0, 200), dc->GetPixel(5, 0));
    EXPECT_EQ(CLR_INVALID, image.GetPixel(10, 0));
    // Halved, each pixel is the mean of four.
    CImage small;
    small.Create(5, 4, 24);
    CDC* half = CDC::FromHandle(small.GetDC());
    half->SetStretchBltMode(HALFTONE);
    image.StretchBlt(half->GetSafeHdc(), 0, 0, 5, 4);
    EXPECT_EQ(RGB(200, 0, 0), small.GetPixel(1, 2));
    EXPECT_NEAR((255 * 3 + 10) / 4.0, GetRValue(small.GetPixel(4, 3)), 2);
}

TEST(DialogPictures, ImagesAreDecodedOrRefusedWithAReason) {
    shape();
    CImage image;
    EXPECT_NE(0, image.Load(std::string_view("no image")));
    EXPECT_TRUE(image.IsNull() && !image.error().empty());
    EXPECT_NE(0, image.Load(L"/no/such/file.png"));
    EXPECT_FALSE(image.Create(0, 5, 24) || image.Create(40000, 5, 24));
}

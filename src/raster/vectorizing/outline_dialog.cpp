// The controls, the preview, the run.
#include "raster/vectorizing/outline_dialog.h"

#include <algorithm>

#include "core/host/editor.h"
#include "core/host/progress.h"
#include "core/messages.h"
#include "core/properties.h"
#include "raster/colour.h"
#include "raster/vectorizing/outline_block.h"

namespace corvane {
namespace {

constexpr UINT kTemplate = 1241;
constexpr int kCentreRadio = 1242, kOutlineRadio = 1243, kLoad = 1156, kStatus = 1283;
constexpr int kThreshold = 1264, kStep = 1265, kVertices = 1266, kLevel = 1267, kBlur = 1352;
constexpr int kVerticesLabel = 61266, kLevelLabel = 61267, kBlurLabel = 61352;
constexpr COLORREF kGround = RGB(0xEE, 0xEE, 0xEE);

// Transparent pixels lie on white paper: what colour they hide is chance.
raster::RasterImage colourOf(const host::ImagePixels& pixels) {
    raster::RasterImage image =
        raster::ToColour({pixels.height, pixels.width, 32, size_t(pixels.width) * 4, pixels.rgba, {}});
    for (size_t i = 0; i < image.pixels(); ++i) {
        raster::Byte* p = &image.data[3 * i];
        std::swap(p[0], p[2]);
        const int alpha = pixels.rgba[4 * i + 3];
        for (int k = 0; alpha < 255 && k < 3; ++k)
            p[k] = raster::Byte((p[k] * alpha + 255 * (255 - alpha)) / 255);
    }
    return image;
}

// An anonymous block that nobody came to refer to goes again, also when the command is broken off.
class BlockInWaiting {
public:
    explicit BlockInWaiting(AcDbObjectId block) : block_(block) {}
    ~BlockInWaiting() {
        if (block_.isNull()) return;
        AcDbObjectPointer<AcDbBlockTableRecord> record(block_, AcDb::kForWrite);
        if (record) record->erase();
    }
    BlockInWaiting(const BlockInWaiting&) = delete;
    BlockInWaiting& operator=(const BlockInWaiting&) = delete;
    AcDbObjectId id() const { return block_; }
    void placed() { block_.setNull(); }

private:
    AcDbObjectId block_;
};

// Scans come as TIFF, which has an entry of its own behind the usual images.
CString imageFilters() {
    CString filters = Translate(L"图像(*.bmp;*.jpg;*.jpeg;*.png;*.gif) | *.bmp;*.jpg;*.jpeg;*.png;*.gif || ");
    const int end = filters.Find(L"||");
    if (end >= 0) filters = filters.Left(end);
    return filters + L"| " + Translate(L"TIFF 图像(*.tif;*.tiff) | *.tif;*.tiff || ");
}

// On the terminal, where nobody sees the status.
void showShare(const CString& doing, double share) {
    if (!host_door::dialogsAreSeen()) host_door::showProgress(doing.str(), share);
}

// The dialog is hidden while the drawing is asked.
class Aside {
public:
    explicit Aside(CAdUiBaseDialog& dialog) : dialog_(dialog) { dialog_.BeginEditorCommand(); }
    ~Aside() { dialog_.CompleteEditorCommand(); }
    Aside(const Aside&) = delete;
    Aside& operator=(const Aside&) = delete;

private:
    CAdUiBaseDialog& dialog_;
};

} // namespace

COutlineDlg::COutlineDlg(CWnd* parent) : CMyAcUiDialog(kTemplate, parent) {}

BEGIN_MESSAGE_MAP(COutlineDlg, CMyAcUiDialog)
ON_WM_PAINT()
ON_WM_HSCROLL()
ON_BN_CLICKED(kLoad, &COutlineDlg::OnLoad)
ON_BN_CLICKED(kCentreRadio, &COutlineDlg::OnMode)
ON_BN_CLICKED(kOutlineRadio, &COutlineDlg::OnMode)
END_MESSAGE_MAP()

BOOL COutlineDlg::OnInitDialog() {
    CMyAcUiDialog::OnInitDialog();
    settings_ = ReadOutlineSettings();
    showSlider(kThreshold, 1, 254, settings_.threshold);
    showSlider(kStep, 1, 8, settings_.step);
    showSlider(kVertices, 0, 16, settings_.fewestVertices);
    showSlider(kLevel, 0, OutlineSettings::kMostLevel, settings_.level);
    showSlider(kBlur, 0, 5, settings_.blur);
    for (const int id : {kThreshold, kStep}) GetDlgItem(id)->EnableWindow(FALSE);
    const bool outlines = settings_.mode == raster::VectorizeMode::outlines;
    CheckRadioButton(kCentreRadio, kOutlineRadio, outlines ? kOutlineRadio : kCentreRadio);
    showValues();
    return TRUE;
}

void COutlineDlg::showSlider(int id, int least, int most, int value) {
    auto* slider = static_cast<CSliderCtrl*>(GetDlgItem(id));
    slider->SetRange(least, most, TRUE);
    slider->SetPos(value);
}
int COutlineDlg::sliderAt(int id) const { return static_cast<const CSliderCtrl*>(GetDlgItem(id))->GetPos(); }

void COutlineDlg::showValues() {
    SetDlgItemText(kVerticesLabel, TranslateFormat(L"杂点忽略： %d", sliderAt(kVertices)));
    SetDlgItemText(kLevelLabel, TranslateFormat(L"光滑度： %d", sliderAt(kLevel)));
    SetDlgItemText(kBlurLabel, TranslateFormat(L"误差优化： %d", sliderAt(kBlur)));
}

void COutlineDlg::showStatus(const CString& text) {
    SetDlgItemText(kStatus, text);
    GetDlgItem(kStatus)->UpdateWindow();
}

void COutlineDlg::OnMode() {
    settings_.mode = IsDlgButtonChecked(kOutlineRadio) == BST_CHECKED ? raster::VectorizeMode::outlines
                                                                      : raster::VectorizeMode::centreLines;
    WriteVectorizeMode(settings_.mode);
}

void COutlineDlg::OnLoad() {
    CFileDialog files(TRUE, nullptr, nullptr, OFN_FILEMUSTEXIST, imageFilters());
    if (files.DoModal() != IDOK) return NoticeBox(L"未选中图像文件！");
    if (!readImage(files.GetPathName())) return;
    for (const int id : {kThreshold, kStep}) GetDlgItem(id)->EnableWindow(TRUE);
    showSlider(kThreshold, 1, 254, settings_.threshold);
    showSlider(kStep, 1, 8, settings_.step);
    reduce(settings_.reduction);
}

bool COutlineDlg::readImage(const CString& path) {
    CImage file;
    if (const LRESULT failed = file.Load(path)) {
        MessageBox(
            TranslateFormat(L"GetLastError: %d -- Load image Error：%s", int(failed), path.GetString()));
        return false;
    }
    raster::RasterImage image = colourOf(file.pixels());
    if (image.empty()) {
        NoticeBox(L"载入图片错误2!");
        return false;
    }
    source_ = std::move(image);
    return true;
}

void COutlineDlg::reduce(Reduction reduction) {
    processed_ = reduction == Reduction::none ? raster::RasterImage() : source_;
    if (reduction == Reduction::blackAndWhite)
        raster::ReduceToBlackAndWhite(processed_, sliderAt(kThreshold));
    if (reduction == Reduction::colours) raster::ReduceColours(processed_, sliderAt(kStep));
    showPicture();
}

void COutlineDlg::OnHScroll(UINT code, UINT position, CScrollBar* bar) {
    CMyAcUiDialog::OnHScroll(code, position, bar);
    const int id = bar ? bar->GetDlgCtrlID() : 0;
    if (id == kThreshold && !source_.empty()) reduce(Reduction::blackAndWhite);
    if (id == kStep && !source_.empty()) {
        showSlider(kThreshold, 1, 254, OutlineSettings::kMiddleThreshold);
        reduce(Reduction::colours);
    }
    showValues();
}

void COutlineDlg::showPicture() {
    const raster::RasterImage& shown = processed_.empty() ? source_ : processed_;
    if (picture_.Create(shown.cols, shown.rows, 32)) {
        auto to = picture_.changePixels()->rgba.begin();
        for (size_t i = 0; i < shown.data.size(); i += 3, to += 4)
            to[0] = shown.data[i + 2], to[1] = shown.data[i + 1], to[2] = shown.data[i];
    }
    Invalidate();
}

// Left of all controls.
CRect COutlineDlg::previewArea() {
    constexpr int kGap = 7, kNarrowest = 10;
    CRect area;
    GetClientRect(area);
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CRect place;
        ::GetWindowRect(child, place);
        ::MapWindowPoints(nullptr, m_hWnd, place);
        area.right = std::min(area.right, place.left);
    }
    area.right = std::max(area.right - kGap, area.left + kNarrowest);
    return area;
}

void COutlineDlg::OnPaint() {
    CPaintDC dc(this);
    const CRect area = previewArea();
    dc.FillSolidRect(area, kGround);
    if (picture_.IsNull()) return;
    const double shrink =
        std::min(double(area.Width()) / picture_.GetWidth(), double(area.Height()) / picture_.GetHeight());
    const int width = std::max(1, int(picture_.GetWidth() * shrink)),
              height = std::max(1, int(picture_.GetHeight() * shrink));
    dc.SetStretchBltMode(HALFTONE);
    picture_.StretchBlt(dc, area.left + (area.Width() - width) / 2, area.top + (area.Height() - height) / 2,
                        width, height);
}

void COutlineDlg::readSliders() {
    settings_.threshold = sliderAt(kThreshold);
    settings_.step = sliderAt(kStep);
    settings_.fewestVertices = sliderAt(kVertices);
    settings_.level = sliderAt(kLevel);
    settings_.blur = sliderAt(kBlur);
    settings_.reduction = settings_.derivedReduction();
}

void COutlineDlg::OnOK() {
    if (source_.empty()) return showStatus(Translate(L"请先载入图片"));
    readSliders();
    WriteOutlineSettings(settings_);
    const raster::VectorizeResult result = trace();
    if (result.failure == raster::VectorizeFailure::none) {
        draw(result.paths);
    } else {
        const CString reason = result.failure == raster::VectorizeFailure::unreadable
                                   ? Translate(L"无法读取图像数据")
                                   : Translate(L"二值化失败");
        showStatus(reason);
        PrintText(L"\n" + reason); // the status goes with the dialog
    }
    EndDialog(IDOK);
}

raster::VectorizeResult COutlineDlg::trace() {
    showStatus(Translate(L"开始矢量化...."));
    const bool centre = settings_.mode == raster::VectorizeMode::centreLines;
    const CString doing = centre ? Translate(L"正在提取图片中心线....") : Translate(L"正在提取图片轮廓....");
    showStatus(doing);
    const bool byColours = !processed_.empty() && settings_.reduction == Reduction::colours;
    const raster::RasterImage mask = byColours ? raster::FlatRegions(processed_) : raster::RasterImage();
    return raster::VectorizeImage(processed_.empty() ? source_ : processed_,
                                  {settings_.mode, settings_.fewestVertices, settings_.blur}, mask,
                                  [&](int percent) {
                                      CString text;
                                      text.Format(L"%s %d%%", doing.GetString(), percent);
                                      showStatus(text);
                                      showShare(doing, percent / 100.0);
                                  });
}

void COutlineDlg::draw(const std::vector<raster::PixelPath>& paths) {
    const auto told = [&](size_t done) {
        const CString text =
            TranslateFormat(L"正在生成CAD多段线.... %u/%u", unsigned(done), unsigned(paths.size()));
        showStatus(text);
        showShare(text, paths.empty() ? 1 : double(done) / double(paths.size()));
    };
    told(0);
    BlockInWaiting block(MakeOutlineBlock(paths, settings_.mode, settings_.level, told));
    if (block.id().isNull()) return;
    showStatus(Translate(L"正在等待插入点和高度...."));
    askPlace();
    if (PlaceOutlineBlock(block.id(), corner_, height_, source_.rows)) block.placed();
    showStatus(Translate(L"完成"));
}

// There is no way out but both answers; a script that has none left is unwound by the editor.
void COutlineDlg::askPlace() {
    constexpr int kAboveZero = 2 | 4;
    while (true) {
        const Aside aside(*this);
        ads_point corner;
        if (acedGetPoint(nullptr, Translate(L"\n请指定原点>>"), corner) != RTNORM) continue;
        acedInitGet(kAboveZero, nullptr);
        if (acedGetDist(corner, Translate(L"\n请指定高度>>"), &height_) != RTNORM) continue;
        corner_.set(corner[0], corner[1], corner[2]);
        return UcsToWcs(corner_);
    }
}

void VectorizeCommand() {
    COutlineDlg dialog;
    RunModal(dialog);
}

} // namespace corvane

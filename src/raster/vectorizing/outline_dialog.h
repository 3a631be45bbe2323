// COutlineDlg: an image is loaded, reduced if its colours call for it, and traced into the drawing.
#pragma once
#include "core/dialog.h"
#include "core/host/geometry.h"
#include "raster/image.h"
#include "raster/vectorizing/outline_settings.h"

namespace corvane {

class COutlineDlg : public CMyAcUiDialog {
public:
    explicit COutlineDlg(CWnd* parent = nullptr);

protected:
    BOOL OnInitDialog() override;
    void OnOK() override; // traces, and ends the dialog whatever came of it
    afx_msg void OnPaint();
    afx_msg void OnHScroll(UINT code, UINT position, CScrollBar* bar);
    afx_msg void OnLoad();
    afx_msg void OnMode();
    DECLARE_MESSAGE_MAP()

private:
    void showSlider(int id, int least, int most, int value);
    int sliderAt(int id) const;
    void showValues();
    void showStatus(const CString& text);
    bool readImage(const CString& path);
    void reduce(Reduction reduction);
    void showPicture();
    CRect previewArea();
    void readSliders();
    raster::VectorizeResult trace();
    void draw(const std::vector<raster::PixelPath>& paths);
    void askPlace();

    OutlineSettings settings_;
    raster::RasterImage source_, processed_; // the second is empty while nothing was reduced
    CImage picture_;                         // what the preview shows of them
    AcGePoint3d corner_;
    double height_ = 0;
};

// R2V: the dialog, and nothing else.
void VectorizeCommand();

} // namespace corvane

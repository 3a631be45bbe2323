// Device contexts: drawing calls become shapes of a recording (recording.h), that of a window's paint, or of
// the bitmap which a memory context has selected. Text is measured through host/gi's metrics.
#pragma once

#include "host/ui/gdi.h"

namespace host {

// The state behind an HDC.
struct DeviceState {
    HFONT font = nullptr;
    HPEN pen = nullptr;
    HBRUSH brush = nullptr;
    COLORREF textColor = 0, backColor = 0xFFFFFF;
    int backMode = 2, stretchMode = 1, fillMode = 1;
    UINT textAlign = 0;
    CPoint origin;   // of logical coordinates, in pixels of the recording
    CPoint position; // of the pen, logical
    CRect clip;
};
class DeviceContext {
public:
    explicit DeviceContext(std::shared_ptr<Recording> onto);
    DeviceState state;
    std::vector<DeviceState> saved;
    CRect limits;                   // that no clip grows beyond
    std::shared_ptr<Bitmap> bitmap; // of a memory context
    HBITMAP bitmapHandle = nullptr;
    bool memory = false;
    double scale = 1;              // of what is asked by GetDeviceCaps: dots to the inch / 96
    void add(Primitive primitive); // clipped; coordinates of the recording
    Recording* target();

private:
    std::shared_ptr<Recording> recording_;
};
DeviceContext* deviceOf(HDC dc); // null when it is none
HDC addDevice(std::unique_ptr<DeviceContext> device);
std::size_t deviceCount();

} // namespace host

// A context whose drawings go into the bitmap selected into it.
HDC CreateCompatibleDC(HDC like);
BOOL DeleteDC(HDC dc);

class CDC {
public:
    CDC() = default;
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;
    virtual ~CDC();
    // A wrapper that lives until the next pump of messages.
    static CDC* FromHandle(HDC dc);
    BOOL Attach(HDC dc);
    HDC Detach();
    BOOL CreateCompatibleDC(CDC* like);
    BOOL DeleteDC();
    HDC GetSafeHdc() const { return m_hDC; }
    operator HDC() const { return m_hDC; }
    HDC m_hDC = nullptr;

    // Selecting gives what was selected before.
    HGDIOBJ SelectObject(HGDIOBJ object);
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CFont* SelectObject(CFont* font);
    CBitmap* SelectObject(CBitmap* bitmap);
    CGdiObject* SelectStockObject(int which);
    COLORREF SetTextColor(COLORREF color);
    COLORREF GetTextColor() const;
    COLORREF SetBkColor(COLORREF color);
    COLORREF GetBkColor() const;
    int SetBkMode(int mode);
    int SetStretchBltMode(int mode);
    int SetPolyFillMode(int mode);
    UINT SetTextAlign(UINT align);
    CPoint SetBrushOrg(int x, int y);
    CPoint SetViewportOrg(int x, int y);
    int SaveDC();
    BOOL RestoreDC(int saved); // negative: that many back
    int GetDeviceCaps(int index) const;

    int IntersectClipRect(LPCRECT rect);
    int IntersectClipRect(int l, int t, int r, int b);
    int SelectClipRgn(CRgn* region); // null: no clip of one's own
    int GetClipBox(LPRECT rect) const;

    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT p) { return MoveTo(p.x, p.y); }
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT p) { return LineTo(p.x, p.y); }
    BOOL Polyline(const POINT* points, int count);
    BOOL Polygon(const POINT* points, int count);
    BOOL PolyPolygon(const POINT* points, const int* counts, int contours);
    BOOL Rectangle(int l, int t, int r, int b);
    BOOL Rectangle(LPCRECT r) { return Rectangle(r->left, r->top, r->right, r->bottom); }
    BOOL RoundRect(int l, int t, int r, int b, int width, int height);
    BOOL Ellipse(int l, int t, int r, int b);
    BOOL Ellipse(LPCRECT r) { return Ellipse(r->left, r->top, r->right, r->bottom); }
    int FillRect(LPCRECT rect, CBrush* brush);
    void FillSolidRect(LPCRECT rect, COLORREF color);
    void FillSolidRect(int x, int y, int width, int height, COLORREF color);
    void FrameRect(LPCRECT rect, CBrush* brush);
    void Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight);
    void DrawFocusRect(LPCRECT rect);
    BOOL PatBlt(int x, int y, int width, int height, DWORD operation);
    COLORREF SetPixel(int x, int y, COLORREF color);
    COLORREF GetPixel(int x, int y) const; // of a memory context; CLR_INVALID else

    BOOL TextOut(int x, int y, LPCTSTR text, int length);
    BOOL TextOut(int x, int y, const CString& text) { return TextOut(x, y, text, text.GetLength()); }
    // The height of the drawn text. DT_CALCRECT draws nothing and fits the rectangle to the text.
    int DrawText(LPCTSTR text, int length, LPRECT rect, UINT format);
    int DrawText(const CString& text, LPRECT rect, UINT format) {
        return DrawText(text, text.GetLength(), rect, format);
    }
    CSize GetTextExtent(LPCTSTR text, int length) const;
    CSize GetTextExtent(const CString& text) const { return GetTextExtent(text, text.GetLength()); }
    BOOL GetTextMetrics(TEXTMETRICW* metrics) const;

    BOOL BitBlt(int x, int y, int width, int height, CDC* from, int fromX, int fromY, DWORD operation);
    BOOL StretchBlt(int x, int y, int width, int height, CDC* from, int fromX, int fromY, int fromWidth,
                    int fromHeight, DWORD operation);

private:
    host::DeviceContext* device() const { return host::deviceOf(m_hDC); }
    void shape(host::Primitive primitive);
};

// The same by handle, as far as drawings here use it.
HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);
int FillRect(HDC dc, const RECT* rect, HBRUSH brush);
int SetBkMode(HDC dc, int mode);
COLORREF SetTextColor(HDC dc, COLORREF color);
int SetStretchBltMode(HDC dc, int mode);
BOOL SetBrushOrgEx(HDC dc, int x, int y, POINT* before);
BOOL TextOutW(HDC dc, int x, int y, LPCWSTR text, int length);
BOOL GetTextExtentPoint32W(HDC dc, LPCWSTR text, int length, SIZE* size);
BOOL GetTextMetricsW(HDC dc, TEXTMETRICW* metrics);
int DrawTextW(HDC dc, LPCWSTR text, int length, RECT* rect, UINT format);
BOOL BitBlt(HDC dc, int x, int y, int width, int height, HDC from, int fromX, int fromY, DWORD operation);
BOOL StretchBlt(HDC dc, int x, int y, int width, int height, HDC from, int fromX, int fromY, int fromWidth,
                int fromHeight, DWORD operation);
int GetDeviceCaps(HDC dc, int index);

class CWnd;
// For a window's WM_PAINT: its client area.
class CPaintDC : public CDC {
public:
    explicit CPaintDC(CWnd* window);
    ~CPaintDC() override;
    PAINTSTRUCT m_ps;
};
// Outside WM_PAINT: for measuring; what is drawn is shown until the window paints itself again.
class CClientDC : public CDC {
public:
    explicit CClientDC(CWnd* window);
    ~CClientDC() override;
};

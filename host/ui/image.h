// CImage: pictures in memory, read from files, bytes or the module's resources.
#pragma once

#include <string>

#include "host/ui/dc.h"
#include "host/ui/resources.h"

class CImage {
public:
    CImage() = default;
    CImage(const CImage&) = delete;
    CImage& operator=(const CImage&) = delete;
    CImage(CImage&& other) noexcept;
    CImage& operator=(CImage&& other) noexcept;
    ~CImage() { Destroy(); }

    // 0 when it was read; the image stays empty otherwise. What was held before is given up.
    LRESULT Load(LPCTSTR path);
    LRESULT Load(std::string_view bytes);
    // A PNG resource by its number; false when it isn't there or can't be read.
    bool LoadFromResource(HINSTANCE module, UINT id);
    // White pixels; false unless both sides are from 1 to 32767. Every image has 32 bits a pixel.
    bool Create(int width, int height, int bitsPerPixel, DWORD flags = 0);
    void Destroy();
    void Attach(HBITMAP bitmap);
    HBITMAP Detach();

    bool IsNull() const { return bitmap_ == nullptr; }
    operator HBITMAP() const { return bitmap_; }
    int GetWidth() const;
    int GetHeight() const;
    int GetBPP() const { return IsNull() ? 0 : 32; }
    COLORREF GetPixel(int x, int y) const; // CLR_INVALID outside
    void SetPixel(int x, int y, COLORREF color);
    void SetPixelRGB(int x, int y, BYTE red, BYTE green, BYTE blue) { SetPixel(x, y, RGB(red, green, blue)); }
    // All pixels at once; empty for an empty image.
    const host::ImagePixels& pixels() const;
    host::ImagePixels* changePixels();
    const std::string& error() const { return error_; } // of the last load

    // A context that draws into the image, until it is released.
    HDC GetDC();
    void ReleaseDC();
    BOOL Draw(HDC to, int x, int y) const { return Draw(to, x, y, GetWidth(), GetHeight()); }
    BOOL Draw(HDC to, int x, int y, int width, int height) const;
    BOOL Draw(HDC to, const RECT& rect) const;
    BOOL StretchBlt(HDC to, int x, int y, int width, int height, DWORD operation = SRCCOPY) const;

private:
    HBITMAP bitmap_ = nullptr;
    HDC dc_ = nullptr;
    std::string error_;
};

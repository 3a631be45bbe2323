// The plain types of the window system: numbers of fixed size, handles, and the structures that messages
// carry. Handles are names that are never used twice, so a stale one is found out and their order is the
// order of making. Message numbers and styles stand in messages.h.
#pragma once

#include <cstdint>
#include <cwchar>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using LONG = std::int32_t;
using BOOL = int;
using TCHAR = wchar_t;
using LPCTSTR = const wchar_t*;
using LPCWSTR = const wchar_t*;
using LPWSTR = wchar_t*;
using UINT_PTR = std::uintptr_t;
using INT_PTR = std::intptr_t;
using LONG_PTR = std::intptr_t;
using DWORD_PTR = std::uintptr_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using COLORREF = std::uint32_t; // 0x00BBGGRR
using ATOM = WORD;

inline constexpr BOOL TRUE = 1;
inline constexpr BOOL FALSE = 0;

using HWND = struct HWND__*;
using HDC = struct HDC__*;
using HFONT = struct HFONT__*;
using HBITMAP = struct HBITMAP__*;
using HBRUSH = struct HBRUSH__*;
using HPEN = struct HPEN__*;
using HRGN = struct HRGN__*;
using HICON = struct HICON__*;
using HCURSOR = struct HCURSOR__*;
using HMONITOR = struct HMONITOR__*;
using HINSTANCE = struct HINSTANCE__*;
using HGDIOBJ = void*;

using WNDPROC = LRESULT (*)(HWND, UINT, WPARAM, LPARAM);
using TIMERPROC = void (*)(HWND, UINT, UINT_PTR, DWORD);
using WNDENUMPROC = BOOL (*)(HWND, LPARAM);

constexpr COLORREF RGB(int red, int green, int blue) {
    return COLORREF(red & 255) | COLORREF(green & 255) << 8 | COLORREF(blue & 255) << 16;
}
constexpr BYTE GetRValue(COLORREF color) { return BYTE(color); }
constexpr BYTE GetGValue(COLORREF color) { return BYTE(color >> 8); }
constexpr BYTE GetBValue(COLORREF color) { return BYTE(color >> 16); }
template <class Number> constexpr WORD LOWORD(Number value) { return WORD(value & 0xFFFF); }
template <class Number> constexpr WORD HIWORD(Number value) { return WORD(value >> 16 & 0xFFFF); }
constexpr WPARAM MAKEWPARAM(unsigned low, unsigned high) { return (low & 0xFFFF) | (high & 0xFFFF) << 16; }
constexpr LPARAM MAKELPARAM(int low, int high) {
    return LPARAM(std::uint32_t(low & 0xFFFF) | std::uint32_t(high & 0xFFFF) << 16);
}
constexpr int GET_X_LPARAM(LPARAM value) { return std::int16_t(value & 0xFFFF); }
constexpr int GET_Y_LPARAM(LPARAM value) { return std::int16_t(value >> 16 & 0xFFFF); }
// number * numerator / denominator, rounded half away from zero; -1 when the denominator is 0.
int MulDiv(int number, int numerator, int denominator);

struct POINT {
    LONG x = 0, y = 0;
};
struct SIZE {
    LONG cx = 0, cy = 0;
};
struct RECT {
    LONG left = 0, top = 0, right = 0, bottom = 0;
};
using LPRECT = RECT*;
using LPCRECT = const RECT*;

struct LOGFONTW {
    LONG lfHeight = 0; // negative: of the characters in pixels; positive: of the line
    LONG lfWidth = 0, lfEscapement = 0, lfOrientation = 0;
    LONG lfWeight = 400;
    BYTE lfItalic = 0, lfUnderline = 0, lfStrikeOut = 0, lfCharSet = 1;
    BYTE lfOutPrecision = 0, lfClipPrecision = 0, lfQuality = 0, lfPitchAndFamily = 0;
    wchar_t lfFaceName[32] = {};
};
using LOGFONT = LOGFONTW;

struct TEXTMETRICW {
    LONG tmHeight = 0, tmAscent = 0, tmDescent = 0, tmInternalLeading = 0, tmExternalLeading = 0;
    LONG tmAveCharWidth = 0, tmMaxCharWidth = 0, tmWeight = 0;
};
using TEXTMETRIC = TEXTMETRICW;

struct BITMAP {
    LONG bmType = 0, bmWidth = 0, bmHeight = 0, bmWidthBytes = 0;
    WORD bmPlanes = 1, bmBitsPixel = 32;
    void* bmBits = nullptr;
};
struct LOGPEN {
    UINT lopnStyle = 0;
    POINT lopnWidth;
    COLORREF lopnColor = 0;
};
struct LOGBRUSH {
    UINT lbStyle = 0;
    COLORREF lbColor = 0;
    UINT_PTR lbHatch = 0;
};

struct DRAWITEMSTRUCT {
    UINT CtlType = 0, CtlID = 0, itemID = 0, itemAction = 0, itemState = 0;
    HWND hwndItem = nullptr;
    HDC hDC = nullptr;
    RECT rcItem;
    DWORD_PTR itemData = 0;
};
using LPDRAWITEMSTRUCT = DRAWITEMSTRUCT*;
struct MEASUREITEMSTRUCT {
    UINT CtlType = 0, CtlID = 0, itemID = 0, itemWidth = 0, itemHeight = 0;
    DWORD_PTR itemData = 0;
};
using LPMEASUREITEMSTRUCT = MEASUREITEMSTRUCT*;
struct NMHDR {
    HWND hwndFrom = nullptr;
    UINT_PTR idFrom = 0;
    UINT code = 0;
};
struct PAINTSTRUCT {
    HDC hdc = nullptr;
    BOOL fErase = 0;
    RECT rcPaint;
};
struct MSG {
    HWND hwnd = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};
struct CREATESTRUCTW {
    void* lpCreateParams = nullptr;
    HWND hwndParent = nullptr;
    int cy = 0, cx = 0, y = 0, x = 0;
    LONG style = 0;
    LPCWSTR lpszName = nullptr, lpszClass = nullptr;
    DWORD dwExStyle = 0;
};
using CREATESTRUCT = CREATESTRUCTW;
using LPCREATESTRUCT = CREATESTRUCTW*;
struct WNDCLASSW {
    UINT style = 0;
    WNDPROC lpfnWndProc = nullptr;
    int cbClsExtra = 0, cbWndExtra = 0;
    HINSTANCE hInstance = nullptr;
    HICON hIcon = nullptr;
    HCURSOR hCursor = nullptr;
    HBRUSH hbrBackground = nullptr;
    LPCWSTR lpszMenuName = nullptr, lpszClassName = nullptr;
};
using WNDCLASS = WNDCLASSW;
struct MONITORINFO {
    DWORD cbSize = sizeof(MONITORINFO);
    RECT rcMonitor, rcWork;
    DWORD dwFlags = 0; // 1: the primary one
};
struct MINMAXINFO {
    POINT ptReserved, ptMaxSize, ptMaxPosition, ptMinTrackSize, ptMaxTrackSize;
};
struct WINDOWPOS {
    HWND hwnd = nullptr, hwndInsertAfter = nullptr;
    int x = 0, y = 0, cx = 0, cy = 0;
    UINT flags = 0;
};

// CPoint, CSize and CRect: whole-numbered pixels, y downwards; a rectangle's right and bottom edges lie
// outside it.
#pragma once

#include <algorithm>

#include "host/ui/types.h"

class CSize : public SIZE {
public:
    CSize() = default;
    CSize(int width, int height) : SIZE{width, height} {}
    CSize(SIZE size) : SIZE(size) {}
    bool operator==(const CSize& o) const { return cx == o.cx && cy == o.cy; }
};

class CPoint : public POINT {
public:
    CPoint() = default;
    CPoint(int left, int top) : POINT{left, top} {}
    CPoint(POINT point) : POINT(point) {}
    explicit CPoint(LPARAM packed) : POINT{GET_X_LPARAM(packed), GET_Y_LPARAM(packed)} {}
    void Offset(int dx, int dy) { x += dx, y += dy; }
    void SetPoint(int left, int top) { x = left, y = top; }
    bool operator==(const CPoint& o) const { return x == o.x && y == o.y; }
    CPoint operator+(const POINT& o) const { return {x + o.x, y + o.y}; }
    CPoint operator-(const POINT& o) const { return {x - o.x, y - o.y}; }
    CPoint operator+(const SIZE& o) const { return {x + o.cx, y + o.cy}; }
};

class CRect : public RECT {
public:
    CRect() = default;
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {}
    explicit CRect(LPCRECT rect) : RECT(*rect) {}
    CRect(POINT corner, SIZE size) : RECT{corner.x, corner.y, corner.x + size.cx, corner.y + size.cy} {}
    CRect(POINT topLeft, POINT bottomRight) : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CSize Size() const { return {Width(), Height()}; }
    CPoint TopLeft() const { return {left, top}; }
    CPoint BottomRight() const { return {right, bottom}; }
    CPoint CenterPoint() const { return {(left + right) / 2, (top + bottom) / 2}; }
    bool IsRectEmpty() const { return right <= left || bottom <= top; }
    bool IsRectNull() const { return *this == CRect(); }
    bool PtInRect(POINT p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }
    void SetRect(int l, int t, int r, int b) { left = l, top = t, right = r, bottom = b; }
    void SetRectEmpty() { *this = CRect(); }
    void InflateRect(int dx, int dy) { left -= dx, right += dx, top -= dy, bottom += dy; }
    void InflateRect(int l, int t, int r, int b) { left -= l, top -= t, right += r, bottom += b; }
    void DeflateRect(int dx, int dy) { InflateRect(-dx, -dy); }
    void DeflateRect(int l, int t, int r, int b) { InflateRect(-l, -t, -r, -b); }
    void OffsetRect(int dx, int dy) { left += dx, right += dx, top += dy, bottom += dy; }
    void OffsetRect(POINT by) { OffsetRect(by.x, by.y); }
    void NormalizeRect() {
        if (left > right) std::swap(left, right);
        if (top > bottom) std::swap(top, bottom);
    }
    // False, with an empty rectangle, when the two have nothing in common.
    bool IntersectRect(const RECT& a, const RECT& b) {
        SetRect(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                std::min(a.bottom, b.bottom));
        if (IsRectEmpty()) SetRectEmpty();
        return !IsRectEmpty();
    }
    bool IntersectRect(LPCRECT a, LPCRECT b) { return IntersectRect(*a, *b); }
    // The smallest rectangle around both; an empty one counts for nothing.
    bool UnionRect(const CRect& a, const CRect& b) {
        if (a.IsRectEmpty())
            *this = b;
        else if (b.IsRectEmpty())
            *this = a;
        else
            SetRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                    std::max(a.bottom, b.bottom));
        return !IsRectEmpty();
    }
    bool UnionRect(LPCRECT a, LPCRECT b) { return UnionRect(CRect(*a), CRect(*b)); }
    bool operator==(const CRect& o) const {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }
};

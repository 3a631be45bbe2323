// CImage over bitmaps.
#include "host/ui/image.h"

#include "host/os/files.h"
#include "host/os/text.h"

using namespace host;

namespace {
constexpr LRESULT kDone = 0, kFailed = 0x80004005;
constexpr int kLongestSide = 32767;
} // namespace

CImage::CImage(CImage&& other) noexcept
    : bitmap_(std::exchange(other.bitmap_, nullptr)), dc_(std::exchange(other.dc_, nullptr)) {}
CImage& CImage::operator=(CImage&& other) noexcept {
    std::swap(bitmap_, other.bitmap_);
    std::swap(dc_, other.dc_);
    return *this;
}

LRESULT CImage::Load(LPCTSTR path) {
    std::string bytes;
    Destroy();
    if (const FileError error = readWhole(utf8(path ? path : L""), bytes)) {
        error_ = error.message;
        return kFailed;
    }
    return Load(bytes);
}
LRESULT CImage::Load(std::string_view bytes) {
    Destroy();
    error_.clear();
    if (!pictureServices()) {
        error_ = "nobody here reads image files";
        return kFailed;
    }
    ImagePixels pixels = pictureServices()->decode(bytes, error_);
    if (pixels.empty()) return kFailed;
    bitmap_ = addBitmap(std::make_shared<Bitmap>(std::move(pixels)));
    return kDone;
}
bool CImage::LoadFromResource(HINSTANCE module, UINT id) {
    const ResourceBytes found = resourceBytes(module, id, L"PNG");
    Destroy();
    error_ = found.error;
    return found && Load(found.bytes) == kDone;
}
bool CImage::Create(int width, int height, int, DWORD) {
    Destroy();
    if (width < 1 || height < 1 || width > kLongestSide || height > kLongestSide) return false;
    ImagePixels white{width, height, {}};
    white.rgba.assign(std::size_t(width) * std::size_t(height) * 4, 255);
    bitmap_ = addBitmap(std::make_shared<Bitmap>(std::move(white)));
    return true;
}
void CImage::Destroy() {
    ReleaseDC();
    if (bitmap_) DeleteObject(bitmap_);
    bitmap_ = nullptr;
}
void CImage::Attach(HBITMAP bitmap) {
    Destroy();
    bitmap_ = bitmapOf(bitmap) ? bitmap : nullptr;
}
HBITMAP CImage::Detach() {
    ReleaseDC();
    return std::exchange(bitmap_, nullptr);
}

int CImage::GetWidth() const {
    const auto bitmap = bitmapOf(bitmap_);
    return bitmap ? bitmap->width() : 0;
}
int CImage::GetHeight() const {
    const auto bitmap = bitmapOf(bitmap_);
    return bitmap ? bitmap->height() : 0;
}
const ImagePixels& CImage::pixels() const {
    static const ImagePixels none;
    const auto bitmap = bitmapOf(bitmap_);
    return bitmap ? bitmap->pixels() : none;
}
ImagePixels* CImage::changePixels() {
    const auto bitmap = bitmapOf(bitmap_);
    return bitmap ? &bitmap->changePixels() : nullptr;
}
COLORREF CImage::GetPixel(int x, int y) const {
    const ImagePixels& all = pixels();
    if (x < 0 || y < 0 || x >= all.width || y >= all.height) return CLR_INVALID;
    const std::uint8_t* p = &all.rgba[(std::size_t(y) * std::size_t(all.width) + std::size_t(x)) * 4];
    return RGB(p[0], p[1], p[2]);
}
void CImage::SetPixel(int x, int y, COLORREF color) {
    ImagePixels* all = changePixels();
    if (!all || x < 0 || y < 0 || x >= all->width || y >= all->height) return;
    std::uint8_t* p = &all->rgba[(std::size_t(y) * std::size_t(all->width) + std::size_t(x)) * 4];
    p[0] = GetRValue(color), p[1] = GetGValue(color), p[2] = GetBValue(color), p[3] = 255;
}

HDC CImage::GetDC() {
    if (!bitmap_) return nullptr;
    if (!dc_) {
        dc_ = CreateCompatibleDC(nullptr);
        SelectObject(dc_, bitmap_);
    }
    return dc_;
}
void CImage::ReleaseDC() {
    if (dc_) DeleteDC(dc_);
    dc_ = nullptr;
}
BOOL CImage::Draw(HDC to, int x, int y, int width, int height) const {
    return StretchBlt(to, x, y, width, height, SRCCOPY);
}
BOOL CImage::Draw(HDC to, const RECT& rect) const {
    const CRect place(rect);
    return Draw(to, place.left, place.top, place.Width(), place.Height());
}
BOOL CImage::StretchBlt(HDC to, int x, int y, int width, int height, DWORD operation) const {
    if (!bitmap_) return FALSE;
    CDC from;
    from.CreateCompatibleDC(nullptr);
    from.SelectObject(HGDIOBJ(bitmap_));
    return ::StretchBlt(to, x, y, width, height, from.GetSafeHdc(), 0, 0, GetWidth(), GetHeight(), operation);
}

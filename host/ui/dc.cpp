// Device contexts: their table, state and selections. What they draw stands in dc_draw.cpp.
#include "host/ui/dc.h"

#include <cmath>
#include <map>

#include "host/ui/monitors.h"
#include "host/ui/wnd.h"

namespace host {
namespace {

struct Devices {
    std::map<std::uintptr_t, std::unique_ptr<DeviceContext>> all;
    std::map<std::uintptr_t, std::unique_ptr<CDC>> wrappers; // of FromHandle
    std::uintptr_t next = 0x2000;
};
Devices& devices() {
    static Devices table;
    return table;
}

// Nothing that was drawn before it is seen any more: keeps recordings that are drawn again and again short.
bool coversAll(const Primitive& primitive, const CRect& whole) {
    if (primitive.kind != Primitive::Kind::rectangle || !primitive.fill || primitive.rounding > 0)
        return false;
    const AcGePoint2d &a = primitive.points[0], &b = primitive.points[1];
    return primitive.clip == whole && a.x <= 0 && a.y <= 0 && b.x >= whole.right && b.y >= whole.bottom;
}

} // namespace

DeviceContext::DeviceContext(std::shared_ptr<Recording> onto) : recording_(std::move(onto)) {
    state.font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    state.pen = static_cast<HPEN>(GetStockObject(BLACK_PEN));
    state.brush = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    if (recording_) limits = CRect(0, 0, recording_->width, recording_->height);
    state.clip = limits;
}
Recording* DeviceContext::target() { return bitmap ? &bitmap->changeDrawn() : recording_.get(); }
void DeviceContext::add(Primitive primitive) {
    primitive.clip = state.clip;
    Recording* onto = state.clip.IsRectEmpty() ? nullptr : target();
    if (!onto) return;
    if (coversAll(primitive, CRect(0, 0, onto->width, onto->height))) onto->primitives.clear();
    onto->primitives.push_back(std::move(primitive));
}

DeviceContext* deviceOf(HDC dc) {
    const auto found = devices().all.find(reinterpret_cast<std::uintptr_t>(dc));
    return found == devices().all.end() ? nullptr : found->second.get();
}
HDC addDevice(std::unique_ptr<DeviceContext> device) {
    const std::uintptr_t number = devices().next;
    devices().next += 4;
    devices().all.emplace(number, std::move(device));
    return reinterpret_cast<HDC>(number);
}
std::size_t deviceCount() { return devices().all.size(); }

} // namespace host

using namespace host;

HDC CreateCompatibleDC(HDC like) {
    auto device = std::make_unique<DeviceContext>(nullptr);
    device->memory = true;
    if (const DeviceContext* other = deviceOf(like)) device->scale = other->scale;
    return addDevice(std::move(device));
}
BOOL DeleteDC(HDC dc) {
    const auto number = reinterpret_cast<std::uintptr_t>(dc);
    if (const auto wrapper = devices().wrappers.find(number); wrapper != devices().wrappers.end()) {
        wrapper->second->m_hDC = nullptr; // whoever still holds it draws nowhere
        devices().wrappers.erase(wrapper);
    }
    return devices().all.erase(number) > 0;
}

CDC::~CDC() { DeleteDC(); }
CDC* CDC::FromHandle(HDC dc) {
    if (!deviceOf(dc)) return nullptr;
    auto& wrapper = devices().wrappers[reinterpret_cast<std::uintptr_t>(dc)];
    if (!wrapper) {
        wrapper = std::make_unique<CDC>();
        wrapper->m_hDC = dc;
    }
    return wrapper.get();
}
BOOL CDC::Attach(HDC dc) { return m_hDC = dc, dc != nullptr; }
HDC CDC::Detach() { return std::exchange(m_hDC, nullptr); }
BOOL CDC::CreateCompatibleDC(CDC* like) {
    DeleteDC();
    return Attach(::CreateCompatibleDC(like ? like->m_hDC : nullptr));
}
BOOL CDC::DeleteDC() {
    const HDC dc = Detach();
    return dc && ::DeleteDC(dc);
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ object) {
    DeviceContext* device = deviceOf(dc);
    if (!device) return nullptr;
    if (fontOf(object)) return std::exchange(device->state.font, static_cast<HFONT>(object));
    if (penOf(object)) return std::exchange(device->state.pen, static_cast<HPEN>(object));
    if (brushOf(object)) return std::exchange(device->state.brush, static_cast<HBRUSH>(object));
    // A memory context begins with no bitmap: selecting null back is how it is taken out again.
    const auto bitmap = bitmapOf(object);
    if (!device->memory || (object && !bitmap)) return nullptr;
    device->bitmap = bitmap;
    device->limits = bitmap ? CRect(0, 0, bitmap->width(), bitmap->height()) : CRect();
    device->state.clip = device->limits;
    return std::exchange(device->bitmapHandle, static_cast<HBITMAP>(object));
}
HGDIOBJ CDC::SelectObject(HGDIOBJ object) { return ::SelectObject(m_hDC, object); }

namespace {
// Wrappers of what was selected before, kept for the process: there are few distinct objects at a time.
template <class Wrapper> Wrapper* wrapped(HGDIOBJ object) {
    struct Lent : Wrapper {
        ~Lent() override { this->Detach(); }
    };
    static std::map<HGDIOBJ, std::unique_ptr<Lent>> lent;
    if (!object) return nullptr;
    for (auto it = lent.begin(); it != lent.end();)
        it = GetObjectW(it->first, 0, nullptr) == 0 && it->first != object ? lent.erase(it) : std::next(it);
    auto& entry = lent[object];
    if (!entry) entry = std::make_unique<Lent>(), entry->m_hObject = object;
    return entry.get();
}
template <class Wrapper> Wrapper* select(HDC dc, Wrapper* wrapper) {
    return wrapped<Wrapper>(SelectObject(dc, wrapper ? wrapper->GetSafeHandle() : nullptr));
}
} // namespace
CPen* CDC::SelectObject(CPen* pen) { return select(m_hDC, pen); }
CBrush* CDC::SelectObject(CBrush* brush) { return select(m_hDC, brush); }
CFont* CDC::SelectObject(CFont* font) { return select(m_hDC, font); }
CBitmap* CDC::SelectObject(CBitmap* bitmap) { return select(m_hDC, bitmap); }
CGdiObject* CDC::SelectStockObject(int which) {
    const HGDIOBJ before = SelectObject(GetStockObject(which));
    if (penOf(before)) return wrapped<CPen>(before);
    if (brushOf(before)) return wrapped<CBrush>(before);
    return wrapped<CFont>(before);
}

namespace {
template <class Field, class Value> Value change(HDC dc, Field DeviceState::*field, Value value) {
    DeviceContext* device = deviceOf(dc);
    return device ? Value(std::exchange(device->state.*field, Field(value))) : Value();
}
} // namespace
COLORREF CDC::SetTextColor(COLORREF color) { return change(m_hDC, &DeviceState::textColor, color); }
COLORREF CDC::SetBkColor(COLORREF color) { return change(m_hDC, &DeviceState::backColor, color); }
COLORREF CDC::GetTextColor() const { return device() ? device()->state.textColor : CLR_INVALID; }
COLORREF CDC::GetBkColor() const { return device() ? device()->state.backColor : CLR_INVALID; }
int CDC::SetBkMode(int mode) { return change(m_hDC, &DeviceState::backMode, mode); }
int CDC::SetStretchBltMode(int mode) { return change(m_hDC, &DeviceState::stretchMode, mode); }
int CDC::SetPolyFillMode(int mode) { return change(m_hDC, &DeviceState::fillMode, mode); }
UINT CDC::SetTextAlign(UINT align) { return change(m_hDC, &DeviceState::textAlign, align); }
CPoint CDC::SetBrushOrg(int, int) { return {}; }
CPoint CDC::SetViewportOrg(int x, int y) { return change(m_hDC, &DeviceState::origin, CPoint(x, y)); }
int CDC::SaveDC() {
    if (!device()) return 0;
    device()->saved.push_back(device()->state);
    return int(device()->saved.size());
}
BOOL CDC::RestoreDC(int saved) {
    if (!device()) return FALSE;
    auto& stack = device()->saved;
    const int index = saved < 0 ? int(stack.size()) + saved : saved - 1;
    if (index < 0 || index >= int(stack.size())) return FALSE;
    device()->state = stack[std::size_t(index)];
    stack.resize(std::size_t(index));
    return TRUE;
}
int CDC::GetDeviceCaps(int index) const {
    const double scale = device() ? device()->scale : 1;
    switch (index) {
    case HORZRES: return GetSystemMetrics(SM_CXSCREEN);
    case VERTRES: return GetSystemMetrics(SM_CYSCREEN);
    case BITSPIXEL: return 32;
    case LOGPIXELSX:
    case LOGPIXELSY: return int(std::lround(96 * scale));
    default: return 0;
    }
}

namespace {
constexpr int kErrorRegion = 0, kNullRegion = 1, kSimpleRegion = 2;
int regionKind(const CRect& clip) { return clip.IsRectEmpty() ? kNullRegion : kSimpleRegion; }
} // namespace
int CDC::IntersectClipRect(LPCRECT rect) {
    if (!device()) return kErrorRegion;
    DeviceState& state = device()->state;
    CRect wanted(*rect);
    wanted.OffsetRect(state.origin);
    state.clip.IntersectRect(CRect(state.clip), wanted);
    return regionKind(state.clip);
}
int CDC::IntersectClipRect(int l, int t, int r, int b) { return IntersectClipRect(CRect(l, t, r, b)); }
int CDC::SelectClipRgn(CRgn* region) {
    if (!device()) return kErrorRegion;
    CRect& clip = device()->state.clip;
    clip = device()->limits;
    if (region)
        if (const CRect* wanted = regionOf(region->GetSafeHandle())) clip.IntersectRect(CRect(clip), *wanted);
    return regionKind(clip);
}
int CDC::GetClipBox(LPRECT rect) const {
    if (!device()) return kErrorRegion;
    CRect clip = device()->state.clip;
    clip.OffsetRect(-device()->state.origin.x, -device()->state.origin.y);
    *rect = clip;
    return regionKind(clip);
}

namespace {
std::unique_ptr<DeviceContext> deviceFor(CWnd* window, bool painting) {
    Window* model = window ? windowOf(window->m_hWnd) : nullptr;
    const CRect client = model ? model->client() : CRect();
    const auto fresh = [&] {
        return std::make_shared<Recording>(Recording{client.Width(), client.Height(), {}});
    };
    std::shared_ptr<Recording> onto = model && painting ? paintTarget(*model) : nullptr;
    if (model && !painting) {
        if (!model->overlay) model->overlay = fresh();
        onto = model->overlay;
    }
    if (!onto) onto = fresh();
    auto device = std::make_unique<DeviceContext>(onto);
    if (model) device->scale = model->dotsPerInch() / 96.0;
    return device;
}
} // namespace
CPaintDC::CPaintDC(CWnd* window) {
    auto made = deviceFor(window, true);
    m_ps.rcPaint = made->limits;
    Attach(addDevice(std::move(made)));
    m_ps.hdc = m_hDC;
}
CPaintDC::~CPaintDC() = default;
CClientDC::CClientDC(CWnd* window) { Attach(addDevice(deviceFor(window, false))); }
CClientDC::~CClientDC() = default;
HDC GetDC(HWND window) { return addDevice(deviceFor(CWnd::FromHandle(window), false)); }
int ReleaseDC(HWND, HDC dc) { return DeleteDC(dc); }

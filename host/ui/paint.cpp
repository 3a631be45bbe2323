// Painting: one window's client area, and a whole dialog with frame and children.
#include "host/ui/items.h"
#include "host/ui/look.h"
#include "host/ui/windows.h"

namespace host {
namespace {

struct Pass {
    const Window* window;
    std::shared_ptr<Recording> recording;
};
std::vector<Pass>& passes() {
    static std::vector<Pass> stack;
    return stack;
}

void place(Recording& onto, std::shared_ptr<const Recording> part, CPoint at, const CRect& clip) {
    if (!part || part->primitives.empty() || clip.IsRectEmpty()) return;
    Primitive inner;
    inner.kind = Primitive::Kind::recording;
    inner.clip = clip;
    inner.source = CRect(0, 0, part->width, part->height);
    inner.points = {AcGePoint2d(at.x, at.y), AcGePoint2d(at.x + part->width, at.y + part->height)};
    inner.recording = std::move(part);
    onto.primitives.push_back(std::move(inner));
}

// The window's client area from `at` on, its overlay and its visible children.
void gather(Recording& onto, HWND handle, CPoint at, const CRect& clip) {
    const auto painted = paintWindow(handle);
    const Window* window = windowOf(handle);
    if (!window) return;
    CRect shown;
    CRect area = window->client();
    area.OffsetRect(at);
    if (!shown.IntersectRect(area, clip)) return;
    place(onto, painted, at, shown);
    std::vector<HWND> children;
    for (const Window* child : window->children)
        if (child->visible()) children.push_back(child->handle);
    // Overlays are drawn by the parent after the fact, below children that lie on it.
    if (window->overlay) place(onto, std::make_shared<Recording>(*window->overlay), at, shown);
    for (const HWND child : children)
        if (const Window* model = windowOf(child)) gather(onto, child, at + model->rect.TopLeft(), shown);
}

} // namespace

std::shared_ptr<Recording> paintTarget(const Window& window) {
    for (std::size_t i = passes().size(); i-- > 0;)
        if (passes()[i].window == &window) return passes()[i].recording;
    return nullptr;
}

std::shared_ptr<Recording> paintWindow(HWND handle) {
    Window* window = windowOf(handle);
    if (!window) return nullptr;
    const CRect client = window->client();
    const auto recording = std::make_shared<Recording>(Recording{client.Width(), client.Height(), {}});
    passes().push_back({window, recording});
    struct Leave {
        ~Leave() { passes().pop_back(); }
    } leave;
    const HDC dc = addDevice(std::make_unique<DeviceContext>(recording));
    send(*window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc));
    DeleteDC(dc);
    if (!windowOf(handle)) return recording;
    send(*window, WM_PAINT);
    if (windowOf(handle)) window->dirty = false;
    return recording;
}

std::shared_ptr<Recording> paintItem(HWND list, int index, int width, int height, bool selected) {
    Window* window = windowOf(list);
    if (!window || index < 0 || width <= 0 || height <= 0) return nullptr;
    const bool combo = window->hasClass(L"ComboBox");
    ListItems items;
    items.all.resize(std::size_t(index) + 1);
    items.all.back().data = DWORD_PTR(send(*window, combo ? CB_GETITEMDATA : LB_GETITEMDATA, WPARAM(index)));
    const auto recording = std::make_shared<Recording>(Recording{width, height, {}});
    const HDC dc = addDevice(std::make_unique<DeviceContext>(recording));
    if (window->font) SelectObject(dc, window->font);
    drawItemByParent(*window, dc, combo ? ODT_COMBOBOX : ODT_LISTBOX, index, items, {0, 0, width, height},
                     selected ? ODS_SELECTED : 0);
    DeleteDC(dc);
    return recording;
}

std::shared_ptr<Recording> paintDialog(HWND dialog) {
    const Window* window = windowOf(dialog);
    if (!window) return nullptr;
    auto whole = std::make_shared<Recording>(Recording{window->rect.Width(), window->rect.Height(), {}});
    const FrameInsets insets = frameInsets(window->style);
    look::frame(*whole, *window);
    gather(*whole, dialog, {insets.left, insets.top}, CRect(0, 0, whole->width, whole->height));
    return whole;
}

} // namespace host

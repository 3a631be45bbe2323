// Buttons: to push, to check, radio buttons with their groups, and group boxes.
#include <algorithm>

#include "host/ui/actions.h"
#include "host/ui/look.h"
#include "host/ui/windows.h"

namespace host {
namespace {

class ButtonControl final : public Control {
public:
    LRESULT handle(Window& window, UINT message, WPARAM wParam, LPARAM lParam) override {
        const UINT type = window.type();
        switch (message) {
        case BM_GETCHECK: return state_;
        case BM_SETCHECK: return setCheck(window, int(wParam)), 0;
        case BM_GETSTATE: return state_ | (pushed_ ? BST_PUSHED : 0);
        case BM_SETSTYLE:
            window.style = (window.style & ~0xFFFFu) | DWORD(wParam & 0xFFFF);
            return invalidate(window), 0;
        case BM_SETIMAGE:
            invalidate(window);
            return reinterpret_cast<LRESULT>(std::exchange(bitmap_, reinterpret_cast<HBITMAP>(lParam)));
        case BM_GETIMAGE: return reinterpret_cast<LRESULT>(bitmap_);
        case BM_CLICK: press(window.handle); return 0;
        case WM_NCHITTEST: return type == BS_GROUPBOX ? HTTRANSPARENT : HTCLIENT;
        case WM_LBUTTONDOWN: pushed_ = window.enabled() && type != BS_GROUPBOX; return invalidate(window), 0;
        case WM_LBUTTONUP: {
            const bool hit = std::exchange(pushed_, false) && window.client().PtInRect(CPoint(lParam));
            invalidate(window);
            if (hit && window.enabled()) clicked(window);
            return 0;
        }
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            invalidate(window);
            if (window.style & BS_NOTIFY)
                notifyParent(window, message == WM_SETFOCUS ? BN_SETFOCUS : BN_KILLFOCUS);
            return 0;
        case WM_PAINT: paint(window); return 0;
        default: return Control::handle(window, message, wParam, lParam);
        }
    }

private:
    static bool checks(UINT type) {
        return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_3STATE || type == BS_AUTO3STATE ||
               type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON;
    }
    void setCheck(Window& window, int state) {
        const UINT type = window.type();
        if (!checks(type)) return;
        const int most = type == BS_3STATE || type == BS_AUTO3STATE ? BST_INDETERMINATE : BST_CHECKED;
        state_ = std::clamp(state, 0, most);
        invalidate(window);
        tellWatcher(window, WindowWatcher::Change::state);
    }
    void clicked(Window& window) {
        switch (window.type()) {
        case BS_AUTOCHECKBOX: setCheck(window, !state_); break;
        case BS_AUTO3STATE: setCheck(window, (state_ + 1) % 3); break;
        case BS_AUTORADIOBUTTON: checkAlone(window); break;
        default: break;
        }
        notifyParent(window, BN_CLICKED);
    }
    // A group of radio buttons runs from a control with WS_GROUP to the next.
    void checkAlone(Window& window) {
        setCheck(window, BST_CHECKED);
        if (!window.parent) return;
        const auto& family = window.parent->children;
        const auto self = std::find(family.begin(), family.end(), &window);
        auto from = self;
        while (from != family.begin() && !((*from)->style & WS_GROUP)) --from;
        auto to = self + 1;
        while (to != family.end() && !((*to)->style & WS_GROUP)) ++to;
        for (; from != to; ++from)
            if (from != self && (*from)->hasClass(L"Button") && (*from)->type() == BS_AUTORADIOBUTTON)
                send(**from, BM_SETCHECK, BST_UNCHECKED);
    }
    void paint(Window& window) {
        const UINT type = window.type();
        look::Canvas canvas(window, checks(type) || type == BS_GROUPBOX ? WM_CTLCOLORSTATIC : WM_CTLCOLORBTN);
        if (type == BS_OWNERDRAW)
            drawByParent(window, canvas.dc);
        else if (type == BS_GROUPBOX)
            look::groupBox(canvas);
        else if (checks(type) && !(window.style & BS_PUSHLIKE))
            look::check(canvas, state_, type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON);
        else {
            const Window& dialog = window.root();
            look::button(canvas, pushed_ || state_,
                         type == BS_DEFPUSHBUTTON || dialog.defaultId == window.id);
            if (bitmap_) look::picture(canvas, bitmap_);
        }
    }
    void drawByParent(Window& window, CDC& dc) {
        DRAWITEMSTRUCT item;
        item.CtlType = ODT_BUTTON, item.CtlID = window.id, item.itemAction = ODA_DRAWENTIRE;
        item.itemState = (pushed_ ? ODS_SELECTED : 0) | (window.enabled() ? 0 : ODS_DISABLED) |
                         (GetFocus() == window.handle ? ODS_FOCUS : 0);
        item.hwndItem = window.handle, item.hDC = dc.GetSafeHdc(), item.rcItem = window.client();
        if (window.parent) send(*window.parent, WM_DRAWITEM, window.id, reinterpret_cast<LPARAM>(&item));
    }
    int state_ = BST_UNCHECKED;
    bool pushed_ = false;
    HBITMAP bitmap_ = nullptr;
};

} // namespace

std::unique_ptr<Control> makeButton(const Window&) { return std::make_unique<ButtonControl>(); }

void press(HWND button) {
    const Window* window = windowOf(button);
    if (window) click(button, window->client().CenterPoint());
}

} // namespace host

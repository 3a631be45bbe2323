// Doing what dialog actions say, and the runner that asks for them.
#include "host/ed/dialog_script.h"

#include <cmath>
#include <filesystem>

#include "host/ed/dialog_action.h"
#include "host/ed/prompting.h"
#include "host/os/files.h"
#include "host/os/text.h"
#include "host/ui/actions.h"
#include "host/ui/queue.h"
#include "host/ui/runner.h"

namespace host {
namespace {

constexpr double kPictureScale = 2;
constexpr int kMostListed = 40; // items of a list in a listing

int ask(HWND control, UINT message, WPARAM wParam = 0) {
    return int(SendMessageW(control, message, wParam, 0));
}

struct ItemMessages {
    UINT count, length, text, find;
};
constexpr ItemMessages kComboItems{CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT, CB_FINDSTRINGEXACT};
constexpr ItemMessages kListItems{LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT, LB_FINDSTRINGEXACT};

std::wstring itemText(HWND control, const ItemMessages& messages, int index) {
    const int length = ask(control, messages.length, WPARAM(index));
    std::wstring text(size_t(std::max(length, 0)) + 1, L'\0');
    SendMessageW(control, messages.text, WPARAM(index), reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
}
// By text, else by index; -1 when it is neither.
int itemIndex(HWND control, const ItemMessages& messages, const std::wstring& value) {
    const int byText =
        int(SendMessageW(control, messages.find, WPARAM(-1), reinterpret_cast<LPARAM>(value.c_str())));
    if (byText >= 0) return byText;
    const auto index = parseInteger(std::wstring_view(value));
    return index && *index >= 0 && *index < ask(control, messages.count) ? int(*index) : -1;
}
std::wstring itemRange(HWND control, const ItemMessages& messages) {
    const int count = ask(control, messages.count);
    return count == 0 ? L"it has no items" : L"it takes an item's text or 0 to " + std::to_wstring(count - 1);
}

std::wstring nameOf(const Window& window) { return L"Control " + std::to_wstring(window.id); }

enum class Switch { on, off, mixed, unknown };
Switch switchOf(const std::wstring& value) {
    const std::wstring v = lower(value);
    if (v == L"on" || v == L"1" || v == L"yes") return Switch::on;
    if (v == L"off" || v == L"0" || v == L"no") return Switch::off;
    return v == L"mixed" || v == L"2" ? Switch::mixed : Switch::unknown;
}

bool isRadio(const Window& window) {
    return window.type() == BS_RADIOBUTTON || window.type() == BS_AUTORADIOBUTTON;
}
bool isCheck(const Window& window) {
    const UINT type = window.type();
    return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_3STATE || type == BS_AUTO3STATE;
}

std::wstring setButton(const Window& window, const std::wstring& value) {
    if (!isRadio(window) && !isCheck(window)) return nameOf(window) + L" is pressed with !, not set.";
    const Switch wanted = switchOf(value);
    const bool three = window.type() == BS_3STATE || window.type() == BS_AUTO3STATE;
    if (wanted == Switch::unknown || (wanted == Switch::mixed && !three))
        return nameOf(window) + (three ? L" takes on, off or mixed." : L" takes on or off.");
    if (isRadio(window) && wanted == Switch::off)
        return nameOf(window) + L" goes off when another of its group goes on.";
    const int state = wanted == Switch::on    ? BST_CHECKED
                      : wanted == Switch::off ? BST_UNCHECKED
                                              : BST_INDETERMINATE;
    const HWND handle = window.handle;
    for (int turn = 0; turn < (three ? 2 : 1) && IsWindow(handle) && ask(handle, BM_GETCHECK) != state;
         ++turn)
        press(handle);
    return {};
}
std::wstring setEdit(const Window& window, const std::wstring& value) {
    if (window.style & ES_READONLY) return nameOf(window) + L" can't be changed.";
    if ((window.style & ES_NUMBER) && value.find_first_not_of(L"0123456789") != value.npos)
        return nameOf(window) + L" takes digits only.";
    const int limit = ask(window.handle, EM_GETLIMITTEXT);
    if (value.size() > size_t(limit))
        return nameOf(window) + L" takes at most " + std::to_wstring(limit) + L" characters.";
    typeText(window.handle, value);
    return {};
}
std::wstring setCombo(const Window& window, const std::wstring& value) {
    const int index = itemIndex(window.handle, kComboItems, value);
    const bool editable = (window.style & 3) != CBS_DROPDOWNLIST;
    if (index < 0 && !editable)
        return nameOf(window) + L" has no \"" + value + L"\": " + itemRange(window.handle, kComboItems) +
               L".";
    if (index < 0)
        typeInCombo(window.handle, value);
    else
        chooseItem(window.handle, index);
    return {};
}
std::wstring setSlider(const Window& window, const std::wstring& value) {
    const int low = ask(window.handle, TBM_GETRANGEMIN), high = ask(window.handle, TBM_GETRANGEMAX);
    const auto position = parseInteger(std::wstring_view(value));
    if (!position || *position < low || *position > high)
        return nameOf(window) + L" takes whole numbers from " + std::to_wstring(low) + L" to " +
               std::to_wstring(high) + L".";
    moveSlider(window.handle, int(*position));
    return {};
}
std::wstring set(const Window& window, const std::wstring& value) {
    if (window.hasClass(L"Button")) return setButton(window, value);
    if (window.hasClass(L"Edit")) return setEdit(window, value);
    if (window.hasClass(L"ComboBox")) return setCombo(window, value);
    if (window.hasClass(L"msctls_trackbar32")) return setSlider(window, value);
    return nameOf(window) + L" has no value to be set.";
}

std::wstring select(const Window& window, const DialogAction& action) {
    if (window.hasClass(L"ComboBox")) return setCombo(window, action.value);
    if (!window.hasClass(L"ListBox")) return nameOf(window) + L" is no list.";
    std::vector<int> chosen;
    std::wstring rest = action.value;
    const bool several = window.style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL);
    if (!several || itemIndex(window.handle, kListItems, rest) >= 0) {
        chosen.push_back(itemIndex(window.handle, kListItems, rest));
    } else {
        for (size_t from = 0; from <= rest.size();) {
            const size_t end = std::min(rest.find(L',', from), rest.size());
            chosen.push_back(itemIndex(window.handle, kListItems, rest.substr(from, end - from)));
            from = end + 1;
        }
    }
    for (const int index : chosen)
        if (index < 0)
            return nameOf(window) + L" has no \"" + action.value + L"\": " +
                   itemRange(window.handle, kListItems) + L".";
    if (action.twice)
        doubleClickItem(window.handle, chosen.front());
    else
        chooseItems(window.handle, chosen);
    return {};
}

std::wstring dragIn(const Window& window, const std::vector<AcGePoint2d>& points) {
    std::vector<CPoint> pixels;
    for (const AcGePoint2d& p : points)
        pixels.push_back(window.mapper ? window.mapper(p.x, p.y)
                                       : CPoint(int(std::lround(p.x)), int(std::lround(p.y))));
    drag(window.handle, pixels);
    return {};
}

std::wstring close(HWND dialog, int id) {
    const Window* button = windowOf(GetDlgItem(dialog, id));
    if (button && !button->enabled()) return id == IDOK ? L"OK is disabled." : L"CANCEL is disabled.";
    if (button && button->visible() && button->hasClass(L"Button"))
        press(button->handle);
    else
        SendMessageW(dialog, WM_COMMAND, WPARAM(id), 0);
    return {};
}

std::wstring savePicture(HWND dialog, const std::wstring& path) {
    PictureServices* services = pictureServices();
    if (!services) return L"Nobody here draws pictures.";
    if (path.empty()) return L"A picture needs a file, such as: picture dialog.png";
    const auto painted = paintDialog(dialog);
    const std::string error = painted ? services->save(*painted, kPictureScale, utf8(path)) : "";
    return wide(error);
}

// Refuses what a hand could not reach.
std::wstring unreachable(const Window& window) {
    if (!IsWindowVisible(window.handle)) return nameOf(window) + L" is hidden.";
    for (const Window* w = &window; w->parent; w = w->parent)
        if (!w->enabled()) return nameOf(window) + L" is disabled.";
    return {};
}

std::wstring valueOf(const Window& window) {
    const HWND handle = window.handle;
    const auto listed = [&](const ItemMessages& messages) {
        const int count = ask(handle, messages.count);
        std::wstring text = L"  (";
        for (int i = 0; i < std::min(count, kMostListed); ++i)
            text += (i ? L", " : L"") + std::to_wstring(i) + L" " + itemText(handle, messages, i);
        return text + (count > kMostListed ? L", ... " + std::to_wstring(count) + L" in all)" : L")");
    };
    if (isCheck(window) || isRadio(window)) {
        const int state = ask(handle, BM_GETCHECK);
        return state == BST_CHECKED ? L" = on" : state == BST_UNCHECKED ? L" = off" : L" = mixed";
    }
    if (window.hasClass(L"Edit")) return L" = " + window.text;
    if (window.hasClass(L"msctls_trackbar32"))
        return L" = " + std::to_wstring(ask(handle, TBM_GETPOS)) + L"  (" +
               std::to_wstring(ask(handle, TBM_GETRANGEMIN)) + L" to " +
               std::to_wstring(ask(handle, TBM_GETRANGEMAX)) + L")";
    if (window.hasClass(L"ComboBox")) return L" = " + window.text + listed(kComboItems);
    if (window.hasClass(L"ListBox")) {
        std::wstring chosen;
        for (int i = 0; i < ask(handle, LB_GETCOUNT); ++i)
            if (ask(handle, LB_GETSEL, WPARAM(i)) > 0)
                chosen += (chosen.empty() ? L"" : L",") + std::to_wstring(i);
        return L" = " + (chosen.empty() ? L"none" : chosen) + listed(kListItems);
    }
    // Drawn controls may say in their text what they show.
    const bool drawn = !window.hasClass(L"Button") && !window.hasClass(L"Static");
    return drawn && !window.text.empty() ? L" = " + window.text : std::wstring();
}
std::wstring kindOf(const Window& window) {
    if (isCheck(window)) return L"check";
    if (isRadio(window)) return L"radio";
    if (window.hasClass(L"Button")) return window.type() == BS_GROUPBOX ? L"group" : L"button";
    if (window.hasClass(L"Edit")) return L"edit";
    if (window.hasClass(L"ComboBox")) return L"combo";
    if (window.hasClass(L"ListBox")) return L"list";
    if (window.hasClass(L"msctls_trackbar32")) return L"slider";
    return window.hasClass(L"Static") ? L"text" : L"drawn";
}
void addListing(const Window& window, std::wstring& out) {
    for (const Window* child : window.children) {
        if (!child->visible()) continue;
        const std::wstring kind = kindOf(*child);
        if (kind == L"text" && (child->id == 0xFFFF || child->text.empty()))
            continue; // labels tell themselves
        std::wstring name = labelOf(*child);
        if (name.empty() && (child->hasClass(L"Button") || kind == L"text")) name = plainCaption(child->text);
        std::wstring id = std::to_wstring(child->id);
        id.resize(std::max<size_t>(id.size(), 6), L' ');
        out += L"\n  " + id + L" " + kind + std::wstring(8 - kind.size(), L' ') + name + valueOf(*child);
        if (!child->enabled()) out += L"  disabled";
        addListing(*child, out);
    }
}

} // namespace

std::wstring dialogListing(HWND dialog) {
    std::wstring out;
    if (const Window* window = windowOf(dialog)) addListing(*window, out);
    return out;
}

std::wstring performDialogAction(HWND dialog, const std::wstring& text) {
    using Kind = DialogAction::Kind;
    const DialogAction action = parseDialogAction(text);
    if (!action.error.empty()) return action.error;
    switch (action.kind) {
    case Kind::list: return dialogListing(dialog);
    case Kind::ok: return close(dialog, IDOK);
    case Kind::cancel: return close(dialog, IDCANCEL);
    case Kind::picture: return savePicture(dialog, action.value);
    default: break;
    }
    const FoundControl found = findControl(dialog, action);
    if (!found.control) return found.error;
    const Window& window = *windowOf(found.control);
    if (std::wstring why = unreachable(window); !why.empty()) return why;
    switch (action.kind) {
    case Kind::set: return set(window, action.value);
    case Kind::select: return select(window, action);
    case Kind::drag: return dragIn(window, action.points);
    case Kind::press: press(found.control); return {};
    default: return {};
    }
}

namespace {

class PromptedDialogs final : public DialogRunner {
public:
    bool seen() const override { return false; }
    void run(HWND dialog) override {
        const DialogRuns running;
        settle();
        while (!dialogEnded(dialog)) {
            PromptRequest request;
            request.kind = PromptRequest::Kind::dialog;
            request.text = L"\n" + windowOf(dialog)->text + L": ";
            const PromptReply reply = askFrontEnd(request);
            if (reply.kind == PromptReply::Kind::cancel)
                SendMessageW(dialog, WM_CLOSE, 0, 0);
            else if (reply.kind == PromptReply::Kind::text)
                tell(performDialogAction(dialog, reply.text));
            settle();
        }
    }
    void shown(HWND) override {}
    void hidden(HWND) override {}
    void pickBegins(HWND) override {}
    void pickEnds(HWND) override {}
    int messageBox(HWND, const std::wstring& text, const std::wstring& caption, UINT style) override {
        return frontEnd().messageBox({text, caption, style});
    }
    std::vector<std::wstring> chooseFile(const FileQuestion& question) override {
        PromptRequest request;
        request.kind = PromptRequest::Kind::file;
        request.blanksEnd = false;
        const std::wstring title = !question.title.empty() ? question.title
                                   : question.open         ? L"File to open"
                                                           : L"File to save";
        request.text = L"\n" + title + (question.initial.empty() ? L": " : L" <" + question.initial + L">: ");
        const PromptReply reply = askFrontEnd(request);
        std::wstring path = reply.kind == PromptReply::Kind::text    ? reply.text
                            : reply.kind == PromptReply::Kind::enter ? question.initial
                                                                     : std::wstring();
        if (path.empty()) return {};
        if (question.mustExist && !fileExists(utf8(path))) {
            tell(L"There is no file \"" + path + L"\".");
            return {};
        }
        std::error_code error;
        const auto whole = std::filesystem::absolute(utf8(path), error);
        return {error ? path : wide(whole.string())};
    }
    void complain(const std::string& reason) override { tell(L"The dialog can't be shown: " + wide(reason)); }

private:
    static void tell(const std::wstring& message) {
        if (!message.empty()) printLine(message.starts_with(L'\n') ? message : L"\n" + message);
    }
};

} // namespace

void installPromptedDialogs() {
    static PromptedDialogs runner;
    setDialogRunner(&runner);
}

} // namespace host

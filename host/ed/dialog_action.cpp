// Reading dialog actions and finding the controls they name.
#include "host/ed/dialog_action.h"

#include <algorithm>
#include <cmath>

#include "host/os/text.h"

namespace host {
namespace {

using Kind = DialogAction::Kind;
constexpr double kFarthest = 1e6; // of a drag's points, in any control's units

DialogAction refused(std::wstring why) {
    DialogAction action;
    action.error = std::move(why);
    return action;
}

// Takes a word in quotes, or one that ends before any of `ends`.
std::wstring takeName(std::wstring_view& rest, std::wstring_view ends, bool& quoted) {
    quoted = rest.starts_with(L'"');
    const size_t end = quoted ? rest.find(L'"', 1) : std::min(rest.find_first_of(ends), rest.size());
    if (end == rest.npos) return {};
    const std::wstring name(quoted ? rest.substr(1, end - 1) : rest.substr(0, end));
    rest.remove_prefix(quoted ? end + 1 : end);
    return name;
}
std::wstring unquoted(std::wstring_view text) {
    if (text.size() > 1 && text.front() == L'"' && text.back() == L'"')
        text = text.substr(1, text.size() - 2);
    return std::wstring(text);
}

DialogAction parseDrag(std::wstring_view rest) {
    DialogAction action;
    action.kind = Kind::drag;
    rest = trimmed(rest);
    action.target = takeName(rest, L" ", action.byName);
    while (!(rest = trimmed(rest)).empty()) {
        const size_t end = std::min(rest.find(L' '), rest.size()), comma = rest.find(L',');
        if (comma >= end) break;
        const auto x = parseReal(rest.substr(0, comma)),
                   y = parseReal(rest.substr(comma + 1, end - comma - 1));
        if (!x || !y || std::abs(*x) > kFarthest || std::abs(*y) > kFarthest) break;
        action.points.emplace_back(*x, *y);
        rest.remove_prefix(end);
    }
    if (action.target.empty() || action.points.empty() || !rest.empty())
        return refused(L"A drag needs a control and points, such as: drag 53001 0,100 0,150");
    return action;
}

DialogAction parseTargeted(std::wstring_view text) {
    DialogAction action;
    std::wstring_view rest = text;
    action.target = takeName(rest, L"=!@", action.byName);
    const wchar_t sign = rest.empty() ? L'\0' : rest.front();
    if (action.target.empty() || !sign || std::wstring_view(L"=!@").find(sign) == std::wstring_view::npos)
        return refused(L"\"" + std::wstring(text) +
                       L"\" is no action. Actions are ID=value, ID!, ID@item, drag, picture, ?, OK, CANCEL.");
    rest.remove_prefix(1);
    action.kind = sign == L'=' ? Kind::set : sign == L'!' ? Kind::press : Kind::select;
    action.twice = action.kind == Kind::select && rest.ends_with(L'!');
    if (action.twice) rest.remove_suffix(1);
    if (action.kind == Kind::press && !rest.empty())
        return refused(L"Nothing may stand behind the ! of a press.");
    action.value = unquoted(rest);
    return action;
}

bool takesLabel(const Window& window) {
    for (const wchar_t* name : {L"Edit", L"ComboBox", L"msctls_trackbar32", L"ListBox"})
        if (window.hasClass(name)) return true;
    return false;
}
// Where several controls share a label, that which people type into comes first.
int rank(const Window& window) {
    if (window.hasClass(L"Edit")) return 0;
    if (window.hasClass(L"ComboBox")) return 1;
    return window.hasClass(L"ListBox") ? 3 : 2;
}
void gather(const Window& window, std::vector<const Window*>& all) {
    for (const Window* child : window.children) all.push_back(child), gather(*child, all);
}

bool isLabel(const Window& window) {
    return window.hasClass(L"Static") && !plainCaption(window.text).empty();
}
int overlap(int a, int b, int c, int d) { return std::min(b, d) - std::max(a, c); }

} // namespace

std::wstring plainCaption(std::wstring_view text) {
    std::wstring plain;
    for (size_t i = 0; i < text.size(); ++i) {
        // "(&A)" is how access keys are written behind captions without Latin letters.
        if (text[i] == L'(' && i + 3 < text.size() && text[i + 1] == L'&' && text[i + 3] == L')') {
            i += 3;
            continue;
        }
        if (text[i] == L'&' && i + 1 < text.size()) ++i;
        plain += text[i];
    }
    std::wstring_view shown = trimmed(plain);
    while (!shown.empty() && (shown.back() == L':' || shown.back() == L'：'))
        shown = trimmed(shown.substr(0, shown.size() - 1));
    return std::wstring(shown);
}

// In the same row the nearest to the left; else the one that stands directly before in the dialog's order.
std::wstring labelOf(const Window& control) {
    if (!takesLabel(control) || !control.parent) return {};
    const Window* best = nullptr;
    const Window* before = nullptr;
    bool passed = false;
    for (const Window* each : control.parent->children) {
        passed |= each == &control;
        if (!isLabel(*each) || !each->visible()) {
            if (!passed && takesLabel(*each)) before = nullptr;
            continue;
        }
        if (!passed) before = each;
        const CRect &label = each->rect, &own = control.rect;
        const bool sameRow = overlap(label.top, label.bottom, own.top, own.bottom) * 2 >=
                             std::min(label.Height(), own.Height());
        if (sameRow && label.left < own.left && (!best || label.left > best->rect.left)) best = each;
    }
    if (!best) best = before;
    return best ? plainCaption(best->text) : std::wstring();
}

DialogAction parseDialogAction(const std::wstring& text) {
    const std::wstring_view whole = trimmed(std::wstring_view(text));
    const std::wstring folded = lower(whole);
    DialogAction action;
    if (whole == L"?") return action.kind = Kind::list, action;
    if (folded == L"ok") return action.kind = Kind::ok, action;
    if (folded == L"cancel") return action.kind = Kind::cancel, action;
    if (folded.starts_with(L"drag ")) return parseDrag(whole.substr(5));
    if (folded.starts_with(L"picture ")) {
        action.kind = Kind::picture;
        action.value = unquoted(trimmed(whole.substr(8)));
        return action;
    }
    return parseTargeted(whole);
}

FoundControl findControl(HWND dialog, const DialogAction& action) {
    const Window* window = windowOf(dialog);
    std::vector<const Window*> all, named, labelled;
    if (window) gather(*window, all);
    const auto number = action.byName ? std::nullopt : parseInteger(std::wstring_view(action.target));
    if (number) {
        for (const Window* each : all)
            if (each->id == UINT(*number)) return {each->handle, {}};
    } else {
        const std::wstring wanted = plainCaption(action.target);
        for (const Window* each : all) {
            if (!each->visible()) continue;
            if (each->hasClass(L"Button") && plainCaption(each->text) == wanted) named.push_back(each);
            if (labelOf(*each) == wanted) labelled.push_back(each);
        }
    }
    // A group box shares its words with what it is about often enough; what can be set goes before it.
    std::stable_partition(named.begin(), named.end(),
                          [](const Window* w) { return w->type() != BS_GROUPBOX; });
    if (named.size() > 1 && named[1]->type() == BS_GROUPBOX) named.erase(named.begin() + 1, named.end());
    std::stable_sort(labelled.begin(), labelled.end(),
                     [](const Window* a, const Window* b) { return rank(*a) < rank(*b); });
    const bool sharedRow = labelled.size() > 1 && rank(*labelled[0]) < rank(*labelled[1]);
    if (sharedRow) labelled.erase(labelled.begin() + 1, labelled.end());
    // What is set by a value is rather the field behind a label than a button of the same words.
    const bool valued = action.kind == Kind::set && parseReal(std::wstring_view(action.value)).has_value();
    const std::vector<const Window*>& found =
        named.empty() || (valued && !labelled.empty()) ? labelled : named;
    if (found.size() == 1) return {found.front()->handle, {}};
    FoundControl none;
    if (found.empty()) {
        none.error = L"There is no control \"" + action.target + L"\". Type ? for a list.";
    } else {
        none.error = L"Several controls are called \"" + action.target + L"\":";
        for (const Window* each : found) none.error += L" " + std::to_wstring(each->id);
        none.error += L". Use the number.";
    }
    return none;
}

} // namespace host

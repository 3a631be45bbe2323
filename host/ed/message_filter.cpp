// The list of message filters.
#include "host/ed/message_filter.h"

#include <algorithm>
#include <vector>

#include "host/os/text.h"

namespace {
std::vector<AcedFilterWinMsgFn>& filters() {
    static std::vector<AcedFilterWinMsgFn> list;
    return list;
}
} // namespace

BOOL acedRegisterFilterWinMsg(AcedFilterWinMsgFn filter) {
    auto& list = filters();
    if (!filter || std::find(list.begin(), list.end(), filter) != list.end()) return FALSE;
    list.push_back(filter);
    return TRUE;
}

BOOL acedRemoveFilterWinMsg(AcedFilterWinMsgFn filter) { return std::erase(filters(), filter) > 0; }

namespace host {

bool keyFiltered(UINT virtualKey) {
    MSG message;
    message.message = WM_KEYDOWN;
    message.wParam = virtualKey;
    const auto copy = filters();
    return std::any_of(copy.rbegin(), copy.rend(),
                       [&](AcedFilterWinMsgFn filter) { return filter(&message) != FALSE; });
}

std::optional<UINT> virtualKeyOf(const std::wstring& name) {
    struct Named {
        const wchar_t* name;
        UINT key;
    };
    constexpr Named kNamed[] = {{L"tab", VK_TAB},
                                {L"return", VK_RETURN},
                                {L"space", VK_SPACE},
                                {L"escape", VK_ESCAPE},
                                {L"delete", VK_DELETE}};
    for (const Named& row : kNamed)
        if (equalNoCase(row.name, name)) return row.key;
    const wchar_t single = name.size() == 1 ? upper(name)[0] : L'\0';
    const bool plain = (single >= L'A' && single <= L'Z') || (single >= L'0' && single <= L'9');
    return plain ? std::optional<UINT>(single) : std::nullopt;
}

} // namespace host

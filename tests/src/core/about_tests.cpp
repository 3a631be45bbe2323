// The About dialog: languages, pages, and how it behaves when its window changes.
#include <gmock/gmock.h>

#include "core/about.h"
#include "core/dialog_language.h"
#include "core/settings.h"
#include "host/os/shell.h"
#include "support/dialogs.h"
#include "support/drawing.h"

using namespace corvane;
using support::Drawing;
using testing::HasSubstr;

namespace {

// What is opened outside, and the language of the test put back at its end.
struct Session {
    Drawing drawing;
    std::vector<std::wstring> opened;
    Session() {
        host::setShellHandler(
            [this](const host::ShellRequest& request) { return opened.push_back(request.target), true; });
    }
    ~Session() {
        host::setShellHandler({});
        SetLanguage(L"");
        host::setRequestedLanguage("zh");
    }
};
// Open without being run.
class Open : public CAbout {
public:
    Open() {
        const CAcModuleResourceOverride ours(host_door::moduleResources());
        EXPECT_TRUE(Create(1296));
        host::deliverPosted();
    }
    CComboBox& languages() { return *static_cast<CComboBox*>(GetDlgItem(61001)); }
    void choose(int row) {
        languages().SetCurSel(row);
        SendMessage(WM_COMMAND, MAKEWPARAM(61001, CBN_SELCHANGE), 0);
        host::deliverPosted();
    }
};

} // namespace

TEST(About, ListsTwentyLanguagesAndSelectsTheOneInUse) {
    const struct {
        const char* language;
        int row;
    } rows[] = {{"zh", 0}, {"de-at", 3}, {"no", 15}, {"hi", 19}, {"la", 0}};
    for (const auto& row : rows) {
        const Session session;
        host::setRequestedLanguage(row.language);
        Open about;
        EXPECT_EQ(20, about.languages().GetCount());
        EXPECT_EQ(row.row, about.languages().GetCurSel()) << row.language;
        EXPECT_EQ(DWORD_PTR(row.row), about.languages().GetItemData(row.row));
    }
}

TEST(About, SpeaksTheChosenLanguageAtOnceAndAtTheNextStart) {
    const Session session;
    Open about;
    EXPECT_EQ(L"关于 Corvane V2.00", WindowText(about));
    const std::wstring chinese = WindowText(GetDlgItem(about, 1157));
    std::vector<std::wstring> shown;
    for (const int row : {1, 3, 0, 3}) {
        about.choose(row);
        shown.push_back(WindowText(GetDlgItem(about, 1157)));
        EXPECT_EQ(row, about.languages().GetCurSel());
        EXPECT_EQ(LanguageTable()[size_t(row)].code, SettingsStore::ReadText(L"Language"));
    }
    EXPECT_EQ(L"Product page", shown[0]);
    EXPECT_EQ(L"Produktseite", shown[1]) << "from one foreign language to another";
    EXPECT_EQ(chinese, shown[2]) << "and back to the source texts";
    EXPECT_EQ(shown[1], shown[3]);
    EXPECT_EQ(L"Info über Corvane V2.00", WindowText(about));
    EXPECT_EQ(L"de", ActiveLanguage());
}

TEST(About, ItsButtonsOpenThePagesOfTheLanguage) {
    Session session;
    Open about;
    about.SendMessage(WM_COMMAND, MAKEWPARAM(1157, BN_CLICKED), 0);
    about.choose(3);
    about.SendMessage(WM_COMMAND, MAKEWPARAM(1157, BN_CLICKED), 0);
    about.SendMessage(WM_COMMAND, MAKEWPARAM(1158, BN_CLICKED), 0);
    ASSERT_EQ(3u, session.opened.size());
    EXPECT_THAT(host::utf8(session.opened[0]), HasSubstr("/zh"));
    EXPECT_THAT(host::utf8(session.opened[1]), HasSubstr("/en"));
    EXPECT_THAT(host::utf8(session.opened[2]), HasSubstr("privacy"));
}

TEST(About, ControlsFollowTheWindowFromTheirFirstPlaces) {
    const Session session;
    Open about;
    CRect client;
    about.GetClientRect(client);
    const CRect before = support::placeOf(about, 1157), box = support::placeOf(about, 61001);
    EXPECT_EQ(client.right - 20, box.right);
    EXPECT_EQ(20, box.top);
    CRect frame;
    about.GetWindowRect(frame);
    const CSize border(frame.Width() - client.Width(), frame.Height() - client.Height());
    const auto resize = [&](double factor) {
        about.SetWindowPos(nullptr, 0, 0, int(client.Width() * factor) + border.cx,
                           int(client.Height() * factor) + border.cy, SWP_NOMOVE | SWP_NOZORDER);
    };
    resize(2);
    const CRect grown = support::placeOf(about, 1157);
    EXPECT_EQ(CRect(2 * before.left, 2 * before.top, 2 * before.right, 2 * before.bottom), grown);
    for (const double factor : {0.37, 1.61, 1.0}) resize(factor);
    EXPECT_EQ(before, support::placeOf(about, 1157)) << "rounding doesn't add up";
}

TEST(About, RunsFromTheCommandLine) {
    Session session;
    const std::string transcript = session.drawing.run(L"ABOUT_CVANE\n?\n61001@3\n?\n1158!\nOK\nPLYH\n\n");
    EXPECT_THAT(transcript, HasSubstr("关于 Corvane V2.00"));
    EXPECT_THAT(transcript, HasSubstr("Info über Corvane V2.00"));
    EXPECT_THAT(transcript, HasSubstr("Produktseite"));
    EXPECT_EQ(1u, session.opened.size());
    EXPECT_THAT(transcript, HasSubstr("Keine Polylinie gewählt")) << "the next message speaks it";
    EXPECT_FALSE(session.drawing.ranDry);
}

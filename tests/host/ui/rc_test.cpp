// Resource scripts: what is read, and what is said about what can't be.
#include "tests/host/ui/support.h"

using namespace host;
using testing::ElementsAre;
using testing::HasSubstr;
using uitest::dialogFrom;
using uitest::withControls;

TEST(ResourceScript, DialogIsReadWithHeadAndControls) {
    const DialogTemplate dialog = dialogFrom(R"(// a comment
#include "resource.h"
#define IDC_COUNT 1090
/* another
   one */
LANGUAGE 4, 2
53 DIALOGEX 10, 20, 309, 176, 0
STYLE DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU
EXSTYLE WS_EX_TOOLWINDOW
CAPTION "沿曲线 ""阵列"""
FONT 8, "MS Shell Dlg", 700, 1, 0x86
{
    LTEXT "两行\n文字", IDC_STATIC, -3, 4, 30, 8, NOT WS_GROUP
    EDITTEXT IDC_COUNT, 1, 2, 3, 4, ES_AUTOHSCROLL | NOT WS_BORDER | 0x2000
    CONTROL "", 1264, "msctls_trackbar32", TBS_BOTH | WS_TABSTOP, 5, 6, 7, 8, WS_EX_TRANSPARENT
    CONTROL "图", 1364, MY_GRAPH, NOT WS_VISIBLE, 5, 6, 7, 8
    COMBOBOX 1089, 9, 9, 50, 80,
             CBS_DROPDOWNLIST | WS_VSCROLL
}
)");
    EXPECT_EQ(53u, dialog.id);
    EXPECT_EQ(CRect(10, 20, 319, 196), dialog.rect);
    EXPECT_EQ(DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU, dialog.style);
    EXPECT_EQ(WS_EX_TOOLWINDOW, dialog.exStyle);
    EXPECT_EQ(L"沿曲线 \"阵列\"", dialog.caption);
    EXPECT_EQ(8, dialog.pointSize);
    EXPECT_TRUE(dialog.italic && dialog.weight == 700);
    ASSERT_EQ(5u, dialog.controls.size());
    EXPECT_EQ(L"两行\n文字", dialog.controls[0].text);
    EXPECT_EQ(0xFFFFu, dialog.controls[0].id);
    EXPECT_EQ(-3, dialog.controls[0].rect.left);
    EXPECT_EQ(WS_CHILD | WS_VISIBLE, dialog.controls[0].style);
    EXPECT_EQ(1090u, dialog.controls[1].id);
    EXPECT_EQ(WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL | ES_NUMBER, dialog.controls[1].style);
    EXPECT_EQ(L"msctls_trackbar32", dialog.controls[2].className);
    EXPECT_EQ(WS_EX_TRANSPARENT, dialog.controls[2].exStyle);
    EXPECT_EQ(L"MY_GRAPH", dialog.controls[3].className);
    EXPECT_EQ(WS_CHILD, dialog.controls[3].style);
    EXPECT_EQ(WS_CHILD | WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWNLIST | WS_VSCROLL, dialog.controls[4].style);
}

TEST(ResourceScript, FilesAreNamedByNumberAndKind) {
    const ResourceScript read =
        parseResourceScript("1051 PNG \"formula/1051.png\"\n12 png DISCARDABLE \"b\\\\c.png\"\n");
    EXPECT_TRUE(read.errors.empty());
    ASSERT_EQ(2u, read.files.size());
    EXPECT_EQ("formula/1051.png", read.files[0].file);
    EXPECT_EQ(L"PNG", read.files[1].type);
    EXPECT_EQ("b\\c.png", read.files[1].file);
}

TEST(ResourceScript, FaultsAreToldWithTheirLine) {
    const struct {
        const char* controls; // from line 5 on
        const char* line;
        const char* says;
    } rows[] = {
        {"LTEXT \"a\", 1, 0, 0, 10", "line 6", "comma is missing behind the width"},
        {"LTEXT \"a, 1, 0, 0, 10, 8", "line 5", "doesn't end in its line"},
        {"LTEXT a, 1, 0, 0, 10, 8", "line 5", "must be a text in quotes, not \"a\""},
        {"FOOTEXT \"a\", 1, 0, 0, 1, 1", "line 5", "\"FOOTEXT\" is not known"},
        {"EDITTEXT ID_NONE, 0, 0, 1, 1", "line 5", "\"ID_NONE\" is not defined"},
        {"EDITTEXT 3, 0, 0, 1, 1, ES_NONE", "line 5", "style \"ES_NONE\" is not known"},
        {"EDITTEXT 3, 0, 0, 1, 1, ES_NUMBER |", "line 6", "\"END\" is not known"},
        {"EDITTEXT 3, 0, 0, -1, 1", "line 5", "must not be negative"},
        {"EDITTEXT 3, 0, 0, 40000, 1", "line 5", "up to 32767"},
        {"EDITTEXT 99999999999, 0, 0, 1, 1", "line 5", "is no number"},
        {"EDITTEXT 3x, 0, 0, 1, 1", "line 5", "is no number"},
        {"CONTROL \"\", 5, , 0, 1, 2, 3, 4", "line 5", "class must be a name"},
        {"\"a\" ?", "line 5", "'?' means nothing"},
    };
    for (const auto& row : rows) {
        const ResourceScript read =
            parseResourceScript(withControls(row.controls) + "8 DIALOG 0,0,9,9 BEGIN END\n");
        ASSERT_FALSE(read.errors.empty()) << row.controls;
        EXPECT_THAT(read.errors, testing::Contains(testing::AllOf(HasSubstr(row.line), HasSubstr(row.says))))
            << row.controls;
        // The faulty dialog is left out; the next one is there.
        ASSERT_EQ(1u, read.dialogs.size()) << row.controls;
        EXPECT_EQ(8u, read.dialogs[0].id);
    }
}

TEST(ResourceScript, AnyCutOfAScriptIsReadWithoutHarm) {
    const std::string whole = withControls(
        "LTEXT \"a\\\"b\", 1, 0, 0, 10, 8, NOT WS_GROUP /* x */\nCONTROL \"\", 2, Edit, 0x12L, 1, 2, 3, 4");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const ResourceScript cut = parseResourceScript(whole.substr(0, length));
        EXPECT_TRUE(cut.dialogs.empty() || length + 2 > whole.size()) << length;
        const ResourceScript behind = parseResourceScript(whole.substr(length));
        EXPECT_LE(behind.dialogs.size(), 1u);
    }
}

TEST(ResourceScript, HugeDialogsEndAtALimit) {
    std::string controls;
    for (int i = 0; i < 4097; ++i) controls += "EDITTEXT 3, 0, 0, 1, 1\n";
    EXPECT_THAT(parseResourceScript(withControls(controls)).errors, ElementsAre(HasSubstr("at most 4096")));
    std::string errors;
    for (int i = 0; i < 3000; ++i) errors += "? ";
    EXPECT_EQ(50u, parseResourceScript(errors).errors.size());
}

TEST(DialogUnits, GrowWithTheResolution) {
    DialogTemplate dialog;
    const DialogUnits usual = dialogUnits(templateFont(dialog, 96)),
                      doubled = dialogUnits(templateFont(dialog, 192));
    EXPECT_NEAR(2.0 * usual.y, doubled.y, 1);
    EXPECT_NEAR(2.0 * usual.x, doubled.x, 1);
    EXPECT_EQ(CRect(0, 0, 4 * usual.x, usual.y), usual.pixels(CRect(0, 0, 16, 8)));
}

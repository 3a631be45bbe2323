// Reading dialog actions, and which control a name means.
#include "host/ed/dialog_action.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/os/text.h"
#include "host/ui/dialog.h"

using namespace host;
using Kind = DialogAction::Kind;

TEST(DialogAction, FormsAreToldApart) {
    const struct {
        const wchar_t* text;
        Kind kind;
        const wchar_t* target;
        const wchar_t* value;
    } rows[] = {
        {L"1090=20", Kind::set, L"1090", L"20"},
        {L"1090=", Kind::set, L"1090", L""},
        {L"1090=\"a b\"", Kind::set, L"1090", L"a b"},
        {L"1090=a=b!", Kind::set, L"1090", L"a=b!"},
        {L"\"a=b!\"=on", Kind::set, L"a=b!", L"on"},
        {L"总数量=on", Kind::set, L"总数量", L"on"},
        {L"1085!", Kind::press, L"1085", L""},
        {L"\"Pick (&P)\"!", Kind::press, L"Pick (&P)", L""},
        {L"1273@3", Kind::select, L"1273", L"3"},
        {L"1273@\"two words\"!", Kind::select, L"1273", L"two words"},
        {L" ? ", Kind::list, L"", L""},
        {L"ok", Kind::ok, L"", L""},
        {L"Cancel", Kind::cancel, L"", L""},
        {L"picture \"my file.png\"", Kind::picture, L"", L"my file.png"},
        {L"drag \"my graph\" 0.3,150 -1e2,+5", Kind::drag, L"my graph", L""},
    };
    for (const auto& row : rows) {
        const DialogAction action = parseDialogAction(row.text);
        EXPECT_TRUE(action.error.empty()) << utf8(row.text);
        EXPECT_EQ(row.kind, action.kind) << utf8(row.text);
        EXPECT_EQ(row.target, action.target) << utf8(row.text);
        EXPECT_EQ(row.value, action.value) << utf8(row.text);
    }
    EXPECT_TRUE(parseDialogAction(L"1273@3!").twice);
    EXPECT_EQ(AcGePoint2d(-100, 5), parseDialogAction(L"drag 5 0.3,150 -1e2,+5").points.at(1));
    for (const wchar_t* wrong :
         {L"", L"=", L"!", L"OK!x", L"\"open", L"drag", L"drag 5", L"drag 5 1", L"drag 5 1,inf"})
        EXPECT_FALSE(parseDialogAction(wrong).error.empty()) << utf8(wrong);
}

TEST(DialogAction, CaptionsLoseKeysAndColons) {
    const struct {
        const wchar_t *caption, *plain;
    } rows[] = {
        {L"&Count:", L"Count"}, {L"数量：", L"数量"}, {L"重选(&R)", L"重选"}, {L"重选(&R): ", L"重选"},
        {L"A && B", L"A & B"},  {L"12:30", L"12:30"}, {L" : ", L""},          {L"a&", L"a&"}};
    for (const auto& row : rows) EXPECT_EQ(row.plain, plainCaption(row.caption)) << utf8(row.caption);
}

TEST(DialogAction, NamesMeanTheFieldInTheirRow) {
    const DialogTemplate shape =
        parseResourceScript(
            "5 DIALOGEX 0,0,200,99\nBEGIN\n"
            "LTEXT \"Low:\", -1, 5, 5, 20, 8\nEDITTEXT 10, 30, 5, 20, 12\n"
            "LTEXT \"High:\", -1, 60, 5, 20, 8\nEDITTEXT 11, 85, 5, 20, 12\n"
            "LTEXT \"Above\", -1, 5, 30, 60, 8\nCOMBOBOX 12, 5, 42, 60, 80, CBS_DROPDOWNLIST\n"
            "EDITTEXT 13, 5, 70, 20, 12\n"
            "AUTORADIOBUTTON \"Gap\", 14, 100, 40, 40, 10\nLTEXT \"Gap:\", -1, 100, 60, 20, 8\n"
            "EDITTEXT 15, 130, 60, 20, 12\nEND")
            .dialogs.at(0);
    CDialog dialog;
    ASSERT_TRUE(dialog.CreateIndirect(&shape));
    const auto named = [&](const wchar_t* action) {
        const FoundControl found = findControl(dialog, parseDialogAction(action));
        return found.control ? GetDlgCtrlID(found.control) : 0;
    };
    EXPECT_EQ(10, named(L"Low=1"));
    EXPECT_EQ(11, named(L"\"High:\"=1"));
    EXPECT_EQ(12, named(L"Above=1"));
    EXPECT_EQ(14, named(L"Gap=on"));
    EXPECT_EQ(15, named(L"Gap=2.5")); // a number is for the field, on and off for the button
    EXPECT_EQ(14, named(L"Gap!"));
    EXPECT_EQ(0, named(L"low=1"));
    EXPECT_EQ(0, named(L"\"10\"=1")); // in quotes it is a caption
    EXPECT_EQ(L"", labelOf(*windowOf(::GetDlgItem(dialog, 13))));
    dialog.GetDlgItem(11)->ShowWindow(SW_HIDE);
    EXPECT_EQ(0, named(L"High=1"));
    EXPECT_EQ(11, named(L"11=1"));
}

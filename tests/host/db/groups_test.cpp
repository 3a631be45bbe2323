// Groups: types, packed lists, the weaving of kept groups; result buffers and filers.
#include "support.h"

#include "host/db/filer.h"

namespace {

using host::Group;
using host::GroupList;
using host::GroupType;

TEST(Groups, TypesFollowTheCode) {
    struct Row {
        int first, last;
        GroupType type;
    };
    const Row rows[] = {
        {0, 4, GroupType::text},        {5, 5, GroupType::handle},      {6, 9, GroupType::text},
        {10, 59, GroupType::real},      {60, 79, GroupType::int16},     {90, 99, GroupType::int32},
        {100, 102, GroupType::text},    {105, 105, GroupType::handle},  {110, 149, GroupType::real},
        {160, 169, GroupType::int64},   {170, 179, GroupType::int16},   {210, 239, GroupType::real},
        {270, 289, GroupType::int16},   {290, 299, GroupType::boolean}, {300, 309, GroupType::text},
        {310, 319, GroupType::bytes},   {320, 369, GroupType::handle},  {370, 389, GroupType::int16},
        {390, 399, GroupType::handle},  {400, 409, GroupType::int16},   {410, 419, GroupType::text},
        {420, 429, GroupType::int32},   {430, 439, GroupType::text},    {440, 459, GroupType::int32},
        {460, 469, GroupType::real},    {470, 479, GroupType::text},    {480, 481, GroupType::handle},
        {999, 1003, GroupType::text},   {1004, 1004, GroupType::bytes}, {1005, 1005, GroupType::handle},
        {1006, 1009, GroupType::text},  {1010, 1059, GroupType::real},  {1060, 1070, GroupType::int16},
        {1071, 1071, GroupType::int32}, {1072, 1075, GroupType::text},  {-9, -1, GroupType::text},
    };
    for (const auto& row : rows)
        for (int code = row.first; code <= row.last; ++code)
            EXPECT_EQ(host::groupType(code), row.type) << code;
}

TEST(Groups, PackedListsGiveBackWhatWentIn) {
    const std::string zeros("a\0b", 3);
    const Group groups[] = {Group::ofText(1, "文字"),         Group::ofText(3, ""),
                            Group::ofReal(40, -0.1),          Group::ofInteger(70, -32768),
                            Group::ofInteger(160, 1LL << 62), Group::ofHandle(330, ~0ull),
                            Group::ofBytes(310, zeros),       Group::ofInteger(290, 1)};
    GroupList list;
    for (const auto& g : groups) list.append(g);
    size_t i = 0;
    for (const Group g : list) EXPECT_EQ(g, groups[i++]);
    EXPECT_EQ(i, std::size(groups));
    Group found;
    EXPECT_TRUE(list.find(310, found));
    EXPECT_EQ(found.text, zeros);
    EXPECT_FALSE(list.find(311, found));
}

// Each row: what an object kept, what it writes by itself, and what stands in the file.
TEST(Groups, KeptOnesComeBackBehindTheirMarkers) {
    struct Row {
        const char* caption;
        std::vector<Group> kept;
        AcDb::AcDbDwgVersion version;
        const char* written;
    };
    auto marker = [](const char* m) { return Group::ofText(100, m); };
    auto value = [](int v) { return Group::ofInteger(70, v); };
    const Row rows[] = {
        {"nothing kept", {}, AcDb::kDHL_1032, "100 A\n1 a\n100 B\n1 b\n"},
        {"before all", {value(1)}, AcDb::kDHL_1032, "70 1\n100 A\n1 a\n100 B\n1 b\n"},
        {"behind each",
         {marker("A"), value(1), marker("B"), value(2)},
         AcDb::kDHL_1032,
         "100 A\n1 a\n70 1\n100 B\n1 b\n70 2\n"},
        {"of a class nobody wrote",
         {marker("A"), value(1), marker("C"), value(3)},
         AcDb::kDHL_1032,
         "100 A\n1 a\n70 1\n100 B\n1 b\n100 C\n70 3\n"},
        {"in a file without markers",
         {value(0), marker("B"), value(2), marker("C"), value(3)},
         AcDb::kDHL_1009,
         "70 0\n1 a\n1 b\n70 2\n"},
    };
    for (const auto& row : rows) {
        GroupList kept;
        for (const auto& g : row.kept) kept.append(g);
        host::CapturingWriter writer;
        writer.version = row.version;
        writer.beginObject(&kept);
        writer.subclass("A");
        writer.text(1, "a");
        writer.subclass("B");
        writer.text(1, "b");
        writer.endObject();
        EXPECT_EQ(text(writer.groups), row.written) << row.caption;
    }
}

TEST(ResultBuffers, ChainsSurviveTheWayThroughGroups) {
    AcDbDatabase database;
    ads_name name;
    acdbGetAdsName(name, database.layerZero());
    const double point[] = {1, 2, 3};
    host::ResbufChain chain(acutBuildList(1, L"déjà", 10, point, 40, 0.5, 70, -7, 90, 70000, 330, name, 290,
                                          1, 1010, point, 1005, L"1F", 0));
    ASSERT_TRUE(chain.get());
    GroupList groups;
    ASSERT_TRUE(host::groupsFromChain(chain.get(), groups));
    host::ResbufChain back(host::chainFromGroups(groups, &database));
    host::ResbufChain copy(host::copyChain(back.get()));
    const resbuf* b = copy.get();
    for (const resbuf* a = chain.get(); a; a = a->rbnext, b = b->rbnext) {
        ASSERT_TRUE(b);
        EXPECT_EQ(a->restype, b->restype);
        switch (host::resultKind(a->restype)) {
        case ResultKind::text:
        case ResultKind::handle: EXPECT_STREQ(a->resval.rstring, b->resval.rstring); break;
        case ResultKind::point: EXPECT_EQ(b->resval.rpoint[2], 3); break;
        case ResultKind::real: EXPECT_EQ(a->resval.rreal, b->resval.rreal); break;
        case ResultKind::name: EXPECT_EQ(a->resval.rlname[0], b->resval.rlname[0]); break;
        case ResultKind::longInt: EXPECT_EQ(a->resval.rlong, b->resval.rlong); break;
        default: EXPECT_EQ(a->resval.rint, b->resval.rint);
        }
    }
    EXPECT_EQ(b, nullptr);
}

TEST(ResultBuffers, RefuseWhatIsNoGroup) {
    GroupList groups;
    host::ResbufChain list(acutBuildList(RTSHORT, 3, 0)), nan(acutBuildList(40, std::nan(""), 0));
    EXPECT_FALSE(host::groupsFromChain(list.get(), groups));
    EXPECT_FALSE(host::groupsFromChain(nan.get(), groups));
    EXPECT_TRUE(groups.empty());
    EXPECT_EQ(acutBuildList(7777, 1, 0), nullptr);
}

TEST(Filers, MemoryGivesItemsBackInOrderAndChecksTheirKinds) {
    AcDbDatabase database;
    host::MemoryFiler filer;
    filer.writeItem(L"name");
    filer.writeItem(2.5);
    filer.writeItem(Adesk::Int16(-3));
    filer.writeItem(database.layerZero());
    filer.writeItem(AcGePoint3d(1, 2, 3));
    filer.rewind();
    std::wstring name;
    double real = 0;
    Adesk::Int32 number = 0;
    AcDbObjectId id;
    EXPECT_EQ(filer.readItem(name), Acad::eOk);
    EXPECT_EQ(filer.readItem(&real), Acad::eOk);
    EXPECT_EQ(filer.readItem(&number), Acad::eOk);
    EXPECT_EQ(filer.readItem(&id), Acad::eOk);
    EXPECT_EQ(name, L"name");
    EXPECT_EQ(real + number, -0.5);
    EXPECT_EQ(id, database.layerZero());
    EXPECT_EQ(filer.readItem(&real), Acad::eFilerError) << "a point is no number";
    filer.resetFilerStatus();
    AcGePoint3d point;
    EXPECT_EQ(filer.readItem(&point), Acad::eOk);
    EXPECT_EQ(filer.readItem(&point), Acad::eEndOfFile);
}

TEST(Handles, AreHexadecimalText) {
    struct Row {
        const wchar_t* text;
        Adesk::UInt64 value;
    };
    const Row rows[] = {{L"0", 0},
                        {L"1f", 31},
                        {L"1F", 31},
                        {L"", 0},
                        {L"G", 0},
                        {L"1 ", 0},
                        {L"FFFFFFFFFFFFFFFF", ~0ull},
                        {L"10000000000000000", 0},
                        {L"00000000000000000A", 10}};
    for (const auto& row : rows) EXPECT_EQ(AcDbHandle(row.text).value(), row.value) << host::utf8(row.text);
    EXPECT_EQ(AcDbHandle(0xABCDEF).ascii(), L"ABCDEF");
    ACHAR buffer[17];
    AcDbHandle(~0ull).getIntoAsciiBuffer(buffer);
    EXPECT_STREQ(buffer, L"FFFFFFFFFFFFFFFF");
    AcDbHandle(0x123).getIntoAsciiBuffer(buffer, 3);
    EXPECT_STREQ(buffer, L"") << "too small a buffer gets nothing";
}

TEST(Colors, EveryIndexIsItsOwnNearest) {
    for (int i = 1; i < 256; ++i) {
        AcCmColor color, nearest;
        color.setColorIndex(Adesk::UInt16(i));
        nearest.setRGB(color.red(), color.green(), color.blue());
        AcCmColor back;
        back.setColorIndex(nearest.colorIndex());
        EXPECT_EQ(back.rgb(), color.rgb()) << i; // several indices may share a colour
    }
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(1), 0xFF0000u);
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(30), 0xFF7F00u);
    EXPECT_EQ(AcCmEntityColor::lookUpRGB(142), 0x007CA5u);
    EXPECT_EQ(AcCmColor().setColorIndex(258), Acad::eInvalidInput);
}

} // namespace

// The prompts of acedGet...: what serves, what is asked again, and how each ends.
#include <cmath>
#include <numbers>

#include "host/ed/prompting.h"
#include "host/os/keys.h"
#include "host/os/text.h"
#include "tests/host/ed/support.h"

using edtest::Bench;
using edtest::near;

namespace {

struct IntegerCase {
    const wchar_t* answers;
    int bits, status, value;
};
constexpr IntegerCase kIntegers[] = {
    {L"7\n", 0, RTNORM, 7},
    {L"-7\n", 0, RTNORM, -7},
    {L"\n", 0, RTNONE, 99},
    {L"\n3\n", RSG_NONULL, RTNORM, 3},
    {L"0 4\n", RSG_NOZERO, RTNORM, 4},
    {L"-1 0\n", RSG_NONEG, RTNORM, 0},
    {L"0 -1 5\n", RSG_NOZERO | RSG_NONEG, RTNORM, 5},
    {L"2.5 x 6\n", 0, RTNORM, 6},
    {L"99999999999 8\n", 0, RTNORM, 8},
    {L"^C\n", 0, RTCAN, 99},
    {L"all\n", 0, RTKWORD, 99},
    {L"", 0, RTCAN, 99}, // the answers have ended
};

} // namespace

TEST(Prompts, IntegersAskAgainUntilOneServes) {
    Bench bench;
    for (const IntegerCase& row : kIntegers) {
        int value = 99, status = 0;
        bench.answer(row.answers, [&] {
            acedInitGet(row.bits, L"All");
            status = acedGetInt(L"\nNumber: ", &value);
        });
        EXPECT_EQ(row.status, status) << host::utf8(row.answers);
        EXPECT_EQ(row.value, value) << host::utf8(row.answers);
        EXPECT_FALSE(bench.unread) << host::utf8(row.answers);
    }
}

TEST(Prompts, ShortsHoldSixteenBits) {
    Bench bench;
    short value = 0;
    bench.answer(L"32768 -32768\n", [&] { EXPECT_EQ(RTNORM, acedGetShort(L"", &value)); });
    EXPECT_EQ(-32768, value);
}

TEST(Prompts, RulesServeOnePromptOnly) {
    Bench bench;
    bench.answer(L"\n\n", [] {
        acedInitGet(0, L"Yes");
        int value = 0;
        EXPECT_EQ(RTNONE, acedGetInt(L"", &value));
        std::wstring word;
        EXPECT_EQ(RTNONE, acedGetKword(L"", word));
    });
    bench.answer(L"Yes 1\n", [] {
        int value = 0;
        EXPECT_EQ(RTNORM, acedGetInt(L"", &value)); // "Yes" is no keyword any more
        EXPECT_EQ(1, value);
    });
}

TEST(Prompts, DistancesAndAnglesComeFromTwoPointsToo) {
    Bench bench;
    double value = 0;
    bench.answer(L"3,4\n", [&] {
        const ads_point base{0, 0, 0};
        EXPECT_EQ(RTNORM, acedGetDist(base, L"", &value));
    });
    EXPECT_DOUBLE_EQ(5, value);
    bench.answer(L"1,1 1,8\n", [&] { EXPECT_EQ(RTNORM, acedGetDist(nullptr, L"", &value)); });
    EXPECT_DOUBLE_EQ(7, value);
    bench.answer(L"0,0 -1,0\n", [&] { EXPECT_EQ(RTNORM, acedGetOrient(nullptr, L"", &value)); });
    EXPECT_DOUBLE_EQ(std::numbers::pi, value);
    bench.answer(L"1/2\n", [&] { EXPECT_EQ(RTNORM, acedGetReal(L"", &value)); });
    EXPECT_DOUBLE_EQ(0.5, value);
}

TEST(Prompts, AnglesCountFromAngbaseAndOrientationsDoNot) {
    Bench bench;
    bench.database().setHeaderReal("$ANGBASE", 50, 90);
    double angle = 0, orientation = 0;
    bench.answer(L"0,0 0,1 0,0 0,1\n", [&] {
        EXPECT_EQ(RTNORM, acedGetAngle(nullptr, L"", &angle));
        EXPECT_EQ(RTNORM, acedGetOrient(nullptr, L"", &orientation));
    });
    EXPECT_NEAR(0, angle, 1e-12);
    EXPECT_NEAR(std::numbers::pi / 2, orientation, 1e-12);
}

TEST(Prompts, TextsEndAtBlanksOrKeepThem) {
    Bench bench;
    std::wstring word, line, empty = L"x";
    bench.answer(L"one two three\n\n", [&] {
        EXPECT_EQ(RTNORM, acedGetString(0, L"", word));
        EXPECT_EQ(RTNORM, acedGetString(1, L"", line));
        EXPECT_EQ(RTNORM, acedGetString(0, L"", empty));
    });
    EXPECT_EQ(L"one", word);
    EXPECT_EQ(L"two three", line);
    EXPECT_EQ(L"", empty);
    bench.answer(L"keys are words here\nmove 1,2 too\n", [&] {
        EXPECT_EQ(RTNORM, acedGetString(1, L"", word));
        EXPECT_EQ(RTNORM, acedGetString(1, L"", line));
    });
    EXPECT_EQ(L"keys are words here", word);
    EXPECT_EQ(L"move 1,2 too", line);
    std::wstring longest;
    bench.answer(std::wstring(600, L'a') + L"\n", [&] { acedGetString(1, L"", longest); });
    EXPECT_EQ(511u, longest.size());
    ACHAR narrow[4];
    bench.answer(L"abcdef\n", [&] { EXPECT_EQ(RTINPUTTRUNCATED, acedGetString(0, L"", narrow, 4)); });
    EXPECT_STREQ(L"abc", narrow);
}

TEST(Prompts, PointsSnapToWhatIsDrawn) {
    Bench bench;
    bench.addLine({0, 0, 0}, {10, 0, 0});
    bench.addLine({4, -5, 0}, {4, 5, 0});
    bench.addCircle({100, 100, 0}, 10);
    struct Case {
        const wchar_t* answer;
        AcGePoint3d expected;
    };
    const Case rows[] = {
        {L"end 9.9,0.1\n", {10, 0, 0}},    {L"mid 9,0\n", {5, 0, 0}},
        {L"int 4.1,0.1\n", {4, 0, 0}},     {L"cen 110,100\n", {100, 100, 0}},
        {L"qua 109,104\n", {110, 100, 0}}, {L"end 500,500 3,3\n", {3, 3, 0}}}; // nothing there: asked again
    for (const Case& row : rows) {
        ads_point point{};
        bench.answer(row.answer, [&] { EXPECT_EQ(RTNORM, acedGetPoint(nullptr, L"", point)); });
        EXPECT_TRUE(near({point[X], point[Y], point[Z]}, row.expected)) << host::utf8(row.answer);
    }
}

TEST(Prompts, CursorMovesAndHeldKeysDoNotAnswer) {
    Bench bench;
    ads_point point{};
    bench.answer(L"move 7,8 keys ctrl+shift ^C 1,2\n", [&] {
        EXPECT_EQ(RTCAN, acedGetPoint(nullptr, L"", point));
        EXPECT_TRUE(near(host::cursorPosition(), {7, 8, 0}));
        EXPECT_EQ(RTNORM, acedGetPoint(nullptr, L"", point));
        EXPECT_TRUE(near(host::cursorPosition(), {1, 2, 0})); // a script's point is a click
        EXPECT_TRUE(host::heldKeys().ctrl && host::heldKeys().shift && !host::heldKeys().alt);
    });
    EXPECT_EQ(1, point[X]);
    bench.answer(L"keys none 1,2\n", [&] { acedGetPoint(nullptr, L"", point); });
    EXPECT_FALSE(host::heldKeys().ctrl);
}

TEST(Prompts, RelativePointsGoFromTheBaseElseFromTheLastOne) {
    Bench bench;
    ads_point point{};
    bench.answer(L"10,10 @5,0\n", [&] {
        acedGetPoint(nullptr, L"", point);
        EXPECT_EQ(RTNORM, acedGetPoint(nullptr, L"", point));
    });
    EXPECT_TRUE(near({point[X], point[Y], point[Z]}, {15, 10, 0}));
    bench.answer(L"10,10 @5,0\n", [&] {
        const ads_point base{100, 0, 0};
        acedGetPoint(nullptr, L"", point);
        acedGetPoint(base, L"", point);
    });
    EXPECT_TRUE(near({point[X], point[Y], point[Z]}, {105, 0, 0}));
}

TEST(Prompts, OtherInputComesAsTyped) {
    Bench bench;
    ads_point point{};
    std::wstring typed;
    bench.answer(L"2x\n", [&] {
        acedInitGet(RSG_OTHER, L"All");
        EXPECT_EQ(RTKWORD, acedGetPoint(nullptr, L"", point));
        acedGetInput(typed);
    });
    EXPECT_EQ(L"2x", typed);
}

TEST(Prompts, EntitiesByPointByHandleAndByTheirAbsence) {
    Bench bench;
    const AcDbObjectId line = bench.addLine({0, 0, 0}, {10, 0, 0});
    const std::wstring handle = line.handle().ascii();
    struct Case {
        std::wstring answer;
        int status, errorNumber;
    };
    const Case rows[] = {{L"5,0\n", RTNORM, 0},
                         {L"(handent \"" + handle + L"\" 3,0)\n", RTNORM, 0},
                         {L"(handent \"FFFF\")\n", RTERROR, 7},
                         {L"50,50\n", RTERROR, 7},
                         {L"\n", RTERROR, 52},
                         {L"^C\n", RTCAN, 0},
                         {L"all\n", RTKWORD, 0}};
    for (const Case& row : rows) {
        ads_name entity{};
        ads_point at{};
        bench.answer(row.answer, [&] {
            acedInitGet(0, L"All");
            EXPECT_EQ(row.status, acedEntSel(L"", entity, at)) << host::utf8(row.answer);
        });
        AcDbObjectId found;
        if (row.status == RTNORM) {
            EXPECT_EQ(Acad::eOk, acdbGetObjectId(found, entity));
            EXPECT_EQ(line, found);
        }
        resbuf number;
        acedGetVar(L"ERRNO", &number);
        if (row.errorNumber) {
            EXPECT_EQ(row.errorNumber, number.resval.rint) << host::utf8(row.answer);
        }
    }
}

TEST(Prompts, CommandThatNeverStopsAskingIsUnwound) {
    Bench bench;
    bench.answer(L"", [] {
        EXPECT_THROW(
            for (;;) {
                int value = 0;
                acedGetInt(L"", &value);
            },
            host::CommandUnwound);
    });
}

// Front ends with file dialogs need to know what a prompt for a file is after.
TEST(Prompts, FilesSayWhetherTheyAreForSavingAndWhatTheyEndIn) {
    class Listening final : public host::FrontEnd {
    public:
        host::PromptReply ask(const host::PromptRequest& request) override {
            if (request.file) wishes.push_back(*request.file);
            host::PromptReply reply;
            reply.kind = host::PromptReply::Kind::exhausted;
            if (next < lines.size()) reply.kind = host::PromptReply::Kind::text, reply.text = lines[next++];
            return reply;
        }
        void print(const std::wstring&) override {}
        int messageBox(const host::MessageBox&) override { return kAnswerOk; }
        void open(const std::wstring&) override {}
        bool progress(const std::wstring&, double) override { return true; }
        std::vector<std::wstring> lines = {L"SAVEAS", L"/no/such/folder/x.dxf", L"OPEN", L"/no/such.dxf"};
        size_t next = 0;
        std::vector<host::FileWish> wishes;
    };
    const edtest::Bench bench;
    Listening frontEnd;
    host::setFrontEnd(&frontEnd);
    host::commandLoop();
    host::setFrontEnd(nullptr);
    ASSERT_EQ(2u, frontEnd.wishes.size());
    EXPECT_TRUE(frontEnd.wishes[0].saving);
    EXPECT_FALSE(frontEnd.wishes[1].saving);
    EXPECT_EQ(L"dxf", frontEnd.wishes[0].extensions);
    EXPECT_EQ(L"Open drawing", frontEnd.wishes[1].title);
}

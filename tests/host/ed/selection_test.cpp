// Selection sets: every way of selecting, filters, modes of code, and the sets' own operations.
#include "host/ed/selection.h"

#include "host/os/text.h"
#include "tests/host/ed/support.h"

using edtest::Bench;

namespace {

// Four objects apart from each other, in drawing order: a short line, a long one, a circle, one hidden.
class Selection : public testing::Test {
protected:
    Selection() {
        a_ = bench_.addLine({0, 0, 0}, {10, 0, 0});
        b_ = bench_.addLine({0, 20, 0}, {100, 20, 0});
        c_ = bench_.addCircle({50, 50, 0}, 5);
        hidden_ = bench_.addLine({0, 0, 0}, {10, 10, 0});
        const AcDbObjectId layer = bench_.addLayer(L"Hidden");
        bench_.putOnLayer(hidden_, L"Hidden");
        AcDbObjectPointer<AcDbLayerTableRecord>(layer, AcDb::kForWrite)->setIsOff(true);
    }

    static std::vector<AcDbObjectId> members(const ads_name set) {
        std::vector<AcDbObjectId> ids;
        Adesk::Int32 length = 0;
        acedSSLength(set, &length);
        for (Adesk::Int32 i = 0; i < length; ++i) {
            ads_name name;
            AcDbObjectId id;
            EXPECT_EQ(RTNORM, acedSSName(set, i, name));
            acdbGetObjectId(id, name);
            ids.push_back(id);
        }
        acedSSFree(set);
        return ids;
    }
    // What the answers of a script select; nothing for an empty selection or Esc.
    std::vector<AcDbObjectId> asked(const std::wstring& answers, const resbuf* filter = nullptr) {
        ads_name set{};
        transcript_ =
            bench_.answer(answers, [&] { status_ = acedSSGet(nullptr, nullptr, nullptr, filter, set); });
        return status_ == RTNORM ? members(set) : std::vector<AcDbObjectId>();
    }
    std::vector<AcDbObjectId> coded(const wchar_t* mode, const void* one = nullptr, const void* two = nullptr,
                                    const resbuf* filter = nullptr) {
        ads_name set{};
        status_ = acedSSGet(mode, one, two, filter, set);
        return status_ == RTNORM ? members(set) : std::vector<AcDbObjectId>();
    }
    size_t filtered(resbuf* chain) {
        const host::ResbufChain owner(chain);
        return coded(L"X", nullptr, nullptr, chain).size();
    }

    Bench bench_;
    AcDbObjectId a_, b_, c_, hidden_;
    std::string transcript_;
    int status_ = 0;
};

using Ids = std::vector<AcDbObjectId>;

} // namespace

TEST_F(Selection, EveryOptionOfThePromptSelects) {
    const struct {
        const wchar_t* answers;
        Ids expected;
    } rows[] = {
        {L"all\n\n", {a_, b_, c_}},
        {L"ALL\n\n", {a_, b_, c_}},
        {L"5,0\n\n", {a_}},
        {L"5,0 50,55\n\n", {a_, c_}},
        {L"30,40 5,0\n\n", {a_}}, // nothing at the first point
        {L"w -1,-1 11,11\n\n", {a_}},
        {L"w -1,-1 60,60\n\n", {a_, c_}}, // the long line sticks out
        {L"c -1,-1 60,60\n\n", {a_, b_, c_}},
        {L"window 40,40 60,60\n\n", {c_}},
        {L"wp 40,40 60,40 60,60 40,60 \n\n", {c_}},
        {L"cp 90,10 95,10 95,30 \n\n", {b_}},
        {L"f 5,-5 5,30 \n\n", {a_, b_}},
        {L"l\n\n", {c_}}, // the last that is shown
        {L"_last\n\n", {c_}},
        {L"all r 5,0 a\n\n", {b_, c_}},
        {L"all r all a 5,0\n\n", {a_}},
        {L"5,0 5,0\n\n", {a_}},
        {L"frobnicate 5,0\n\n", {a_}},
    };
    for (const auto& row : rows) EXPECT_EQ(row.expected, asked(row.answers)) << host::utf8(row.answers);
}

TEST_F(Selection, HandlesAndSymbolsNameObjectsEvenHiddenOnes) {
    EXPECT_EQ(Ids{b_}, asked(L"(handent \"" + b_.handle().ascii() + L"\")\n\n"));
    EXPECT_EQ(Ids{hidden_}, asked(L"(handent \"" + hidden_.handle().ascii() + L"\")\n\n"));
    resbuf value;
    value.restype = RTENAME;
    acdbGetAdsName(value.resval.rlname, c_);
    acedPutSym(L"ring", &value);
    EXPECT_EQ(Ids{c_}, asked(L"!RING\n\n"));
    EXPECT_TRUE(asked(L"!nothing\n\n").empty());
    EXPECT_THAT(transcript_, testing::HasSubstr("The drawing has no such object."));
}

TEST_F(Selection, PreviousIsTheLastSetAskedFor) {
    asked(L"5,0\n\n");
    EXPECT_EQ(Ids{a_}, asked(L"p\n\n"));
    AcDbObjectPointer<AcDbEntity>(a_, AcDb::kForWrite)->erase();
    EXPECT_TRUE(asked(L"p\n\n").empty()); // what is gone isn't selected
    EXPECT_EQ(RTERROR, status_);
}

TEST_F(Selection, CountsAreTold) {
    const host::ResbufChain circles(acutBuildList(RTDXF0, L"CIRCLE", 0));
    asked(L"all\n\n", circles.get());
    EXPECT_THAT(transcript_, testing::HasSubstr("3 found, 2 were filtered out, 1 total"));
    asked(L"5,0 5,0\n\n");
    EXPECT_THAT(transcript_, testing::HasSubstr("1 found (1 duplicate)"));
}

TEST_F(Selection, EscapeAndEnterAreToldApart) {
    asked(L"all ^C\n");
    EXPECT_EQ(RTCAN, status_);
    asked(L"\n");
    EXPECT_EQ(RTERROR, status_);
    asked(L"all\n"); // the answers end before the Enter
    EXPECT_EQ(RTCAN, status_);
}

TEST_F(Selection, ModesOfCode) {
    const ads_point low{-1, -1, 0}, high{60, 60, 0}, on{5, 0, 0};
    EXPECT_EQ((Ids{a_, b_, c_, hidden_}), coded(L"X")); // the whole drawing, hidden or not
    EXPECT_EQ((Ids{a_, b_, c_}), coded(L"A"));
    EXPECT_EQ((Ids{a_, c_}), coded(L"W", low, high));
    EXPECT_EQ((Ids{a_, b_, c_}), coded(L"_C", low, high));
    EXPECT_EQ(Ids{c_}, coded(L"L"));
    EXPECT_EQ(Ids{a_}, coded(nullptr, on));
    const host::ResbufChain fence(acutBuildList(RTPOINT, low, RTPOINT, on, RTPOINT, high, 0));
    EXPECT_EQ((Ids{a_, b_, c_}), coded(L"F", fence.get()));
    coded(L"I");
    EXPECT_EQ(RTERROR, status_);
}

TEST_F(Selection, SinglePicksEndThemselves) {
    ads_name set{};
    bench_.answer(L"5,0\n50,55\n\n", [&] { status_ = acedSSGet(L"_:S", nullptr, nullptr, nullptr, set); });
    EXPECT_EQ(Ids{a_}, members(set));
    EXPECT_TRUE(bench_.unread);
}

TEST_F(Selection, PromptsOfTheCallerAreShown) {
    const wchar_t* prompts[] = {L"\nPick borders: ", L"\nLeave borders out: "};
    ads_name set{};
    const std::string transcript =
        bench_.answer(L"all r 5,0\n\n", [&] { acedSSGet(L":$", prompts, nullptr, nullptr, set); });
    EXPECT_EQ((Ids{b_, c_}), members(set));
    EXPECT_THAT(transcript, testing::StartsWith("Pick borders: all\n"));
    EXPECT_THAT(transcript, testing::HasSubstr("Leave borders out: 5,0\n"));
}

TEST_F(Selection, FiltersCompareKindsLayersAndValues) {
    bench_.putOnLayer(b_, L"Hidden");
    AcDbObjectPointer<AcDbEntity>(a_, AcDb::kForWrite)->setColorIndex(1);
    const short red = 1;
    EXPECT_EQ(3u, filtered(acutBuildList(RTDXF0, L"LINE", 0)));
    EXPECT_EQ(3u, filtered(acutBuildList(RTDXF0, L"L*", 0)));
    EXPECT_EQ(4u, filtered(acutBuildList(RTDXF0, L"line,Circle", 0)));
    EXPECT_EQ(0u, filtered(acutBuildList(RTDXF0, L"ARC", 0)));
    EXPECT_EQ(2u, filtered(acutBuildList(8, L"Hid*", 0)));
    EXPECT_EQ(2u, filtered(acutBuildList(RTDXF0, L"LINE", 8, L"Hidden", 0)));
    EXPECT_EQ(1u, filtered(acutBuildList(62, int(red), 0)));
    EXPECT_EQ(1u, filtered(acutBuildList(-4, L"<and", RTDXF0, L"CIRCLE", 8, L"0", -4, L"and>", 0)));
    EXPECT_EQ(2u, filtered(acutBuildList(-4, L"<or", RTDXF0, L"CIRCLE", 62, 1, -4, L"or>", 0)));
    EXPECT_EQ(3u, filtered(acutBuildList(-4, L"<NOT", RTDXF0, L"CIRCLE", -4, L"NOT>", 0)));
    EXPECT_EQ(1u, filtered(acutBuildList(-4, L">=", 40, 5.0, 0)));
    EXPECT_EQ(0u, filtered(acutBuildList(-4, L">", 40, 5.0, 0)));
    EXPECT_EQ(1u, filtered(acutBuildList(-4, L"<", 40, 5.1, 0)));
}

TEST_F(Selection, SetsAddAndRemoveEachOnce) {
    ads_name first, second, set{};
    acdbGetAdsName(first, a_);
    acdbGetAdsName(second, b_);
    EXPECT_EQ(RTNORM, acedSSAdd(nullptr, nullptr, set));
    EXPECT_EQ(RTNORM, acedSSAdd(first, set, set));
    EXPECT_EQ(RTNORM, acedSSAdd(first, set, set));
    EXPECT_EQ(RTNORM, acedSSMemb(first, set));
    EXPECT_NE(RTNORM, acedSSMemb(second, set));
    Adesk::Int32 length = 0;
    EXPECT_EQ(RTNORM, acedSSLength(set, &length));
    EXPECT_EQ(1, length);
    EXPECT_EQ(RTNORM, acedSSDel(first, set));
    EXPECT_EQ(RTERROR, acedSSDel(first, set));
    ads_name none;
    EXPECT_EQ(RTERROR, acedSSName(set, 0, none));
    EXPECT_EQ(RTNORM, acedSSFree(set));
    EXPECT_EQ(RTERROR, acedSSFree(set)); // freed sets and entities' names are no sets
    EXPECT_EQ(RTERROR, acedSSLength(first, &length));
}

TEST_F(Selection, WhatIsPickedFirstServesTheImpliedMode) {
    ads_name one, set{};
    acdbGetAdsName(one, b_);
    acedSSAdd(one, nullptr, set);
    acedSSSetFirst(nullptr, set);
    acedSSFree(set);
    EXPECT_EQ(Ids{b_}, coded(L"I"));
    resbuf *grips = nullptr, *picks = nullptr;
    EXPECT_EQ(RTNORM, acedSSGetFirst(&grips, &picks));
    ASSERT_TRUE(picks);
    EXPECT_EQ(Ids{b_}, members(picks->resval.rlname));
    acutRelRb(grips);
    acutRelRb(picks);
    acedSSSetFirst(nullptr, nullptr);
    EXPECT_TRUE(coded(L"I").empty());
}

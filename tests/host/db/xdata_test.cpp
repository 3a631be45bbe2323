// Extended data: limit, order, replacement, what is refused.
#include "support.h"

namespace {

class Xdata : public testing::Test {
protected:
    Xdata() {
        acdbHostApplicationServices()->setWorkingDatabase(&database);
        for (const wchar_t* app : {L"ALPHA", L"BETA", L"GAMMA"}) EXPECT_EQ(acdbRegApp(app), RTNORM);
        mark.open(addMark(database), AcDb::kForWrite);
    }
    Acad::ErrorStatus set(resbuf* chain) {
        host::ResbufChain owner(chain);
        return mark->setXData(chain);
    }
    std::string stored() const { return mark->tail() ? text(mark->tail()->xdata) : std::string(); }

    AcDbDatabase database;
    AcDbObjectPointer<TestMark> mark;
};

TEST_F(Xdata, ReplacesPerApplicationAndKeepsTheOrder) {
    EXPECT_EQ(set(acutBuildList(1001, L"ALPHA", 1070, 1, 1001, L"BETA", 1000, L"two", 0)), Acad::eOk);
    EXPECT_EQ(set(acutBuildList(1001, L"GAMMA", 1040, 3.0, 0)), Acad::eOk);
    EXPECT_EQ(set(acutBuildList(1001, L"alpha", 1071, 99, 0)), Acad::eOk);
    EXPECT_EQ(stored(), "1001 alpha\n1071 99\n1001 BETA\n1000 two\n1001 GAMMA\n1040 3.0\n");
    EXPECT_EQ(set(acutBuildList(1001, L"BETA", 0)), Acad::eOk) << "a bare name takes the data away";
    EXPECT_EQ(stored(), "1001 alpha\n1071 99\n1001 GAMMA\n1040 3.0\n");
    host::ResbufChain gamma(mark->xData(L"gamma"));
    ASSERT_TRUE(gamma.get() && gamma.get()->rbnext);
    EXPECT_STREQ(gamma.get()->resval.rstring, L"GAMMA");
    EXPECT_EQ(gamma.get()->rbnext->resval.rreal, 3);
    EXPECT_EQ(mark->xData(L"BETA"), nullptr);
}

TEST_F(Xdata, RefusesWhatItCantHold) {
    const double point[] = {1, std::nan(""), 3};
    EXPECT_EQ(set(acutBuildList(1001, L"NOBODY", 1070, 1, 0)), Acad::eRegappIdNotFound);
    EXPECT_EQ(set(acutBuildList(1070, 1, 0)), Acad::eInvalidInput);
    EXPECT_EQ(set(acutBuildList(1001, L"ALPHA", 40, 1.0, 0)), Acad::eInvalidInput);
    EXPECT_EQ(set(acutBuildList(1001, L"ALPHA", 1010, point, 0)), Acad::eInvalidInput);
    EXPECT_EQ(mark->setXData(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(stored(), "");
}

// The host's bytes: a text its length and 3, a real 9, a point 25, a short 3, a long 5.
TEST_F(Xdata, CountsItsBytes) {
    const double point[] = {1, 2, 3};
    EXPECT_EQ(mark->xDataSizeLeft(), 16383);
    EXPECT_EQ(set(acutBuildList(1001, L"ALPHA", 1000, L"abc", 1040, 1.0, 1010, point, 1070, 1, 1071, 1, 0)),
              Acad::eOk);
    EXPECT_EQ(mark->xDataSizeLeft(), 16383 - (8 + 6 + 9 + 25 + 3 + 5));
    const std::wstring fits(16383 - 56 - 7 - 3, L'x'); // BETA counts 7, the text 3 beside its length
    EXPECT_EQ(set(acutBuildList(1001, L"BETA", 1000, (fits + L"x").c_str(), 0)), Acad::eXdataSizeExceeded);
    EXPECT_EQ(set(acutBuildList(1001, L"BETA", 1000, fits.c_str(), 0)), Acad::eOk);
    EXPECT_EQ(mark->xDataSizeLeft(), 0);
}

} // namespace

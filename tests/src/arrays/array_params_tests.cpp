// The payload of arrays along one curve.
#include <gtest/gtest.h>

#include "arrays/one_curve/array_params.h"
#include "host/os/text.h"

using namespace corvane;

namespace {

std::optional<ArrayParams> read(const std::wstring& items) {
    const auto record = DecodeArray(PayloadText(L"AAC1;g=AAC_1;ph=2F;ch=30;" + items));
    return record ? std::optional(record->params) : std::nullopt;
}

} // namespace

TEST(ArrayPayload, StandsInItsOrderWithSixteenDigits) {
    ArrayRecord record{L"AAC_X", L"2F", L"", {}};
    record.params.settings.spacing = 1.0 / 7;
    record.params.start.direction = -1;
    record.params.settings.gaps.kind = kSine;
    EXPECT_EQ(L"AAC1;g=AAC_X;ph=2F;ch=;cm=0;cn=10;sp=0.1428571428571428;rm=1;mg=1;"
              L"sm=0;s1=100;s2=100;sc1=100;sc2=100;st1=0.3333333333333333;st2=0.6666666666666666;"
              L"dm=2;d1=100;d2=100;dc1=100;dc2=100;dt1=0.3333333333333333;dt2=0.6666666666666666;"
              L"dir=-1;se=0;ra=0;3d=0;rsa=0;rea=0;",
              EncodeArray(record).text());
}

TEST(ArrayPayload, ComesBackAsItWent) {
    ArrayRecord record{L"AAC_X", L"2F", L"30", {}};
    record.params.settings = {
        kBySpacing, 77, 0.125, 3, {4, 1, 2, 3, 4, 0.125, 0.875}, {2, 50, 60, 70, 80, 0, 1}};
    record.params.start = {-1, true, -2.5};
    record.params.alongTangent = false;
    record.params.acrossPath = true;
    record.params.startTwist = -30;
    record.params.endTwist = 720.5;
    const auto back = DecodeArray(EncodeArray(record));
    ASSERT_TRUE(back);
    EXPECT_EQ(record.name, back->name);
    EXPECT_EQ(record.prototype, back->prototype);
    EXPECT_EQ(record.path, back->path);
    EXPECT_EQ(record.params, back->params);
}

TEST(ArrayPayload, NumbersComeBackWithinTheirLimits) {
    const auto params = read(L"cn=-4;sp=-3;mg=0;st1=-1;st2=7;dt1=2;dt2=-0.5;dir=0;");
    ASSERT_TRUE(params);
    EXPECT_EQ(2, params->settings.count);
    EXPECT_EQ(1e-6, params->settings.spacing);
    EXPECT_EQ(1, params->settings.gain);
    EXPECT_EQ(0, params->settings.sizes.t1);
    EXPECT_EQ(1, params->settings.sizes.t2);
    EXPECT_EQ(1, params->settings.gaps.t1);
    EXPECT_EQ(0, params->settings.gaps.t2);
    EXPECT_EQ(1, params->start.direction);
    for (const wchar_t* huge : {L"cn=1e300;", L"cn=99999999999;", L"mg=1e300;dir=-1e300;cm=1e99;"})
        EXPECT_TRUE(read(huge)) << host::utf8(huge);
    EXPECT_EQ(kMostCopies, read(L"cn=1e300;")->settings.count);
}

TEST(ArrayPayload, WhatIsMissingOrNoNumberKeepsItsDefault) {
    for (const wchar_t* items : {L"", L"cn=many;sp=;ra=nan;s1=inf;", L"cn=33", L"rm;3d;"})
        EXPECT_EQ(ArrayParams(), read(items)) << host::utf8(items);
    EXPECT_EQ(33, read(L"cn=33;se=1")->settings.count);
    EXPECT_FALSE(read(L"cn=33;se=1")->start.fromEnd) << "a value without its end is lost";
}

TEST(ArrayPayload, NeedsItsNameAndBothHandles) {
    for (const wchar_t* text :
         {L"", L"AAC1;", L"AAC1;g=1;ph=2;", L"AAC1;g=1;ch=2;", L"AAC1;ph=1;ch=2", L"AAC1;g=1;ph=1;ch=2"})
        EXPECT_FALSE(DecodeArray(PayloadText(text))) << host::utf8(text);
    EXPECT_TRUE(DecodeArray(PayloadText(L"AAC1;g=;ph=;ch=;")));
}

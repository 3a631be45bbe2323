// Prompts of scatters.
#include "scatter/random/asking.h"

#include "core/messages.h"
#include "core/selection.h"

namespace corvane::scatter {

bool AskReal(const CString& prompt, double& value, double otherwise, bool mayBeEmpty, double least,
             double most) {
    while (true) {
        ads_real answer = 0;
        const int status = acedGetReal(prompt, &answer);
        if (status == RTNONE && mayBeEmpty) return value = otherwise, true;
        if (status != RTNORM && status != RTNONE) return false;
        if (status == RTNORM && answer >= least && answer <= most) return value = answer, true;
        PrintText(TranslateFormat(L"\n数值范围必须在 %.3f ~ %.3f 之间。", least, most));
    }
}

std::optional<double> AskDistance(const wchar_t* prompt) {
    while (true) {
        ads_real distance = 0;
        const int status = acedGetDist(nullptr, Translate(prompt), &distance);
        if (status != RTNORM && status != RTNONE) return std::nullopt;
        if (status == RTNORM && distance > 0) return distance;
        PrintLine(L"\n距离必须大于0。");
    }
}

namespace {

bool askTemplates(ScatterParams& params) {
    const SelectionSet set = SelectionSet::AskKinds(L"\n选择要散布的物体(允许文字/图块/椭圆/圆，可多选): ",
                                                    L"TEXT MTEXT INSERT ELLIPSE CIRCLE 3DSOLID", L"");
    for (long i = 0; i < set.length(); ++i)
        if (IsTemplate(set.at(i))) params.templates.push_back(set.at(i));
    if (params.templates.empty()) PrintLine(L"\n未选择有效模板物体。");
    return !params.templates.empty();
}

} // namespace

bool AskPattern(const wchar_t* prompt, ScatterParams& params) {
    acedInitGet(0, L"C F S");
    std::wstring word;
    const int status = acedGetKword(Translate(prompt), word);
    if (status == RTCAN) return false;
    if (word == L"S") {
        params.pattern = PatternType::templates;
        return askTemplates(params);
    }
    if (word == L"F") params.pattern = PatternType::square;
    if (!word.empty() && word != L"C" && word != L"F") PrintLine(L"\n类型无效，按圆处理。");
    const auto size = AskDistance(L"\n请输入圆直径/方边长: ");
    if (size) params.baseSize = *size;
    return size.has_value();
}

bool AskSizes(ScatterParams& params) {
    params.sizeRandom = AskYesNo(L"\n是否大小随机变异？[Y/N]（Y）: ", L"", true);
    if (!params.sizeRandom) return true;
    if (!AskReal(Translate(L"\n请输入缩放范围倍数最大值(<100) <3.0>: "), params.scaleMax, 3, true,
                 kLeastScale, kMostScale) ||
        !AskReal(Translate(L"\n请输入缩放范围倍数最小值(>0.001) <0.3>: "), params.scaleMin, 0.3, true,
                 kLeastScale, kMostScale))
        return false;
    if (params.scaleMin > params.scaleMax) std::swap(params.scaleMin, params.scaleMax);
    return true;
}

void AskCount(ScatterParams& params) {
    while (true) {
        short count = 0;
        if (acedGetShort(Translate(L"\n请输入散布物体总数 <100>: "), &count) != RTNORM) count = 100;
        if (count > 0) return void(params.count = count);
        PrintLine(L"\n数值必须大于0。");
    }
}

void AskOverlap(ScatterParams& params) {
    params.deleteOverlap = AskYesNo(L"\n是否删除重叠的图案？[Y/N]（N）: ", L"", false);
}

} // namespace corvane::scatter

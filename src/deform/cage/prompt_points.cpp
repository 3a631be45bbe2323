// Prompts for points.
#include "deform/cage/prompt_points.h"

namespace corvane::deform {

AcGePoint3d InUcs(AcGePoint3d world) {
    WcsToUcs(world);
    return world;
}

PromptPoint AskPoint(const PointQuestion& question) {
    PromptPoint answer;
    ads_point base{}, result{};
    if (question.base) {
        const AcGePoint3d from = InUcs(*question.base);
        base[X] = from.x, base[Y] = from.y, base[Z] = from.z;
    }
    acedInitGet(question.bits, question.keywords);
    answer.status = question.corner ? acedGetCorner(base, question.prompt, result)
                                    : acedGetPoint(question.base ? base : nullptr, question.prompt, result);
    if (answer.status == RTKWORD) {
        std::wstring word;
        acedGetInput(word);
        if (!word.empty()) answer.keyword = word[0];
    }
    if (answer.status == RTNORM) {
        answer.world.set(result[X], result[Y], result[Z]);
        UcsToWcs(answer.world);
    }
    return answer;
}

} // namespace corvane::deform

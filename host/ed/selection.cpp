// Selection sets, the prompt that fills them, and the selection modes of code.
#include "host/ed/selection.h"

#include <algorithm>
#include <map>
#include <memory>
#include <unordered_set>

#include "host/ed/editor.h"
#include "host/ed/frontend.h"
#include "host/ed/interpreter.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/os/text.h"

namespace host {
namespace {

// Ids in the order of selection, each once.
struct SetData {
    std::vector<AcDbObjectId> ids;
    std::unordered_set<AcDbObjectId> present;
    bool add(AcDbObjectId id) {
        return !id.isNull() && present.insert(id).second && (ids.push_back(id), true);
    }
    bool remove(AcDbObjectId id) { return present.erase(id) && std::erase(ids, id); }
};

struct Sets {
    std::map<std::int64_t, std::shared_ptr<SetData>> open;
    std::int64_t nextName = 1;
    std::vector<AcDbObjectId> previous;
    SetData pickFirst;
    std::vector<std::vector<AcGePoint3d>> crossings; // of the last prompt, in world coordinates
};
Sets& sets() {
    static Sets all;
    return all;
}

// The second word of a set's name tells it from an entity's name.
constexpr std::int64_t kSetMark = 0x5E1EC7;

SetData* find(const ads_name name) {
    const auto at = name && name[1] == kSetMark ? sets().open.find(name[0]) : sets().open.end();
    return at == sets().open.end() ? nullptr : at->second.get();
}
void giveName(std::shared_ptr<SetData> data, ads_name name) {
    name[0] = sets().nextName++, name[1] = kSetMark;
    sets().open[name[0]] = std::move(data);
}

AcDbDatabase* database() { return acdbHostApplicationServices()->workingDatabase(); }

const AcDbEntity* live(AcDbObjectId id) {
    const AcDbEntity* entity = id.isValid() ? AcDbEntity::cast(id.cell()->object) : nullptr;
    return entity && !entity->isErased() ? entity : nullptr;
}
bool passes(AcDbObjectId id, const resbuf* filter) {
    const AcDbEntity* entity = live(id);
    return entity && (!filter || matchesFilter(*entity, filter));
}

const AcDbLayerTableRecord* layerOf(const AcDbEntity& entity) {
    const AcDbObjectId id = entity.layerId();
    return id.isValid() ? AcDbLayerTableRecord::cast(id.cell()->object) : nullptr;
}
bool onLockedLayer(AcDbObjectId id) {
    const AcDbEntity* entity = live(id);
    const AcDbLayerTableRecord* layer = entity ? layerOf(*entity) : nullptr;
    return layer && layer->isLocked();
}

// On layers that are neither off nor frozen: what the user may pick.
bool selectable(const AcDbEntity& entity) {
    const AcDbLayerTableRecord* layer = layerOf(entity);
    return entity.visibility() == AcDb::kVisible && (!layer || (!layer->isOff() && !layer->isFrozen()));
}

std::vector<AcDbObjectId> ofSpace(AcDbObjectId spaceId, bool shownOnly) {
    std::vector<AcDbObjectId> ids;
    AcDbObjectPointer<AcDbBlockTableRecord> space(spaceId, AcDb::kForRead);
    if (!space) return ids;
    for (const AcDbObjectId id : space->entities())
        if (const AcDbEntity* entity = live(id); entity && (!shownOnly || selectable(*entity)))
            ids.push_back(id);
    return ids;
}

std::vector<AcDbObjectId> wholeDrawing() {
    std::vector<AcDbObjectId> ids = ofSpace(database()->modelSpaceId(), false);
    for (const AcDbObjectId id : ofSpace(database()->paperSpaceId(), false)) ids.push_back(id);
    return ids;
}
AcDbObjectId lastEntity() {
    const std::vector<AcDbObjectId> ids = ofSpace(database()->currentSpaceId(), true);
    return ids.empty() ? AcDbObjectId() : ids.back();
}
std::vector<AcGePoint3d> rectangle(const AcGePoint3d& a, const AcGePoint3d& b) {
    return {ucsToWorld(a), ucsToWorld({b.x, a.y, a.z}), ucsToWorld(b), ucsToWorld({a.x, b.y, b.z})};
}

// The running "Select objects" prompt.
class SelectionPrompt {
public:
    SelectionPrompt(const resbuf* filter, const void* prompts, InputRules rules, bool single)
        : filter_(filter), rules_(std::move(rules)), single_(single) {
        if (const auto* texts = static_cast<const ACHAR* const*>(prompts))
            addText_ = texts[0], removeText_ = texts[1];
    }
    // False for Esc.
    bool run() {
        for (;;) {
            PromptRequest request;
            request.kind = PromptRequest::Kind::objects;
            request.text = removing_ ? removeText_ : addText_;
            const PromptReply reply = askFrontEnd(request);
            if (reply.kind == PromptReply::Kind::cancel) return false;
            if (reply.kind == PromptReply::Kind::enter) return true;
            take(reply);
            if (single_ && !data_->ids.empty()) return true;
        }
    }
    std::shared_ptr<SetData> data() const { return data_; }

private:
    void take(const PromptReply& reply) {
        if (reply.kind == PromptReply::Kind::entity) return apply({reply.entity});
        if (reply.kind == PromptReply::Kind::point) return pick(reply.point);
        if (const auto named = parseEntityAnswer(reply.text)) {
            const AcDbObjectId id = entityOf(*named);
            return id.isNull() ? printLine(L"\nThe drawing has no such object.") : apply({id});
        }
        if (const auto point = parsePoint(reply.text, pointFrame()))
            return pick(point->world ? worldToUcs(point->point) : point->point);
        option(lower(reply.text.starts_with(L'_') ? reply.text.substr(1) : reply.text));
    }

    void option(const std::wstring& word) {
        const auto is = [&](const wchar_t* full, size_t least) {
            return word.size() >= least && std::wstring_view(full).starts_with(word);
        };
        if (word == L"all") return apply(ofSpace(database()->currentSpaceId(), true));
        if (word == L"wp" || is(L"wpolygon", 3)) return region(askPath(), false);
        if (word == L"cp" || is(L"cpolygon", 3)) return region(askPath(), true);
        if (is(L"window", 1)) return window(false);
        if (is(L"crossing", 1)) return window(true);
        if (is(L"fence", 1)) return fence();
        if (is(L"previous", 1)) return apply(sets().previous);
        if (is(L"last", 1)) return apply({lastEntity()});
        if (is(L"remove", 1)) return void(removing_ = true);
        if (is(L"add", 1)) return void(removing_ = false);
        printLine(
            L"\nExpected a point, or: All/Window/Crossing/WPolygon/CPolygon/Fence/Previous/Last/Add/Remove.");
    }

    void pick(const AcGePoint3d& ucs) {
        setLastPoint(ucs);
        const AcDbObjectId id = entityAt(ucsToWorld(ucs), pickTolerance());
        apply(id.isNull() ? std::vector<AcDbObjectId>() : std::vector<AcDbObjectId>{id});
    }
    void window(bool crossing) {
        ads_point a, b;
        if (acedGetPoint(nullptr, L"\nSpecify first corner: ", a) != RTNORM ||
            acedGetCorner(a, L"\nSpecify opposite corner: ", b) != RTNORM)
            return;
        region(rectangle({a[X], a[Y], a[Z]}, {b[X], b[Y], b[Z]}), crossing);
    }
    std::vector<AcGePoint3d> askPath() {
        std::vector<AcGePoint3d> points;
        ads_point p;
        while (acedGetPoint(nullptr, points.empty() ? L"\nSpecify first point: " : L"\nSpecify next point: ",
                            p) == RTNORM)
            points.push_back(ucsToWorld({p[X], p[Y], p[Z]}));
        return points;
    }
    void region(const std::vector<AcGePoint3d>& polygon, bool crossing) {
        if (crossing && !removing_) sets().crossings.push_back(polygon);
        apply(entitiesIn(polygon, crossing));
    }
    void fence() { apply(entitiesAlong(askPath())); }

    void apply(const std::vector<AcDbObjectId>& ids) {
        size_t found = 0, filtered = 0, again = 0;
        for (const AcDbObjectId id : ids) {
            if (!live(id)) continue;
            ++found;
            if (!passes(id, filter_))
                ++filtered;
            else if (removing_ ? !data_->remove(id) : !data_->add(id))
                ++again;
        }
        std::wstring text = L"\n" + std::to_wstring(found) + L" found";
        if (filtered)
            text +=
                L", " + std::to_wstring(filtered) + (filtered == 1 ? L" was" : L" were") + L" filtered out";
        if (again && !removing_) text += L" (" + std::to_wstring(again) + L" duplicate)";
        if (data_->ids.size() != found || removing_)
            text += L", " + std::to_wstring(data_->ids.size()) + L" total";
        printLine(text);
    }

    std::shared_ptr<SetData> data_ = std::make_shared<SetData>();
    const resbuf* filter_;
    InputRules rules_;
    bool single_, removing_ = false;
    std::wstring addText_ = L"\nSelect objects: ", removeText_ = L"\nRemove objects: ";
};

// What a mode of acedSSGet gives without asking.
std::vector<AcDbObjectId> byMode(const std::wstring& mode, const void* pt1, const void* pt2) {
    const auto point = [](const void* p) {
        const double* v = static_cast<const double*>(p);
        return AcGePoint3d(v[0], v[1], v[2]);
    };
    const auto path = [&] {
        std::vector<AcGePoint3d> points;
        for (const auto* item = static_cast<const resbuf*>(pt1); item; item = item->rbnext)
            points.push_back(ucsToWorld(point(item->resval.rpoint)));
        return points;
    };
    if (mode == L"X") return wholeDrawing();
    if (mode == L"A") return ofSpace(database()->currentSpaceId(), true);
    if (mode == L"I") return sets().pickFirst.ids;
    if (mode == L"P") return sets().previous;
    if (mode == L"L") return {lastEntity()};
    if (mode == L"W" && pt1 && pt2) return entitiesIn(rectangle(point(pt1), point(pt2)), false);
    if (mode == L"C" && pt1 && pt2) return entitiesIn(rectangle(point(pt1), point(pt2)), true);
    if (mode == L"WP") return entitiesIn(path(), false);
    if (mode == L"CP") return entitiesIn(path(), true);
    if (mode == L"F") return entitiesAlong(path());
    if (mode.empty() && pt1) return {entityAt(ucsToWorld(point(pt1)), pickTolerance())};
    return {};
}

// Leaves out what lies on locked layers, and tells how many.
void leaveOutLocked(SetData& data) {
    SetData free;
    for (const AcDbObjectId id : data.ids)
        if (!onLockedLayer(id)) free.add(id);
    const size_t locked = data.ids.size() - free.ids.size();
    if (locked == 0) return;
    printLine(L"\n" + std::to_wstring(locked) +
              (locked == 1 ? L" was on a locked layer.\n" : L" were on locked layers.\n"));
    data = std::move(free);
}

int asked(const resbuf* filter, const void* prompts, const std::wstring& options, ads_name set) {
    const auto wants = [&](wchar_t letter) { return options.find(letter) != options.npos; };
    sets().crossings.clear();
    SelectionPrompt prompt(filter, prompts, takeInputRules(), wants(L'S'));
    if (!prompt.run()) return RTCAN;
    if (wants(L'L')) leaveOutLocked(*prompt.data());
    if (prompt.data()->ids.empty()) return RTERROR;
    sets().previous = prompt.data()->ids;
    giveName(prompt.data(), set);
    return RTNORM;
}

} // namespace

const std::vector<std::vector<AcGePoint3d>>& lastCrossings() { return sets().crossings; }

} // namespace host

using host::find;
using host::sets;

int acedSSGet(const ACHAR* mode, const void* pt1, const void* pt2, const resbuf* filter, ads_name set) {
    set[0] = set[1] = 0;
    if (!host::database()) return RTERROR;
    std::wstring plain = host::upper(mode ? mode : L"");
    if (plain.starts_with(L"_")) plain.erase(0, 1);
    const size_t options = plain.find_first_of(L":_");
    const std::wstring behind = options == plain.npos ? L"" : plain.substr(options);
    plain = plain.substr(0, options);
    if (plain.empty() && !pt1) return host::asked(filter, nullptr, behind, set);
    if (plain.empty() && behind.find(L'$') != behind.npos) return host::asked(filter, pt1, behind, set);
    auto data = std::make_shared<host::SetData>();
    for (const AcDbObjectId id : host::byMode(plain, pt1, pt2))
        if (host::passes(id, filter)) data->add(id);
    if (data->ids.empty()) return RTERROR;
    host::giveName(std::move(data), set);
    return RTNORM;
}

int acedSSFree(const ads_name set) {
    return set[1] == host::kSetMark && sets().open.erase(set[0]) ? RTNORM : RTERROR;
}

int acedSSLength(const ads_name set, Adesk::Int32* length) {
    const auto* data = find(set);
    if (!data) return RTERROR;
    return *length = Adesk::Int32(data->ids.size()), RTNORM;
}
int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity) {
    const auto* data = find(set);
    if (!data || index < 0 || size_t(index) >= data->ids.size()) return RTERROR;
    return acdbGetAdsName(entity, data->ids[size_t(index)]) == Acad::eOk ? RTNORM : RTERROR;
}
int acedSSAdd(const ads_name entity, const ads_name set, ads_name result) {
    host::SetData* data = find(set);
    AcDbObjectId id;
    const bool named = entity && acdbGetObjectId(id, entity) == Acad::eOk;
    if ((entity && !named) || (set && !data)) return RTERROR;
    if (!data) {
        host::giveName(std::make_shared<host::SetData>(), result);
        data = find(result);
    } else if (result != set) {
        ads_name_set(set, result);
    }
    if (named) data->add(id);
    return RTNORM;
}
int acedSSDel(const ads_name entity, const ads_name set) {
    AcDbObjectId id;
    host::SetData* data = find(set);
    return data && acdbGetObjectId(id, entity) == Acad::eOk && data->remove(id) ? RTNORM : RTERROR;
}
int acedSSMemb(const ads_name entity, const ads_name set) {
    AcDbObjectId id;
    const host::SetData* data = find(set);
    return data && acdbGetObjectId(id, entity) == Acad::eOk && data->present.count(id) ? RTNORM : RTERROR;
}

int acedSSSetFirst(const ads_name gripSet, const ads_name pickSet) {
    const host::SetData* data = pickSet ? find(pickSet) : gripSet ? find(gripSet) : nullptr;
    sets().pickFirst = data ? *data : host::SetData();
    host::frontEnd().redraw();
    return RTNORM;
}
int acedSSGetFirst(resbuf** gripSet, resbuf** pickSet) {
    for (resbuf** result : {gripSet, pickSet}) {
        if (!result) continue;
        *result = nullptr;
        if (sets().pickFirst.ids.empty()) continue;
        *result = acutNewRb(RTPICKS);
        host::giveName(std::make_shared<host::SetData>(sets().pickFirst), (*result)->resval.rlname);
    }
    return RTNORM;
}

int acedEntSel(const ACHAR* text, ads_name entity, ads_point point) {
    const host::InputRules rules = host::takeInputRules();
    host::PromptRequest request;
    request.kind = host::PromptRequest::Kind::entity;
    request.text = text ? text : L"\nSelect object: ";
    for (const auto& keyword : rules.keywords) request.keywords.push_back(keyword.shown);
    const host::PromptReply reply = host::askFrontEnd(request);
    const auto fail = [](short number) {
        host::setSessionVariable(L"ERRNO", std::to_wstring(number));
        return RTERROR;
    };
    constexpr short kNothingThere = 7, kEnter = 52;
    if (reply.kind == host::PromptReply::Kind::cancel) return RTCAN;
    if (reply.kind == host::PromptReply::Kind::enter) return fail(kEnter);
    AcGePoint3d at = reply.point;
    AcDbObjectId id = reply.entity;
    if (reply.kind == host::PromptReply::Kind::text) {
        if (const host::Keyword* keyword = host::matchKeyword(rules.keywords, reply.text))
            return host::setLastInput(keyword->global), RTKWORD;
        if (const auto named = host::parseEntityAnswer(reply.text)) {
            id = host::entityOf(*named);
            if (id.isNull())
                return host::printLine(L"\nThe drawing has no such object."), fail(kNothingThere);
            if (named->point)
                at = *named->point;
            else if (AcDbObjectPointer<AcDbEntity> found(id, AcDb::kForRead); found) {
                AcGePoint3dArray ends;
                if (found->getOsnapPoints(AcDb::kOsModeEnd, at, at, ends) == Acad::eOk && !ends.isEmpty())
                    at = host::worldToUcs(ends[0]);
            }
        } else if (const auto typed = host::parsePoint(reply.text, host::pointFrame())) {
            at = typed->world ? host::worldToUcs(typed->point) : typed->point;
        } else {
            host::printLine(L"\nA point on an object is needed, or (handent \"2F\").");
            return fail(kNothingThere);
        }
    }
    if (id.isNull()) id = host::entityAt(host::ucsToWorld(at), host::pickTolerance());
    if (id.isNull() || acdbGetAdsName(entity, id) != Acad::eOk) return fail(kNothingThere);
    host::setLastPoint(at);
    point[X] = at.x, point[Y] = at.y, point[Z] = at.z;
    return RTNORM;
}

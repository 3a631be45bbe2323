// Dragging: the prompt that waits, the samples in between, and the transient that shows the entity.
#include "host/ed/jig.h"

#include <cmath>
#include <numbers>

#include "host/db/database.h"
#include "host/ed/editor.h"
#include "host/ed/prompting.h"
#include "host/os/text.h"
#include "host/view/transients.h"

HOST_DEFINE_ABSTRACT_CLASS(AcEdJig, AcRxObject)

namespace host {

// One run of drag().
class JigDrag : public CursorListener {
public:
    explicit JigDrag(AcEdJig& jig) : jig_(jig) { jig_.drag_ = this; }
    ~JigDrag() override {
        hide();
        jig_.drag_ = nullptr;
    }
    JigDrag(const JigDrag&) = delete;
    JigDrag& operator=(const JigDrag&) = delete;

    AcEdJig::DragStatus run();
    void cursorMoved(const AcGePoint3d& world) override;

    AcEdJig::DragStatus point(AcGePoint3d& value, const AcGePoint3d* base);
    AcEdJig::DragStatus measure(double& value, const AcGePoint3d* base, bool angle);

private:
    enum class Wish { nothing, point, distance, angle };

    void wish(Wish what, const AcGePoint3d* base);
    AcEdJig::DragStatus sample();
    int ask();
    AcEdJig::DragStatus keywordStatus() const;
    void show();
    void hide();
    double measured(const AcGePoint3d& from, bool angle) const;
    template <class Value>
    AcEdJig::DragStatus given(Value& value, const Value& now, std::optional<Value>& last);

    AcEdJig& jig_;
    Wish wish_ = Wish::nothing;
    std::optional<AcGePoint3d> base_; // world
    AcGePoint3d cursor_ = cursorPosition();
    std::optional<AcEdJig::DragStatus> answered_; // how the prompt ended, for the last sample
    std::optional<double> number_;                // its answer, where one was asked for
    std::optional<AcGePoint3d> lastPoint_;
    std::optional<double> lastNumber_;
    AcDbEntity* shown_ = nullptr;
    bool sampling_ = false;
};

void JigDrag::wish(Wish what, const AcGePoint3d* base) {
    wish_ = what;
    base_ = base ? std::optional(*base) : std::nullopt;
}

template <class Value>
AcEdJig::DragStatus JigDrag::given(Value& value, const Value& now, std::optional<Value>& last) {
    if (answered_ && *answered_ != AcEdJig::kNormal) return *answered_;
    value = now;
    const bool same = !answered_ && last && *last == now;
    last = now;
    return same ? AcEdJig::kNoChange : AcEdJig::kNormal;
}

AcEdJig::DragStatus JigDrag::point(AcGePoint3d& value, const AcGePoint3d* base) {
    wish(Wish::point, base);
    return given(value, cursor_, lastPoint_);
}

double JigDrag::measured(const AcGePoint3d& from, bool angle) const {
    if (!angle) return from.distanceTo(cursor_);
    const AcGePoint3d a = worldToUcs(from), b = worldToUcs(cursor_);
    const double turned = std::atan2(b.y - a.y, b.x - a.x);
    return turned < 0 ? turned + 2 * std::numbers::pi : turned;
}

AcEdJig::DragStatus JigDrag::measure(double& value, const AcGePoint3d* base, bool angle) {
    wish(angle ? Wish::angle : Wish::distance, base);
    const AcGePoint3d from = base ? *base : ucsToWorld(pointFrame().last);
    return given(value, number_ ? *number_ : measured(from, angle), lastNumber_);
}

AcEdJig::DragStatus JigDrag::sample() {
    sampling_ = true;
    const AcEdJig::DragStatus status = jig_.sampler();
    if (status == AcEdJig::kNormal && jig_.update()) show();
    sampling_ = false;
    return status;
}

void JigDrag::cursorMoved(const AcGePoint3d& world) {
    if (sampling_) return;
    cursor_ = world;
    sample();
}

void JigDrag::show() {
    AcDbEntity* entity = jig_.entity();
    if (entity != shown_) hide();
    if (!entity) return;
    const AcArray<int> everywhere;
    if (!shown_)
        acgiGetTransientManager()->addTransient(entity, kAcGiDirectShortTerm, 0, everywhere);
    else
        acgiGetTransientManager()->updateTransient(entity, everywhere);
    shown_ = entity;
}

void JigDrag::hide() {
    if (shown_) acgiGetTransientManager()->eraseTransient(shown_, AcArray<int>());
    shown_ = nullptr;
}

int JigDrag::ask() {
    int bits = jig_.controls_ & AcEdJig::kNullResponseAccepted ? 0 : RSG_NONULL;
    if (jig_.controls_ & AcEdJig::kNoZeroResponseAccepted) bits |= RSG_NOZERO;
    if (jig_.controls_ & AcEdJig::kNoNegativeResponseAccepted) bits |= RSG_NONEG;
    acedInitGet(bits, jig_.keywords_.c_str());
    ads_point base{}, result{};
    const AcGePoint3d from = base_ ? worldToUcs(*base_) : pointFrame().last;
    base[X] = from.x, base[Y] = from.y, base[Z] = from.z;
    const ACHAR* prompt = jig_.prompt_.c_str();
    if (wish_ == Wish::point) {
        const int status = acedGetPoint(base_ ? base : nullptr, prompt, result);
        if (status == RTNORM) cursor_ = ucsToWorld({result[X], result[Y], result[Z]});
        return status;
    }
    ads_real number = 0;
    const int status =
        wish_ == Wish::angle ? acedGetOrient(base, prompt, &number) : acedGetDist(base, prompt, &number);
    if (status == RTNORM) number_ = number;
    return status;
}

AcEdJig::DragStatus JigDrag::keywordStatus() const {
    std::wstring chosen;
    acedGetInput(chosen);
    const std::vector<Keyword> keywords = parseKeywords(jig_.keywords_);
    for (size_t i = 0; i < keywords.size() && i < 9; ++i)
        if (keywords[i].global == chosen) return AcEdJig::DragStatus(AcEdJig::kKW1 + int(i));
    return AcEdJig::kOther;
}

AcEdJig::DragStatus JigDrag::run() {
    if (sample() == AcEdJig::kCancel) return AcEdJig::kCancel;
    show();
    if (wish_ == Wish::nothing) return AcEdJig::kOther;
    switch (ask()) {
    case RTNORM: answered_ = AcEdJig::kNormal; break;
    case RTNONE: answered_ = AcEdJig::kNull; break;
    case RTKWORD: answered_ = keywordStatus(); break;
    default: answered_ = AcEdJig::kCancel;
    }
    const AcEdJig::DragStatus status = sample();
    return *answered_ == AcEdJig::kNormal ? status : *answered_;
}

} // namespace host

AcEdJig::~AcEdJig() = default;

AcEdJig::DragStatus AcEdJig::drag() {
    host::JigDrag dragging(*this);
    return dragging.run();
}

AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& value) {
    return drag_ ? drag_->point(value, nullptr) : kOther;
}
AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& value, const AcGePoint3d& base) {
    return drag_ ? drag_->point(value, &base) : kOther;
}
AcEdJig::DragStatus AcEdJig::acquireDist(double& value) {
    return drag_ ? drag_->measure(value, nullptr, false) : kOther;
}
AcEdJig::DragStatus AcEdJig::acquireDist(double& value, const AcGePoint3d& base) {
    return drag_ ? drag_->measure(value, &base, false) : kOther;
}
AcEdJig::DragStatus AcEdJig::acquireAngle(double& value) {
    return drag_ ? drag_->measure(value, nullptr, true) : kOther;
}
AcEdJig::DragStatus AcEdJig::acquireAngle(double& value, const AcGePoint3d& base) {
    return drag_ ? drag_->measure(value, &base, true) : kOther;
}

AcDbObjectId AcEdJig::append() {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbEntity* made = entity();
    if (!database || !made) return {};
    AcDbObjectPointer<AcDbBlockTableRecord> space(database->currentSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    if (!space || space->appendAcDbEntity(id, made) != Acad::eOk) return {};
    made->close();
    return id;
}

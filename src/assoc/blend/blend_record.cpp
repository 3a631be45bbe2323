// Blend records from xdata and into it.
#include "assoc/blend/blend_record.h"

#include <string>

#include "core/app_names.h"
#include "core/selection.h"

namespace corvane {
namespace {

constexpr int kOldest = 1, kNewest = 3;
constexpr int kName = 1001, kText = 1000, kReal = 1040, kInteger = 1070, kPlainInteger = 70;

// The values of an application's xdata behind its name, by type, each in their order.
struct Values {
    std::vector<int> integers;
    std::vector<double> reals;
    std::vector<std::wstring> texts;
    bool startsWithInteger = false;
};

Values valuesOf(const AcDbObject& object) {
    Values values;
    const host::ResbufChain chain(object.xData(RegisteredAppNames::kBlend));
    for (const resbuf* group = chain.get(); group; group = group->rbnext) {
        const bool integer = group->restype == kInteger || group->restype == kPlainInteger;
        if (group->rbnext && group->restype == kName)
            values.startsWithInteger =
                group->rbnext->restype == kInteger || group->rbnext->restype == kPlainInteger;
        if (integer) values.integers.push_back(group->resval.rint);
        if (group->restype == kReal) values.reals.push_back(group->resval.rreal);
        if (group->restype == kText)
            values.texts.emplace_back(group->resval.rstring ? group->resval.rstring : L"");
    }
    return values;
}

// Takes what is there, one after the other; the fallback behind the end.
class Integers {
public:
    explicit Integers(const std::vector<int>& all) : all_(all) {}
    int next(int otherwise) { return at_ < all_.size() ? all_[at_++] : otherwise; }
    size_t left() const { return all_.size() - at_; }

private:
    const std::vector<int>& all_;
    size_t at_ = 0;
};

void readNumbers(const Values& values, BlendRecord& record) {
    Integers integers(values.integers);
    const int version = integers.next(0);
    const CopyFamily usual;
    record.family.count = integers.next(usual.count);
    record.family.spacing.accel = integers.next(usual.spacing.accel);
    record.family.spacing.kind = integers.next(usual.spacing.kind);
    if (version >= 2) {
        record.reversed1 = integers.next(0) != 0;
        record.reversed2 = integers.next(0) != 0;
    }
    if (version >= 3) record.hasAnchors = integers.next(0) != 0;
    StoredShares stored = kUsualShares;
    for (short& share : stored) share = short(integers.next(share));
    record.family.spacing.d = FromStored(stored);
    if (values.reals.size() < 6) record.hasAnchors = false;
    if (!record.hasAnchors) return;
    const auto& r = values.reals;
    record.anchor1.set(r[0], r[1], r[2]);
    record.anchor2.set(r[3], r[4], r[5]);
}

bool readCurves(const Values& values, AcDbDatabase* database, BlendRecord& record) {
    const auto resolve = [&](size_t at, AcDbObjectId& id) {
        return at < values.texts.size() &&
               IdFromHandleText(database, values.texts[at].c_str(), id, false) == 0;
    };
    record.hasGuide1 = resolve(2, record.guide1);
    record.hasGuide2 = resolve(3, record.guide2);
    return resolve(0, record.curve1) && resolve(1, record.curve2);
}

// Builds a chain of result buffers.
class Chain {
public:
    Chain() : head_(nullptr) {}
    ~Chain() { acutRelRb(head_); }
    Chain(const Chain&) = delete;
    Chain& operator=(const Chain&) = delete;
    void text(int code, const std::wstring& value) { acutNewString(value.c_str(), add(code).resval.rstring); }
    void integer(int value) { add(kInteger).resval.rint = short(value); }
    void real(double value) { add(kReal).resval.rreal = value; }
    const resbuf* get() const { return head_; }

private:
    resbuf& add(int code) {
        resbuf* made = acutNewRb(code);
        (last_ ? last_->rbnext : head_) = made;
        return *(last_ = made);
    }
    resbuf* head_;
    resbuf* last_ = nullptr;
};

// In the drawing's own table, which need not be that of the current drawing.
bool isRegistered(AcDbDatabase* database) {
    AcDbRegAppTable* table = nullptr;
    if (!database || database->getRegAppTable(table, AcDb::kForRead) != Acad::eOk) return false;
    const bool has = table->has(RegisteredAppNames::kBlend);
    table->close();
    return has;
}

std::wstring handleText(AcDbObjectId id, bool present) {
    return present && !id.isNull() ? id.handle().ascii() : std::wstring();
}

} // namespace

std::vector<AcDbObjectId> BlendRecord::Curves() const {
    std::vector<AcDbObjectId> curves{curve1, curve2};
    if (hasGuide1) curves.push_back(guide1);
    if (hasGuide2) curves.push_back(guide2);
    return curves;
}

std::optional<BlendRecord> ReadBlend(const AcDbObject& reference) {
    const Values values = valuesOf(reference);
    if (!values.startsWithInteger || values.integers.empty()) return {};
    if (values.integers[0] < kOldest || values.integers[0] > kNewest) return {};
    BlendRecord record;
    readNumbers(values, record);
    if (!readCurves(values, reference.database(), record)) return {};
    return record;
}

std::optional<BlendRecord> ReadBlend(AcDbObjectId reference) {
    AcDbObjectPointer<AcDbObject> opened(reference, AcDb::kForRead);
    return opened ? ReadBlend(*opened) : std::nullopt;
}

Acad::ErrorStatus WriteBlend(AcDbObjectId reference, const BlendRecord& record) {
    Chain chain;
    chain.text(kName, RegisteredAppNames::kBlend);
    chain.integer(kNewest);
    chain.integer(record.family.count);
    chain.integer(record.family.spacing.accel);
    chain.integer(record.family.spacing.kind);
    chain.integer(record.reversed1);
    chain.integer(record.reversed2);
    chain.integer(record.hasAnchors);
    for (const short share : ToStored(record.family.spacing.d)) chain.integer(share);
    if (record.hasAnchors)
        for (const AcGePoint3d& p : {record.anchor1, record.anchor2})
            chain.real(p.x), chain.real(p.y), chain.real(p.z);
    chain.text(kText, record.curve1.handle().ascii());
    chain.text(kText, record.curve2.handle().ascii());
    chain.text(kText, handleText(record.guide1, record.hasGuide1));
    chain.text(kText, handleText(record.guide2, record.hasGuide2));
    if (!isRegistered(reference.database()) && acdbRegApp(RegisteredAppNames::kBlend) == RTERROR)
        return Acad::eRegappIdNotFound;
    AcDbObjectPointer<AcDbObject> opened(reference, AcDb::kForWrite);
    return opened ? opened->setXData(chain.get()) : opened.openStatus();
}

} // namespace corvane

// AAC and AAC2: prompts, and arrays from what they give. The dialog is in aac_dialog.h.
#include "arrays/one_curve/one_curve_commands.h"

#include <algorithm>

#include "arrays/one_curve/aac_dialog.h"
#include "core/appending.h"
#include "core/curve_services.h"
#include "core/selection.h"

namespace corvane {
namespace {

constexpr double kNoLength = 1e-6;
constexpr wchar_t kNamePrefix[] = L"AAC_";

double lengthOf(AcDbObjectId path) {
    AcDbObjectPointer<AcDbCurve> curve(path, AcDb::kForRead);
    return curve ? CurveLength(*curve) : 0;
}

PayloadText payloadOf(const ArrayJob& job, const std::wstring& name) {
    return EncodeArray({name.empty() ? FreshArrayName(kNamePrefix) : name, HandleText(job.source.prototype),
                        HandleText(job.source.path), job.params});
}

// What AAC was begun on: a path, or an array of its own.
struct Begun {
    ArrayJob job;
    std::wstring name;      // of the array; empty for a new one
    AcDbObjectId reference; // of the array that is edited
};

std::optional<Begun> reopen(AcDbObjectId reference) {
    const PayloadText payload = ReadArrayPayload(reference, kArrayAlongCurve);
    const auto record = DecodeArray(payload);
    if (!record) return std::nullopt;
    Begun begun;
    begun.reference = reference;
    begun.name = record->name;
    begun.job.params = record->params;
    begun.job.source.prototype = ObjectOfKey(payload, L"ph");
    begun.job.source.base = MiddleOf(begun.job.source.prototype);
    const AcDbObjectId path = ObjectOfKey(payload, L"ch");
    if (IsCurve(path)) begun.job.source.path = path;
    return begun;
}

std::optional<Begun> askWhatToBegin() {
    const AcDbObjectId picked = PickEntity(L"\n请选择一条任意曲线或本命令创建的匿名块>>");
    if (!IsCurve(picked)) return reopen(picked);
    Begun begun;
    begun.job.source.path = picked;
    return begun;
}

// Asks for whatever isn't known yet. False when the user leaves a prompt.
bool complete(Begun& begun) {
    ArrayJob& job = begun.job;
    if (job.source.path.isNull()) job.source.path = PickCurve(L"\n找不到参考曲线，请重新选择一条曲线>>");
    if (job.source.path.isNull()) return false;
    if (job.source.prototype.isNull() && !AskPrototype(job)) return false;
    if (begun.reference.isNull() && !AskStart(job)) return false;
    const double length = lengthOf(job.source.path);
    if (length < kNoLength) return false;
    if (begun.reference.isNull())
        job.params.settings.spacing = std::max({length / 20, length / 1000, kLeastSpacing});
    return true;
}

// The curves of a selection, those inside blocks as temporaries; 3D polylines aren't taken.
class BatchPaths {
public:
    explicit BatchPaths(const SelectionSet& set) {
        for (long i = 0; i < set.length(); ++i) take(set.at(i));
    }
    ~BatchPaths() {
        for (const AcDbObjectId id : temporaries_)
            if (AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite); object) object->erase();
    }
    BatchPaths(const BatchPaths&) = delete;
    BatchPaths& operator=(const BatchPaths&) = delete;
    const std::vector<AcDbObjectId>& paths() const { return paths_; }

private:
    static bool serves(const AcDbEntity* entity) {
        return AcDbCurve::cast(entity) && !AcDb3dPolyline::cast(entity);
    }
    void take(AcDbObjectId id) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity) return;
        if (serves(entity.object())) paths_.push_back(id);
        AcDbVoidPtrArray parts;
        if (AcDbBlockReference::cast(entity.object())) entity->explode(parts);
        entity.close();
        for (void* part : parts) addPart(std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(part)));
    }
    void addPart(std::unique_ptr<AcDbEntity> part) {
        AcDbObjectId id;
        if (!serves(part.get()) || AppendToCurrentSpace(part.get(), id) != Acad::eOk) return;
        part.release();
        temporaries_.push_back(id);
        paths_.push_back(id);
    }

    std::vector<AcDbObjectId> paths_, temporaries_;
};

} // namespace

void ArrayAlongCurveCommand() {
    const CommandFrame frame;
    auto begun = askWhatToBegin();
    if (!begun || !complete(*begun)) return;
    CAACDlg dialog(begun->job);
    if (RunModal(dialog) != IDOK) return;
    auto contents = MakeCopies(begun->job.source, begun->job.params);
    if (!contents) return;
    const PayloadText payload = payloadOf(begun->job, begun->name);
    if (begun->reference.isNull())
        CreateArray(std::move(*contents), payload, kArrayAlongCurve);
    else
        ReplaceArray(begun->reference, std::move(*contents), payload, kArrayAlongCurve);
}

void ArrayLikeBlockCommand() {
    const CommandFrame frame;
    const auto model = reopen(PickEntity(L"\n请选择SCVN_ArrayAlignCurve创建的匿名块作为参考>>"));
    if (!model || model->job.source.prototype.isNull()) return;
    const SelectionSet set = SelectionSet::AskKinds(
        L"\n请选择一批曲线>>", L"INSERT 3DPOLYLINE LWPOLYLINE POLYLINE SPLINE ELLIPSE CIRCLE ARC LINE", L"");
    const BatchPaths batch(set);
    ArrayJob job = model->job;
    for (const AcDbObjectId path : batch.paths()) {
        job.source.path = path;
        if (lengthOf(path) <= kNoLength) continue;
        if (auto contents = MakeCopies(job.source, job.params))
            CreateArray(std::move(*contents), payloadOf(job, {}), kArrayAlongCurve);
    }
}

} // namespace corvane

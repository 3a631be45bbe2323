// The filter object, group by group: points, plane, the flag that shows it, and two matrices of three rows.
#include "host/ent/block_clip.h"

#include "host/db/database.h"
#include "host/db/dictionary.h"
#include "host/db/kept.h"

namespace host {
namespace {

constexpr wchar_t kFilters[] = L"ACAD_FILTER", kSpatial[] = L"SPATIAL";
constexpr size_t kRows = 3, kColumns = 4, kMatrix = kRows * kColumns;

const AcDbDictionary* dictionaryIn(const AcDbDictionary* parent, const wchar_t* key) {
    AcDbObjectId id;
    return parent && parent->getAt(key, id) == Acad::eOk ? AcDbDictionary::cast(id.cell()->object) : nullptr;
}

const KeptObject* filterOf(const AcDbObject& reference) {
    const AcDbObjectId extension = reference.extensionDictionary();
    if (extension.isNull() || extension.isErased()) return nullptr;
    const AcDbDictionary* filters = dictionaryIn(AcDbDictionary::cast(extension.cell()->object), kFilters);
    AcDbObjectId id;
    if (!filters || filters->getAt(kSpatial, id) != Acad::eOk) return nullptr;
    return dynamic_cast<const KeptObject*>(id.cell()->object);
}

AcGeMatrix3d matrixOf(const std::vector<double>& entries, size_t first) {
    AcGeMatrix3d matrix;
    for (size_t row = 0; row < kRows; ++row)
        for (size_t column = 0; column < kColumns; ++column)
            matrix.entry[row][column] = entries[first + row * kColumns + column];
    return matrix;
}

std::optional<BlockClip> read(const GroupList& groups) {
    BlockClip clip;
    std::vector<double> entries;
    for (const Group g : groups) {
        switch (g.code) {
        case 10: clip.boundary.m_aptPoints.append(AcGePoint2d(g.real, 0)); break;
        case 20:
            if (!clip.boundary.m_aptPoints.isEmpty()) clip.boundary.m_aptPoints.last().y = g.real;
            break;
        case 210: clip.normal.x = g.real; break;
        case 220: clip.normal.y = g.real; break;
        case 230: clip.normal.z = g.real; break;
        case 11: clip.origin.x = g.real; break;
        case 21: clip.origin.y = g.real; break;
        case 31: clip.origin.z = g.real; break;
        case 71: clip.shown = g.integer != 0; break;
        case 40: entries.push_back(g.real); break;
        default: break;
        }
    }
    // A distance of a front plane shares the code with the matrices and stands before them.
    if (entries.size() < 2 * kMatrix || clip.boundary.m_aptPoints.length() < 2) return std::nullopt;
    const size_t first = entries.size() - 2 * kMatrix;
    clip.boundary.m_xInverseBlockRefXForm = matrixOf(entries, first);
    clip.boundary.m_xToClipSpace = matrixOf(entries, first + kMatrix);
    return clip;
}

void append(GroupList& groups, const AcGeMatrix3d& matrix) {
    for (size_t row = 0; row < kRows; ++row)
        for (size_t column = 0; column < kColumns; ++column)
            groups.append(Group::ofReal(40, matrix.entry[row][column]));
}

GroupList written(const BlockClip& clip) {
    GroupList groups;
    groups.append(Group::ofText(100, "AcDbFilter"));
    groups.append(Group::ofText(100, "AcDbSpatialFilter"));
    groups.append(Group::ofInteger(70, clip.boundary.m_aptPoints.length()));
    for (const AcGePoint2d& p : clip.boundary.m_aptPoints)
        groups.append(Group::ofReal(10, p.x)), groups.append(Group::ofReal(20, p.y));
    const double triples[2][3] = {{clip.normal.x, clip.normal.y, clip.normal.z},
                                  {clip.origin.x, clip.origin.y, clip.origin.z}};
    for (int axis = 0; axis < 3; ++axis) groups.append(Group::ofReal(210 + 10 * axis, triples[0][axis]));
    for (int axis = 0; axis < 3; ++axis) groups.append(Group::ofReal(11 + 10 * axis, triples[1][axis]));
    groups.append(Group::ofInteger(71, clip.shown));
    groups.append(Group::ofInteger(72, 0));
    groups.append(Group::ofInteger(73, 0));
    append(groups, clip.boundary.m_xInverseBlockRefXForm);
    append(groups, clip.boundary.m_xToClipSpace);
    return groups;
}

// The dictionary of filters, made when it isn't there.
AcDbObjectId filtersFor(AcDbObjectId reference) {
    AcDbObjectPointer<AcDbObject> object(reference, AcDb::kForWrite);
    if (!object) return {};
    if (object->extensionDictionary().isNull() && object->createExtensionDictionary() != Acad::eOk) return {};
    AcDbObjectPointer<AcDbDictionary> extension(object->extensionDictionary(), AcDb::kForWrite);
    AcDbObjectId filters;
    if (!extension || extension->getAt(kFilters, filters) == Acad::eOk) return filters;
    auto made = std::make_unique<AcDbDictionary>();
    if (extension->setAt(kFilters, made.get(), filters) != Acad::eOk) return {};
    made.release()->close();
    return filters;
}

Acad::ErrorStatus write(AcDbObjectId reference, const BlockClip& clip) {
    AcDbObjectPointer<AcDbDictionary> filters(filtersFor(reference), AcDb::kForWrite);
    if (!filters) return filters.openStatus();
    auto made = std::make_unique<KeptObject>("SPATIAL_FILTER");
    made->setGroups(written(clip));
    AcDbObjectId id;
    if (auto es = filters->setAt(kSpatial, made.get(), id); es != Acad::eOk) return es;
    made.release()->close();
    return Acad::eOk;
}

} // namespace

std::vector<AcGePoint3d> BlockClip::corners(const AcDbBlockReference& reference) const {
    const AcGePoint2dArray& p = boundary.m_aptPoints;
    std::vector<AcGePoint2d> flat(p.begin(), p.end());
    if (flat.size() == 2) flat = {p[0], {p[1].x, p[0].y}, p[1], {p[0].x, p[1].y}};
    const AcGeMatrix3d toWorld =
        reference.blockTransform() * boundary.m_xInverseBlockRefXForm * boundary.m_xToClipSpace.inverse();
    std::vector<AcGePoint3d> world;
    for (const AcGePoint2d& c : flat) world.push_back(toWorld * AcGePoint3d(c.x, c.y, 0));
    return world;
}

std::optional<BlockClip> blockClip(const AcDbBlockReference& reference) {
    const KeptObject* filter = filterOf(reference);
    return filter ? read(filter->groups()) : std::nullopt;
}

Acad::ErrorStatus setBlockClip(AcDbObjectId reference, const std::vector<AcGePoint3d>& polygon,
                               const AcGeVector3d& normal) {
    if (polygon.size() < 3 || normal.isZeroLength()) return Acad::eInvalidInput;
    BlockClip clip;
    {
        AcDbObjectPointer<AcDbBlockReference> object(reference, AcDb::kForRead);
        if (!object) return object.openStatus();
        if (object->blockTransform().isSingular()) return Acad::eInvalidInput;
        clip.boundary.m_xInverseBlockRefXForm = object->blockTransform().inverse();
    }
    clip.normal = normal.normal();
    clip.origin = polygon.front();
    clip.boundary.m_xToClipSpace = AcGeMatrix3d::worldToPlane(clip.normal) *
                                   AcGeMatrix3d::translation(AcGePoint3d::kOrigin - clip.origin);
    for (const AcGePoint3d& world : polygon) {
        const AcGePoint3d p = clip.boundary.m_xToClipSpace * world;
        clip.boundary.m_aptPoints.append(AcGePoint2d(p.x, p.y));
    }
    return write(reference, clip);
}

Acad::ErrorStatus showBlockClip(AcDbObjectId reference, bool on) {
    std::optional<BlockClip> clip;
    if (AcDbObjectPointer<AcDbBlockReference> object(reference, AcDb::kForRead); object)
        clip = blockClip(*object);
    if (!clip) return Acad::eKeyNotFound;
    clip->shown = on;
    return write(reference, *clip);
}

Acad::ErrorStatus eraseBlockClip(AcDbObjectId reference) {
    AcDbObjectPointer<AcDbObject> object(reference, AcDb::kForWrite);
    const KeptObject* filter = object ? filterOf(*object) : nullptr;
    if (!filter) return Acad::eKeyNotFound;
    AcDbObjectPointer<AcDbObject> open(filter->objectId(), AcDb::kForWrite);
    return open ? open->erase() : open.openStatus();
}

} // namespace host

// The copies of an array along one curve: from path, object and parameters to entities.
#pragma once
#include <optional>

#include "arrays/common/editable_array.h"
#include "arrays/common/frames.h"
#include "arrays/common/guide.h"
#include "arrays/one_curve/array_params.h"
#include "core/host/entities.h"

namespace corvane {

struct ArraySource {
    AcDbObjectId path, prototype;
    AcGePoint3d base; // of the prototype: the point that comes to lie on the path
};

// The copies in the order of the array, turned, scaled and placed; curves among them remember the direction
// of the path in their xdata. Copies that fail are left out. The insertion is the path's point at the first
// of them, or the middle of the first copy. Nothing when the path or the prototype can't be opened or the
// path is too short.
std::optional<ArrayContents> MakeCopies(const ArraySource& source, const ArrayParams& params);

// How a copy is moved: from the object's base to the place, with its size at `position` in 0..1.
AcGeMatrix3d CopyPlacement(const ArrayParams& params, const AcGePoint3d& base, const Frame& object,
                           const GuidePoint& place, double position,
                           const std::optional<AcGeVector3d>& reference = {});

// True for block references, texts and plane curves: objects with a plane that can be set across a path.
bool HasOwnPlane(AcDbObjectId object);
// The frame that the object brings along: X and Z of a block reference, the plane and direction of a text,
// the plane of a curve; the world's for others.
Frame ObjectFrame(const AcDbEntity& object);

// The direction of a path that a curve among an array's copies remembers; nothing for other objects.
std::optional<AcGeVector3d> RememberedDirection(const AcDbObject& object);
// Into the xdata of an entity. The application must be registered.
Acad::ErrorStatus RememberDirection(AcDbEntity& entity, const AcGeVector3d& direction);

} // namespace corvane

// Basic types, open modes, status codes and constants of the drawing database: what every
// header of the host names. No behaviour lives here but the texts of the status codes.
#pragma once
#include <cstdint>
#include <string>

using ACHAR = wchar_t;

namespace Adesk {
using Boolean = bool;
inline constexpr bool kTrue = true;
inline constexpr bool kFalse = false;
using Int8 = std::int8_t;
using Int16 = std::int16_t;
using Int32 = std::int32_t;
using Int64 = std::int64_t;
using UInt8 = std::uint8_t;
using UInt16 = std::uint16_t;
using UInt32 = std::uint32_t;
using UInt64 = std::uint64_t;
using LongPtr = std::intptr_t;
using ULongPtr = std::uintptr_t;
using IntDbId = std::intptr_t;
using GsMarker = std::intptr_t;
} // namespace Adesk

// Results of host operations. eOk is 0, so a status can be compared with 0.
namespace Acad {
enum ErrorStatus {
    eOk = 0,
    eNotImplementedYet = 1,
    eNotApplicable,
    eInvalidInput,
    eAmbiguousInput,
    eAmbiguousOutput,
    eOutOfMemory,
    eBufferTooSmall,
    eInvalidOpenState,
    eEntityInInactiveLayout,
    eHandleExists,
    eNullHandle,
    eBrokenHandle,
    eUnknownHandle,
    eHandleInUse,
    eNullObjectPointer,
    eNullObjectId,
    eNullBlockName,
    eContainerNotEmpty,
    eNullEntityPointer,
    eIllegalEntityType,
    eKeyNotFound,
    eDuplicateKey,
    eInvalidIndex,
    eCharacterNotFound,
    eDuplicateIndex,
    eAlreadyInDb,
    eOutOfDisk,
    eDeletedEntry,
    eInvalidExtents,
    eInvalidKey,
    eWrongDatabase,
    eNoDatabase,
    eNullIterator,
    eNullPtr,
    eNotInDatabase,
    eNotOpenForRead,
    eNotOpenForWrite,
    eExplodeBeforeTransform,
    eCannotScaleNonUniformly,
    eNotInBlock,
    eWasOpenForRead,
    eWasOpenForWrite,
    eWasOpenForNotify,
    eAtMaxReaders,
    eIsWriteProtected,
    eWasNotOpenForWrite,
    eWasErased,
    ePermanentlyErased,
    eWasNotifying,
    eNotThatKindOfClass,
    eDuplicateRecordName,
    eInvalidSymbolTableName,
    eSubSelectionSetEmpty,
    eNoActiveTransactions,
    eVetoed,
    eXdataSizeExceeded,
    eRegappIdNotFound,
    eBadDxfSequence,
    eDxfPartiallyRead,
    eFilerError,
    eEndOfFile,
    eInvalidDxfCode,
    eFileAccessErr,
    eFileNotFound,
    eFileSystemErr,
    eInvalidFileExtension,
    eDegenerateGeometry,
    eIteratorDone,
    eNoIntersections,
    eNotCurve,
    eNonPlanarEntity,
    eGeneralModelingFailure,
    eOutOfRange,
    eSelfReference,
    eLockViolation,
    eLockConflict,
    eNoDocument,
    eInvalidContext,
    eUserBreak,
    eUnrecoverableErrors,
    eCannotBeErasedByCaller,
    eNothingToDo
};
} // namespace Acad

// The name of a status, such as "eWasErased".
const ACHAR* acadErrorStatusText(Acad::ErrorStatus es);

namespace AcDb {
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
enum Visibility { kInvisible = 1, kVisible = 0 };
enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
enum Poly3dType { k3dSimplePoly = 0, k3dQuadSplinePoly = 1, k3dCubicSplinePoly = 2 };
enum Vertex2dType { k2dVertex = 0, k2dSplineCtlVertex = 1, k2dSplineFitVertex = 2, k2dCurveFitVertex = 3 };
enum Vertex3dType { k3dSimpleVertex = 0, k3dControlVertex = 1, k3dFitVertex = 2 };
enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };
enum OsnapMode {
    kOsModeEnd = 1,
    kOsModeMid = 2,
    kOsModeCen = 3,
    kOsModeNode = 4,
    kOsModeQuad = 5,
    kOsModeIntersec = 6,
    kOsModeIns = 7,
    kOsModePerp = 8,
    kOsModeTan = 9,
    kOsModeNear = 10
};
enum TextHorzMode {
    kTextLeft = 0,
    kTextCenter = 1,
    kTextRight = 2,
    kTextAlign = 3,
    kTextMid = 4,
    kTextFit = 5
};
enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };
// Hundredths of a millimetre, or one of the three named sources.
enum LineWeight {
    kLnWt000 = 0,
    kLnWt005 = 5,
    kLnWt009 = 9,
    kLnWt013 = 13,
    kLnWt015 = 15,
    kLnWt018 = 18,
    kLnWt020 = 20,
    kLnWt025 = 25,
    kLnWt030 = 30,
    kLnWt035 = 35,
    kLnWt040 = 40,
    kLnWt050 = 50,
    kLnWt053 = 53,
    kLnWt060 = 60,
    kLnWt070 = 70,
    kLnWt080 = 80,
    kLnWt090 = 90,
    kLnWt100 = 100,
    kLnWt106 = 106,
    kLnWt120 = 120,
    kLnWt140 = 140,
    kLnWt158 = 158,
    kLnWt200 = 200,
    kLnWt211 = 211,
    kLnWtByLayer = -1,
    kLnWtByBlock = -2,
    kLnWtByLwDefault = -3
};
enum DuplicateRecordCloning { kDrcNotApplicable = 0, kDrcIgnore = 1, kDrcReplace = 2 };
// The file versions a drawing can come from and be written as.
enum AcDbDwgVersion {
    kDHL_Unknown = 0,
    kDHL_AC1003 = 3, // 2.6
    kDHL_AC1006 = 6, // R10
    kDHL_1009 = 9,   // R11 and R12
    kDHL_1012 = 12,  // R13
    kDHL_1014 = 14,  // R14
    kDHL_1015 = 15,  // R2000
    kDHL_1018 = 18,  // R2004
    kDHL_1021 = 21,  // R2007
    kDHL_1024 = 24,  // R2010
    kDHL_1027 = 27,  // R2013
    kDHL_1032 = 32   // R2018
};
} // namespace AcDb

// Opaque names that the editor's older functions take: an entity name is the object id, a
// selection set name its number. Points are three doubles.
using ads_real = double;
using ads_point = double[3];
using ads_name = std::int64_t[2];
enum { X = 0, Y = 1, Z = 2 };
inline void ads_name_set(const ads_name from, ads_name to) { to[0] = from[0], to[1] = from[1]; }
inline void ads_point_set(const ads_point from, ads_point to) {
    to[0] = from[0], to[1] = from[1], to[2] = from[2];
}

enum {
    RTNONE = 5000,
    RTREAL = 5001,
    RTPOINT = 5002,
    RTSHORT = 5003,
    RTANG = 5004,
    RTSTR = 5005,
    RTENAME = 5006,
    RTPICKS = 5007,
    RTORINT = 5008,
    RT3DPOINT = 5009,
    RTLONG = 5010,
    RTVOID = 5014,
    RTLB = 5016,
    RTLE = 5017,
    RTDOTE = 5018,
    RTNIL = 5019,
    RTDXF0 = 5020,
    RTT = 5021,
    RTRESBUF = 5023,
    RTNORM = 5100,
    RTERROR = -5001,
    RTCAN = -5002,
    RTREJ = -5003,
    RTFAIL = -5004,
    RTKWORD = -5005,
    RTINPUTTRUNCATED = -5008
};

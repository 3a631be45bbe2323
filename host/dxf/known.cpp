// Tables of what came with which version.
#include "host/dxf/known.h"

#include <algorithm>
#include <array>
#include <string>

namespace host::dxf {
namespace {

// Names by the version they came with. Blanks around each.
struct SinceRow {
    AcDb::AcDbDwgVersion since;
    std::string_view names;
};
// Variables; what isn't here is older or a program's own.
constexpr SinceRow kVariables[] = {
    {AcDb::kDHL_1012, " CELTSCALE CHAMFERC CHAMFERD CMLJUST CMLSCALE CMLSTYLE DELOBJ DIMALTTD DIMALTTZ "
                      "DIMALTU DIMALTZ DIMAUNIT DIMDEC DIMFIT DIMJUST DIMSD1 DIMSD2 DIMTDEC DIMTOLJ DIMTXSTY "
                      "DIMTZIN DIMUNIT DIMUPT DISPSILH PICKSTYLE PINSBASE TREEDEPTH "},
    {AcDb::kDHL_1014, " ACADMAINTVER MEASUREMENT PROXYGRAPHICS "},
    {AcDb::kDHL_1015, " CELWEIGHT CEPSNTYPE DIMADEC DIMALTRND DIMATFIT DIMAZIN DIMDSEP DIMFRAC DIMLDRBLK "
                      "DIMLUNIT DIMLWD DIMLWE DIMTMOVE ENDCAPS EXTNAMES FINGERPRINTGUID HYPERLINKBASE "
                      "INSUNITS JOINSTYLE LWDISPLAY OLESTARTUP PSTYLEMODE PSVPSCALE PUCSBASE PUCSORGBACK "
                      "PUCSORGBOTTOM PUCSORGFRONT PUCSORGLEFT PUCSORGRIGHT PUCSORGTOP PUCSORTHOREF "
                      "PUCSORTHOVIEW STYLESHEET TDUCREATE TDUUPDATE UCSBASE UCSORGBACK UCSORGBOTTOM "
                      "UCSORGFRONT UCSORGLEFT UCSORGRIGHT UCSORGTOP UCSORTHOREF UCSORTHOVIEW VERSIONGUID "
                      "XEDIT "},
    {AcDb::kDHL_1018, " DIMASSOC HALOGAP HIDETEXT INDEXCTL INTERSECTIONCOLOR INTERSECTIONDISPLAY OBSCOLOR "
                      "OBSLTYPE PROJECTNAME SORTENTS XCLIPFRAME "},
    {AcDb::kDHL_1021, " 3DDWFPREC CAMERADISPLAY CAMERAHEIGHT CMATERIAL CSHADOW DGNFRAME DIMARCSYM DIMFXL "
                      "DIMFXLON DIMJOGANG DIMLTEX1 DIMLTEX2 DIMLTYPE DIMTFILL DIMTFILLCLR DWFFRAME "
                      "INTERFERECOLOR LATITUDE LENSLENGTH LIGHTGLYPHDISPLAY LOFTANG1 LOFTANG2 LOFTMAG1 "
                      "LOFTMAG2 LOFTNORMALS LOFTPARAM LONGITUDE NORTHDIRECTION PSOLHEIGHT PSOLWIDTH "
                      "REALWORLDSCALE SHADOWPLANELOCATION SHOWHIST SOLIDHIST STEPSIZE STEPSPERSEC "
                      "TILEMODELIGHTSYNCH TIMEZONE "},
    {AcDb::kDHL_1024, " DIMTXTDIRECTION "},
    {AcDb::kDHL_1027, " REQUIREDVERSIONS "},
    {AcDb::kDHL_1032, " INTERFEREOBJVS INTERFEREVPVS LASTSAVEDBY "},
};

constexpr std::string_view kObjectDbx = "ObjectDBX Classes";
constexpr KnownClass kClasses[] = {
    {"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", kObjectDbx, 0, false},
    {"ACDBPLACEHOLDER", "AcDbPlaceHolder", kObjectDbx, 0, false},
    {"DICTIONARYVAR", "AcDbDictionaryVar", kObjectDbx, 0, false},
    {"LAYOUT", "AcDbLayout", kObjectDbx, 0, false},
    {"MATERIAL", "AcDbMaterial", kObjectDbx, 1153, false},
    {"MLEADERSTYLE", "AcDbMLeaderStyle", "ACDB_MLEADERSTYLE_CLASS", 4095, false},
    {"SCALE", "AcDbScale", kObjectDbx, 1153, false},
    {"SORTENTSTABLE", "AcDbSortentsTable", kObjectDbx, 0, false},
    {"TABLESTYLE", "AcDbTableStyle", kObjectDbx, 4095, false},
    {"VISUALSTYLE", "AcDbVisualStyle", kObjectDbx, 4095, false},
    {"ACAD_TABLE", "AcDbTable", kObjectDbx, 1025, true},
    {"IMAGE", "AcDbRasterImage", "ISM", 2175, true},
    {"IMAGEDEF", "AcDbRasterImageDef", "ISM", 0, false},
    {"IMAGEDEF_REACTOR", "AcDbRasterImageDefReactor", "ISM", 1, false},
    {"MESH", "AcDbSubDMesh", kObjectDbx, 0, true},
    {"MULTILEADER", "AcDbMLeader", "ACDB_MLEADER_CLASS", 1025, true},
    {"RASTERVARIABLES", "AcDbRasterVariables", "ISM", 0, false},
    {"SPATIAL_FILTER", "AcDbSpatialFilter", kObjectDbx, 0, false},
    {"WIPEOUT", "AcDbWipeout", "WipeOut", 2175, true},
};

constexpr std::array<std::string_view, 19> kOldKinds = {
    "3DFACE", "3DLINE", "ARC",   "ATTDEF", "ATTRIB", "BLOCK", "CIRCLE", "DIMENSION", "ENDBLK",  "INSERT",
    "LINE",   "POINT",  "SHAPE", "SEQEND", "SOLID",  "TEXT",  "TRACE",  "VERTEX",    "VIEWPORT"};

// Kinds of entity by the version they came with; those since R13 aren't here.
constexpr SinceRow kKinds[] = {
    {AcDb::kDHL_1014, " HATCH IMAGE LWPOLYLINE "},
    {AcDb::kDHL_1015, " ARCALIGNEDTEXT RTEXT WIPEOUT "},
    {AcDb::kDHL_1018, " ACAD_TABLE ARC_DIMENSION LARGE_RADIAL_DIMENSION "},
    {AcDb::kDHL_1021,
     " DGNUNDERLAY DWFUNDERLAY EXTRUDEDSURFACE HELIX LIGHT LOFTEDSURFACE MULTILEADER PDFUNDERLAY "
     "PLANESURFACE REVOLVEDSURFACE SECTION SUN SURFACE SWEPTSURFACE "},
    {AcDb::kDHL_1024, " MESH NURBSURFACE "},
    {AcDb::kDHL_1027, " COORDINATION_MODEL GEOPOSITIONMARKER POINTCLOUD POINTCLOUDEX "},
};

bool cameLater(std::span<const SinceRow> rows, AcDb::AcDbDwgVersion version, std::string_view name) {
    std::string wanted(1, ' ');
    wanted.append(name).push_back(' ');
    for (const SinceRow& row : rows)
        if (row.since > version && row.names.find(wanted) != std::string_view::npos) return true;
    return false;
}

} // namespace

bool knowsVariable(AcDb::AcDbDwgVersion version, std::string_view name) {
    if (name.starts_with('$')) name.remove_prefix(1);
    return !cameLater(kVariables, version, name);
}

bool knowsKind(AcDb::AcDbDwgVersion version, std::string_view kind) {
    return version <= AcDb::kDHL_1009 ? isOldKind(kind) : !cameLater(kKinds, version, kind);
}

std::span<const KnownClass> knownClasses() { return kClasses; }

bool isOldKind(std::string_view kind) {
    return kind == "POLYLINE" || std::find(kOldKinds.begin(), kOldKinds.end(), kind) != kOldKinds.end();
}

bool isOldCode(int code) {
    return (code >= 0 && code < 80) || (code >= 140 && code < 180) || (code >= 210 && code < 240) ||
           code >= 1000;
}

} // namespace host::dxf

// LIST: what the drawing knows of the selected objects.
#include "host/db/color.h"
#include "host/ed/host_command_tools.h"
#include "host/ent/blockreference.h"
#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "host/ent/text.h"
#include "host/os/text.h"

namespace host {
namespace {

constexpr wchar_t kIndent[] = L"\n                  ";

void row(const std::wstring& name, const std::wstring& value) {
    acutPrintf(L"%s%s %s", kIndent, name.c_str(), value.c_str());
}

std::wstring recordName(AcDbObjectId id) {
    AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForRead);
    return record ? record->name() : std::wstring(L"?");
}

std::wstring colorText(const AcCmColor& color) {
    if (color.isByBlock()) return L"by block";
    if (!color.isByColor()) return std::to_wstring(color.colorIndex());
    return std::to_wstring(color.red()) + L"," + std::to_wstring(color.green()) + L"," +
           std::to_wstring(color.blue());
}

void listHead(const AcDbEntity& entity) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(entity.blockId(), AcDb::kForRead);
    acutPrintf(L"\n\n                  %-14s Layer: \"%s\"", wide(entity.dxfName()).c_str(),
               entity.layerName().c_str());
    row(L"Space:", !space                  ? L"none"
                   : space->isModelSpace() ? L"Model space"
                   : space->isPaperSpace() ? L"Paper space"
                                           : L"Block " + space->name());
    row(L"Handle =", entity.objectId().handle().ascii());
    if (!entity.color().isByLayer()) row(L"Color:", colorText(entity.color()));
    if (entity.linetypeId() != drawing().byLayerLinetype() && !entity.linetypeId().isNull())
        row(L"Linetype:", L"\"" + recordName(entity.linetypeId()) + L"\"");
}

void listVertices(const AcDbPolyline& polyline) {
    row(L"Vertices:", std::to_wstring(polyline.numVerts()));
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d point;
        double bulge = 0;
        polyline.getPointAt(i, point);
        polyline.getBulgeAt(i, bulge);
        row(L"  at point", shown(point) + (bulge != 0 ? L"  bulge " + shown(bulge) : L""));
    }
}

void listCurve(const AcDbCurve& curve) {
    double end = 0, length = 0, area = 0;
    AcGePoint3d first, last;
    const bool closed = curve.isClosed();
    if (!closed && curve.getStartPoint(first) == Acad::eOk && curve.getEndPoint(last) == Acad::eOk) {
        row(L"from point", shown(first));
        row(L"to point", shown(last));
    }
    if (curve.getEndParam(end) == Acad::eOk && curve.getDistAtParam(end, length) == Acad::eOk)
        row(L"Length =", shown(length));
    if (closed && curve.getArea(area) == Acad::eOk) row(L"Area =", shown(area));
}

// What each kind tells of itself.
void listKind(const AcDbEntity& entity) {
    if (const auto* circle = AcDbCircle::cast(&entity))
        row(L"center point", shown(circle->center())), row(L"radius", shown(circle->radius()));
    else if (const auto* arc = AcDbArc::cast(&entity))
        row(L"center point", shown(arc->center())), row(L"radius", shown(arc->radius()));
    else if (const auto* polyline = AcDbPolyline::cast(&entity))
        listVertices(*polyline);
    else if (const auto* point = AcDbPoint::cast(&entity))
        row(L"at point", shown(point->position()));
    else if (const auto* text = AcDbText::cast(&entity))
        row(L"text", L"\"" + std::wstring(text->textStringConst()) + L"\""),
            row(L"start point", shown(text->position())), row(L"height", shown(text->height()));
    else if (const auto* reference = AcDbBlockReference::cast(&entity))
        row(L"block name", L"\"" + recordName(reference->referencedBlock()) + L"\""),
            row(L"at point", shown(reference->position()));
    if (const auto* curve = AcDbCurve::cast(&entity)) listCurve(*curve);
}

} // namespace

void listCommand() {
    for (const AcDbObjectId id : askObjects(false)) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity) continue;
        listHead(*entity);
        listKind(*entity);
    }
}

} // namespace host

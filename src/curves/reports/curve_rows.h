// Rows of one curve in the vertex report, and the marks that show in the drawing which row is which point.
#pragma once
#include "core/host/entities.h"
#include "curves/reports/table_file.h"

namespace corvane {

TableColumns VertexColumns();

// The points that a curve is told by: vertices of polylines; fit points of splines, or control points where
// there are no fit points; the ends of other open curves; the grips of other closed ones. With `lowerLeft`
// the numbering begins at the end of an open curve, or at the vertex of a closed one, that lies nearest the
// lower left corner of the curve's box.
std::vector<AcGePoint3d> ReportPoints(const AcDbCurve& curve, bool lowerLeft);

// Appends to `rows` a row a point and a closing row with length and area. `index` numbers the curve, from 1.
// With `marks` each point gets a point entity and its number as a text of that height, in the current space.
void WriteCurveRows(CString& rows, const AcDbCurve& curve, double textHeight, bool marks, int index,
                    bool lowerLeft);

// A mark: a point entity, and beside it a text when there are words.
void DrawMark(const AcGePoint3d& at, const std::wstring& words, double textHeight);
// The height of marks and numbers: the view's height over 30, unless the user gives one above 0.001. The
// prompt is a source text with one place for the usual height.
double AskTextHeight(const wchar_t* prompt);
double AskMarkHeight();
bool AskLowerLeftStart();
// Lets point entities show as marks.
void ShowMarks();

} // namespace corvane

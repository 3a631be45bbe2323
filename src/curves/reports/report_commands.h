// Handlers of the commands that hand measurements to a spreadsheet.
#pragma once

namespace corvane {

void ListVerticesCommand(); // PLLIST
void ListCirclesCommand();  // CLIST
void ListEllipsesCommand(); // ELLLIST
void ListArcsCommand();     // ARCLIST

void CountLengthsCommand(); // CVplcount2
void MeasureSizesCommand(); // CVckg

void IntersectCurvesCommand();   // PLJD
void IntersectOneCurveCommand(); // PLJD1

} // namespace corvane

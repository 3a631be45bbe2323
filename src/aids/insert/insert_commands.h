// Handlers that insert blocks and copies.
#pragma once

namespace corvane {

void InsertAcrossCurveCommand(); // VINS: a block at picked points of a curve, standing across it
void InsertByTwoPointsCommand(); // insert2p: a block placed, turned and scaled by two points
void MultipleCopyCommand();      // mcopy: copies of a selection, many from one base point

} // namespace corvane

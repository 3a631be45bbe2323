// Handlers of the commands that divide, turn round and mark curves, and of those that draw thread art.
#pragma once

namespace corvane {

void DivideByCountCommand();    // PLDF
void DivideByDistanceCommand(); // PLDJDF
void ReverseCurvesCommand();    // PLDD
void MarkVerticesCommand();     // PLBH

void ThreadOneCurveCommand(); // DevideLine1
void ThreadOneRingCommand();  // DevideLine2
void ThreadTwoRingsCommand(); // DevideLine3

} // namespace corvane
